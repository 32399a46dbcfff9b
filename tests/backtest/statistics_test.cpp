#include <gtest/gtest.h>

#include <filesystem>

#include "tests/backtest/both_sides.h"
#include "tests/platform/temp_folder.h"
#include "trovenu/platform/platform.h"

namespace trovenu::tests {

namespace {

class StatisticsTest : public testing::Test {
 protected:
  StatisticsTest() { std::filesystem::current_path(folder.Path()); }
  ~StatisticsTest() override { std::filesystem::current_path(before); }

  // The file with "\n" for the ends of its lines.
  std::string Excursions() {
    market.test.CalcStatics();
    std::string content = folder.Content("mfe.csv");
    const std::string end = kLineEnd;
    for (std::size_t at = 0; (at = content.find(end, at)) != content.npos; ++at) {
      content.replace(at, end.size(), "\n");
    }
    return content;
  }

  const std::filesystem::path before = std::filesystem::current_path();
  const TempFolder folder;
  SmallMarket market{FlatBars({10, 12, 11, 15, 14, 13})};
};

TEST_F(StatisticsTest, TradesOfBothSidesLongOnesFirst) {
  EXPECT_EQ(Excursions(), "seq, profit, mfe, mae\n");
  for (int i = 0; i < market.close.GetSize(); ++i) {
    market.high[i] += 1;
    market.low[i] -= 2;
  }
  SSimulationSetting &setting = market.test.Setting;
  setting.EntryCommission = 0.5;
  setting.ExitCommission = 0.25;
  setting.ModeEntryCommission = setting.ModeExitCommission = 1;
  market.Fire(kLongEntry, {1, 4});
  market.test.Index.ExpData[kLongExit][3] = kStopScale + 9.0;
  market.Fire(kShortEntry, {2});
  market.Fire(kShortExit, {4});
  // Long from 12.5: at most 16, at least 9, left at the close of 15 although the stop has filled at 9; each
  // less 0.25. Long from 14.5 to the last close of 13, between 14 and 11. Short from 10.5 to 14, between 16
  // and its own 11.
  EXPECT_EQ(Excursions(),
            "seq, profit, mfe, mae\n"
            "0, 2.250000, 3.250000, -3.750000\n"
            "1, -1.750000, -0.750000, -3.750000\n"
            "2, -3.750000, -0.750000, -5.750000\n");
  setting.Position = kShortOnly;
  EXPECT_EQ(Excursions(), "seq, profit, mfe, mae\n0, -3.750000, -0.750000, -5.750000\n");
}

TEST_F(StatisticsTest, AFolderThatTakesNoFileLeavesThingsAsTheyWere) {
  std::filesystem::create_directory("mfe.csv");
  market.Fire(kLongEntry, {1});
  market.test.CalcStatics();
  EXPECT_TRUE(std::filesystem::is_directory("mfe.csv"));
  EXPECT_TRUE(FilesIn(".").empty());
}

}  // namespace

}  // namespace trovenu::tests
