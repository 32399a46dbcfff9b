// Parameters and data that no user means.

#include <gtest/gtest.h>

#include "tests/chart_types/chart_case.h"
#include "trovenu/chart_types/turning_points.h"

namespace trovenu::tests {
namespace {

// The series of a list chart are alike in length, and nothing reaches beyond the limit.
void ExpectSound(const SIndex &index, const std::string &calculator) {
  for (const SVector &series : index.ExpData) EXPECT_LE(series.GetSize(), kMostSteps);
  const bool isList = calculator == "CalcPnF" || calculator == "CalcKagi" || calculator == "CalcRenko" ||
                      calculator == "CalcThreeLineBreak" || calculator == "CalcZigZagOrgLine";
  for (int i = 1; isList && i < 4; ++i) EXPECT_EQ(index.ExpData[i].GetSize(), index.ExpData[0].GetSize());
}

TEST(HostileCharts, AnyTextAndAnyDataEnd) {
  const char *const texts[] = {"",    "abc", "-5",     "0",          "1e300", "1e-300",
                               "nan", "inf", "-1e300", "2147483648", "20"};
  const struct {
    std::vector<double> closes;
    int start;
  } sets[] = {{{}, 0},
              {{}, 3},
              {{100}, 0},
              {{0, 0, 0}, 0},
              {{0, 0, 100, 130, 90}, 0},
              {{100, 130, 90, 140}, 2},
              {{100, 130, 90}, 9},
              {{100, 130, 90}, -4},
              {{100, 130}, 0x7ffffffe},
              {{kNaN, 100, kNaN, 130, 90, kNaN}, 0},
              {{-100, 20, -130}, 0},
              {{1e-300, 5e-300, 2e-300}, 0}};
  for (const std::string &calculator : Calculators()) {
    for (const char *text : texts) {
      for (const auto &set : sets) {
        for (double tick : {0.0, 1.0, -1.0, kNaN}) {
          Chart chart(set.closes, set.start, tick);
          for (SString &value : chart.index.VarValue) value = text;
          SCOPED_TRACE(calculator + " " + text);
          chart.Run(calculator, 0, -5, 0x7fffffff);
          ExpectSound(chart.index, calculator);
          chart.Run(calculator, 1, 0x7fffffff, -5);
          ExpectSound(chart.index, calculator);
        }
      }
    }
  }
}

TEST(HostileCharts, NothingBoundIsEmptyAndHasNoTick) {
  for (const std::string &calculator : Calculators()) {
    Chart chart({});
    chart.index = SIndex();
    chart.index.VarValue[0] = "7";
    chart.index.VarValue[1] = "0.5";
    const SString before = chart.index.VarValue[1];
    chart.Run(calculator);
    const int bands = calculator == "CalcVolumeAtPrice" ? 7 : 0;
    EXPECT_EQ(chart.index.ExpData[0].GetSize(), bands) << calculator;
    EXPECT_EQ(chart.index.ExpData[1].GetSize(), bands) << calculator;
    EXPECT_STREQ(chart.index.VarValue[1].c_str(), before.c_str()) << calculator;
  }
}

TEST(HostileCharts, WalksTooLongAndStepsTooSmallGiveEmptyResults) {
  const struct {
    const char *calculator;
    const char *parameter;
    std::vector<double> closes;
    int size;
  } cases[] = {
      {"CalcPnF", "1", {100, 10000099}, 1},  // a box at each price from 100 on: 10,000,000
      {"CalcPnF", "1", {100, 10000100}, 0},
      {"CalcPnF", "1", {100, kInfinity}, 0},
      {"CalcPnF", "1e-15", {100, 101, 99}, 0},
      {"CalcRenko", "1", {100, 103.5, 1e8}, 0},
      {"CalcRenko", "1e-15", {100, 101, 99}, 0},
      {"CalcRenko", "1", {1e8, -kInfinity}, 0},
      {"CalcZigZagOrgLine", "1", {100, 101.1, 1e10}, 0},
      {"CalcVolumeAtPrice", "10000001", {100, 101}, 0},
      {"CalcVolumeAtPrice", "2147483648", {100, 101}, 0},
  };
  for (const auto &test : cases) {
    Chart chart(test.closes, 0, 0.0);
    chart.index.VarValue[0] = chart.index.VarValue[1] = test.parameter;
    if (std::string(test.calculator) == "CalcPnF") chart.index.VarValue[0] = "3";
    chart.Run(test.calculator);
    for (int i = 0; i < 4; ++i)
      EXPECT_EQ(chart.index.ExpData[i].GetSize(), test.size) << test.calculator << i;
    EXPECT_TRUE(test.size > 0 || chart.index.ExpData[0].capacity <= 1000) << "the memory is given back";
  }
}

}  // namespace
}  // namespace trovenu::tests
