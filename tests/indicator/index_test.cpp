#include <gtest/gtest.h>

#include "tests/formula/bars.h"
#include "trovenu/price/price_data_list.h"

namespace trovenu::tests {
namespace {

TEST(Index, SettersIgnoreSlotsOutside) {
  SIndex index("name", kConditionIndex);
  EXPECT_STREQ(index.IndexName.c_str(), "name");
  EXPECT_EQ(index.UserID, -1);
  for (const int slot : {-1, 5, 1000000}) {
    index.SetExpName(slot, "x");
    index.SetExpression(slot, "x");
    index.SetLineStyle(slot, 1, 2, 3, 4);
    index.SetLineCompStyle(slot, 1, 2, "3", "4", 5);
    index.SetBaseLineValue(slot, 1);
    index.SetShape(slot, 1);
  }
  index.SetLineStyle(4, 1, 2, 3, 4);
  index.SetLineCompStyle(4, 5, 6, "7", "8", 9);
  index.SetBaseLineValue(4, 30);
  index.SetShape(4, 10);
  EXPECT_EQ(index.DisplayType[4], 1);
  EXPECT_EQ(index.LineColor[4], 2U);
  EXPECT_EQ(index.LineWidth[4], 3);
  EXPECT_EQ(index.LineStyle[4], 4);
  EXPECT_EQ(index.LineUpColor[4], 5U);
  EXPECT_STREQ(index.LineDnValue[4].c_str(), "8");
  EXPECT_STREQ(index.YValue[4].c_str(), "30");
  EXPECT_EQ(index.Shape[4], 10);
  for (const int mode : {0, 3, 7, -1}) {
    index.SetScale(mode);
    EXPECT_EQ(index.MinMaxY, mode == 3 ? 3 : 0);
  }
  index.SetUserMinMax(1, 2);
  EXPECT_EQ(index.UserMin, 1);
  EXPECT_EQ(index.UserMax, 2);
}

TEST(Index, ReadsTheSymbolOfItsId) {
  SPriceDataList list;
  for (int i = 0; i < 3; ++i) list[list.GetSymbolNoFromID(list.Add())].AddData(SPriceData::kClose, i);
  SIndex index;
  EXPECT_EQ(index.GetCurIndex(), 0);
  EXPECT_EQ(index.GetCurPriceData(), nullptr);
  EXPECT_EQ(index.GetDate(), nullptr);
  index.SetData(nullptr, 2);
  EXPECT_EQ(index.SymbolID, 0);
  index.SetData(&list, 2);
  EXPECT_EQ((*index.Variable[0])[0], 2);
  SVector *const inOrder[] = {&list[2].close,  &list[2].open, &list[2].high,         &list[2].low,
                              &list[2].volume, &list[2].date, &list[2].openInterest, &list[2].amount};
  for (int i = 0; i < kInputSeries; ++i) EXPECT_EQ(index.Variable[i], inOrder[i]) << i;
  EXPECT_EQ(index.GetDate(), &list[2].date);
  list[2].ChartPeriod = 4;
  EXPECT_EQ(index.GetChartPeriod(), 4);
  index.ExpDate.Add(20240102);
  EXPECT_EQ(index.GetDate(), &index.ExpDate);
  EXPECT_EQ(index.GetChartPeriod(), 2);
  // An unknown symbol is the first one.
  index.SetData(&list, 77);
  EXPECT_EQ(index.GetCurIndex(), 0);
  EXPECT_EQ((*index.Variable[0])[0], 0);
}

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

TEST(Index, DrawRangeBeginsWhereALineBegins) {
  SPriceDataList list;
  list.Add();
  SIndex index("", kPriceIndex);
  index.SetData(&list, 0);
  index.ExpData[0] = Series({1, 2, 3, 4}, 2);
  index.SetDrawRange(1, 3);
  EXPECT_EQ(index.ExpData[0].GetDrawFirst(), 2);
  EXPECT_EQ(index.ExpData[0].GetDrawLast(), 3);
  // The price series of a net chart takes its overlays along, that of another chart does not.
  EXPECT_EQ(list[0].overlays[3].ExpData[4].GetDrawLast(), 0);
  list[0].property->PriceChartType = kNetChart;
  index.SetDrawRange(1, 3);
  EXPECT_EQ(list[0].overlays[3].ExpData[4].GetDrawLast(), 3);
}

TEST(Index, OverlaysFollowTheirSymbol) {
  SPriceData data;
  data.overlays[1].ExpData[2].Add(5);
  data.overlays[1].LineColor[0] = 77;
  const SPriceData copy(data);
  EXPECT_EQ(copy.overlays[1].ExpData[2].GetSize(), 1);
  EXPECT_EQ(copy.overlays[1].LineColor[0], 77U);
  data.ClearData();
  EXPECT_EQ(data.overlays[1].ExpData[2].GetSize(), 0);
  EXPECT_EQ(data.overlays[1].LineColor[4], CThemeManager::GetColor(351));
  EXPECT_EQ(data.overlays[1].LineColor[0], CThemeManager::GetColor(347));
}

}  // namespace
}  // namespace trovenu::tests
