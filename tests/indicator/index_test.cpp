#include <gtest/gtest.h>

#include "tests/formula/bars.h"
#include "trovenu/price/price_data_list.h"

namespace trovenu::tests {
namespace {

TEST(Index, RangeIsThatOfTheVisibleLines) {
  SIndex index;
  EXPECT_EQ(index.GetMax(), -1e38);
  EXPECT_EQ(index.GetMin(), 1e38);
  index.ExpData[0] = Series({5, 9, 7});
  index.ExpData[2] = Series({-100, 3, 4}, 1);
  index.ExpData[4] = Series({1000});
  index.BlShowLine[4] = 0;
  EXPECT_EQ(index.GetMax(), 9);
  EXPECT_EQ(index.GetMin(), 3);
  EXPECT_EQ(index.GetMax(2, 2, 0), 7);
  EXPECT_EQ(index.GetMin(2, 2, 0), 4);
  // Required: a line from zero takes the least value down, not the largest one up.
  index.DisplayType[0] = 1;
  EXPECT_EQ(index.GetMin(), 0);
  EXPECT_EQ(index.GetMin(2, 2, 0), 0);
  index.ExpData[0] = Series({-5});
  index.ExpData[2].ClearData();
  EXPECT_EQ(index.GetMax(), -5);

  index.SetMinMaxChanged(0);
  index.GetMax(0, 5, 0);
  EXPECT_EQ(index.BlMinMaxChanged, 0);
  index.ExpData[0].minMaxChanged = 1;
  index.GetMin(0, 5, 0);
  EXPECT_EQ(index.BlMinMaxChanged, 1);
}

}  // namespace
}  // namespace trovenu::tests
