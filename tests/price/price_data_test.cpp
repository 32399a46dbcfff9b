#include "trovenu/price/price_data.h"

#include <gtest/gtest.h>

#include <climits>

#include "trovenu/platform/theme.h"

namespace trovenu {
namespace {

void AddBar(SPriceData &data, double open, double high, double low, double close) {
  data.AddData(SPriceData::kOpen, open);
  data.AddData(SPriceData::kHigh, high);
  data.AddData(SPriceData::kLow, low);
  data.AddData(SPriceData::kClose, close);
}

// Every member has another value than a new object.
SPriceData Filled() {
  SPriceData data;
  for (int code = 0; code <= 10; ++code) {
    data.AddData(code, code + 1.0);
    data.InsertData(code, code + 0.5);
  }
  data.CalcCorrectedPrice(0, 0);
  data.ID = 5;
  data.hostMark = 6;
  data.MarketType = 7;
  data.SymbolName = "name";
  data.SymbolCode = "code";
  data.symbolText = "text";
  data.RealSymbol = "real";
  data.SetChartCycle(3.0);
  data.SetChartPeriod(4);
  data.TickSize = 0.25;
  data.ShowCandle(0);
  data.hostInts[0] = 8;
  data.hostInts[1] = 9;
  data.hostValue = 10.0;
  data.SetBaseInfoValue(9, 11.0);
  data.SetSRLineValue(27, 12.0);
  data.lines->SetClose(13.0);
  data.property->MinMaxY = 2;
  data.property->ShowBaseLine[3] = 1;
  return data;
}

TEST(PriceData, StartsWithItsDefaults) {
  const SPriceData data;
  EXPECT_EQ(data.GetID(), -1);
  EXPECT_EQ(data.hostMark, 0);
  EXPECT_EQ(data.MarketType, 0);
  for (const SString *text : {&data.SymbolName, &data.SymbolCode, &data.symbolText, &data.RealSymbol}) {
    EXPECT_EQ(text->Length(), 0);
  }
  EXPECT_EQ(data.ChartCycle, 1.0);
  EXPECT_EQ(data.ChartPeriod, 2);
  EXPECT_EQ(data.TickSize, 1.0);
  EXPECT_EQ(data.dataFlag, 0);
  EXPECT_EQ(data.eventFlag, 0);
  EXPECT_EQ(data.showCandle, 1);
  EXPECT_EQ(data.hostInts[0], 0);
  EXPECT_EQ(data.hostInts[1], 0);
  EXPECT_EQ(data.hostValue, 0.0);
  EXPECT_EQ(data.baseInfo, nullptr);
  ASSERT_NE(data.property, nullptr);
  ASSERT_NE(data.lines, nullptr);
  EXPECT_TRUE(*data.lines == SSRLines());
  EXPECT_EQ(data.close.GetSize(), 0);
}

TEST(PriceData, CopiesAreDeepAndWhole) {
  const SPriceData source = Filled();
  SPriceData copy(source);
  SPriceData assigned;
  assigned = source;
  for (SPriceData *target : {&copy, &assigned}) {
    EXPECT_EQ(target->ID, 5);
    EXPECT_EQ(target->hostMark, 6);
    EXPECT_EQ(target->MarketType, 7);
    EXPECT_TRUE(target->SymbolName == "name");
    EXPECT_TRUE(target->SymbolCode == "code");
    EXPECT_TRUE(target->symbolText == "text");
    EXPECT_TRUE(target->RealSymbol == "real");
    EXPECT_EQ(target->ChartCycle, 3.0);
    EXPECT_EQ(target->ChartPeriod, 4);
    EXPECT_EQ(target->TickSize, 0.25);
    EXPECT_EQ(target->dataFlag, 1);
    EXPECT_EQ(target->eventFlag, 1);
    EXPECT_EQ(target->showCandle, 0);
    EXPECT_EQ(target->hostInts[0], 8);
    EXPECT_EQ(target->hostInts[1], 9);
    EXPECT_EQ(target->hostValue, 10.0);
    EXPECT_EQ(target->baseInfo->slots[9], 11.0);
    EXPECT_EQ(target->lines->LineValue[27], 12.0);
    EXPECT_EQ(target->lines->close, 13.0);
    EXPECT_EQ(target->property->MinMaxY, 2);
    for (int code = 0; code <= 7; ++code) EXPECT_EQ(target->GetData(code, 0), code + 1.0) << code;
    EXPECT_EQ(target->eventDate[0], 9.0);
    EXPECT_EQ(target->eventValue1[0], 10.0);
    EXPECT_EQ(target->eventValue2[0], 11.0);
    EXPECT_EQ(target->eventPosition[0], -1.0);
    for (const SVector &buffer : target->insertBuffer) EXPECT_EQ(buffer.GetSize(), 1);

    target->UpdateData(SPriceData::kClose, 99.0, 0);
    target->lines->SetValue(27, 99.0);
    target->SetBaseInfoValue(9, 99.0);
    target->property->MinMaxY = 99;
  }
  EXPECT_EQ(source.GetData(SPriceData::kClose, 0), 1.0);
  EXPECT_EQ(source.lines->LineValue[27], 12.0);
  EXPECT_EQ(source.baseInfo->slots[9], 11.0);
  EXPECT_EQ(source.property->MinMaxY, 2);
}

// Required: as the property is assigned, its `ShowBaseLine` becomes 0.
TEST(PriceData, AssignmentZeroesShowBaseLine) {
  SPriceData source;
  source.property->ShowBaseLine[1] = 1;
  SPriceData target;
  target.property->ShowBaseLine[2] = 1;
  target = source;
  for (const int shown : target.property->ShowBaseLine) EXPECT_EQ(shown, 0);
  EXPECT_EQ(SPriceData(source).property->ShowBaseLine[1], 0);
}

TEST(PriceData, AssignmentResetsWhatTheSourceLacks) {
  SPriceData bare;
  bare.lines = nullptr;
  SPriceData target = Filled();
  target.lines->ShowLine[3] = 1;
  target = bare;
  ASSERT_NE(target.baseInfo, nullptr);
  EXPECT_EQ(target.baseInfo->slots[9], -1.0);
  ASSERT_NE(target.lines, nullptr);
  EXPECT_EQ(target.lines->LineValue[27], 0.0);
  EXPECT_EQ(target.lines->close, 0.0);
  EXPECT_EQ(target.lines->ShowLine[3], 1) << "clearing leaves the look";

  SPriceData without;
  without.lines = nullptr;
  without = bare;
  EXPECT_EQ(without.baseInfo, nullptr);
  EXPECT_EQ(without.lines, nullptr);
}

TEST(PriceData, SetToDefaultLeavesIdentityAndSeries) {
  SPriceData data = Filled();
  data.SetToDefault();
  EXPECT_EQ(data.dataFlag, 0);
  EXPECT_EQ(data.hostMark, 0);
  EXPECT_EQ(data.eventFlag, 0);
  EXPECT_EQ(data.showCandle, 1);
  EXPECT_EQ(data.hostInts[0], 0);
  EXPECT_EQ(data.hostInts[1], 0);
  EXPECT_EQ(data.hostValue, 0.0);
  EXPECT_EQ(data.ID, 5);
  EXPECT_EQ(data.MarketType, 7);
  EXPECT_TRUE(data.symbolText == "text");
  EXPECT_EQ(data.TickSize, 0.25);
  EXPECT_EQ(data.ChartPeriod, 4);
  EXPECT_EQ(data.close.GetSize(), 1);
  EXPECT_EQ(data.baseInfo->slots[9], 11.0);
}

TEST(PriceData, ClearDataIsForAnotherSymbol) {
  SPriceData data = Filled();
  data.ClearData();
  for (int code = 0; code <= 7; ++code) EXPECT_EQ(data.GetData(code, 0), 0.0) << code;
  EXPECT_EQ(data.close.GetSize(), 0);
  EXPECT_EQ(data.amount.GetSize(), 0);
  EXPECT_EQ(data.eventDate.GetSize(), 0);
  EXPECT_EQ(data.eventPosition.GetSize(), 0);
  for (const SVector &buffer : data.insertBuffer) EXPECT_EQ(buffer.GetSize(), 0);
  EXPECT_EQ(data.baseInfo->slots[9], -1.0);
  EXPECT_EQ(data.dataFlag, 0);
  EXPECT_EQ(data.property->MinMaxY, 0);
  EXPECT_EQ(data.ID, 5);
  EXPECT_TRUE(data.SymbolName == "name");
  EXPECT_EQ(data.TickSize, 0.25);
  EXPECT_EQ(data.ChartPeriod, 4);
  EXPECT_EQ(data.lines->LineValue[27], 12.0);

  for (const int mode : {0, 1, 3}) {
    data.property->MinMaxY = mode;
    data.ClearData();
    EXPECT_EQ(data.property->MinMaxY, mode);
  }
}

TEST(PriceData, ClearTempDataLeavesTheBars) {
  SPriceData data = Filled();
  data.ClearTempData();
  for (int code = 0; code <= 7; ++code) EXPECT_EQ(data.GetData(code, 0), code + 1.0) << code;
  for (const SVector *series : {&data.eventDate, &data.eventValue1, &data.eventValue2, &data.eventPosition}) {
    EXPECT_EQ(series->GetSize(), 0);
  }
  for (const SVector &buffer : data.insertBuffer) EXPECT_EQ(buffer.GetSize(), 0);
  EXPECT_EQ(data.dataFlag, 1);
}

TEST(PriceData, SlotsAndLinesOutsideTheirRangesAreIgnored) {
  SPriceData data;
  data.lines = nullptr;
  for (const int index : {-1, 10, INT_MIN, INT_MAX}) data.SetBaseInfoValue(index, 1.0);
  for (const int index : {-1, 28, INT_MIN, INT_MAX}) data.SetSRLineValue(index, 1.0);
  EXPECT_EQ(data.baseInfo, nullptr);
  EXPECT_EQ(data.lines, nullptr);
  data.SetBaseInfoValue(0, 1.0);
  data.SetSRLineValue(0, 2.0);
  EXPECT_EQ(data.baseInfo->slots[0], 1.0);
  EXPECT_EQ(data.baseInfo->slots[1], -1.0);
  EXPECT_EQ(data.lines->LineValue[0], 2.0);
}

TEST(PriceData, CompressDataDoesNothing) {
  SPriceData data = Filled();
  data.CompressData(5);
  EXPECT_EQ(data.close.GetSize(), 1);
  EXPECT_EQ(data.ChartCycle, 3.0);
}

TEST(PriceData, StateGoesToTheEightBarSeriesAlone) {
  SPriceData data = Filled();
  data.SetDrawRange(3, 7);
  data.SetMinMaxChanged(1);
  for (const SVector *series : {&data.close, &data.open, &data.low, &data.high, &data.volume, &data.date,
                                &data.openInterest, &data.amount}) {
    EXPECT_EQ(series->GetDrawFirst(), 3);
    EXPECT_EQ(series->GetDrawLast(), 7);
    EXPECT_EQ(series->minMaxChanged, 1);
  }
  EXPECT_EQ(data.eventDate.GetDrawLast(), 0);
  EXPECT_EQ(data.eventDate.minMaxChanged, 0);
  data.GetMax(0, 0);
  data.GetMin(0, 0);
}

TEST(PriceData, EachOverlayHasOneColorForAllItsLines) {
  SPriceData data;
  for (SIndex &overlay : data.overlays) {
    for (Color &color : overlay.LineColor) color = 1;
  }
  data.SetToDefault();
  for (int i = 0; i < 4; ++i) {
    for (const Color color : data.overlays[i].LineColor)
      EXPECT_EQ(color, CThemeManager::GetColor(347 + i)) << i;
  }
}

TEST(PriceData, OverlaysAreCopiedAndTheirSeriesCleared) {
  SPriceData data;
  data.overlays[3].AddData(4, 5.0);
  data.overlays[3].IndexName = "net";
  const SPriceData copy(data);
  data.ClearData();
  EXPECT_EQ(data.overlays[3].ExpData[4].GetSize(), 0);
  EXPECT_TRUE(data.overlays[3].IndexName == "net");
  EXPECT_EQ(copy.overlays[3].ExpData[4][0], 5.0);
  EXPECT_TRUE(copy.overlays[3].IndexName == "net");
}

TEST(PriceData, PriceExtremesFollowTheChartType) {
  SPriceData data;
  AddBar(data, 10, 15, 8, 12);
  AddBar(data, 12, 14, 5, 13);
  AddBar(data, 13, 13, 9, 14);  // a close above its high counts as well
  struct Case {
    int type;
    double max;
    double min;
    double maxOfLast;
    double minOfLast;
  };
  for (const Case &c : {Case{kCandleChart, 15, 5, 14, 9}, Case{kCloseLineChart, 14, 12, 14, 14},
                        Case{kNetChart, 15, 5, 14, 9}, Case{99, 15, 5, 14, 9}}) {
    data.property->PriceChartType = c.type;
    EXPECT_EQ(data.GetPriceMax(), c.max) << c.type;
    EXPECT_EQ(data.GetPriceMin(), c.min) << c.type;
    EXPECT_EQ(data.GetPriceMax(0, 2), c.max) << c.type;
    EXPECT_EQ(data.GetPriceMin(0, 2), c.min) << c.type;
    EXPECT_EQ(data.GetPriceMax(2, 2), c.maxOfLast) << c.type;
    EXPECT_EQ(data.GetPriceMin(2, 2), c.minOfLast) << c.type;
    EXPECT_EQ(data.GetPriceMaxTemp(0, 2), 15.0) << "whatever the type";
    EXPECT_EQ(data.GetPriceMinTemp(0, 2), 5.0) << "whatever the type";
  }
  EXPECT_EQ(SPriceData().GetPriceMax(), -1e38);
  EXPECT_EQ(SPriceData().GetPriceMin(0, 5), 1e38);
}

}  // namespace
}  // namespace trovenu
