// The examples of docs/charts.md are what they say.

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "tests/chart_types/chart_case.h"

namespace trovenu::tests {
namespace {

TEST(ChartsPage, ExamplesGiveTheirResults) {
  constexpr const char *kPage = TROVENU_SOURCE_DIR "/docs/charts.md";
  std::ifstream in(kPage);
  // Lines outside the blocks become empty ones, so that the numbers of the others stay.
  std::ostringstream examples;
  bool inside = false;
  for (std::string line; std::getline(in, line); examples << '\n') {
    if (line.starts_with("```")) {
      inside = line == "```chart";
    } else if (inside) {
      examples << line;
    }
  }
  std::istringstream cases(examples.str());
  EXPECT_GE(RunChartCases(cases, kPage), 10);
}

}  // namespace
}  // namespace trovenu::tests
