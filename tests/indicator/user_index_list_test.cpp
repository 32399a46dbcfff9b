#include "trovenu/indicator/user_index_list.h"

#include <gtest/gtest.h>

#include <initializer_list>

#include "trovenu/indicator/index.h"

namespace trovenu {
namespace {

// Objects with these IDs, and a list of them.
struct Chart {
  explicit Chart(std::initializer_list<int> ids) {
    for (const int id : ids) {
      objects[count].SetUserID(id);
      list.Add(&objects[count++]);
    }
  }

  SIndex objects[5];
  int count = 0;
  SUserIndexList list;
};

TEST(UserIndexList, FindLooksFromTheFrontAndGetIndexFromTheBack) {
  Chart chart({4, 7, 9, 7});
  EXPECT_EQ(chart.list.Find(7), 1);
  EXPECT_EQ(chart.list.GetIndex(7), &chart.objects[3]);
  EXPECT_EQ(chart.list.Find(9), 2);
  EXPECT_EQ(chart.list.GetIndex(9), &chart.objects[2]);
  EXPECT_EQ(chart.list.Find(5), -1);
  EXPECT_EQ(chart.list.GetIndex(5), nullptr);
  EXPECT_EQ(chart.list.Find(&chart.objects[3]), 3);
  EXPECT_EQ(chart.list.Find(&chart.objects[4]), -1);
}

TEST(UserIndexList, NextIdIsBehindTheLargest) {
  EXPECT_EQ(Chart({}).list.GetNextID(), 0);
  EXPECT_EQ(Chart({-1, -5}).list.GetNextID(), 0);
  EXPECT_EQ(Chart({3, 0}).list.GetNextID(), 4);
}

TEST(UserIndexList, RemoveIndexTakesAllWithThatId) {
  Chart chart({2, 1, 2, 2});
  chart.list.RemoveIndex(8);
  EXPECT_EQ(chart.list.GetSize(), 4);
  chart.list.RemoveIndex(2);
  ASSERT_EQ(chart.list.GetSize(), 1);
  EXPECT_EQ(chart.list[0], &chart.objects[1]);
  EXPECT_EQ(chart.objects[0].UserID, 2) << "the objects stay";
}

TEST(UserIndexList, NullElementsAreNoObjects) {
  Chart chart({6});
  chart.list.InsertAt(0, nullptr);
  EXPECT_EQ(chart.list.Find(6), 1);
  EXPECT_EQ(chart.list.GetIndex(0), nullptr);
  EXPECT_EQ(chart.list.GetNextID(), 7);
  chart.list.RemoveIndex(0);
  EXPECT_EQ(chart.list.GetSize(), 2);
}

}  // namespace
}  // namespace trovenu
