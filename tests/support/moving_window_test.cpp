#include "trovenu/support/moving_window.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "tests/support/series_tools.h"

namespace trovenu {
namespace {

// Keeps the bars of a run and checks that it grows without a gap, on the side that is said.
struct RunOfBars {
  struct Part {
    int begin = 0;
    int end = 0;
  };
  int n;

  void Append(Part &part, int i, int block) const {
    if (part.begin == part.end) part = {i, i};
    EXPECT_EQ(i, part.end);
    EXPECT_EQ(block % n, 0);
    ++part.end;
  }
  void Prepend(Part &part, int i, int block) const {
    if (part.begin == part.end) part = {i + 1, i + 1};
    EXPECT_EQ(i + 1, part.begin);
    EXPECT_EQ(block % n, 0);
    --part.begin;
  }
  double Value(const Part &older, const Part &newer, int newerCount, int i, int block) const {
    EXPECT_EQ(newer.begin, block);
    EXPECT_EQ(newer.end, i + 1);
    EXPECT_EQ(newerCount, newer.end - newer.begin);
    if (older.begin == older.end) {
      EXPECT_EQ(block, i - n + 1);
    } else {
      EXPECT_EQ(older.begin, i - n + 1);
      EXPECT_EQ(older.end, block);
    }
    return i;
  }
};

TEST(SlideWindow, HandsOverExactlyTheBarsOfEachWindow) {
  for (const int n : {1, 2, 3, 7, 20, 511, 512, 513, 514, 700, 1023, 1024, 1025, 1500}) {
    for (const int first : {0, 1, 6, 512, 1200}) {
      const int size = 1600;
      std::vector<double> out(size, -1.0);
      SlideWindow(RunOfBars{n}, first, size, n, out.data());
      for (int i = 0; i < size; ++i) {
        ASSERT_EQ(out[static_cast<std::size_t>(i)], i < first + n - 1 ? -1.0 : i)
            << "n " << n << " first " << first;
      }
      if (HasFailure()) return;
    }
  }
}

TEST(SlideWindow, TouchesNothingWhereNoWindowFits) {
  double untouched = 5.0;
  const double x = 1.0;
  SlideWindow(WindowSum{&x}, 0, 0, 1, &untouched);
  SlideWindow(WindowSum{&x}, 0, 1, 2, &untouched);
  SlideWindow(WindowSum{&x}, 3, 1, 1, &untouched);
  SlideWindow(WindowSum{&x}, 0, 1, kGreatestInt, &untouched);
  SlideWindow(WindowSum{&x}, kGreatestInt, 1, kGreatestInt, &untouched);
  EXPECT_EQ(untouched, 5.0);
}

TEST(SlideWindow, BuildsTheEdgesOfVeryLongWindowsInGroups) {
  // Sums of whole numbers are exact, so they must equal the differences of the running total.
  const int size = 620000;
  std::vector<double> x;
  std::vector<double> total{0.0};
  std::mt19937 random(3);
  for (int i = 0; i < size; ++i) {
    x.push_back(static_cast<double>(random() % 1000));
    total.push_back(total.back() + x.back());
  }
  std::vector<double> out(static_cast<std::size_t>(size));
  const int group = kWindowStrip * kWindowStrip;
  for (const int n : {group, group + 1, group + kWindowStrip + 1, 300001}) {
    for (const int first : {0, 12345}) {
      SlideWindow(WindowSum{x.data()}, first, size, n, out.data());
      for (std::size_t i = static_cast<std::size_t>(first + n - 1); i < x.size(); ++i) {
        ASSERT_EQ(out[i], total[i + 1] - total[i + 1 - static_cast<std::size_t>(n)])
            << "n " << n << " bar " << i;
      }
    }
  }
}

TEST(ForEachFlatWindow, FindsExactlyTheWindowsOfEqualElements) {
  struct Case {
    std::vector<double> x;
    int first;
    int n;
    std::vector<int> flat;
  };
  const Case cases[] = {
      {{}, 0, 1, {}},
      {{5.0}, 0, 2, {}},
      {{5.0, 6.0, kNaN}, 0, 1, {0, 1}},
      {{1.0, 2.0, 2.0, 2.0, 3.0, 3.0, 3.0}, 0, 3, {3, 6}},
      {{2.0, 2.0, 2.0, 2.0}, 1, 3, {3}},
      {{0.0, -0.0, 0.0}, 0, 2, {1, 2}},
      {{kNaN, kNaN, kNaN}, 0, 2, {}},
      {{kInfinity, kInfinity, 1.0}, 0, 2, {1}},
      {{1.0, 2.0, 2.0, 2.0}, 0, 4, {}},
      {{7.0, 7.0, 7.0, 7.0}, 0, 4, {3}},
  };
  for (const Case &c : cases) {
    std::vector<int> flat;
    ForEachFlatWindow(c.x.data(), c.first, static_cast<int>(c.x.size()), c.n,
                      [&](int i) { flat.push_back(i); });
    EXPECT_EQ(flat, c.flat) << "case " << (&c - cases);
  }
}

}  // namespace
}  // namespace trovenu
