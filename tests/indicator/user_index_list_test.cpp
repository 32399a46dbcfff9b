#include "trovenu/indicator/user_index_list.h"

#include <gtest/gtest.h>

#include "trovenu/indicator/index.h"

namespace trovenu {
namespace {

TEST(UserIndexList, FindLooksFromTheFrontAndGetIndexFromTheBack) {
  SIndex objects[4];
  SUserIndexList list;
  EXPECT_EQ(list.GetNextID(), 0);
  list.Add(nullptr);
  for (int i = 0; i < 4; ++i) {
    objects[i].SetUserID(i == 2 ? 9 : 7);
    list.Add(&objects[i]);
  }
  EXPECT_EQ(list.Find(7), 1);
  EXPECT_EQ(list.GetIndex(7), &objects[3]);
  EXPECT_EQ(list.Find(5), -1);
  EXPECT_EQ(list.GetIndex(5), nullptr);
  EXPECT_EQ(list.GetNextID(), 10);
  list.RemoveIndex(7);
  ASSERT_EQ(list.GetSize(), 2);
  EXPECT_EQ(list[1], &objects[2]);
}

}  // namespace
}  // namespace trovenu
