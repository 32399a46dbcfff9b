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

}  // namespace
}  // namespace trovenu
