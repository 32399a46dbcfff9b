#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "tests/support/series_tools.h"
#include "trovenu/support/series.h"

namespace trovenu {
namespace {

using Values = std::vector<double>;

TEST(SeriesSearch, FindsElementsThatAreNotZero) {
  const struct {
    Values x;
    int from, first, previous;
  } cases[] = {{{0, 0, 3, 0, 5}, 0, 2, -1},  {{0, 0, 3, 0, 5}, 3, 4, 2}, {{0, 0, 3, 0, 5}, 5, -1, 4},
               {{0, 0, 3, 0, 5}, -1, 2, -1}, {{4, 0}, kLeastInt, 0, -1}, {{0, -0.0, 0}, 1, -1, -1},
               {{0, kNaN, 0}, 0, 1, -1},     {{0, 5e-324, 0}, 2, -1, 1}, {{}, 0, -1, -1}};
  for (const auto &c : cases) {
    // The start index does not matter to either.
    for (const int start : {0, 3, kNoValidBar}) {
      const SVector series = Series(c.x, start);
      EXPECT_EQ(series.FindFirstNonZeroIndex(c.from), c.first) << "case " << (&c - cases);
      EXPECT_EQ(series.FindPrevNonZeroIndex(c.from), c.previous) << "case " << (&c - cases);
    }
  }
}

TEST(SeriesSearch, GivesTheExtremesOfValidBars) {
  const struct {
    Values x;
    int start, first, last;
    double largest, smallest;
  } cases[] = {{{9, 3, 5, 4, -9}, 1, 0, 3, 5.0, 3.0},
               {{9, 3, 5, 4, -9}, 0, 3, 99, 4.0, -9.0},
               {{9, 3, 5, 4, -9}, 0, kLeastInt, kGreatestInt, 9.0, -9.0},
               {{9, 3, 5, 4, -9}, 0, 3, 2, kNoMaximum, -kNoMaximum},
               {{9, 3, 5, 4, -9}, 3, 0, 2, kNoMaximum, -kNoMaximum},
               {{9, 3, 5, 4, -9}, kNoValidBar, 0, 4, kNoMaximum, -kNoMaximum},
               {{}, 0, 0, 0, kNoMaximum, -kNoMaximum},
               {{9, 3}, -4, -4, 0, 9.0, 9.0},
               {{-1e300, -1e301}, 0, 0, 1, -1e300, -1e301},
               {{1e300, 1e301}, 0, 0, 1, 1e301, 1e300},
               {{kNaN, 4, kNaN, 3, kNaN}, 0, 0, 4, 4.0, 3.0},
               {{-kInfinity, kInfinity}, 0, 0, 1, kInfinity, -kInfinity}};
  for (const auto &c : cases) {
    SCOPED_TRACE(testing::Message() << "case " << (&c - cases));
    const SVector series = Series(c.x, c.start);
    for (const int mode : {0, 1, -1, 7}) {
      EXPECT_EQ(series.GetMax(c.first, c.last, mode), c.largest);
      EXPECT_EQ(series.GetMin(c.first, c.last, mode), c.smallest);
    }
    for (int time = 0; time < 2; ++time) {
      EXPECT_EQ(series.GetMaxTemp(c.first, c.last), c.largest);
      EXPECT_EQ(series.GetMinTemp(c.first, c.last), c.smallest);
    }
    EXPECT_EQ(series.GetMax(), series.GetMax(kLeastInt, kGreatestInt, 0));
    EXPECT_EQ(series.GetMin(), series.GetMin(kLeastInt, kGreatestInt, 0));
  }
  EXPECT_EQ(SVector(2.5).GetMax(), 2.5);
  EXPECT_EQ(SVector(2.5).GetMin(0, 10, 0), 2.5);
}

TEST(SeriesSearch, RemembersExtremesUntilTheSeriesChanges) {
  const Values x = {9, 3, 8, 4, 6};
  SVector older = Series({50});
  const SVector other = Series({70, 3}, 0);
  const struct {
    const char *name;
    void (*change)(SVector &series, SVector &older, const SVector &other);
    double largest;
  } cases[] = {
      {"start index", [](SVector &s, SVector &, const SVector &) { s.SetStartIndex(4); }, 6.0},
      {"Add", [](SVector &s, SVector &, const SVector &) { s.Add(10.0); }, 10.0},
      {"Update", [](SVector &s, SVector &, const SVector &) { s.Update(80.0, 1); }, 80.0},
      {"SetSize", [](SVector &s, SVector &, const SVector &) { s.SetSize(2); }, 3.0},
      {"ClearData", [](SVector &s, SVector &, const SVector &) { s.ClearData(); }, kNoMaximum},
      {"Insert", [](SVector &s, SVector &o, const SVector &) { s.Insert(o); }, 50.0},
      {"ReAlloc", [](SVector &s, SVector &, const SVector &) { s.ReAlloc(2); }, 3.0},
      {"move", [](SVector &s, SVector &, const SVector &o) { s = SVector(o); }, 70.0},
      {"in place", [](SVector &s, SVector &, const SVector &) { VecUMinus(s, s); }, -3.0},
      {"calculation", [](SVector &s, SVector &, const SVector &) { s.CalcSum(s, 2); }, 12.0},
      {"InitTemp", [](SVector &s, SVector &, const SVector &) { s.data[4] = 75.0, s.InitTemp(); }, 75.0},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    SVector series = Series(x, 1);
    EXPECT_EQ(series.GetMaxTemp(0, 5), 8.0);
    EXPECT_EQ(series.GetMinTemp(0, 5), 3.0);
    c.change(series, older, other);
    EXPECT_EQ(series.GetMaxTemp(0, 5), c.largest);
    EXPECT_EQ(series.GetMinTemp(0, 5), series.GetMin(0, 5, 0));
    EXPECT_EQ(series.GetMaxTemp(2, 2), series.GetMax(2, 2, 0));
  }
}

}  // namespace
}  // namespace trovenu
