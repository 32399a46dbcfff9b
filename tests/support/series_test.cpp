#include "trovenu/support/series.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <type_traits>
#include <utility>
#include <vector>

#include "tests/support/series_tools.h"

namespace trovenu {
namespace {

static_assert(std::is_nothrow_move_constructible_v<SVector> && std::is_nothrow_move_assignable_v<SVector>);
static_assert(std::is_convertible_v<double, SVector> && std::is_convertible_v<int, SVector>);

using Values = std::vector<double>;

void ExpectConstant(const SVector &got, double value) {
  EXPECT_EQ(got.isSeries, 0);
  EXPECT_EQ(got.size, 1);
  EXPECT_EQ(got.startIndex, 0);
  EXPECT_TRUE(Same(got[0], value)) << got[0];
}

TEST(SeriesConstruction, MakesSeriesFromSizesAndConstantsFromNumbers) {
  ExpectSeries(SVector(), {}, 0);
  for (const int size : {kLeastInt, -1, 0, 1, 2, 8, 1000}) {
    SpoilPool(size);
    const SVector series(size);
    ExpectSound(series);
    ExpectSeries(series, Values(static_cast<std::size_t>(std::max(size, 0)), 0.0), 0);
    EXPECT_EQ(series.capacity, std::max(size, 1));
    EXPECT_EQ(series.minMaxChanged, 0);
  }
  ExpectConstant(SVector(2.5), 2.5);
  ExpectConstant(SVector(kNaN), kNaN);
  const SVector number = 7;
  ExpectConstant(number, 7.0);
}

TEST(SeriesConstant, AnswersEveryIndex) {
  SVector constant(2.5);
  const SVector &read = constant;
  for (const int i : {0, 1, 500, -1, kLeastInt, kGreatestInt}) {
    EXPECT_EQ(constant[i], 2.5);
    EXPECT_EQ(read[i], 2.5);
  }
  constant[500] = 3.0;
  ExpectConstant(constant, 3.0);
  EXPECT_TRUE(constant.IsConstant());
}

TEST(SeriesElements, OutsideReadZeroAndForgetWhatIsWritten) {
  for (const int size : {0, 1, 5, 1000}) {
    SVector series(size);
    series.InitValue(4.0);
    const SVector &read = series;
    for (const int i : {-1, size, size + 1, kLeastInt, kGreatestInt}) {
      EXPECT_EQ(series[i], 0.0);
      EXPECT_EQ(read[i], 0.0);
      series[i] = 9.0;
      EXPECT_EQ(series[i], 0.0);
      EXPECT_EQ(read[i], 0.0);
    }
    EXPECT_EQ(Elements(series), Values(static_cast<std::size_t>(size), 4.0));
  }
}

TEST(SeriesCopy, OwnsItsElementsAndCarriesEverything) {
  SVector original = Series({1, 2, 3, 4}, 2);
  original.minMaxChanged = 1;
  original.SetDrawRange(1, 3);
  SVector assigned(900);
  assigned = original;
  SVector grown;
  grown = original;
  for (SVector copy : {original, assigned, grown}) {
    ExpectSound(copy);
    ExpectSameSeries(copy, original);
    EXPECT_EQ(copy.minMaxChanged, 1);
    EXPECT_EQ(copy.GetDrawLast(), 3);
    copy[3] = 99.0;
    EXPECT_EQ(original[3], 4.0);
  }
  EXPECT_EQ(assigned.capacity, 900);
  // Of a calculated series nothing is copied from below its start index, where 0.0 takes the place of the
  // old.
  SVector sum;
  sum.CalcSum(original, 2);
  assigned.InitValue(9.0);
  assigned = sum;
  ExpectSeries(assigned, {0, 0, 0, 7}, 3);
}

TEST(SeriesCopy, TurnsSeriesIntoConstantsAndBack) {
  SVector value = Series(Values(50, 1.0), 7);
  value = SVector(2.0);
  ExpectConstant(value, 2.0);
  const SVector constant(3.0);
  value = constant;
  ExpectConstant(value, 3.0);
  value = Series({0, 6}, 1);
  ExpectSeries(value, {0, 6}, 1);
  value = SVector();
  ExpectSeries(value, {}, 0);
}

TEST(SeriesCopy, OfItselfChangesNothing) {
  for (SVector series : {Series({1, 2, 3}, 1), Series({4}), SVector(2.0), SVector()}) {
    const SVector before(series);
    SVector &same = series;
    series = same;
    ExpectSameSeries(series, before);
    series = std::move(same);
    ExpectSameSeries(series, before);
    ExpectSound(series);
  }
}

TEST(SeriesMove, LeavesAnEmptySeriesThatCanBeUsed) {
  for (const SVector &original : {Series({1, 2, 3}, 2), Series({4}), SVector(2.0), SVector()}) {
    SVector source(original);
    EXPECT_EQ(source.GetMaxTemp(0, 9), original.GetMax());
    SVector target(std::move(source));
    ExpectSameSeries(target, original);
    // NOLINTBEGIN(bugprone-use-after-move,clang-analyzer-cplusplus.Move)
    ExpectSound(source);
    ExpectSeries(source, {}, 0);
    source.SetStartIndex(original.startIndex);
    EXPECT_EQ(source.GetMaxTemp(0, 9), kNoMaximum);
    source.ClearData();
    source.Add(5.0);
    source.Add(6.0);
    ExpectSeries(source, {5, 6}, 0);
    source = std::move(target);
    ExpectSameSeries(source, original);
    ExpectSeries(target, {}, 0);
    target = source;
    ExpectSameSeries(target, original);
    // NOLINTEND(bugprone-use-after-move,clang-analyzer-cplusplus.Move)
  }
}

TEST(SeriesAssignNumber, FillsTheExistingSize) {
  SVector series = Series({1, 2, 3}, 1);
  series = 5.0;
  EXPECT_EQ(Elements(series), (Values{5, 5, 5}));
  EXPECT_EQ(series.startIndex, 1);
  series[1] = 8.0;
  series = series[1];
  EXPECT_EQ(Elements(series), (Values{8, 8, 8}));
  SVector empty;
  empty = 5.0;
  ExpectSeries(empty, {}, 0);
  SVector constant(1.0);
  constant = 6;
  ExpectConstant(constant, 6.0);
}

TEST(SeriesAlloc, GivesRoomForAtLeastOne) {
  for (const int old : {0, 1, 60}) {
    for (const int n : {kLeastInt, -1, 0, 1, 2, 59, 61, 1500}) {
      SpoilPool(n);
      SVector series(old);
      series.InitValue(3.0);
      series.Alloc(n);
      ExpectSound(series);
      EXPECT_EQ(series.capacity, std::max(n, 1));
      for (int i = 0; i < series.capacity; ++i) EXPECT_EQ(series.data[i], 0.0);
    }
  }
}

TEST(SeriesReAlloc, KeepsWhatIsValid) {
  struct Case {
    int size, start, n, capacity, newSize;
  };
  const Case cases[] = {
      {20, 0, 30, 30, 20},           {20, 10, 30, 30, 20}, {20, 10, 15, 15, 15}, {20, 10, 5, 5, 5},
      {20, 19, 20, 20, 20},          {20, 20, 25, 25, 20}, {20, 0, 1, 1, 1},     {20, 0, -4, 1, 1},
      {20, kNoValidBar, 25, 25, 20}, {20, -3, 25, 25, 20}, {1, 0, 1, 1, 1},      {0, 0, 0, 1, 0},
  };
  for (const Case &c : cases) {
    SpoilPool(c.n);
    SVector series(c.size);
    for (int i = 0; i < c.size; ++i) series[i] = i + 1.0;
    series.SetStartIndex(c.start);
    series.ReAlloc(c.n);
    ExpectSound(series);
    EXPECT_EQ(series.capacity, c.capacity);
    EXPECT_EQ(series.startIndex, c.start);
    EXPECT_EQ(series.size, c.newSize);
    for (int i = 0; i < c.newSize; ++i) EXPECT_EQ(series[i], i < c.start ? 0.0 : i + 1.0) << i;
  }
  SVector constant(2.0);
  constant.ReAlloc(10);
  ExpectConstant(constant, 2.0);
}

TEST(SeriesReAlloc, ElementsBelowStartIndexAreNotCarriedOver) {
  SVector one = Series({7}, 1);
  one.ReAlloc(1);
  EXPECT_EQ(one[0], 0.0);
  // So growth by one bar drops them too.
  SVector full(1000);
  full.InitValue(7.0);
  full.SetStartIndex(10);
  full.Add(8.0);
  EXPECT_EQ(full.capacity, 2000);
  for (int i = 0; i <= 1000; ++i) EXPECT_EQ(full[i], i < 10 ? 0.0 : i < 1000 ? 7.0 : 8.0) << i;
}

TEST(SeriesSetSize, GrowsToWholeThousandsAndNeverShrinks) {
  struct Case {
    int first, second, capacity, size;
  };
  const Case cases[] = {
      {0, 0, 1, 0},        {0, 1, 1, 1},           {0, 2, 1000, 2},
      {0, 999, 1000, 999}, {0, 1000, 1000, 1000},  {0, 1001, 2000, 1001},
      {0, -5, 1, 0},       {0, 5000, 5000, 5000},  {0, 5001, 6000, 5001},
      {1500, 3, 2000, 3},  {1500, 0, 2000, 0},     {1500, 2000, 2000, 2000},
      {1500, -1, 2000, 0}, {10, 1000, 1000, 1000}, {10, kLeastInt, 1000, 0},
  };
  for (const Case &c : cases) {
    SVector series;
    series.SetSize(c.first);
    for (int i = 0; i < c.first; ++i) series[i] = i + 1.0;
    const double *block = series.data;
    const bool fits = c.second <= series.capacity;
    series.SetSize(c.second);
    ExpectSound(series);
    EXPECT_EQ(series.capacity, c.capacity) << c.first << " then " << c.second;
    EXPECT_EQ(series.size, c.size) << c.first << " then " << c.second;
    EXPECT_EQ(series.data == block, fits);
    for (int i = 0; i < std::min(c.first, c.size); ++i) EXPECT_EQ(series[i], i + 1.0);
  }
  SVector constant(2.0);
  constant.SetSize(3);
  ExpectSeries(constant, {2, 0, 0}, 0);
}

TEST(SeriesAdd, GrowsByAThousand) {
  SVector series;
  int capacity = 1;
  for (int i = 0; i < 3001; ++i) {
    series.Add(i);
    if (i == 1 || i == 1000 || i == 2000 || i == 3000) capacity = i + 1 < 1000 ? 1000 : i + 1000;
    ASSERT_EQ(series.capacity, capacity) << i;
    ASSERT_EQ(series.size, i + 1);
  }
  for (int i = 0; i < 3001; ++i) ASSERT_EQ(series[i], i);
  SVector sized(5);
  sized.Add(1.0);
  EXPECT_EQ(sized.capacity, 1000);
  ExpectSeries(sized, {0, 0, 0, 0, 0, 1}, 0);
  sized.SetSize(2);
  sized.Add(9.0);
  ExpectSeries(sized, {0, 0, 9}, 0);
  SVector constant(2.0);
  constant.Add(3.0);
  ExpectSeries(constant, {2, 3}, 0);
  const SVector two(2.0);
  SVector roomy(50);
  roomy = two;
  roomy.Add(3.0);
  ExpectSeries(roomy, {2, 3}, 0);
}

TEST(SeriesUpdate, StoresAmongTheNewestBarsAndIgnoresTheRest) {
  SVector empty;
  empty.Update(5.0, 0);
  ExpectSeries(empty, {}, 0);
  SVector series = Series({1, 2, 3});
  for (const int k : {-1, 3, 4, kLeastInt, kGreatestInt}) series.Update(9.0, k);
  ExpectSeries(series, {1, 2, 3}, 0);
  series.Update(30.0, 0);
  series.Update(10.0, 2);
  ExpectSeries(series, {10, 2, 30}, 0);
  SVector late = Series({1, 2, 3}, 2);
  late.Update(8.0, 1);
  EXPECT_EQ(late[1], 8.0);
}

TEST(SeriesClearData, KeepsTheBlock) {
  SVector series = Series(Values(50, 1.0), 7);
  const double *block = series.data;
  series.ClearData();
  ExpectSeries(series, {}, 0);
  EXPECT_EQ(series.capacity, 50);
  EXPECT_EQ(series.data, block);
  SVector constant(2.0);
  constant.ClearData();
  ExpectSeries(constant, {}, 0);
  EXPECT_EQ(constant[3], 0.0);
}

TEST(SeriesInsert, PutsOlderBarsInFront) {
  struct Case {
    Values own;
    int ownStart;
    Values other;
    int otherStart;
    Values result;
    int start;
  };
  const Case cases[] = {
      {{3, 4}, 0, {1, 2}, 0, {1, 2, 3, 4}, 0},
      {{3, 4}, 0, {1, 2}, 1, {1, 2, 3, 4}, 1},
      {{3, 4}, 1, {1, 2}, 0, {1, 2, 3, 4}, 0},
      {{3, 4}, 1, {1, 2}, 2, {1, 2, 3, 4}, 3},
      {{3, 4}, 0, {1, 2}, kNoValidBar, {1, 2, 3, 4}, 2},
      {{3, 4}, kNoValidBar, {1, 2}, 2, {1, 2, 3, 4}, kNoValidBar},
      {{3, 4}, 1, {}, 0, {3, 4}, 1},
      {{}, 0, {1, 2}, 1, {1, 2}, 1},
      {{}, 5, {1, 2}, 2, {1, 2}, 7},
      {{}, 0, {}, 0, {}, 0},
  };
  for (const Case &c : cases) {
    SVector own = Series(c.own, c.ownStart);
    SVector other = Series(c.other, c.otherStart);
    own.Insert(other);
    ExpectSound(own);
    EXPECT_EQ(Elements(own), c.result) << "case " << (&c - cases);
    EXPECT_EQ(own.startIndex, c.start) << "case " << (&c - cases);
    EXPECT_EQ(Elements(other), c.other);
  }
  SVector twice = Series({1, 2}, 1);
  twice.Insert(twice);
  EXPECT_EQ(Elements(twice), (Values{1, 2, 1, 2}));
  EXPECT_EQ(twice.startIndex, 1);
  SVector constant(5.0);
  SVector series = Series({6, 7});
  constant.Insert(series);
  ExpectSeries(constant, {6, 7, 5}, 0);
}

TEST(SeriesBeginResult, ReadsZeroBelowItsStart) {
  for (const int n : {-1, 0, 1, 2, 100}) {
    for (const int start : {-4, 0, 1, 60, 100, kNoValidBar}) {
      SpoilPool(100);
      SVector series = Series(Values(100, 5.0), 3);
      series.BeginResult(n, start);
      ExpectSound(series);
      EXPECT_EQ(series.size, std::max(n, 0));
      EXPECT_EQ(series.startIndex, start);
      for (int i = 0; i < std::min(series.size, start); ++i) EXPECT_EQ(series.data[i], 0.0);
    }
  }
}

TEST(SeriesRaiseStart, ClearsWhatFallsBelow) {
  SVector series = Series({1, 2, 3, 4});
  series.RaiseStart(2);
  EXPECT_EQ(Elements(series), (Values{0, 0, 3, 4}));
  EXPECT_EQ(series.startIndex, 2);
  series[0] = 7.0;
  series.RaiseStart(3);
  EXPECT_EQ(Elements(series), (Values{0, 0, 0, 4}));
  series.RaiseStart(kNoValidBar);
  EXPECT_EQ(Elements(series), (Values{0, 0, 0, 0}));
  EXPECT_EQ(series.startIndex, kNoValidBar);
}

TEST(SeriesCopyFrom, LeavesOutWhatIsOlder) {
  const SVector series = Series({1, 2, 3, 4}, 1);
  for (const int from : {-1, 0, 1, 3, 4, 99}) {
    SpoilPool(4);
    const SVector copy = series.CopyFrom(from);
    EXPECT_EQ(copy.startIndex, 1);
    ASSERT_EQ(copy.size, 4);
    for (int i = 0; i < 4; ++i) EXPECT_EQ(copy[i], i < from ? 0.0 : series[i]);
  }
  // What the whole remembers of its range does not hold for a part.
  EXPECT_EQ(series.GetMinTemp(0, 3), 2.0);
  EXPECT_EQ(series.CopyFrom(3).GetMinTemp(0, 3), 0.0);
  ExpectConstant(SVector(2.0).CopyFrom(0), 2.0);
}

TEST(SeriesIndexes, MoveWithoutOverflow) {
  constexpr struct {
    int index, bars, moved;
  } kCases[] = {
      {0, 5, 5},
      {5, -7, -2},
      {kNoValidBar, 1, kNoValidBar},
      {kNoValidBar, kGreatestInt, kNoValidBar},
      {kGreatestInt, 0, kNoValidBar},
      {kNoValidBar, -1, kNoValidBar - 1},
      {10, kGreatestInt, kNoValidBar},
      {kLeastInt, kLeastInt, -kNoValidBar},
  };
  for (const auto &c : kCases) EXPECT_EQ(MoveIndex(c.index, c.bars), c.moved);
}

TEST(SeriesIndexes, TruncateNumbersWithinTheIntegerRange) {
  const struct {
    double x;
    int integer;
  } cases[] = {
      {0.0, 0},
      {-0.9, 0},
      {2.99, 2},
      {-2.99, -2},
      {2147483646.9, 2147483646},
      {2147483647.0, kGreatestInt},
      {1e300, kGreatestInt},
      {kInfinity, kGreatestInt},
      {-2147483647.5, -2147483647},
      {-2147483648.0, kLeastInt},
      {-1e300, kLeastInt},
      {-kInfinity, kLeastInt},
      {kNaN, 0},
  };
  for (const auto &c : cases) EXPECT_EQ(TruncateToInt(c.x), c.integer) << c.x;
}

// Compares a series with a plain model of it through random storage operations.
TEST(SeriesStorage, FollowsItsModel) {
  std::mt19937 random(11);
  const auto below = [&random](int bound) {
    return static_cast<int>(random() % static_cast<unsigned>(bound));
  };
  SVector series;
  Values model;
  int start = 0;
  int capacity = 1;
  const auto resize = [&](int n) {
    if (n > capacity) {
      capacity = (n + 999) / 1000 * 1000;
      std::fill_n(model.begin(), std::min(static_cast<std::size_t>(std::max(start, 0)), model.size()), 0.0);
    }
    // Elements that come back within the block hold something, but nothing unwritten.
    for (int i = static_cast<int>(model.size()); i < std::min(n, series.size); ++i) {
      EXPECT_FALSE(std::isnan(series[i]));
      model.push_back(series[i]);
    }
    model.resize(static_cast<std::size_t>(n));
  };
  for (int step = 0; step < 6000; ++step) {
    const double x = below(1000) + 1.0;
    const int size = series.size;
    switch (below(12)) {
      case 0: {
        const int n = below(60) == 0 ? below(3000) : below(40);
        series.SetSize(n);
        resize(n);
        break;
      }
      case 1:
      case 2:
        series.Add(x);
        resize(size + 1);
        model.back() = x;
        break;
      case 3: {
        const int k = below(size + 2);
        series.Update(x, k);
        if (k < size) model[model.size() - 1 - static_cast<std::size_t>(k)] = x;
        break;
      }
      case 4:
      case 5: {
        const int i = below(size + 4) - 2;
        series[i] = x;
        if (i >= 0 && i < size) model[static_cast<std::size_t>(i)] = x;
        break;
      }
      case 6:
        start = below(size + 10) - 3;
        series.SetStartIndex(start);
        break;
      case 7: {
        const int n = below(50);
        series.ReAlloc(n);
        capacity = std::max(n, 1);
        model.resize(static_cast<std::size_t>(std::min(size, capacity)));
        std::fill_n(model.begin(), std::min(static_cast<std::size_t>(std::max(start, 0)), model.size()), 0.0);
        break;
      }
      case 8: {
        SVector other(series);
        capacity = std::max(capacity, size);
        if (below(2) == 0) {
          series = std::move(other);
          capacity = std::max(size, 1);
        } else {
          series = other;
        }
        break;
      }
      case 9: {
        SVector older = Series({x, x + 1}, below(4));
        series.Insert(older);
        model.insert(model.begin(), {x, x + 1});
        start = older.startIndex < 2 ? older.startIndex : start + 2;
        if (size + 2 > capacity) capacity = (size + 2 + 999) / 1000 * 1000;
        break;
      }
      case 10:
        if (below(10) == 0) {
          series.Alloc(30);
          capacity = 30;
          model.assign(static_cast<std::size_t>(std::min(size, 30)), 0.0);
        } else if (below(10) == 0) {
          series.ClearData();
          model.clear();
          start = 0;
        }
        break;
      default:
        series = series(below(3));
        start = static_cast<int>(series.startIndex);
        capacity = std::max(size, 1);
        model = Elements(series);
    }
    ExpectSound(series);
    ASSERT_EQ(Elements(series), model) << "step " << step;
    ASSERT_EQ(series.startIndex, start) << "step " << step;
    ASSERT_EQ(series.capacity, capacity) << "step " << step;
  }
}

}  // namespace
}  // namespace trovenu
