#include "trovenu/price/chart_pane.h"

#include <gtest/gtest.h>

#include "tests/price/stored_values.h"

namespace trovenu {
namespace {

using tests::KeysOf;
using tests::Renumbered;
using tests::StoredBy;
using tests::ValuesOf;

class CountedItem : public SChartItem {
 public:
  explicit CountedItem(int &count) : count_(count) { ++count_; }
  ~CountedItem() override { --count_; }

 private:
  int &count_;
};

TEST(ChartPane, StartsWithItsDefaults) {
  const SChartProp pane;
  EXPECT_EQ(pane.WidthRatio, 1.0);
  EXPECT_EQ(pane.HeightRatio, 1.0);
  EXPECT_EQ(pane.BlDeleble, 1);
  EXPECT_EQ(pane.BlShow, 1);
  EXPECT_EQ(pane.ChartName.Length(), 0);
  for (const int zero : {pane.itemCount, pane.ChartID, pane.hostValue, pane.hostValues[3],
                         pane.LeftLabelIndex, pane.RightLabelIndex, pane.BlShowUnit, pane.rectangle.left,
                         pane.rectangle.bottom, pane.paneData[99]}) {
    EXPECT_EQ(zero, 0);
  }
  EXPECT_EQ(pane.items[29], nullptr);
}

TEST(ChartPane, DeletesTheItemsThatItCounts) {
  int alive = 0;
  CountedItem kept(alive);
  {
    SChartProp pane;
    pane.items[0] = new CountedItem(alive);
    pane.items[1] = new CountedItem(alive);
    pane.items[2] = &kept;
    pane.itemCount = 2;
  }
  EXPECT_EQ(alive, 1);
  for (const int count : {-1, 1000}) {
    SChartProp pane;
    pane.itemCount = count;
  }
}

// Required: a copy holds the same item pointers and both objects delete the items that they count.
TEST(ChartPane, ACopyHoldsTheSameItems) {
  int alive = 0;
  {
    SChartProp pane;
    pane.items[0] = new CountedItem(alive);
    pane.itemCount = 1;
    pane.paneData[7] = 5;
    pane.ChartName = "name";
    SChartProp copy(pane);
    SChartProp assigned;
    assigned = pane;
    EXPECT_EQ(copy.items[0], pane.items[0]);
    EXPECT_EQ(assigned.items[0], pane.items[0]);
    EXPECT_EQ(assigned.itemCount, 1);
    EXPECT_EQ(assigned.paneData[7], 5);
    EXPECT_TRUE(assigned.ChartName == "name");
    copy.itemCount = 0;
    assigned.itemCount = 0;
  }
  EXPECT_EQ(alive, 0);
}

TEST(ChartPane, ArchiveHasEveryKeyInOrder) {
  const char *const keys =
      "ChartID WidthRatio HeightRatio LeftLabelIndex RightLabelIndex ChartName BlDeleble BlShowUnit BlShow";
  EXPECT_EQ(KeysOf(StoredBy(SChartProp(), -1), "Chart"), keys);
  EXPECT_EQ(KeysOf(StoredBy(SChartProp(), 5), "Chart5"), keys);
  CKqArchive archive = Renumbered(StoredBy(SChartProp(), 5));
  SChartProp pane;
  pane.hostValue = 4;
  pane.Load(archive, 5);
  EXPECT_EQ(StoredBy(pane, 5), ValuesOf(archive));
  EXPECT_EQ(pane.hostValue, 4);
  CKqArchive empty;
  pane.Load(empty, 5);
  EXPECT_EQ(StoredBy(pane, 5), StoredBy(SChartProp(), 5));
}

}  // namespace
}  // namespace trovenu
