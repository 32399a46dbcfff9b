#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "tests/backtest/small_market.h"

namespace trovenu::tests {
namespace {

using Settings = SSimulationSetting;

constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();
constexpr Bar kEntryBar = {100, 120, 50, 100};

// One trade from bar 0 on, where the close is 100, without an exit by the rules. The bars follow that one.
struct StopCase {
  const char *name;
  int side;
  void (*set)(SSimulation &test);
  std::vector<Bar> bars;
  const char *expected;
};

void ExpectStops(const std::vector<StopCase> &cases) {
  for (const StopCase &row : cases) {
    std::vector<Bar> bars = {kEntryBar};
    bars.insert(bars.end(), row.bars.begin(), row.bars.end());
    SmallMarket market(bars);
    market.Fire(row.side == kLongSide ? kLongEntry : kShortEntry, {0});
    row.set(market.test);
    EXPECT_EQ(market.RunTrades(), row.expected) << row.name;
  }
}

// The usual loss limit: 2 % of 100, so the levels are 98 and 102.
void LossLimit(SSimulation &test) { test.Setting.BlMoneyManagementStop = 1; }
void LossOfPoints(SSimulation &test) {
  LossLimit(test);
  test.Setting.ModeMoneyManagementStop = 1;
  test.Setting.MoneyManagementStop = 3;
}
void LossOfMoney(SSimulation &test) {
  LossOfPoints(test);
  test.BlPointUnit = 0;
  test.BigPointValue = 2;
}
void LossInUnknownMode(SSimulation &test) {
  LossLimit(test);
  test.Setting.ModeMoneyManagementStop = 2;
}
void LossOnClose(SSimulation &test) {
  LossLimit(test);
  test.Setting.StopLossType = 0;
}
void LossInLargeTicks(SSimulation &test) {
  LossLimit(test);
  test.TickSize = 5;
}
void LossWithoutTick(SSimulation &test) {
  LossLimit(test);
  test.TickSize = 0;
}

TEST(Stops, MoneyManagement) {
  ExpectStops({
      {"a touch of 98", 0, LossLimit, {{100, 101, 99, 99}, {99, 99, 98, 99}, {99, 99, 99, 99}}, "L0-2@98#1"},
      {"a gap fills at the open", 0, LossLimit, {{97, 97, 95, 96}}, "L0-1@97#1"},
      {"short, a touch of 102", 1, LossLimit, {{100, 101, 99, 99}, {99, 102, 98, 99}}, "S0-2@102#1"},
      {"short, a gap", 1, LossLimit, {{103, 104, 99, 99}}, "S0-1@103#1"},
      {"on the close alone", 0, LossOnClose, {{97, 99, 90, 99}, {95, 99, 94, 97}}, "L0-2@97#1"},
      {"short on the close", 1, LossOnClose, {{103, 105, 99, 101}, {99, 99, 94, 103}}, "S0-2@103#1"},
      {"98 rounds down to 95", 0, LossInLargeTicks, {{99, 99, 96, 96}, {96, 96, 94, 96}}, "L0-2@95#1"},
      {"102 rounds up to 105", 1, LossInLargeTicks, {{101, 104, 99, 99}, {101, 106, 99, 99}}, "S0-2@105#1"},
      {"3 points", 0, LossOfPoints, {{99, 99, 98, 98}, {98, 98, 97, 98}}, "L0-2@97#1"},
      {"short, 3 points", 1, LossOfPoints, {{99, 102, 98, 98}, {98, 103, 97, 98}}, "S0-2@103#1"},
      {"3 of money at 2 a point: 98.5 rounds down", 0, LossOfMoney, {{99, 99, 98, 98}}, "L0-1@98#1"},
      {"short, 101.5 rounds up", 1, LossOfMoney, {{99, 102, 98, 98}}, "S0-1@102#1"},
      {"level 0 is never reached", 0, LossInUnknownMode, {{99, 99, 1, 98}}, "L0-end@98"},
      {"short, level 0 is reached at once", 1, LossInUnknownMode, {{99, 99, 98, 98}}, "S0-1@99#1"},
      {"a tick of 0 never fires", 0, LossWithoutTick, {{99, 99, 1, 98}}, "L0-end@98"},
      {"short, a tick of 0", 1, LossWithoutTick, {{99, 900, 1, 98}}, "S0-end@98"},
  });
}

void Target(SSimulation &test) { test.Setting.BlProfitTargetStop = 1; }
void TargetOfPoints(SSimulation &test) {
  Target(test);
  test.Setting.ModeProfitTargetStop = 1;
  test.Setting.ProfitTargetStop = 3;
}
void TargetInUnknownMode(SSimulation &test) {
  Target(test);
  test.Setting.ModeProfitTargetStop = -1;
}
void TargetOnClose(SSimulation &test) {
  Target(test);
  test.Setting.StopLossType = 0;
}

TEST(Stops, ProfitTarget) {
  ExpectStops({
      {"a touch of 102", 0, Target, {{100, 101, 99, 101}, {101, 102, 99, 99}}, "L0-2@102#4"},
      {"a gap gains more", 0, Target, {{104, 105, 99, 99}}, "L0-1@104#4"},
      {"short, a touch of 98", 1, Target, {{100, 101, 99, 101}, {101, 102, 98, 99}}, "S0-2@98#4"},
      {"short, a gap", 1, Target, {{96, 105, 95, 99}}, "S0-1@96#4"},
      {"on the close alone", 0, TargetOnClose, {{100, 110, 99, 101}, {101, 103, 99, 103}}, "L0-2@103#4"},
      {"3 points", 0, TargetOfPoints, {{100, 102, 99, 101}, {101, 104, 99, 99}}, "L0-2@103#4"},
      {"short, 3 points", 1, TargetOfPoints, {{100, 102, 98, 101}, {101, 104, 96, 99}}, "S0-2@97#4"},
      {"level 0 is reached at once", 0, TargetInUnknownMode, {{99, 99, 98, 98}}, "L0-1@99#4"},
      {"short, level 0 is never reached", 1, TargetInUnknownMode, {{99, 99, 1, 98}}, "S0-end@98"},
  });
}

// Keeps half of the profit once it was 2 %.
void KeepHalf(SSimulation &test) {
  test.Setting.BlRiskTrailingStop = 1;
  test.Setting.RiskTrailingStop = 0.5;
}
void KeepHalfFromPoints(SSimulation &test) {
  KeepHalf(test);
  test.Setting.ModeRiskTrailingStopStart = 2;
  test.Setting.RiskTrailingStopStart = 11;
}
void KeepAllButPoints(SSimulation &test) {
  KeepHalf(test);
  test.Setting.ModeRiskTrailingStop = 1;
  test.Setting.RiskTrailingStop = 3;
}
void KeepInUnknownMode(SSimulation &test) {
  KeepHalf(test);
  test.Setting.ModeRiskTrailingStop = 2;
}
void KeepHalfWithLongEntry(SSimulation &test) {
  KeepHalf(test);
  test.Index.ExpData[kLongEntry][0] = 100;
  test.Setting.Position = kShortOnly;
}

TEST(Stops, RiskTrailing) {
  ExpectStops({
      // Best 100 on bar 1 itself, 110 from bar 2 on: the level is 105.
      {"half of 10",
       0,
       KeepHalf,
       {{100, 110, 90, 109}, {109, 110, 106, 107}, {107, 108, 104, 104}},
       "L0-3@105#2"},
      {"101 does not arm it", 0, KeepHalf, {{100, 101, 90, 99}, {99, 100, 50, 99}}, "L0-end@99"},
      {"it follows the best price: 120, 110",
       0,
       KeepHalf,
       {{100, 110, 90, 109}, {109, 120, 106, 119}, {119, 119, 110, 111}},
       "L0-3@110#2"},
      {"armed at 111",
       0,
       KeepHalfFromPoints,
       {{100, 110, 99, 105}, {105, 112, 90, 111}, {111, 111, 100, 100}},
       "L0-3@106#2"},
      {"110 - 3", 0, KeepAllButPoints, {{100, 110, 99, 109}, {109, 109, 106, 108}}, "L0-2@107#2"},
      {"level 0", 0, KeepInUnknownMode, {{100, 110, 99, 109}, {109, 109, 1, 108}}, "L0-end@108"},
      // Without a long entry the entry price is 0 and the level 90 * 0.5, which every bar exceeds.
      {"short leaves when it is armed", 1, KeepHalf, {{100, 100, 90, 95}, {94, 94, 91, 92}}, "S0-2@94#2"},
      {"short above the arming level", 1, KeepHalf, {{100, 100, 99, 99}, {99, 99, 99, 99}}, "S0-end@99"},
      {"short with the price of a long entry: 95",
       1,
       KeepHalfWithLongEntry,
       {{100, 100, 90, 91}, {91, 94, 91, 92}, {92, 96, 91, 92}},
       "S0-3@95#2"},
      {"short, armed at 89",
       1,
       KeepHalfFromPoints,
       {{100, 100, 90, 95}, {94, 94, 88, 92}, {92, 92, 91, 91}},
       "S0-3@92#2"},
      {"short, 90 + 3", 1, KeepAllButPoints, {{100, 100, 90, 91}, {91, 93, 91, 92}}, "S0-2@93#2"},
      {"short, level 0", 1, KeepInUnknownMode, {{100, 100, 90, 91}, {91, 93, 91, 92}}, "S0-2@91#2"},
  });
}

void Trail(SSimulation &test) {
  test.Setting.BlRiskTrailingStop2 = 1;
  test.Setting.RiskTrailingStop2 = 0.25;
}
void TrailByPoints(SSimulation &test) {
  Trail(test);
  test.Setting.ModeRiskTrailingStop2 = 1;
  test.Setting.RiskTrailingStop2 = 5;
}
void TrailInUnknownMode(SSimulation &test) {
  Trail(test);
  test.Setting.ModeRiskTrailingStop2 = 2;
}

TEST(Stops, RiskTrailing2) {
  ExpectStops({
      {"75 from the first bar on", 0, Trail, {{100, 101, 75, 90}}, "L0-1@75#3"},
      // The high of the bar itself does not count: 101 * 0.75 = 75.75, 120 * 0.75 = 90.
      {"the level rounds down",
       0,
       Trail,
       {{100, 101, 99, 100}, {100, 120, 76, 119}, {119, 119, 90, 91}},
       "L0-3@90#3"},
      {"75.75 rounds down to 75", 0, Trail, {{100, 101, 99, 100}, {100, 100, 75, 80}}, "L0-2@75#3"},
      {"5 points", 0, TrailByPoints, {{100, 104, 96, 104}, {98, 100, 97, 98}}, "L0-2@98#3"},
      {"level 0", 0, TrailInUnknownMode, {{100, 104, 1, 104}}, "L0-end@104"},
      {"short, 125", 1, Trail, {{100, 125, 99, 100}}, "S0-1@125#3"},
      {"short, 90 * 1.25 = 112.5 rounds up",
       1,
       Trail,
       {{100, 101, 90, 100}, {100, 114, 50, 99}},
       "S0-2@113#3"},
      {"short, 5 points", 1, TrailByPoints, {{100, 104, 96, 97}, {97, 101, 97, 98}}, "S0-2@101#3"},
      {"short, level 0", 1, TrailInUnknownMode, {{100, 104, 96, 97}}, "S0-1@100#3"},
  });
}

// A range below 2 % of the close two bars before, over that close and the prices of two bars.
void Quiet(SSimulation &test) {
  test.Setting.BlMinVariationStop = 1;
  test.Setting.MinVariationStopCount = 2;
}
void QuietPoints(SSimulation &test) {
  Quiet(test);
  test.Setting.ModeMinVariationStop = 1;
  test.Setting.MinVariationStop = 4;
}
void QuietInUnknownMode(SSimulation &test) {
  Quiet(test);
  test.Setting.ModeMinVariationStop = 2;
}
void QuietOfNegativeCount(SSimulation &test) {
  Quiet(test);
  test.Setting.MinVariationStopCount = -1;
}

TEST(Stops, MinVariation) {
  const Bar still = {100, 101, 100, 101};
  ExpectStops({
      // The exit at bar 4 is the first one that is looked at. Bars 1 and 2 and the close of bar 0 span 1.
      {"at the close", 0, Quiet, {still, still, still, still}, "L0-2@101#5"},
      {"short alike", 1, Quiet, {still, still, still, still}, "S0-2@101#5"},
      {"an exit at bar 3 is too early", 0, Quiet, {still, still, still}, "L0-end@101"},
      // 2 is not below 2. At bar 3 the level is 2 % of 101, which rounds up to 3.
      {"strictly less", 0, Quiet, {still, {100, 102, 100, 101}, still, still}, "L0-3@101#5"},
      {"range 3 of 4 points", 0, QuietPoints, {still, {100, 103, 100, 102}, still, still}, "L0-2@102#5"},
      {"range 4 of 4 points",
       0,
       QuietPoints,
       {{100, 104, 100, 100}, {100, 104, 100, 100}, still, still},
       "L0-4@101#5"},
      {"level 0", 0, QuietInUnknownMode, {still, still, still, still}, "L0-end@101"},
      {"a negative count", 0, QuietOfNegativeCount, {still, still, still, still}, "L0-end@101"},
  });
}

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
           ClosingCase{"no hour: 0:30 + 12", "xx:30", 1, "L3-4@104#6"},
           ClosingCase{"no time: noon", "", 1, "L3-4@104#6"},
           ClosingCase{"no time: midnight", "?", 0, ""},
       }) {
    SmallMarket market({{100, 100, 100, 100},
                        {101, 101, 101, 101},
                        {102, 102, 102, 102},
                        {103, 103, 103, 103},
                        {104, 104, 104, 104},
                        {105, 105, 105, 105}});
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

// A loss limit of 98 and a target of 102, the rules leaving at bar 3.
TEST(Stops, TheEarliestBarWinsAndOfOneBarTheLastStop) {
  struct Case {
    const char *name;
    Bar first;
    Bar second;
    Bar third;
    const char *expected;
  };
  const Bar calm = {100, 101, 99, 100};
  for (const Case &row : {
           Case{"both on one bar: the target", {100, 102, 98, 100}, calm, calm, "L0-1@102#4"},
           Case{"the limit a bar earlier", {100, 101, 98, 100}, {100, 102, 99, 100}, calm, "L0-1@98#1"},
           Case{"the target a bar earlier", {100, 102, 99, 100}, {100, 101, 98, 100}, calm, "L0-1@102#4"},
           Case{"a stop on the bar of the rule", calm, calm, {100, 101, 97, 100}, "L0-3@98#1"},
           Case{"the rule before all stops", calm, calm, calm, "L0-3@100"},
       }) {
    SmallMarket market({kEntryBar, row.first, row.second, row.third, {50, 150, 50, 100}});
    market.Fire(kLongEntry, {0});
    market.Fire(kLongExit, {3});
    LossLimit(market.test);
    Target(market.test);
    EXPECT_EQ(market.RunTrades(), row.expected) << row.name;
  }
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

TEST(Stops, TicksRoundUpAndDown) {
  SSimulation test;
  test.TickSize = 0.25;
  EXPECT_EQ(test.RoundTickSize(0, 10.3), 10.5);
  EXPECT_EQ(test.RoundTickSize(1, 10.3), 10.25);
  EXPECT_EQ(test.RoundTickSize(2, 10.3), 10.3);
  EXPECT_EQ(test.RoundTickSize(0, 10.25), 10.25);
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
            (test->*stop)(nullptr, side, entry, &bar, &price);
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
}

}  // namespace
}  // namespace trovenu::tests
