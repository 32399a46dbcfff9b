#include <gtest/gtest.h>

#include <vector>

#include "tests/formula/bars.h"
#include "trovenu/formula/user_function_list.h"
#include "trovenu/indicator/index.h"

namespace trovenu::tests {
namespace {

SFunction Pattern(const char *body) {
  SFunction pattern;
  pattern.Expression = body;
  return pattern;
}

class CandleScan : public testing::Test {
 protected:
  CandleScan() : scan_("", kCandleIndex) {
    bars_.close = Series({10, 12, 11, 13});
    bars_.open = Series({11, 11, 11, 11});
    scan_.SetVariable(bars_.close, bars_.open, bars_.high, bars_.low, bars_.volume, bars_.date,
                      bars_.openInterest, bars_.amount);
    scan_.SetCandle(&patterns_);
  }
  std::vector<double> Marks() const {
    std::vector<double> marks;
    for (int i = 0; i < scan_.ExpData[0].GetSize(); ++i) marks.push_back(scan_.ExpData[0][i]);
    return marks;
  }

  Bars bars_;
  SFunctionList patterns_;
  SIndex scan_;
};

TEST_F(CandleScan, TheLastPatternThatFitsIsMarked) {
  patterns_.Add(Pattern("c > o"));
  patterns_.Add(Pattern(""));
  patterns_.Add(Pattern("c == 13"));
  patterns_.Add(Pattern("c +"));
  scan_.Calc();
  EXPECT_EQ(Marks(), (std::vector<double>{-1, 0, -1, 2}));
}

// Required: a live update leaves 0.0 where it finds no pattern, which is also the first pattern's number.
TEST_F(CandleScan, ALiveUpdateResetsToZero) {
  patterns_.Add(Pattern("c > o"));
  patterns_.Add(Pattern("c < o"));
  scan_.CalcLast();
  EXPECT_EQ(scan_.CalcCount[0], 0);
  EXPECT_EQ(Marks(), (std::vector<double>{1, 0, -1, 0}));
  bars_.close.Update(11, 0);
  bars_.close.Add(11);
  bars_.open.Add(12);
  scan_.CalcLast();
  EXPECT_EQ(Marks(), (std::vector<double>{1, 0, -1, 0, 1}));
}

TEST_F(CandleScan, ALiveUpdateMarksNumbersAndLeavesFaultsOutAsAFullScanDoes) {
  patterns_.Add(Pattern("c > o"));
  patterns_.Add(Pattern("2 > 1"));
  patterns_.Add(Pattern("nothing; c > o"));
  for (int scan = 0; scan < 2; ++scan) {
    scan_.CalcLast();
    EXPECT_EQ(Marks(), (std::vector<double>{1, 1, 1, 1}));
  }
}

// Required: only a scan whose very first pattern leaves the tail path open takes it.
TEST_F(CandleScan, TheFirstPatternDecidesOnTheTail) {
  patterns_.Add(Pattern("rsi(2) > 0"));
  patterns_.Add(Pattern("c < o"));
  scan_.CalcLast();
  EXPECT_EQ(scan_.CalcCount[0], -1);
  EXPECT_EQ(scan_.CalcCount[1], 0);
}

}  // namespace
}  // namespace trovenu::tests
