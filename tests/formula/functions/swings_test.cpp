#include "trovenu/formula/functions/swings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>

#include "tests/formula/bars.h"

namespace trovenu::tests {
namespace {

// Few different values, so that equal bars are frequent, and now and then no number.
SVector RandomSeries(std::mt19937 &random, int size, bool hasGaps) {
  SVector series(size);
  for (int i = 0; i < size; ++i) {
    series[i] = static_cast<double>(random() % 9) - 2.0;
    if (hasGaps && random() % 8 == 0) series[i] = std::numeric_limits<double>::quiet_NaN();
  }
  series.SetStartIndex(static_cast<int>(random() % 5));
  return series;
}

// Every candidate of every bar with both its sides, one after the other.
SVector SlowSwings(bool isHigh, int n, const SVector &x, long long strength, long long depth) {
  SVector result(x.GetSize());
  const auto at = [&x](long long i) { return i < 0 || i >= x.GetSize() ? 0.0 : x[static_cast<int>(i)]; };
  result.SetStartIndex(static_cast<int>(std::min<long long>(x.GetStartIndex() + depth + 1, kNoValidBar)));
  for (int i = result.GetStartIndex(); i < x.GetSize(); ++i) {
    int count = 0;
    result[i] = -1.0;
    for (long long k = strength; k <= depth - 1 && count < n; ++k) {
      const double p = at(i - k);
      bool stands = true;
      for (long long j = k + 1; j <= k + strength; ++j) {
        if (isHigh ? p < at(i - j) : at(i - j) < p) stands = false;
      }
      for (long long j = k - 1; j >= k - strength; --j) {
        if (isHigh ? p <= at(i - j) : at(i - j) <= p) stands = false;
      }
      if (stands && ++count == n) result[i] = p;
    }
  }
  return result;
}

SVector SlowZigZag(double percent, const SVector &swingHigh, const SVector &swingLow, const SVector &high,
                   const SVector &low) {
  const int s = std::max(
      {swingHigh.GetStartIndex(), swingLow.GetStartIndex(), high.GetStartIndex(), low.GetStartIndex()});
  const int e = std::min({swingHigh.GetSize(), swingLow.GetSize(), high.GetSize(), low.GetSize()});
  SVector result(e);
  result.SetStartIndex(s);
  if (s >= e) return result;
  double pivot = (high[s] + low[s]) / 2.0;
  int pivotIndex = 0;
  int direction = 0;
  result[s] = pivot;
  for (int i = s; i < e; ++i) {
    bool reversed = false;
    bool updates = false;
    if (swingHigh[i] == -1.0 && swingLow[i] != -1.0) {
      if (direction != 1 && swingLow[i] <= (1.0 - percent * 0.01) * pivot) {
        reversed = updates = true;
        direction = 1;
        result[pivotIndex] = pivot;
      }
      if (!reversed && direction == 1 && swingLow[i] <= pivot) updates = true;
      if (updates) {
        updates = false;
        pivot = swingLow[i];
        pivotIndex = i - 1;
      }
    }
    if (swingHigh[i] != -1.0) {
      if (direction != -1 && swingHigh[i] >= (1.0 + percent * 0.01) * pivot) {
        reversed = updates = true;
        direction = -1;
        result[pivotIndex] = pivot;
      }
      if (!reversed && direction == -1 && swingHigh[i] >= pivot) updates = true;
      if (updates) {
        pivot = swingHigh[i];
        pivotIndex = i - 1;
      }
    }
  }
  result[pivotIndex] = pivot;
  return result;
}

testing::AssertionResult SameFrom(int first, const SVector &a, const SVector &b) {
  if (a.GetSize() != b.GetSize() || a.GetStartIndex() != b.GetStartIndex()) {
    return testing::AssertionFailure() << "size " << a.GetSize() << ", start " << a.GetStartIndex();
  }
  for (int i = first; i < a.GetSize(); ++i) {
    if (!SameNumber(a[i], b[i])) return testing::AssertionFailure() << "bar " << i << ": " << a[i];
  }
  return testing::AssertionSuccess();
}

TEST(Swings, AgreeWithEveryCandidateLookedAtInTurn) {
  constexpr int kHuge = std::numeric_limits<int>::max();
  std::mt19937 random(7);
  for (int round = 0; round < 300; ++round) {
    const SVector x = RandomSeries(random, static_cast<int>(random() % 40), round % 3 == 0);
    for (const int n : {1, 2, 3, kHuge}) {
      for (const int strength : {1, 2, 5, 30, kHuge}) {
        for (const int depth : {1, 2, 3, 6, 9, 35, 1000, kHuge}) {
          for (const bool isHigh : {true, false}) {
            const SVector expected = SlowSwings(isHigh, n, x, strength, depth);
            ASSERT_TRUE(
                SameFrom(expected.GetStartIndex(), FindSwings(isHigh, n, x, strength, depth), expected))
                << "round " << round << ": n " << n << ", strength " << strength << ", depth " << depth;
          }
        }
      }
    }
  }
}

TEST(Swings, NeverLookAtLaterBars) {
  std::mt19937 random(8);
  const SVector x = RandomSeries(random, 60, true);
  const SVector whole = FindSwings(true, 2, x, 2, 9);
  for (int size = 1; size < x.GetSize(); ++size) {
    SVector part = x;
    part.SetSize(size);
    const SVector swings = FindSwings(true, 2, part, 2, 9);
    for (int i = swings.GetStartIndex(); i < size; ++i) ASSERT_TRUE(SameNumber(swings[i], whole[i])) << i;
  }
}

TEST(ZigZag, AgreesWithItsRulesTakenOneByOne) {
  std::mt19937 random(9);
  for (int round = 0; round < 2000; ++round) {
    const auto size = [&random] { return 20 + static_cast<int>(random() % 20); };
    const SVector high = RandomSeries(random, size(), round % 5 == 0);
    const SVector low = RandomSeries(random, size(), round % 5 == 0);
    // Real swings, and series that mark any bar.
    const bool isReal = round % 2 == 0;
    const SVector swingHigh = isReal ? FindSwings(true, 1, high, 1, 2) : RandomSeries(random, size(), false);
    const SVector swingLow = isReal ? FindSwings(false, 1, low, 1, 2) : RandomSeries(random, size(), false);
    for (const double percent : {-50.0, 0.0, 5.0, 40.0, 200.0}) {
      ASSERT_TRUE(SameFrom(0, ZigZag(percent, swingHigh, swingLow, high, low),
                           SlowZigZag(percent, swingHigh, swingLow, high, low)))
          << "round " << round << ", " << percent << " %";
    }
  }
}

// Required: the first turn stores the first pivot at index 0, wherever the bars begin.
TEST(ZigZag, StoresTheFirstPivotAtIndexZero) {
  const SVector swingHigh = Series({-1, -1, -1, 14, -1}, 2);
  const SVector none = Series({-1, -1, -1, -1, -1}, 2);
  const SVector high = Series({0, 0, 12, 14, 11}, 2);
  const SVector low = Series({0, 0, 10, 13, 10}, 2);
  const SVector result = ZigZag(5, swingHigh, none, high, low);
  EXPECT_EQ(result.GetStartIndex(), 2);
  EXPECT_EQ(result[0], 11);
  EXPECT_EQ(result[2], 14);
}

}  // namespace
}  // namespace trovenu::tests
