#include "trovenu/price/price_data.h"

#include <gtest/gtest.h>

#include <climits>

namespace trovenu {
namespace {

SPriceData Filled() {
  SPriceData data;
  for (int code = 0; code <= 10; ++code) {
    data.AddData(code, code + 1.0);
    data.InsertData(code, code + 0.5);
  }
  data.CalcCorrectedPrice(0, 0);
  data.ID = 5;
  data.SymbolName = "name";
  data.SetBaseInfoValue(9, 11.0);
  data.SetSRLineValue(27, 12.0);
  data.property->MinMaxY = 2;
  data.property->ShowBaseLine[3] = 1;
  data.overlays[3].AddData(4, 5.0);
  return data;
}

// Required: as the property is assigned, its `ShowBaseLine` becomes 0.
TEST(PriceData, AssignmentZeroesShowBaseLineAndCopiesTheRest) {
  const SPriceData source = Filled();
  SPriceData copy(source);
  SPriceData assigned;
  assigned.property->ShowBaseLine[2] = 1;
  assigned = source;
  for (SPriceData *target : {&copy, &assigned}) {
    for (const int shown : target->property->ShowBaseLine) EXPECT_EQ(shown, 0);
    target->UpdateData(SPriceData::kClose, 99.0, 0);
    target->SetSRLineValue(27, 99.0);
    target->SetBaseInfoValue(9, 99.0);
    target->property->MinMaxY = 99;
    *target = SPriceData(source);
    EXPECT_EQ(target->ID, 5);
    EXPECT_TRUE(target->SymbolName == "name");
    EXPECT_EQ(target->baseInfo->slots[9], 11.0) << "the change of a copy stays with it";
    EXPECT_EQ(target->lines->LineValue[27], 12.0);
    EXPECT_EQ(target->property->MinMaxY, 2);
    for (int code = 0; code <= 7; ++code) EXPECT_EQ(target->GetData(code, 0), code + 1.0) << code;
    EXPECT_EQ(target->eventPosition[0], -1.0);
    EXPECT_EQ(target->overlays[3].ExpData[4][0], 5.0);
    for (const SVector &buffer : target->insertBuffer) EXPECT_EQ(buffer.GetSize(), 1);
  }
  SPriceData bare;
  bare.lines = nullptr;
  assigned = bare;
  EXPECT_EQ(assigned.baseInfo->slots[9], -1.0);
  EXPECT_EQ(assigned.lines->LineValue[27], 0.0);
}

TEST(PriceData, ClearDataIsForAnotherSymbol) {
  SPriceData data = Filled();
  data.ClearData();
  for (const SVector *series : {&data.close, &data.amount, &data.eventDate, &data.eventPosition,
                                &data.insertBuffer[10], &data.overlays[3].ExpData[4]}) {
    EXPECT_EQ(series->GetSize(), 0);
  }
  EXPECT_EQ(data.baseInfo->slots[9], -1.0);
  EXPECT_EQ(data.property->MinMaxY, 0);
  EXPECT_EQ(data.lines->LineValue[27], 12.0);
  EXPECT_EQ(data.ID, 5);
  data.property->MinMaxY = 3;
  data.ClearData();
  EXPECT_EQ(data.property->MinMaxY, 3) << "only the scale of the symbol goes";
}

TEST(PriceData, EachOverlayHasOneColorForAllItsLines) {
  const SPriceData data;
  for (int i = 0; i < 4; ++i) {
    for (const Color color : data.overlays[i].LineColor)
      EXPECT_EQ(color, CThemeManager::GetColor(347 + i)) << i;
  }
}

TEST(PriceData, SlotsAndLinesOutsideTheirRangesMakeNothing) {
  SPriceData data;
  data.lines = nullptr;
  for (const int index : {-1, 10, INT_MIN, INT_MAX}) data.SetBaseInfoValue(index, 1.0);
  for (const int index : {-1, 28, INT_MIN, INT_MAX}) data.SetSRLineValue(index, 1.0);
  EXPECT_EQ(data.baseInfo, nullptr);
  EXPECT_EQ(data.lines, nullptr);
}

TEST(PriceData, PriceExtremesFollowTheChartType) {
  SPriceData data;
  // A close above its high counts as well.
  const double bars[3][4] = {{12, 10, 15, 8}, {13, 12, 14, 5}, {14, 13, 13, 9}};
  for (const auto &bar : bars) {
    for (int code = 0; code < 4; ++code) data.AddData(code, bar[code]);
  }
  struct {
    int type;
    double max, min, maxOfLast, minOfLast;
  } const cases[] = {{kCandleChart, 15, 5, 14, 9}, {kCloseLineChart, 14, 12, 14, 14}, {99, 15, 5, 14, 9}};
  for (const auto &c : cases) {
    data.property->PriceChartType = c.type;
    EXPECT_EQ(data.GetPriceMax(), c.max) << c.type;
    EXPECT_EQ(data.GetPriceMin(), c.min) << c.type;
    EXPECT_EQ(data.GetPriceMax(2, 2), c.maxOfLast) << c.type;
    EXPECT_EQ(data.GetPriceMin(2, 2), c.minOfLast) << c.type;
    EXPECT_EQ(data.GetPriceMaxTemp(0, 2), 15.0) << "whatever the type";
  }
  EXPECT_EQ(SPriceData().GetPriceMax(), -1e38);
  EXPECT_EQ(SPriceData().GetPriceMin(0, 5), 1e38);
}

}  // namespace
}  // namespace trovenu
