#include <gtest/gtest.h>

#include <climits>
#include <vector>

#include "trovenu/price/price_data.h"

namespace trovenu {
namespace {

using Numbers = std::vector<double>;

Numbers Values(const SVector &series) {
  Numbers values;
  for (int i = 0; i < series.GetSize(); ++i) values.push_back(series[i]);
  return values;
}

TEST(PriceHistory, EachCodeHasItsSeriesAndBatchesGoInFront) {
  SPriceData data;
  for (int code = 0; code <= 10; ++code) {
    data.AddData(code, 30.0 + code);
    data.InsertData(code, 10.0 + code);
    data.InsertData(code, 20.0 + code);
  }
  for (const int code : {11, -1, INT_MIN, INT_MAX}) {
    data.AddData(code, 1.0);
    data.InsertData(code, 1.0);
    data.UpdateData(code, 1.0, 0);
    EXPECT_EQ(data.GetData(code, 0), 0.0);
  }
  data.InsertDataEnd();
  data.InsertDataEnd();
  const SVector *const series[] = {&data.close,     &data.open,        &data.high,       &data.low,
                                   &data.date,      &data.volume,      &data.amount,     &data.openInterest,
                                   &data.eventDate, &data.eventValue1, &data.eventValue2};
  for (int code = 0; code <= 10; ++code) {
    EXPECT_EQ(Values(*series[code]), (Numbers{10.0 + code, 20.0 + code, 30.0 + code})) << code;
    // Counted from the newest bar; events are not updated.
    data.UpdateData(code, 1.0, 0);
    data.UpdateData(code, 2.0, 2);
    for (const int back : {3, -1, INT_MIN, INT_MAX}) data.UpdateData(code, 9.0, back);
    EXPECT_EQ(Values(*series[code]),
              code <= 7 ? (Numbers{2, 20.0 + code, 1}) : (Numbers{10.0 + code, 20.0 + code, 30.0 + code}));
    EXPECT_EQ(data.GetData(code, 2), code <= 7 ? 2.0 : 0.0);
  }
}

TEST(PriceHistory, OnlyCloseAndEventsSetAFlag) {
  // Buffers: close, open, low, high, volume, date, open interest, amount, events.
  const int buffers[] = {0, 1, 3, 2, 5, 4, 7, 6, 8, 9, 10};
  for (int code = 0; code <= 10; ++code) {
    SPriceData added;
    added.AddData(code, 1.0);
    SPriceData inserted;
    inserted.InsertData(code, 1.0);
    EXPECT_EQ(inserted.insertBuffer[buffers[code]].GetSize(), 1) << code;
    for (const SPriceData *data : {&added, &inserted}) {
      EXPECT_EQ(data->dataFlag, code == 0 ? 1 : 0) << code;
      EXPECT_EQ(data->eventFlag, code >= 8 ? 1 : 0) << code;
    }
    inserted.InsertDataEnd();
    EXPECT_EQ(inserted.eventFlag, 1);
  }
}

// Required: what the series remember of their extremes stays as it is; and `CompressData` does nothing.
TEST(PriceHistory, UpdateDataLeavesWhatTheSeriesRemember) {
  SPriceData data;
  for (const int code : {SPriceData::kClose, SPriceData::kHigh}) data.AddData(code, 10.0);
  EXPECT_EQ(data.GetPriceMaxTemp(0, 0), 10.0);
  data.dataFlag = 0;
  data.UpdateData(SPriceData::kClose, 20.0, 0);
  data.CompressData(2);
  EXPECT_EQ(data.dataFlag, 0);
  EXPECT_EQ(data.GetPriceMaxTemp(0, 0), 10.0);
  EXPECT_EQ(data.GetPriceMax(0, 0), 20.0);
  data.InitTemp();
  EXPECT_EQ(data.GetPriceMaxTemp(0, 0), 20.0);
}

TEST(PriceHistory, CalcCorrectedPriceFindsTheBarOfEachEvent) {
  struct {
    Numbers bars, events, positions;
  } const cases[] = {
      {{20240102, 20240103, 20240105}, {20240102, 20240105}, {0, 2}},
      // Two events on one day; one without a bar hands its negative result on, so the search starts anew.
      {{20240102, 20240103, 20240105}, {20240103, 20240103, 20240104, 20240102}, {1, 1, -1, 0}},
      // Out of order, the search goes on from the hit before.
      {{20240102, 20240103, 20240105}, {20240105, 20240102, 20240103}, {2, -1, 1}},
      {{20240102}, {20230101, 20250101, 20240102}, {-1, -1, 0}},
      {{}, {20240102}, {-1}},
  };
  for (const auto &c : cases) {
    SPriceData data;
    for (const double bar : c.bars) data.AddData(SPriceData::kDate, bar);
    for (const double event : c.events) data.AddData(SPriceData::kEventDate, event);
    data.CalcCorrectedPrice(1, 2);
    EXPECT_EQ(Values(data.eventPosition), c.positions);
  }
}

}  // namespace
}  // namespace trovenu
