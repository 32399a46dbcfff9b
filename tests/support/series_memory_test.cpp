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

TEST(SeriesOutOfMemory, GoesToTheHandlerOfTheHost) {
  ErrorTrap trap;
  const SVector series;
  series.Error("first");
  EXPECT_EQ(trap.Last(), "first");
  testing::internal::CaptureStderr();
  SVector::SetErrorHandler(nullptr);
  series.Error("second\n");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "second\n");
  EXPECT_EQ(trap.Count(), 1);
}

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
      {"constant = series",
       [](SVector &target, SVector &x) {
         target = SVector(1.0);
         target = x;
       }},
      {"CopyFrom", [](SVector &target, SVector &x) { target = x.CopyFrom(1500); }},
      {"operator+", [](SVector &target, SVector &x) { target = x + x; }},
      {"operator-", [](SVector &target, SVector &x) { target = -x; }},
      {"operator<", [](SVector &target, SVector &x) { target = x < 5.0; }},
      {"operator()", [](SVector &target, SVector &x) { target = x(5); }},
      {"operator() ahead", [](SVector &target, SVector &x) { target = x(-5); }},
      {"VecPlus", [](SVector &target, SVector &x) { VecPlus(target, x, x); }},
      {"VecNot", [](SVector &target, SVector &x) { VecNot(target, x); }},
      {"VecCopy", [](SVector &target, SVector &x) { VecCopy(target, x); }},
      {"VecRef", [](SVector &target, SVector &x) { VecRef(target, x, 3); }},
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

TEST(SeriesOutOfMemory, MovingCalculationsAreEmpty) {
  using Calculation = void (SVector::*)(const SVector &, int);
  const std::pair<const char *, Calculation> cases[] = {
      {"CalcSum", &SVector::CalcSum},         {"CalcAvg", &SVector::CalcAvg},
      {"CalcEAvg", &SVector::CalcEAvg},       {"CalcWAvg", &SVector::CalcWAvg},
      {"CalcTAvg", &SVector::CalcTAvg},       {"CalcGAvg", &SVector::CalcGAvg},
      {"CalcHAvg", &SVector::CalcHAvg},       {"CalcStdev", &SVector::CalcStdev},
      {"CalcHighest", &SVector::CalcHighest}, {"CalcLowest", &SVector::CalcLowest},
      {"CalcESum", &SVector::CalcESum},       {"CalcSumCum", &SVector::CalcSumCum},
      {"CalcAvgCum", &SVector::CalcAvgCum},   {"CalcEAvgCum", &SVector::CalcEAvgCum},
      {"CalcWAvgCum", &SVector::CalcWAvgCum}, {"CalcESumCum", &SVector::CalcESumCum},
  };
  for (const auto &[name, calculation] : cases) {
    for (const int n : {20, 1400}) {
      ExpectSurvivesEveryRefusal(name, false, [&, calculation = calculation](SVector &target, SVector &x) {
        (target.*calculation)(x, n);
        EXPECT_TRUE(target.size == 0 || target.size == 2000 || target.size == n);
      });
    }
    // Into the source itself, which needs a copy of it.
    ExpectSurvivesEveryRefusal(name, false, [calculation = calculation](SVector &target, SVector &x) {
      target = x;
      (target.*calculation)(target, 30);
    });
  }
}

// A block that a series has given back reads as 0.0 to the next taker, whichever way it was written.
TEST(SeriesBlocks, LeaveNothingBehind) {
  const struct {
    const char *name;
    void (*write)(SVector &series);
  } cases[] = {
      {"Add", [](SVector &s) { s.ClearData(), s.Add(5.0); }},
      {"Update", [](SVector &s) { s.Update(5.0, 90); }},
      {"operator[]", [](SVector &s) { s[3] = 5.0; }},
      {"InitValue", [](SVector &s) { s.InitValue(5.0); }},
      {"number", [](SVector &s) { s = 5.0; }},
      {"SetSize", [](SVector &s) { s.SetSize(0), s.SetSize(80), std::fill_n(s.data, 80, 5.0); }},
      {"SetStartIndex", [](SVector &s) { s.SetStartIndex(0), std::fill_n(s.data, 100, 5.0); }},
      {"copy",
       [](SVector &s) {
         const SVector other = Series(Values(99, 5.0));
         s = other;
       }},
      {"copy with a later start", [](SVector &s) { s = 5.0, s = Series(Values(100, 5.0)).CopyFrom(60); }},
      {"move", [](SVector &s) { s.RaiseStart(0), s[0] = 5.0, s = SVector(std::move(s)); }},
      {"in place", [](SVector &s) { s = 5.0, s.RaiseStart(0), VecPlus(s, s, SVector(1.0)); }},
      {"in place, a partial copy",
       [](SVector &s) {
         s = Series(Values(100, 5.0)).CopyFrom(60);
         VecNot(s, s);
       }},
      {"in place, later", [](SVector &s) { s = 5.0, s.SetStartIndex(70), VecPlus(s, s, SVector(1.0)); }},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    OnFreshThread([&c] {
      {
        SVector series;
        series.BeginResult(100, 100);
        c.write(series);
      }
      // As many as may wait.
      std::vector<double *> blocks;
      for (int i = 0; i < 8; ++i) blocks.push_back(AcquireBlock(100, 100));
      for (double *block : blocks) {
        EXPECT_EQ(std::count(block, block + 100, 0.0), 100);
        ReleaseBlock(block, 100, 100);
      }
    });
  }
}

}  // namespace
}  // namespace trovenu
