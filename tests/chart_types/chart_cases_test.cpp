// The charts of hand-worked closes, in tests/cases/charts.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "tests/chart_types/chart_case.h"

namespace trovenu::tests {
namespace {

TEST(ChartCases, GiveTheirResults) {
  int cases = 0;
  for (const auto &entry : std::filesystem::directory_iterator(TROVENU_SOURCE_DIR "/tests/cases/charts")) {
    std::ifstream in(entry.path());
    cases += RunChartCases(in, entry.path().string());
  }
  EXPECT_GT(cases, 50);
}

}  // namespace
}  // namespace trovenu::tests
