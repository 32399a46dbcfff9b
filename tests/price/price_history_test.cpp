#include <gtest/gtest.h>

#include <climits>
#include <vector>

#include "trovenu/price/price_data.h"

namespace trovenu {
namespace {

std::vector<double> Values(const SVector &series) {
  std::vector<double> values;
  for (int i = 0; i < series.GetSize(); ++i) values.push_back(series[i]);
  return values;
}

using Numbers = std::vector<double>;

// The series of the codes 0 to 10.
std::vector<SVector *> SeriesOf(SPriceData &data) {
  return {&data.close,     &data.open,        &data.high,       &data.low,
          &data.date,      &data.volume,      &data.amount,     &data.openInterest,
          &data.eventDate, &data.eventValue1, &data.eventValue2};
}

TEST(PriceHistory, EachCodeHasItsSeries) {
  SPriceData data;
  for (int code = 0; code <= 10; ++code) data.AddData(code, 100.0 + code);
  const std::vector<SVector *> series = SeriesOf(data);
  for (int code = 0; code <= 10; ++code) {
    EXPECT_EQ(Values(*series[static_cast<std::size_t>(code)]), Numbers{100.0 + code}) << code;
  }
  for (int code = 0; code <= 7; ++code) EXPECT_EQ(data.GetData(code, 0), 100.0 + code) << code;
  for (const int code : {8, 9, 10, 11, -1, INT_MIN, INT_MAX}) EXPECT_EQ(data.GetData(code, 0), 0.0) << code;
}

TEST(PriceHistory, CodesOutsideTheRangeChangeNothing) {
  SPriceData data;
  for (const int code : {11, -1, INT_MIN, INT_MAX}) {
    data.AddData(code, 1.0);
    data.InsertData(code, 1.0);
    data.UpdateData(code, 1.0, 0);
  }
  for (const SVector *series : SeriesOf(data)) EXPECT_EQ(series->GetSize(), 0);
  for (const SVector &buffer : data.insertBuffer) EXPECT_EQ(buffer.GetSize(), 0);
  EXPECT_EQ(data.dataFlag, 0);
  EXPECT_EQ(data.eventFlag, 0);
}

TEST(PriceHistory, OnlyCloseAndEventsSetAFlag) {
  for (int code = 0; code <= 10; ++code) {
    SPriceData added;
    added.AddData(code, 1.0);
    SPriceData inserted;
    inserted.InsertData(code, 1.0);
    for (const SPriceData *data : {&added, &inserted}) {
      EXPECT_EQ(data->dataFlag, code == 0 ? 1 : 0) << code;
      EXPECT_EQ(data->eventFlag, code >= 8 ? 1 : 0) << code;
    }
  }
}

TEST(PriceHistory, BarsGrowInBlocks) {
  SPriceData data;
  for (int i = 0; i < 1001; ++i) data.AddData(SPriceData::kClose, i);
  EXPECT_EQ(data.close.GetSize(), 1001);
  EXPECT_EQ(data.close.capacity, 2000);
  EXPECT_EQ(data.GetData(0, 1000), 0.0);
  EXPECT_EQ(data.GetData(0, 1), 999.0);
}

TEST(PriceHistory, InsertBuffersHaveTheirOwnOrder) {
  SPriceData data;
  for (int code = 0; code <= 10; ++code) data.InsertData(code, code);
  // Close, open, high, low, volume, date, open interest, amount, events.
  const int codes[] = {0, 1, 2, 3, 5, 4, 7, 6, 8, 9, 10};
  for (int i = 0; i < 11; ++i) EXPECT_EQ(Values(data.insertBuffer[i]), Numbers{double(codes[i])}) << i;
}

TEST(PriceHistory, InsertDataEndPutsTheBatchInFront) {
  SPriceData data;
  for (int code = 0; code <= 10; ++code) {
    data.AddData(code, 30.0 + code);
    data.InsertData(code, 10.0 + code);
    data.InsertData(code, 20.0 + code);
  }
  data.eventFlag = 0;
  data.InsertDataEnd();
  EXPECT_EQ(data.eventFlag, 1);
  const std::vector<SVector *> series = SeriesOf(data);
  for (int code = 0; code <= 10; ++code) {
    EXPECT_EQ(Values(*series[static_cast<std::size_t>(code)]),
              (Numbers{10.0 + code, 20.0 + code, 30.0 + code}))
        << code;
  }
  for (const SVector &buffer : data.insertBuffer) EXPECT_EQ(buffer.GetSize(), 0);

  data.InsertDataEnd();
  EXPECT_EQ(data.close.GetSize(), 3);
  data.InsertData(SPriceData::kClose, 5.0);
  data.InsertDataEnd();
  EXPECT_EQ(Values(data.close), (Numbers{5.0, 10.0, 20.0, 30.0}));
  EXPECT_EQ(data.open.GetSize(), 3);
}

TEST(PriceHistory, UpdateDataCountsFromTheNewestBar) {
  SPriceData data;
  for (int i = 0; i < 3; ++i) {
    for (int code = 0; code <= 10; ++code) data.AddData(code, 10.0 * i);
  }
  data.dataFlag = data.eventFlag = 0;
  for (int code = 0; code <= 7; ++code) {
    data.UpdateData(code, 1.0, 0);
    data.UpdateData(code, 2.0, 2);
    for (const int back : {3, -1, INT_MIN, INT_MAX}) data.UpdateData(code, 9.0, back);
  }
  for (int code = 8; code <= 10; ++code) data.UpdateData(code, 9.0, 0);
  const std::vector<SVector *> series = SeriesOf(data);
  for (int code = 0; code <= 10; ++code) {
    const Numbers expected = code <= 7 ? Numbers{2.0, 10.0, 1.0} : Numbers{0.0, 10.0, 20.0};
    EXPECT_EQ(Values(*series[static_cast<std::size_t>(code)]), expected) << code;
  }
  EXPECT_EQ(data.dataFlag, 0);
  EXPECT_EQ(data.eventFlag, 0);
  for (const int back : {3, -1, INT_MIN, INT_MAX}) EXPECT_EQ(data.GetData(0, back), 0.0) << back;
}

TEST(PriceHistory, UpdateDataLeavesWhatTheSeriesRemember) {
  SPriceData data;
  data.AddData(SPriceData::kClose, 10.0);
  data.AddData(SPriceData::kHigh, 11.0);
  EXPECT_EQ(data.GetPriceMaxTemp(0, 0), 11.0);
  data.UpdateData(SPriceData::kHigh, 20.0, 0);
  EXPECT_EQ(data.high.minMaxChanged, 0);
  EXPECT_EQ(data.GetPriceMaxTemp(0, 0), 11.0);
  EXPECT_EQ(data.GetPriceMax(0, 0), 20.0);
  data.InitTemp();
  EXPECT_EQ(data.GetPriceMaxTemp(0, 0), 20.0);
}

struct Events {
  Numbers bars;
  Numbers events;
  Numbers positions;
};

TEST(PriceHistory, CalcCorrectedPriceFindsTheBarOfEachEvent) {
  const Events cases[] = {
      {{20240102, 20240103, 20240105}, {20240102, 20240105}, {0, 2}},
      // Two events on one day, and one on a day without a bar: the search starts anew behind it.
      {{20240102, 20240103, 20240105}, {20240103, 20240103, 20240104, 20240102}, {1, 1, -1, 0}},
      // Out of order, the search goes on from the hit before.
      {{20240102, 20240103, 20240105}, {20240105, 20240102, 20240103}, {2, -1, 1}},
      {{20240102}, {20230101, 20250101, 20240102}, {-1, -1, 0}},
      {{}, {20240102}, {-1}},
      {{20240102}, {}, {}},
  };
  for (const Events &c : cases) {
    SPriceData data;
    for (const double bar : c.bars) data.AddData(SPriceData::kDate, bar);
    for (const double event : c.events) data.AddData(SPriceData::kEventDate, event);
    data.eventPosition.Add(99.0);
    data.CalcCorrectedPrice(1, 2);
    EXPECT_EQ(Values(data.eventPosition), c.positions);
    EXPECT_EQ(Values(data.date), c.bars);
  }
}

TEST(PriceHistory, ANegativeResultIsHandedToTheNextSearch) {
  SPriceData data;
  for (const double bar : {1.0, 2.0, 3.0}) data.AddData(SPriceData::kDate, bar);
  for (const double event : {3.0, 5.0, 1.0}) data.AddData(SPriceData::kEventDate, event);
  data.CalcCorrectedPrice(0, 0);
  EXPECT_EQ(Values(data.eventPosition), (Numbers{2.0, -1.0, 0.0}));
}

}  // namespace
}  // namespace trovenu
