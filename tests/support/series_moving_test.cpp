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

constexpr Calculation kAverages[] = {
    &SVector::CalcAvg,    &SVector::CalcEAvg,    &SVector::CalcWAvg,
    &SVector::CalcTAvg,   &SVector::CalcGAvg,    &SVector::CalcHAvg,
    &SVector::CalcAvgCum, &SVector::CalcEAvgCum, &SVector::CalcWAvgCum,
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

TEST(SeriesMoving, GrowingFormsAgreeWithTheObviousCalculation) {
  const Values x = RandomWalk(1100, 3.0);
  for (const int start : {0, 1, 7, 1099}) {
    const SVector source = Series(x, start);
    SVector got[std::size(kGrowing)];
    for (std::size_t k = 0; k < std::size(kGrowing); ++k) {
      got[k] = Calculated(kGrowing[k], source, 1100);
      EXPECT_EQ(got[k].startIndex, start);
      ASSERT_EQ(got[k].size, 1100);
    }
    long double exponentialMean = 0;
    long double exponentialSum = 0;
    for (int i = start; i < 1100; ++i) {
      const double *first = x.data() + start;
      const int m = i - start + 1;
      const double element = source[i];
      exponentialMean = m == 1 ? element : exponentialMean + 2.0L / (m + 1.0L) * (element - exponentialMean);
      exponentialSum = m == 1 ? element : exponentialSum * (i - 1.0L) / i + element;
      const long double want[] = {Sum(first, m), Mean(first, m), exponentialMean, WeightedMean(first, m),
                                  exponentialSum};
      for (std::size_t k = 0; k < std::size(kGrowing); ++k)
        ASSERT_LE(std::fabs(got[k][i] - want[k]), 1e-12L * want[k])
            << "form " << k << " start " << start << " bar " << i;
    }
  }
}

TEST(SeriesMoving, GivesTheValuesWorkedOutByHand) {
  const struct {
    const char *name;
    Calculation calculation;
    Values x;
    int start, n;
    Values result;
    int resultStart;
  } cases[] = {
      {"sum", &SVector::CalcSum, {1, 2, 4, 8, 16}, 0, 3, {0, 0, 7, 14, 28}, 2},
      {"sum from bar 1", &SVector::CalcSum, {9, 2, 4, 8, 16}, 1, 3, {0, 0, 0, 14, 28}, 3},
      {"average", &SVector::CalcAvg, {1, 3, 8, 1}, 0, 2, {0, 2, 5.5, 4.5}, 1},
      // Factor 2 / 4; the seed is (1 + 3 + 8) / 3 = 4, then 4 + (10 - 4) / 2 = 7, 7 + (1 - 7) / 2 = 4.
      {"exponential", &SVector::CalcEAvg, {1, 3, 8, 10, 1}, 0, 3, {0, 0, 4, 7, 4}, 2},
      // (1 * 1 + 2 * 4) / 3 = 3, (4 + 2 * 13) / 3 = 10.
      {"weighted", &SVector::CalcWAvg, {1, 4, 13}, 0, 2, {0, 3, 10}, 1},
      // Means of two: 1.5 3 6 12; means of two of them.
      {"triangular of 3", &SVector::CalcTAvg, {1, 2, 4, 8, 16}, 0, 3, {0, 0, 2.25, 4.5, 9}, 2},
      // Means of three: 3 6 12 (from bar 2); means of two of them.
      {"triangular of 4", &SVector::CalcTAvg, {1, 3, 5, 10, 21}, 0, 4, {0, 0, 0, 4.5, 9}, 3},
      {"triangular of 2", &SVector::CalcTAvg, {1, 3, 8, 1}, 0, 2, {0, 2, 5.5, 4.5}, 1},
      {"geometric, flat or not positive",
       &SVector::CalcGAvg,
       {-5, -5, 0, 0, 7, 7},
       0,
       2,
       {0, 0, 0, 0, 0, 7},
       1},
      // 2 / (1 / 2 + 1 / 2), 2 / (1 / 2 + 1 / 6) = 3.
      {"harmonic", &SVector::CalcHAvg, {-0.0, 2, 2, 6, -6}, 0, 2, {0, 0, 2, 3, 0}, 1},
      // Mean 5, squares 9 1 1 1 0 0 4 16 = 32, 32 / 8 = 4.
      {"deviation", &SVector::CalcStdev, {2, 4, 4, 4, 5, 5, 7, 9}, 0, 8, {0, 0, 0, 0, 0, 0, 0, 2}, 7},
      {"highest", &SVector::CalcHighest, {3, 1, 2, 0, -1}, 0, 3, {0, 0, 3, 2, 2}, 2},
      {"lowest", &SVector::CalcLowest, {3, 1, 2, 0, 5}, 0, 2, {0, 1, 1, 0, 0}, 1},
      // 1 + 2, 3 * 1 / 2 + 4 = 5.5, 5.5 / 2 + 2 = 4.75.
      {"exponential sum", &SVector::CalcESum, {1, 2, 4, 2}, 0, 2, {0, 3, 5.5, 4.75}, 1},
      {"exponential sum of 1", &SVector::CalcESum, {1, 2, 4}, 0, 1, {1, 2, 4}, 0},
      {"growing sum", &SVector::CalcSumCum, {9, 1, 2, 4}, 1, 4, {0, 1, 3, 7}, 1},
      {"growing average", &SVector::CalcAvgCum, {9, 1, 3, 8}, 1, 4, {0, 1, 2, 4}, 1},
      // 1; 1 + 2 / 3 * (4 - 1) = 3; 3 + 2 / 4 * (9 - 3) = 6.
      {"growing exponential", &SVector::CalcEAvgCum, {1, 4, 9}, 0, 3, {1, 3, 6}, 0},
      // 1; (1 + 2 * 4) / 3 = 3; (1 + 8 + 3 * 9) / 6 = 6.
      {"growing weighted", &SVector::CalcWAvgCum, {1, 4, 9}, 0, 3, {1, 3, 6}, 0},
      // 1; 1 * 0 / 1 + 2; 2 * 1 / 2 + 4 = 5.
      {"growing exponential sum", &SVector::CalcESumCum, {1, 2, 4}, 0, 3, {1, 2, 5}, 0},
      // The factor is that of the bar's own index: 3; 3 * 2 / 3 + 6 = 8; 8 * 3 / 4 + 9 = 15.
      {"growing exponential sum from bar 2",
       &SVector::CalcESumCum,
       {7, 7, 3, 6, 9},
       2,
       5,
       {0, 0, 3, 8, 15},
       2},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    ExpectSeries(Calculated(c.calculation, Series(c.x, c.start), c.n), c.result, c.resultStart);
  }
  const SVector geometric = Calculated(&SVector::CalcGAvg, Series({1, 4, 16}), 2);
  EXPECT_NEAR(geometric[1], 2.0, 1e-14);
  EXPECT_NEAR(geometric[2], 8.0, 1e-14);
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

TEST(SeriesMoving, ForgetsAnElementThatHasLeftTheWindow) {
  const Values x = RandomWalk(1400, 3.0);
  const int at = 700;
  for (const double strange : {1e15, -1e15, 1e-300, 0.0, kInfinity, -kInfinity, kNaN}) {
    Values y(x);
    y[at] = strange;
    for (const Windowed &w : kWindowed) {
      for (const int n : {1, 2, 3, 7, 20, 64, 513}) {
        const SVector clean = Calculated(w.calculation, Series(x), n);
        const SVector marked = Calculated(w.calculation, Series(y), n);
        for (int i = n - 1; i < clean.size; ++i) {
          if (i >= at && i < at + n) {
            // An average or sum over NaN has no value; the largest and smallest are those of the others.
            if (strange != strange && w.ofWindow != Highest && w.ofWindow != Lowest) {
              ASSERT_TRUE(std::isnan(marked[i])) << w.name << " n " << n << " bar " << i;
            }
          } else {
            ASSERT_EQ(Bits(marked[i]), Bits(clean[i]))
                << w.name << " n " << n << " bar " << i << " " << strange;
          }
        }
      }
    }
  }
}

TEST(SeriesMoving, PassesOverNaNInExtremes) {
  const SVector source = Series({1, kNaN, 3, kNaN, kNaN});
  ExpectSeries(Calculated(&SVector::CalcHighest, source, 2), {0, 1, 3, 3, -kInfinity}, 1);
  ExpectSeries(Calculated(&SVector::CalcLowest, source, 2), {0, 1, 3, 3, kInfinity}, 1);
}

TEST(SeriesMoving, IsExactWhereAllElementsAreEqual) {
  for (const double value : {0.1, 1.0 / 3.0, 12345.678, 1e300, 3e-308, 1e308}) {
    const SVector flat = Series(Values(1100, value), 3);
    for (const int n : Periods(1100)) {
      for (const Calculation &average : kAverages) {
        const SVector got = Calculated(average, flat, n);
        for (int i = got.startIndex; i < got.size; ++i)
          ASSERT_EQ(got[i], value) << "average " << (&average - kAverages) << " n " << n << " bar " << i;
      }
      const SVector deviation = Calculated(&SVector::CalcStdev, flat, n);
      for (int i = deviation.startIndex; i < deviation.size; ++i) ASSERT_EQ(deviation[i], 0.0);
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

TEST(SeriesMoving, HasNoValidBarForAPeriodBelowOne) {
  const SVector source = Series({1, 2, 3}, 1);
  for (const Calculation calculation : kPeriodic) {
    for (const int n : {0, -1, -1000, kLeastInt}) {
      ExpectSeries(Calculated(calculation, source, n), {0, 0, 0}, kNoValidBar);
      ExpectSeries(Calculated(calculation, SVector(5.0), n), {0}, kNoValidBar);
    }
  }
}

TEST(SeriesMoving, MovesTheStartIndexByThePeriod) {
  const struct {
    int size, start, n, resultStart;
  } cases[] = {
      {5, 0, 5, 4},
      {5, 0, 6, 5},
      {5, 2, 4, 5},
      {5, 0, kGreatestInt, kNoValidBar},
      {5, 1, kGreatestInt, kNoValidBar},
      {5, 5, 1, 5},
      {5, 10005, 3, 10007},
      {5, kNoValidBar, 1, kNoValidBar},
      {5, kNoValidBar, 20, kNoValidBar},
      {5, kGreatestInt, kGreatestInt, kNoValidBar},
      {0, 0, 1, 0},
      {0, 4, 3, 6},
      {1, 0, 1, 0},
      {1, 0, 2, 1},
      // No bar stands below index 0, so a window needs n bars from there.
      {5, -4, 3, 2},
      {5, kLeastInt, 3, 2},
      {5, -4, 9, 8},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(testing::Message() << "size " << c.size << " start " << c.start << " n " << c.n);
    for (const Calculation &calculation : kPeriodic) {
      const SVector source = Series(Values(static_cast<std::size_t>(c.size), 2.0), c.start);
      const SVector got = Calculated(calculation, source, c.n);
      EXPECT_EQ(got.size, c.size);
      EXPECT_EQ(got.startIndex, c.resultStart) << "calculation " << (&calculation - kPeriodic);
      EXPECT_NE(got.isSeries, 0);
      for (int i = 0; i < std::min(got.size, got.startIndex); ++i) EXPECT_EQ(got[i], 0.0);
    }
  }
}

TEST(SeriesMoving, OfAConstantIsASeriesOfOneElement) {
  for (const Calculation calculation : kPeriodic) {
    const double value = calculation == &SVector::CalcStdev ? 0.0 : 2.5;
    ExpectSeries(Calculated(calculation, SVector(2.5), 1), {value}, 0);
    ExpectSeries(Calculated(calculation, SVector(2.5), 5), {0}, 4);
  }
}

TEST(SeriesMoving, GrowingFormsHaveTheGivenNumberOfBars) {
  for (const Calculation &calculation : kGrowing) {
    SCOPED_TRACE(testing::Message() << "form " << (&calculation - kGrowing));
    const SVector source = Series({9, 2, 4, 6}, 1);
    const Values whole = Elements(Calculated(calculation, source, 4));
    for (const int n : {kLeastInt, -1, 0, 1, 2, 3, 4, 5, kGreatestInt}) {
      Values want(whole);
      want.resize(static_cast<std::size_t>(std::clamp(n, 0, 4)));
      ExpectSeries(Calculated(calculation, source, n), want, 1);
    }
    ExpectSeries(Calculated(calculation, Series({1, 2}, 7), 2), {0, 0}, 7);
    ExpectSeries(Calculated(calculation, Series({1, 2}, kNoValidBar), 2), {0, 0}, kNoValidBar);
    ExpectSeries(Calculated(calculation, SVector(), 5), {}, 0);
    // A number stands for as many bars as are asked for.
    ExpectSameSeries(Calculated(calculation, SVector(2.0), 6),
                     Calculated(calculation, Series(Values(6, 2.0)), 6));
    // The first bar is bar 0 where the start index lies below it.
    EXPECT_EQ(Elements(Calculated(calculation, Series({2, 4}, -3), 2)),
              Elements(Calculated(calculation, Series({2, 4}), 2)));
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
