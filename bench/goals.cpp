#include "bench/goals.h"

namespace trovenu::bench {
namespace {

// The parameters are those that users take most.
constexpr Goal kGoals[] = {
    {"sum(c,20)", 0.45, 0.30},
    {"avg(c,20)", 0.65, 0.45},
    {"highest(h,20)", 0.45, 0.30},
    {"lowest(l,20)", 0.45, 0.30},
    {"eavg(c,20)", 1.0, 0.7},
    {"wavg(c,20)", 1.05, 0.65},
    {"tavg(c,20)", 1.8, 1.25},
    {"stdev(c,20)", 2.0, 1.15},
    {"rsi(14)", 1.9, 1.4},
    {"cci(14)", 4.0, 2.6},
    {"sar(0.02,0.2)", 3.0, 3.0},
    {"LinearRegressionValue(c,20,0)", 1.4, 0.8},
    {"LinearRegressionSlope(c,20)", 1.1, 0.65},
    {"Correlation(h,l,20)", 5.2, 3.2},
    {"(c-o)/(h-l)*v+3", 1.3, 1.3, 2.6, 2.6},
};

constexpr Periodic kPeriodic[] = {
    {"sum(c,#)"},
    {"avg(c,#)"},
    {"highest(c,#)"},
    {"lowest(c,#)"},
    {"eavg(c,#)"},
    {"wavg(c,#)"},
    // Its two averages have half the period.
    {"tavg(c,#)", 72},
    {"gavg(c,#)"},
    {"havg(c,#)"},
    {"stdev(c,#)"},
    {"esum(c,#)"},
    {"rsi(#)"},
    {"LinearRegressionValue(c,#,0)"},
    {"LinearRegressionSlope(c,#)"},
    {"RSquared(c,#)"},
    {"Correlation(h,l,#)"},
};

}  // namespace

std::span<const Goal> Goals() { return kGoals; }

std::span<const Periodic> PeriodicFormulas() { return kPeriodic; }

double LimitOf(const Goal &goal, Instructions build, int bars) {
  if (bars < 10'000) return 0.0;
  const bool avx2 = build == Instructions::Avx2;
  const double large = avx2 ? goal.avx2Large : goal.baselineLarge;
  return bars > 10'000 && large > 0.0 ? large : avx2 ? goal.avx2 : goal.baseline;
}

}  // namespace trovenu::bench
