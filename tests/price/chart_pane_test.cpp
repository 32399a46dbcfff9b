#include "trovenu/price/chart_pane.h"

#include <gtest/gtest.h>

namespace trovenu {
namespace {

struct CountedItem : SChartItem {
  explicit CountedItem(int &count) : deleted(count) {}
  ~CountedItem() override { ++deleted; }
  int &deleted;
};

// Required: a copy holds the same item pointers and both objects delete the items that they count.
TEST(ChartPane, ACopyHoldsTheSameItems) {
  int deleted = 0;
  {
    SChartProp pane;
    SChartProp assigned;
    pane.items[0] = new CountedItem(deleted);
    pane.itemCount = 1000;
    assigned = pane;
    SChartProp copy(pane);
    EXPECT_EQ(copy.items[0], pane.items[0]);
    EXPECT_EQ(assigned.items[0], pane.items[0]);
    EXPECT_EQ(assigned.itemCount, 1000);
    copy.itemCount = 0;
    assigned.itemCount = -1;
  }
  EXPECT_EQ(deleted, 1);
}

}  // namespace
}  // namespace trovenu
