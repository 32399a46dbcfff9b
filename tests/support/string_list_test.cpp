#include "trovenu/support/string_list.h"

#include <gtest/gtest.h>

namespace trovenu::tests {

namespace {

TEST(StringListTest, HoldsTextsByValue) {
  SAnsiStringList list;
  list.Add("a");
  list.Add(SString(7));
  SAnsiStringList copy = list;
  copy[0] = "b";
  EXPECT_EQ(list[0], "a");
  EXPECT_EQ(copy[0], "b");
  EXPECT_EQ(copy[1], "7");
  copy.Clear();
  EXPECT_EQ(copy.GetSize(), 0);
  EXPECT_EQ(list.GetSize(), 2);
}

TEST(StringListTest, OutsideIsEmptyAndForgetsWrites) {
  SAnsiStringList list;
  list.Add("a");
  for (const long index : {-1L, 1L, 1000000L}) {
    list[index] = "lost";
    EXPECT_EQ(list[index], "") << index;
    EXPECT_EQ(std::as_const(list)[index], "") << index;
  }
  EXPECT_EQ(list.GetSize(), 1);
}

}  // namespace

}  // namespace trovenu::tests
