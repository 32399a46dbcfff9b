#include <gtest/gtest.h>

#include <fstream>
#include <limits>
#include <sstream>
#include <string>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

#include "tests/backtest/small_market.h"
#include "trovenu/backtest/setting_fields.h"

namespace trovenu::tests {
namespace {

constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();
constexpr Bar kEntryBar = {100, 120, 50, 100};

// Sets a member by its name.
void Set(SSimulation &test, const std::string &name, double value) {
  if (name == "TickSize") test.TickSize = value;
  if (name == "BlPointUnit") test.BlPointUnit = static_cast<int>(value);
  if (name == "BigPointValue") test.BigPointValue = value;
  if (name == "LongExitAt") test.Index.ExpData[kLongExit][static_cast<int>(value)] = 100.0;
  if (name == "LongEntry") test.Index.ExpData[kLongEntry][0] = value;
  for (const Field<SSimulationSetting> &field : IniSettingFields()) {
    if (name != field.key) continue;
    std::visit(
        [&](auto member) {
          using Value = std::remove_reference_t<decltype(test.Setting.*member)>;
          if constexpr (std::is_arithmetic_v<Value>) test.Setting.*member = static_cast<Value>(value);
        },
        field.member);
  }
}

TEST(Stops, CaseFile) {
  std::ifstream file(TROVENU_SOURCE_DIR "/tests/cases/backtest/stops.txt");
  std::vector<std::pair<std::string, double>> settings;
  int cases = 0;
  for (std::string line; std::getline(file, line);) {
    std::istringstream words(line);
    std::string word;
    words >> word;
    if (word == "set") {
      settings.clear();
      while (words >> word) {
        const std::size_t equals = word.find('=');
        settings.emplace_back(word.substr(0, equals), std::stod(word.substr(equals + 1)));
      }
    }
    if (word != "long" && word != "short") continue;
    std::vector<Bar> bars = {kEntryBar};
    const bool isLong = word == "long";
    do {
      Bar bar = {};
      words >> bar.open >> bar.high >> bar.low >> bar.close >> word;
      bars.push_back(bar);
    } while (word == "|");
    SmallMarket market(bars);
    market.Fire(isLong ? kLongEntry : kShortEntry, {0});
    market.test.Setting.Position = isLong ? kLongOnly : kShortOnly;
    for (const auto &[name, value] : settings) Set(market.test, name, value);
    EXPECT_EQ(market.RunTrades(), word) << line;
    ++cases;
  }
  EXPECT_GT(cases, 60);
}

// A loss limit of 98.
void LossLimit(SSimulation &test) { test.Setting.BlMoneyManagementStop = 1; }

struct ClosingCase {
  const char *name;
  const char *text;
  int mode;
  const char *expected;
};

TEST(Stops, DayTrading) {
  // Bars at 14:00, 14:29, 14:30 and on the next day at 9:00, 12:30 and 14:31.
  const double dates[] = {20240102140000, 20240102142900, 20240102143000,
                          20240103090000, 20240103123000, 20240103143100};
  for (const ClosingCase &row : {
           ClosingCase{"the bar at 14:30 is the first one to leave on, and no entry", "02:30", 1,
                       "L0-2@102#6 L3-5@105#6"},
           ClosingCase{"in the morning every bar is too late but none", "09:00", 0, ""},
           ClosingCase{"over midnight it waits for the time of day", "14:31", 0, "L0-5@105#6"},
           ClosingCase{"90 minutes are an hour and a half", "13:90", 0, "L0-2@102#6 L3-5@105#6"},
           ClosingCase{"two characters each", "14:2999", 0, "L0-1@101#6 L3-5@105#6"},
           ClosingCase{"no hour: 0:30 + 12", "xx:30", 1, "L3-4@104#6"},
           ClosingCase{"no time: noon", "", 1, "L3-4@104#6"},
           ClosingCase{"no time: midnight", "?", 0, ""},
       }) {
    std::vector<Bar> bars;
    for (double price = 100; price < 106; ++price) bars.push_back({price, price, price, price});
    SmallMarket market(bars);
    for (int i = 0; i < 6; ++i) market.date[i] = dates[i];
    market.Fire(kLongEntry, {0, 2, 3, 4});
    market.test.Setting.BlDayTradingStop = 1;
    market.test.Setting.DayTradingStop = row.text;
    market.test.Setting.ModeDayTradingStop = row.mode;
    EXPECT_EQ(market.RunTrades(), row.expected) << row.name;
  }
}

TEST(Stops, ClosingTimeCancelsEntriesOfASideThatIsNotTraded) {
  SmallMarket market({kEntryBar, kEntryBar});
  market.Fire(kShortEntry, {0});
  market.test.Setting.Position = kLongOnly;
  market.test.Setting.BlDayTradingStop = 1;
  market.test.Setting.ModeDayTradingStop = 0;
  market.test.Setting.DayTradingStop = "00:00";
  market.Run();
  EXPECT_EQ(market.test.Index.ExpData[kShortEntry][0], 0.0);
}

TEST(Stops, TheWalkGoesOnBehindTheStop) {
  const Bar calm = {100, 101, 99, 100};
  const Bar fall = {100, 101, 98, 100};
  SmallMarket market({calm, calm, fall, calm, fall, calm, calm, fall});
  // Bar 1 lies in the first trade, bar 2 is its exit; bar 3 begins the second one. The exit of the rules at
  // bar 6 closes the third one.
  market.Fire(kLongEntry, {0, 1, 2, 3, 5});
  market.Fire(kLongExit, {6});
  LossLimit(market.test);
  EXPECT_EQ(market.RunTrades(), "L0-2@98#1 L3-4@98#1 L5-6@100");
  // Without an entry left, the exit of the rules falls in a flat stretch and goes.
  market.Fire(kLongEntry, {0});
  market.test.Index.ExpData[kLongEntry][3] = market.test.Index.ExpData[kLongEntry][5] = 0.0;
  EXPECT_EQ(market.RunTrades(), "L0-2@98#1");
  EXPECT_EQ(market.test.Index.ExpData[kLongExit][6], 0.0);
}

TEST(Stops, FlagsOfTheLastTwoBars) {
  const Bar calm = {100, 101, 99, 100};
  const Bar fall = {100, 101, 98, 100};
  const Bar rise = {100, 102, 99, 100};
  SmallMarket market({calm, calm, rise, fall});
  market.Fire(kLongEntry, {0});
  market.Fire(kShortEntry, {0});
  LossLimit(market.test);
  EXPECT_EQ(market.RunTrades(), "L0-3@98#1 S0-2@102#1");
  EXPECT_EQ(market.test.StopOnLastBar[kLongExit], 1);
  EXPECT_EQ(market.test.StopOnBarBeforeLast[kShortExit], 1);
  EXPECT_EQ(market.test.StopOnLastBar[kShortExit] + market.test.StopOnBarBeforeLast[kLongExit], 0);
}

// No exit rule, a constant one and one that ends early, with a signal below its start index.
TEST(Stops, ExitSeriesThatAreTooShortAreLengthened) {
  const Bar calm = {100, 101, 99, 100};
  SVector early(2);
  early[1] = 100.0;
  early.SetStartIndex(2);
  const std::pair<SVector, const char *> cases[] = {{SVector(), "L0-2@98#1 L3-4@98#1"},
                                                    {SVector(2), "L0-2@98#1 L3-4@98#1"},
                                                    {SVector(5.0), "L0-2@98#1 L3-4@98#1"},
                                                    {early, "L0-1@100 L3-4@98#1"}};
  for (const auto &[exits, expected] : cases) {
    SmallMarket market({calm, calm, {100, 101, 98, 100}, calm, {100, 101, 98, 100}, calm});
    market.Fire(kLongEntry, {0, 3});
    market.test.Index.ExpData[kLongExit] = exits;
    LossLimit(market.test);
    EXPECT_EQ(market.RunTrades(), expected);
    EXPECT_EQ(market.test.Index.ExpData[kLongExit].GetSize(), 6);
  }
}

TEST(Stops, NaNIsNoSignal) {
  SmallMarket market({kEntryBar, kEntryBar, kEntryBar, {100, 100, 98, 99}});
  market.Fire(kLongEntry, {1});
  market.test.Index.ExpData[kLongEntry][0] = kNotANumber;
  market.test.Index.ExpData[kLongExit][2] = kNotANumber;
  EXPECT_EQ(market.test.GetResult(kLongEntry, 0), 0.0);
  EXPECT_EQ(market.RunTrades(), "L1-end@99");
}

TEST(Stops, AnIndexThatIsGivenChangesAndItsRulesAreKept) {
  SmallMarket market({kEntryBar, {97, 97, 95, 96}});
  SIndex given("given", kSystemIndex);
  given.ExpData[kLongEntry] = SVector(2);
  given.ExpData[kLongEntry][0] = 100.0;
  given.ExpData[kLongExit] = SVector(2);
  LossLimit(market.test);
  market.test.BigPointValue = 0.0;
  market.test.ProcessStop(&given);
  EXPECT_EQ(given.ExpData[kLongExit][1], kStopScale + 97);
  EXPECT_STREQ(market.test.Index.IndexName.c_str(), "given");
  EXPECT_EQ(market.test.Index.ExpData[kLongExit][1], 0.0);
  EXPECT_EQ(market.test.BigPointValue, 1.0);
}

TEST(Stops, RequiredMaxBarIsForHostsAlone) {
  const Bar calm = {100, 101, 99, 100};
  SmallMarket market({calm, calm, {100, 101, 99, 101}, calm});
  market.Fire(kLongEntry, {0});
  market.test.Setting.BlMaxBarStop = 1;
  market.test.Setting.MaxBarStop = 2;
  EXPECT_EQ(market.RunTrades(), "L0-end@100");
  int bar = 3;
  double price = 0.0;
  EXPECT_EQ(market.test.MaxBarStop(nullptr, 0, 0, &bar, &price), 0);
  EXPECT_EQ(bar, 2);
  EXPECT_EQ(price, 101.0);
  EXPECT_EQ(market.test.MaxBarStop(nullptr, 0, 0, &bar, &price), -1);
}

TEST(Stops, QuietForNoBarsLeavesAtTheEntry) {
  SmallMarket market({kEntryBar, kEntryBar, kEntryBar});
  market.test.Setting.MinVariationStopCount = 0;
  int bar = 2;
  double price = 0.0;
  EXPECT_EQ(market.test.MinVariationStop(nullptr, kLongSide, 0, &bar, &price), 0);
  EXPECT_EQ(bar, 0);
  EXPECT_EQ(price, 100.0);
  bar = 2;
  market.test.Setting.ModeMinVariationStop = 2;
  EXPECT_EQ(market.test.MinVariationStop(nullptr, kLongSide, 0, &bar, &price), -1);
}

TEST(Stops, AnyArgumentsAreSafe) {
  SmallMarket market({kEntryBar, kEntryBar, kEntryBar});
  SSimulation fresh;
  constexpr int kLeast = std::numeric_limits<int>::min();
  constexpr int kMost = std::numeric_limits<int>::max();
  for (SSimulation *test : {&market.test, &fresh}) {
    test->Setting.MinVariationStopCount = kMost;
    for (const auto stop :
         {&SSimulation::MoneyManagementStop, &SSimulation::RiskTrailingStop, &SSimulation::RiskTrailingStop2,
          &SSimulation::ProfitTargetStop, &SSimulation::MinVariationStop, &SSimulation::DayTradingStop,
          &SSimulation::MaxBarStop}) {
      double price = 0.0;
      for (const int side : {-1, 0, 1, 2}) {
        for (const int entry : {kLeast, -1, 0, 2, 3, kMost}) {
          for (const int exit : {kLeast, -1, 0, 3, kMost}) {
            int bar = exit;
            const int moved = (test->*stop)(nullptr, side, entry, &bar, &price);
            const bool isTrade = test->Close != nullptr && side >= 0 && side <= 1 && entry >= 0 &&
                                 entry < test->Close->GetSize();
            EXPECT_TRUE(moved == -1 || isTrade || stop == &SSimulation::MaxBarStop);
            EXPECT_EQ((test->*stop)(nullptr, side, entry, nullptr, &price), -1);
            EXPECT_EQ((test->*stop)(nullptr, side, entry, &bar, nullptr), -1);
          }
        }
      }
    }
    test->ProcessStop(nullptr);
    test->SetHistory();
    test->SortHistory();
  }
  EXPECT_EQ(fresh.GetStopLossValue(1, kMost, 5.0), 5.0);
  EXPECT_EQ(fresh.GetExitCompValue(9, kLeast), 0.0);
  fresh.TickSize = 0.25;
  EXPECT_EQ(fresh.RoundTickSize(2, 10.3), 10.3);
}

}  // namespace
}  // namespace trovenu::tests
