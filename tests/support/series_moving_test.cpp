#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>
#include <vector>

#include "tests/support/series_tools.h"
#include "trovenu/support/series.h"

namespace trovenu {
namespace {

using Values = std::vector<double>;
using Calculation = void (SVector::*)(const SVector &, int);

SVector Calculated(Calculation calculation, const SVector &source, int n) {
  SpoilPool(source.size);
  SVector result;
  (result.*calculation)(source, n);
  return result;
}

// Window statistics as anyone would write them; `x` points to the n elements of the window, oldest first.
long double Sum(const double *x, int n) {
  long double sum = 0;
  for (int i = 0; i < n; ++i) sum += x[i];
  return sum;
}
long double Mean(const double *x, int n) { return Sum(x, n) / n; }
long double WeightedMean(const double *x, int n) {
  long double sum = 0;
  long double weights = 0;
  for (int i = 0; i < n; ++i) {
    sum += (i + 1.0L) * x[i];
    weights += i + 1.0L;
  }
  return sum / weights;
}
long double TriangularMean(const double *x, int n) {
  // The outer window holds `outer` means over `inner` elements each.
  const int inner = n % 2 != 0 ? (n + 1) / 2 : n / 2 + 1;
  const int outer = n % 2 != 0 ? (n + 1) / 2 : n / 2;
  long double sum = 0;
  for (int i = 0; i < outer; ++i) sum += Mean(x + i, inner);
  return sum / outer;
}
bool AllPositive(const double *x, int n) {
  return std::all_of(x, x + n, [](double v) { return v > 0; });
}
long double GeometricMean(const double *x, int n) {
  if (!AllPositive(x, n)) return 0;
  long double sum = 0;
  for (int i = 0; i < n; ++i) sum += std::log(static_cast<long double>(x[i]));
  return std::exp(sum / n);
}
long double HarmonicMean(const double *x, int n) {
  if (!AllPositive(x, n)) return 0;
  long double sum = 0;
  for (int i = 0; i < n; ++i) sum += 1.0L / x[i];
  return n / sum;
}
long double Deviation(const double *x, int n) {
  const long double mean = Mean(x, n);
  long double squares = 0;
  for (int i = 0; i < n; ++i) squares += (x[i] - mean) * (x[i] - mean);
  return std::sqrt(squares / n);
}
long double Highest(const double *x, int n) { return *std::max_element(x, x + n); }
long double Lowest(const double *x, int n) { return *std::min_element(x, x + n); }

struct Windowed {
  const char *name;
  Calculation calculation;
  long double (*ofWindow)(const double *, int);
};

// Those whose value is a matter of the window alone.
constexpr Windowed kWindowed[] = {
    {"CalcSum", &SVector::CalcSum, Sum},
    {"CalcAvg", &SVector::CalcAvg, Mean},
    {"CalcWAvg", &SVector::CalcWAvg, WeightedMean},
    {"CalcTAvg", &SVector::CalcTAvg, TriangularMean},
    {"CalcGAvg", &SVector::CalcGAvg, GeometricMean},
    {"CalcHAvg", &SVector::CalcHAvg, HarmonicMean},
    {"CalcStdev", &SVector::CalcStdev, Deviation},
    {"CalcHighest", &SVector::CalcHighest, Highest},
    {"CalcLowest", &SVector::CalcLowest, Lowest},
};

constexpr Calculation kPeriodic[] = {
    &SVector::CalcSum,     &SVector::CalcAvg,    &SVector::CalcEAvg, &SVector::CalcWAvg,
    &SVector::CalcTAvg,    &SVector::CalcGAvg,   &SVector::CalcHAvg, &SVector::CalcStdev,
    &SVector::CalcHighest, &SVector::CalcLowest, &SVector::CalcESum,
};

constexpr Calculation kGrowing[] = {
    &SVector::CalcSumCum,  &SVector::CalcAvgCum,  &SVector::CalcEAvgCum,
    &SVector::CalcWAvgCum, &SVector::CalcESumCum,
};

std::vector<int> Periods(int size) {
  std::vector<int> periods;
  for (int n = 1; n <= 40; ++n) periods.push_back(n);
  periods.insert(periods.end(), {63, 64, 65, 511, 512, 513, 1000, size - 1, size, size + 1});
  return periods;
}

// Within 1e-12 of the window's largest element, times the number of elements for a sum. A deviation is
// compared with itself: 1e-10.
void ExpectWindows(const Windowed &w, const Values &x, int start, int n) {
  const SVector got = Calculated(w.calculation, Series(x, start), n);
  EXPECT_NE(got.isSeries, 0);
  EXPECT_EQ(got.startIndex, start + n - 1);
  ASSERT_EQ(got.size, static_cast<int>(x.size()));
  for (int i = 0; i < std::min(got.startIndex, got.size); ++i) ASSERT_EQ(got[i], 0.0) << w.name << " n " << n;
  for (int i = got.startIndex; i < got.size; ++i) {
    const double *window = x.data() + (i - n + 1);
    const long double want = w.ofWindow(window, n);
    const long double size = std::max(std::fabs(Highest(window, n)), std::fabs(Lowest(window, n)));
    const long double tolerance = w.ofWindow == Sum         ? 1e-12L * size * n
                                  : w.ofWindow == Deviation ? 1e-10L * want
                                                            : 1e-12L * size;
    ASSERT_LE(std::fabs(got[i] - want), tolerance) << w.name << " n " << n << " bar " << i << ": " << got[i];
  }
}

TEST(SeriesMoving, AgreesWithTheObviousCalculation) {
  const Values price = RandomWalk(1100, 3.0);
  Values change = RandomWalk(1100, 500.0, 2);  // falls below 0 now and then
  for (double &x : change) x -= 1000.0;
  for (const Windowed &w : kWindowed) {
    for (const int n : Periods(1100)) {
      ExpectWindows(w, price, 0, n);
      if (n < 40) ExpectWindows(w, change, 7, n);
      if (HasFatalFailure()) return;
    }
    ExpectWindows(w, change, 61, 513);
  }
}

TEST(SeriesMoving, ExponentialFormsAgreeWithTheObviousCalculation) {
  const Values x = RandomWalk(1100, 3.0);
  const int start = 7;
  const SVector source = Series(x, start);
  for (const int n : Periods(1100)) {
    const SVector average = Calculated(&SVector::CalcEAvg, source, n);
    const SVector sum = Calculated(&SVector::CalcESum, source, n);
    for (const SVector *got : {&average, &sum}) {
      EXPECT_EQ(got->startIndex, start + n - 1);
      ASSERT_EQ(got->size, 1100);
      for (int i = 0; i < std::min(got->startIndex, got->size); ++i) ASSERT_EQ((*got)[i], 0.0);
    }
    if (start + n > source.size) continue;
    long double e = Mean(x.data() + start, n);
    long double s = Sum(x.data() + start, n);
    for (int i = start + n - 1; i < source.size; ++i) {
      if (i > start + n - 1) {
        e += 2.0L / (n + 1.0L) * (source[i] - e);
        s = s * (n - 1.0L) / n + source[i];
      }
      ASSERT_LE(std::fabs(average[i] - e), 1e-12L * e) << "n " << n << " bar " << i;
      ASSERT_LE(std::fabs(sum[i] - s), 1e-12L * s) << "n " << n << " bar " << i;
    }
  }
}

TEST(SeriesMoving, RecomputesATailBitForBit) {
  const Values x = RandomWalk(2500, 3.0);
  for (const Windowed &w : kWindowed) {
    for (const int n : {1, 2, 3, 5, 14, 20, 39, 64, 200, 512, 513, 1000}) {
      const SVector whole = Calculated(w.calculation, Series(x), n);
      for (const int from : {1, 2, 3, 17, 511, 512, 999, 1203, 2480, 2499}) {
        // What lies below the start index of the source is not read.
        Values tail(x);
        std::fill_n(tail.begin(), from, kNaN);
        const SVector part = Calculated(w.calculation, Series(tail, from), n);
        ASSERT_EQ(part.startIndex, from + n - 1);
        for (int i = part.startIndex; i < part.size; ++i)
          ASSERT_EQ(Bits(part[i]), Bits(whole[i]))
              << w.name << " n " << n << " from " << from << " bar " << i;
      }
    }
  }
}

TEST(SeriesMoving, IsExactInAFlatStretchOfAMovingPrice) {
  Values x = RandomWalk(1500, 3.0);
  std::fill(x.begin() + 300, x.begin() + 1200, 0.1);
  for (const Windowed &w : kWindowed) {
    if (w.ofWindow == Sum) continue;
    for (const int n : {1, 2, 3, 7, 20, 64, 513, 900}) {
      const SVector got = Calculated(w.calculation, Series(x), n);
      for (int i = 300 + n - 1; i < 1200; ++i)
        ASSERT_EQ(got[i], w.ofWindow == Deviation ? 0.0 : 0.1) << w.name << " n " << n << " bar " << i;
    }
  }
}

TEST(SeriesMoving, MayFillItsOwnSource) {
  const SVector source = Series(RandomWalk(100, 3.0), 4);
  const auto check = [&source](Calculation calculation, int n) {
    for (const SVector &x : {source, SVector(2.5)}) {
      const SVector want = Calculated(calculation, x, n);
      SVector same(x);
      (same.*calculation)(same, n);
      ExpectSameSeries(same, want);
    }
  };
  for (const int n : {-1, 0, 1, 2, 5, 20, 100, 101}) {
    for (const Calculation calculation : kPeriodic) check(calculation, n);
    for (const Calculation calculation : kGrowing) check(calculation, n);
  }
}

}  // namespace
}  // namespace trovenu
