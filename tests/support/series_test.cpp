#include "trovenu/support/series.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <utility>
#include <vector>

#include "tests/support/series_tools.h"

namespace trovenu {
namespace {

using Values = std::vector<double>;

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

TEST(SeriesReAlloc, ElementsBelowStartIndexAreNotCarriedOver) {
  SVector full(1000);
  full.InitValue(7.0);
  full.SetStartIndex(10);
  full.Add(8.0);
  EXPECT_EQ(full.capacity, 2000);
  for (int i = 0; i <= 1000; ++i) EXPECT_EQ(full[i], i < 10 ? 0.0 : i < 1000 ? 7.0 : 8.0) << i;
}

TEST(SeriesIndexes, TruncateNumbersWithinTheIntegerRange) {
  const struct {
    double x;
    int integer;
  } cases[] = {{0.0, 0},
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
               {kNaN, 0}};
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
