// What many indicators need besides their results.

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "tests/formula/engine.h"
#include "trovenu/indicator/index.h"

#if defined(__GLIBC__) && !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
#include <malloc.h>
#define TROVENU_CAN_COUNT_MEMORY
#endif

namespace trovenu::tests {
namespace {

#if defined(TROVENU_CAN_COUNT_MEMORY)

constexpr int kIndicators = 1000;
constexpr int kBars = 10000;
constexpr double kMegabyte = 1e6;

double UsedMegabytes() {
  const struct mallinfo2 info = mallinfo2();
  return static_cast<double>(info.uordblks + info.hblkhd) / kMegabyte;
}

TEST(IndicatorMemorySlow, AThousandIndicatorsNeedLittleBesidesTheirResults) {
  Bars bars = RandomBars(kBars, 1);
  const double before = UsedMegabytes();
  std::vector<std::unique_ptr<SIndex>> indicators;
  for (int i = 0; i < kIndicators; ++i) {
    SIndex &index = *indicators.emplace_back(std::make_unique<SIndex>());
    index.SetVariable(bars.close, bars.open, bars.high, bars.low, bars.volume, bars.date, bars.openInterest,
                      bars.amount);
    const char *const formulas[] = {"avg(c, 20)", "avg(c, 20) + 2 * stdev(c, 20)", "rsi(14)",
                                    "x = highest(h, 10); x - lowest(l, 10)", "crossup(c, eavg(c, 12)) * c"};
    for (int line = 0; line < kExpressions; ++line) index.SetExpression(line, formulas[line]);
    index.Calc();
    index.CalcLast();
    for (const SVector &line : index.ExpData) ASSERT_EQ(line.GetSize(), kBars);
  }
  const double results = 8.0 * kIndicators * kExpressions * kBars / kMegabyte;
  const double besides = UsedMegabytes() - before - results;
  RecordProperty("megabytes", std::to_string(besides));
  std::printf("%d indicators: %.1f MB besides %.1f MB of results\n", kIndicators, besides, results);
  EXPECT_LT(besides, 500.0);
}

#endif

}  // namespace
}  // namespace trovenu::tests
