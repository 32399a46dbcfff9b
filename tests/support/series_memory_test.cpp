// What series do where memory is exhausted, and what they leave behind in the blocks that they give back.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <utility>
#include <vector>

#include "tests/support/series_tools.h"
#include "trovenu/support/block_pool.h"
#include "trovenu/support/series.h"

namespace trovenu {
namespace {

using Values = std::vector<double>;

constexpr const char *kOutOfMemory = "Out of memory trying to create SVector\n";

// Runs `operation` again and again on a thread whose pool is empty, and refuses another of the blocks that it
// asks for each time. `target` has 50 elements and starts at 3; `x` has 2000.
void ExpectSurvivesEveryRefusal(const char *name, bool keepsTarget,
                                const std::function<void(SVector &target, SVector &x)> &operation) {
  SCOPED_TRACE(name);
  int refusals = 0;
  bool refused = true;
  for (int nth = 1; refused && nth < 20; ++nth) {
    OnFreshThread([&] {
      ErrorTrap trap;
      SVector target = Series(Values(50, 4.0), 3);
      SVector x = Series(RandomWalk(2000, 1.0), 2);
      const SVector before(target);
      const SVector xBefore(x);
      FailBlockAllocation(nth);
      EXPECT_NO_THROW(operation(target, x));
      FailBlockAllocation(0);
      refused = trap.Count() > 0;
      if (!refused) return;
      ++refusals;
      EXPECT_EQ(trap.Count(), 1);
      EXPECT_EQ(trap.Last(), kOutOfMemory);
      ExpectSound(target);
      ExpectSameSeries(x, xBefore);
      if (keepsTarget) {
        EXPECT_EQ(target.capacity, 50);
        ExpectSameSeries(target, before);
      } else {
        // Nothing unwritten is left to be read.
        for (int i = 0; i < target.size; ++i) EXPECT_FALSE(std::isnan(target[i]));
      }
      target = xBefore;
      target.Add(5.0);
      EXPECT_EQ(target.size, 2001);
      EXPECT_EQ(target[2000], 5.0);
    });
  }
  EXPECT_FALSE(refused);
  EXPECT_GT(refusals, 0);
}

TEST(SeriesOutOfMemory, StorageLeavesTheSeriesAsItWas) {
  const struct {
    const char *name;
    void (*operation)(SVector &target, SVector &x);
  } cases[] = {
      {"Alloc", [](SVector &target, SVector &) { target.Alloc(700); }},
      {"ReAlloc", [](SVector &target, SVector &) { target.ReAlloc(700); }},
      {"ReAlloc to fewer", [](SVector &target, SVector &) { target.ReAlloc(20); }},
      {"SetSize", [](SVector &target, SVector &) { target.SetSize(700); }},
      {"Add", [](SVector &target, SVector &) { target.Add(1.0); }},
      {"Insert", [](SVector &target, SVector &x) { target.Insert(x); }},
      {"Copy", [](SVector &, SVector &x) { const SVector copy(x); }},
      {"Size", [](SVector &, SVector &) { ExpectSound(SVector(700)); }},
  };
  for (const auto &c : cases) ExpectSurvivesEveryRefusal(c.name, true, c.operation);
}

TEST(SeriesOutOfMemory, ResultsAreEmpty) {
  const struct {
    const char *name;
    void (*operation)(SVector &target, SVector &x);
  } cases[] = {
      {"operator=", [](SVector &target, SVector &x) { target = x; }},
      {"CopyFrom", [](SVector &target, SVector &x) { target = x.CopyFrom(1500); }},
      {"operator+", [](SVector &target, SVector &x) { target = x + x; }},
      {"operator()", [](SVector &target, SVector &x) { target = x(5); }},
      {"VecPlus", [](SVector &target, SVector &x) { VecPlus(target, x, x); }},
      {"VecNot", [](SVector &target, SVector &x) { VecNot(target, x); }},
      {"BeginResult", [](SVector &target, SVector &x) { target.BeginResult(x.size, x.size); }},
  };
  for (const auto &c : cases) {
    ExpectSurvivesEveryRefusal(c.name, false, [&c](SVector &target, SVector &x) {
      c.operation(target, x);
      EXPECT_TRUE(target.size == 0 || target.size == 2000);
    });
  }
  // An operand of another size makes way for the result only when that is there.
  ExpectSurvivesEveryRefusal("VecMultiply", false, [](SVector &target, SVector &x) {
    SVector shorter(1200);
    VecMultiply(shorter, shorter, x);
    SVector longer(x);
    VecMultiply(longer, target, longer);
  });
}

}  // namespace
}  // namespace trovenu
