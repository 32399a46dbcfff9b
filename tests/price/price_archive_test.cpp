#include <gtest/gtest.h>

#include "tests/price/stored_values.h"
#include "trovenu/price/price_data.h"
#include "trovenu/support/korean.h"

namespace trovenu {
namespace {

using tests::KeysOf;
using tests::Renumbered;
using tests::StoredBy;
using tests::StoredValue;
using tests::ValuesOf;

constexpr const char *kKeys =
    "ID MarketType SymbolName SymbolCode RealSymbol ChartCycle ChartPeriod TickSize";

TEST(PriceArchive, StoresKeysInOrderUnderTheirCategories) {
  const SPriceData data;
  std::vector<StoredValue> values = StoredBy(data, 3);
  EXPECT_EQ(KeysOf(values, "PriceData3"), kKeys);
  EXPECT_EQ(KeysOf(values, "SSRLines3").substr(0, 27), "ShowAlarmLine ShowAlarmDlg ");
  EXPECT_EQ(KeysOf(values, "PriceProperty3").substr(0, 27), "BlUse128Scale ShowBaseLine0");
  EXPECT_EQ(values.front().category, "PriceData3");
  EXPECT_EQ(values.back().category, "PriceProperty3");

  values = StoredBy(data, -1);
  EXPECT_EQ(KeysOf(values, "PriceData"), kKeys);
  EXPECT_NE(KeysOf(values, "SSRLines"), "");
  EXPECT_NE(KeysOf(values, "PriceProperty"), "");
}

TEST(PriceArchive, EveryKeyComesBack) {
  CKqArchive archive = Renumbered(StoredBy(SPriceData(), 0));
  SPriceData data;
  data.lines = nullptr;
  data.Load(archive, 0);
  EXPECT_EQ(StoredBy(data, 0), ValuesOf(archive));
}

TEST(PriceArchive, MissingKeysGiveTheDefaults) {
  CKqArchive full = Renumbered(StoredBy(SPriceData(), 0));
  SPriceData data;
  data.Load(full, 0);
  CKqArchive empty;
  data.Load(empty, 0);
  EXPECT_EQ(StoredBy(data, 0), StoredBy(SPriceData(), 0));
  EXPECT_EQ(data.ID, -1);
  EXPECT_EQ(data.ChartPeriod, 2);
  EXPECT_EQ(data.ChartCycle, 1.0);
  EXPECT_EQ(data.TickSize, 1.0);
}

TEST(PriceArchive, KeepsWhatAChartIsAndNotItsData) {
  SPriceData data;
  data.AddData(SPriceData::kClose, 5.0);
  data.AddData(SPriceData::kEventDate, 20240102.0);
  data.SetBaseInfoValue(0, 7.0);
  data.symbolText = "text";
  data.hostMark = 1;
  data.hostValue = 2.0;
  data.SymbolName = "한국전자"_kr;
  data.TickSize = 0.05;
  data.ID = 4;
  CKqArchive archive;
  data.Store(archive, 0);
  SPriceData loaded;
  loaded.Load(archive, 0);
  EXPECT_TRUE(loaded.SymbolName == "한국전자"_kr);
  EXPECT_EQ(loaded.TickSize, 0.05);
  EXPECT_EQ(loaded.ID, 4);
  EXPECT_EQ(loaded.close.GetSize(), 0);
  EXPECT_EQ(loaded.eventDate.GetSize(), 0);
  EXPECT_EQ(loaded.baseInfo, nullptr);
  EXPECT_EQ(loaded.symbolText.Length(), 0);
  EXPECT_EQ(loaded.hostMark, 0);
  EXPECT_EQ(loaded.hostValue, 0.0);
  EXPECT_EQ(loaded.dataFlag, 0);
}

TEST(PriceArchive, MissingLinesAreNotStored) {
  SPriceData data;
  data.lines = nullptr;
  const std::vector<StoredValue> values = StoredBy(data, 0);
  EXPECT_EQ(KeysOf(values, "SSRLines0"), "");
  EXPECT_EQ(KeysOf(values, "PriceData0"), kKeys);
}

TEST(PriceArchive, ThemeLeavesTheLinesOut) {
  CKqArchive archive = Renumbered(StoredBy(SPriceData(), 2));
  SPriceData data;
  data.LoadTheme(archive, 2);
  EXPECT_TRUE(*data.lines == SSRLines());
  EXPECT_EQ(data.ID, 1001);

  CKqArchive theme;
  data.StoreTheme(theme, 2);
  const std::vector<StoredValue> values = ValuesOf(theme);
  EXPECT_EQ(KeysOf(values, "PriceData2"), kKeys);
  EXPECT_EQ(KeysOf(values, "SSRLines2"), "");
  EXPECT_EQ(KeysOf(values, "PriceProperty2"), KeysOf(ValuesOf(archive), "PriceProperty2"));
  for (const StoredValue &stored : values) {
    EXPECT_TRUE(stored.key != "LineCompare" || stored.value != "0");
  }

  SPriceData bare;
  bare.lines = nullptr;
  bare.LoadTheme(archive, 2);
  EXPECT_EQ(bare.lines, nullptr);
}

}  // namespace
}  // namespace trovenu
