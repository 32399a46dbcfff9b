#include "trovenu/indicator/index_list.h"

#include <gtest/gtest.h>

#include <string>

namespace trovenu {
namespace {

void Fill(SIndexList &list, int count) {
  for (int i = 0; i < count; ++i) list.Add(SIndex(std::to_string(i).c_str(), kConditionIndex));
}

std::string NamesIn(const SIndexList &list) {
  std::string names;
  for (int i = 0; i < list.Size; ++i) names += std::string(i > 0 ? " " : "") + list[i].IndexName.c_str();
  return names;
}

TEST(IndexList, GrowsBySteps) {
  SIndexList list;
  EXPECT_EQ(list.MaxSize, 20);
  EXPECT_EQ(list.GrowBy, 20);
  Fill(list, 20);
  EXPECT_EQ(list.MaxSize, 20);
  list.Add(list[7]);
  EXPECT_EQ(list.MaxSize, 40);
  EXPECT_EQ(list.Size, 21);
  EXPECT_STREQ(list[20].IndexName.c_str(), "7");
  EXPECT_STREQ(list[19].IndexName.c_str(), "19");
  EXPECT_EQ(list[0].IndexType, kConditionIndex);

  list.SetMaxSize(30);
  EXPECT_EQ(list.MaxSize, 40);
  list.SetMaxSize(41);
  EXPECT_EQ(list.MaxSize, 41);
  EXPECT_STREQ(list[20].IndexName.c_str(), "7");
}

// Required: the room after `Clear` is another than that of a new list.
TEST(IndexList, ClearMakesRoomForTwoHundred) {
  SIndexList list;
  Fill(list, 3);
  list.Clear();
  EXPECT_EQ(list.Size, 0);
  EXPECT_EQ(list.MaxSize, 200);
  EXPECT_EQ(list.GrowBy, 200);
}

TEST(IndexList, DeleteMovesTheFollowingElementsDown) {
  struct Case {
    int index;
    const char *names;
  };
  for (const Case &c : {Case{0, "1 2"}, Case{1, "0 2"}, Case{2, "0 1"}, Case{3, "0 1"}, Case{-1, "0 1"}}) {
    SIndexList list;
    Fill(list, 3);
    list.Delete(c.index);
    EXPECT_EQ(NamesIn(list), c.names) << c.index;
  }
  SIndexList empty;
  empty.Delete(0);
  EXPECT_EQ(empty.Size, 0);
}

TEST(IndexList, OutsideStandsTheEmptyListItself) {
  SIndexList list;
  Fill(list, 2);
  const SIndexList &same = list;
  for (const long i : {-1L, 2L, 1000000L}) {
    EXPECT_EQ(&list[i], &list);
    EXPECT_EQ(&same[i], &list);
  }
  EXPECT_TRUE(list[-1].IndexName.IsEmpty());
  EXPECT_EQ(list[-1].IndexType, kIndicatorIndex);
}

TEST(IndexList, CopiesAreDeep) {
  SIndexList list;
  Fill(list, 2);
  list[0].ExpData[0].Add(5.0);
  SIndexList assigned;
  Fill(assigned, 1);
  assigned = list;
  EXPECT_EQ(assigned.MaxSize, 200);
  SIndexList copied(list);
  list[0].ExpData[0][0] = 6.0;
  list[1].IndexName = "changed";
  for (SIndexList *copy : {&assigned, &copied}) {
    EXPECT_EQ(NamesIn(*copy), "0 1");
    EXPECT_EQ((*copy)[0].ExpData[0][0], 5.0);
  }
  SIndexList &itself = assigned;
  assigned = itself;
  EXPECT_EQ(NamesIn(assigned), "0 1");
}

}  // namespace
}  // namespace trovenu
