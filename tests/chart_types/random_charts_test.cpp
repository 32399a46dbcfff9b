// What holds on any data: charts of random walks, and the quick forms against the steps as they are told.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "tests/chart_types/chart_case.h"
#include "trovenu/chart_types/turning_points.h"
#include "trovenu/support/date_number.h"

namespace trovenu::tests {
namespace {

constexpr int kWalks = 60;

class RandomCharts : public testing::Test {
 protected:
  // Steps of whole points, so that closes repeat and levels are touched.
  std::vector<double> Walk(int bars, int step) {
    std::vector<double> closes;
    double close = 500.0;
    for (int i = 0; i < bars; ++i) closes.push_back(close = std::max(close + Any(-step, step), 1.0));
    return closes;
  }
  int Any(int least, int most) {
    return least + static_cast<int>(random_() % static_cast<unsigned>(most - least + 1));
  }
  static double At(const Chart &chart, int series, int i) { return chart.index.ExpData[series][i]; }

  std::mt19937 random_{5};
};

TEST_F(RandomCharts, BricksHaveTheSizeAndFollowOneAnother) {
  for (int walk = 0; walk < kWalks; ++walk) {
    Chart chart(Walk(300, 12));
    const int size = Any(1, 9);
    chart.index.VarValue[0] = size;
    chart.Run("CalcRenko");
    ASSERT_GT(chart.index.ExpData[1].GetSize(), 10);
    for (int i = 0; i < chart.index.ExpData[1].GetSize(); ++i) {
      const double start = At(chart, 2, i), end = At(chart, 3, i);
      ASSERT_EQ(std::fabs(end - start), size);
      if (i == 0) continue;
      const bool turns = (At(chart, 2, i - 1) < At(chart, 3, i - 1)) != (start < end);
      ASSERT_EQ(start, turns ? At(chart, 2, i - 1) : At(chart, 3, i - 1));
      ASSERT_LE(At(chart, 1, i - 1), At(chart, 1, i));
    }
  }
}

TEST_F(RandomCharts, KagiLinesMeetAndAlternate) {
  for (int walk = 0; walk < kWalks; ++walk) {
    Chart chart(Walk(300, 12));
    chart.index.VarValue[0] = Any(1, 30);
    chart.Run("CalcKagi");
    const std::vector<double> kagi = Elements(chart.index.ExpData[3]);
    for (int i = 1; i < static_cast<int>(kagi.size()); ++i) {
      ASSERT_EQ(At(chart, 2, i), At(chart, 3, i - 1));
      // The last line ends at the upper level whatever its way.
      if (i + 1 < static_cast<int>(kagi.size())) {
        ASSERT_NE(At(chart, 2, i) < At(chart, 3, i), At(chart, 2, i - 1) < At(chart, 3, i - 1));
      }
    }
    chart.Run("CalcSwing");
    ASSERT_EQ(Elements(chart.index.ExpData[3]), kagi);
  }
}

TEST_F(RandomCharts, ColumnsAlternateAndHoldTheReversal) {
  for (int walk = 0; walk < kWalks; ++walk) {
    Chart chart(Walk(300, 12));
    const int box = Any(1, 5), reversal = Any(1, 4);
    chart.index.VarValue[0] = reversal;
    chart.index.VarValue[1] = box;
    chart.Run("CalcPnF");
    ASSERT_GT(chart.index.ExpData[1].GetSize(), 3);
    for (int i = 1; i < chart.index.ExpData[1].GetSize(); ++i) {
      const double height = At(chart, 3, i) - At(chart, 2, i);
      ASSERT_GE(std::fabs(height), (reversal + 1) * box);
      ASSERT_NE(height > 0, At(chart, 3, i - 1) > At(chart, 2, i - 1));
      ASSERT_EQ(At(chart, 2, i), At(chart, 3, i - 1) + (height > 0 ? box : -box));
    }
  }
}

TEST(BoxAwayStart, UndoesTheShiftOfAnUpColumnOfOneBox) {
  const BoxAwayStart start{1.0};
  EXPECT_EQ(start({10.0, 12.0}, {}), 11.0);
  EXPECT_EQ(start({10.0, 11.0}, {}), 10.0);
  EXPECT_EQ(start({10.0, 9.0}, {}), 9.0);
}

// The lines as told, with a look at all edges of the window for each.
struct LiteralLines {
  std::vector<double> positions, ends;
  double changeValue = 0.0;
};

LiteralLines DrawLines(Chart &chart, int lines) {
  const SVector &close = chart.Data().close;
  const int first = close.GetStartIndex(), size = close.GetSize();
  SVector bottom(size), top(size);
  bool rising = false;
  for (int i = first + 1; i < size; ++i) {
    if (close[i] == close[i - 1]) continue;
    rising = close[i] > close[i - 1];
    break;
  }
  LiteralLines result;
  double highest = close[first], lowest = highest, upBreak = highest, downBreak = highest;
  bottom[0] = top[0] = close[first];
  int n = 1;
  const auto add = [&](bool up, int bar) {
    rising = up;
    (up ? highest : lowest) = close[bar];
    bottom[n] = up ? top[n - 1] : close[bar];
    top[n] = up ? close[bar] : bottom[n - 1];
    ++n;
    result.changeValue = chart.index.MakeChangeValue(up ? 1 : 0, up ? bottom : top, n, lines);
    (up ? upBreak : downBreak) = result.changeValue;
    result.positions.push_back(bar);
    result.ends.push_back(close[bar]);
  };
  for (int i = first + 1; i < size; ++i) {
    if (rising) {
      if (close[i] > highest) add(true, i);
      if (close[i] < upBreak) add(false, i);
    } else {
      if (close[i] < lowest) add(false, i);
      if (close[i] > downBreak) add(true, i);
    }
  }
  return result;
}

TEST_F(RandomCharts, LinesAreThoseOfAWholeLookBack) {
  for (int walk = 0; walk < kWalks; ++walk) {
    Chart chart(Walk(300, 12), walk % 3 == 0 ? Any(0, 20) : 0);
    const int lines = Any(-2, 12);
    if (lines == 0) continue;
    chart.index.VarValue[0] = lines;
    chart.Run("CalcThreeLineBreak");
    const LiteralLines expected = DrawLines(chart, lines);
    ASSERT_EQ(Elements(chart.index.ExpData[1]), expected.positions);
    ASSERT_EQ(Elements(chart.index.ExpData[3]), expected.ends);
    SString changeValue;
    changeValue = expected.changeValue;
    ASSERT_STREQ(chart.index.VarValue[1].c_str(), changeValue.c_str());
  }
}

TEST(MakeChangeValue, BoundsAndPositionsOutside) {
  Chart chart({1, 1, 1, 1}, 1);
  SVector edges;
  for (double edge : {5.0, 7.0, 3.0, 4.0}) edges.Add(edge);
  const struct {
    int up, count, lines;
    double expected;
  } cases[] = {
      {1, 4, 3, 3},  // positions 1 to 3
      {0, 4, 9, 7},  // not 0, which lies before the first close
      {1, 2, 1, 7},  // position 1 alone
      {1, 1, 5, 5},  // none from 1 on: the newest
      {1, 4, 0, 4},          {1, 4, -2147483647 - 1, 4}, {1, 0, 3, 0}, {0, -2147483647 - 1, 3, 0},
      {1, 2147483647, 2, 0}, {1, 6, 2147483647, 0},  // behind the edges stand zeros
  };
  for (const auto &test : cases)
    EXPECT_EQ(chart.index.MakeChangeValue(test.up, edges, test.count, test.lines), test.expected)
        << test.up << " " << test.count << " " << test.lines;
}

TEST_F(RandomCharts, BandsAreThoseOfASearchFromTheFirst) {
  int gaps = 0;
  for (int walk = 0; walk < 20 * kWalks; ++walk) {
    // Tenths, whose bands are rounded.
    std::vector<double> closes = Walk(30, 9);
    for (double &close : closes) close = (close - 480.0) / 10.0;
    Chart chart(closes);
    const int bands = Any(2, 40), first = Any(-3, 8), last = Any(20, 33);
    chart.index.VarValue[0] = bands;
    chart.Run("CalcVolumeAtPrice", 0, first, last);
    std::vector<double> volumes(static_cast<std::size_t>(bands));
    double inside = 0.0;
    for (int i = std::max(first, 0); i <= std::min(last, 29); ++i) {
      int k = 0;
      while (k < bands && !(At(chart, 0, k) <= closes[static_cast<std::size_t>(i)] &&
                            closes[static_cast<std::size_t>(i)] <= At(chart, 1, k)))
        ++k;
      if (k == bands) {
        ++gaps;
      } else {
        volumes[static_cast<std::size_t>(k)] += 1.0;
        inside += 1.0;
      }
    }
    ASSERT_EQ(Elements(chart.index.ExpData[2]), volumes);
    double shares = 0.0;
    for (double share : Elements(chart.index.ExpData[4])) shares += share;
    ASSERT_NEAR(shares, inside > 0.0 ? 1.0 : 0.0, 1e-12);
  }
  EXPECT_GT(gaps, 0);
}

TEST(VolumeAtPrice, OneBandKeepsTheOldResults) {
  Chart chart({10, 11});
  chart.index.AddData(3, 7.0);
  chart.index.VarValue[0] = "1";
  chart.Run("CalcVolumeAtPrice");
  EXPECT_EQ(Elements(chart.index.ExpData[3]), std::vector<double>{7.0});
}

TEST(CounterClock, WritesTheFormulasOfItsAverages) {
  Chart chart({10, 11});
  chart.index.VarValue[0] = "x";
  chart.Run("CalcCounterClock");
  EXPECT_STREQ(chart.index.Expression[2].c_str(), "avg(c,25)");
  EXPECT_STREQ(chart.index.ConvExpression[3].c_str(), "avg(v,25)");
}

// The profile as told, each entry with a look at all bars of its block.
std::vector<std::vector<double>> DrawProfile(const SPriceData &data, int minutes) {
  const SVector &close = data.close, &date = data.date;
  const int first = close.GetStartIndex(), size = close.GetSize(), count = size - first;
  SVector mark, letters(count), days(count), volumes(count), counts(count);
  double next = 0.0;
  for (int i = first; i < size; ++i) {
    const bool opens = i == first || next <= date[i];
    mark.Add(opens ? 1.0 : 0.0);
    if (opens) next = GetNextTime(date[i], minutes);
  }
  letters.InitValue(1.0);
  for (int i = first; i < size; ++i) {
    int end = mark.FindFirstNonZeroIndex(i + 1);
    if (end < 0) end = size;
    if (letters[i] != 1.0) continue;
    for (int j = i; j < end; ++j) {
      if (j != i && close[j] != close[i]) continue;
      if (j != i) letters[j] = 0.0;
      volumes[i] += data.volume[j];
      counts[i] += 1.0;
    }
  }
  double letter = 65.0;
  int block = mark.FindFirstNonZeroIndex(mark.FindFirstNonZeroIndex(0) + 1);
  letters[0] = letter;
  days[0] = 1.0;
  for (int i = first + 1; i < size; ++i) {
    if (letters[i] == 0.0) continue;
    const bool isNewDay = GetLongDate(date[letters.FindPrevNonZeroIndex(i - 1)]) < GetLongDate(date[i]);
    if (isNewDay) days[i] = 1.0;
    letter = isNewDay ? 65.0 : letter + (i == block ? 1.0 : 0.0);
    if (isNewDay || i == block) block = mark.FindFirstNonZeroIndex(block + 1);
    letters[i] = letter;
  }
  return {Elements(letters), Elements(days), Elements(volumes), Elements(counts)};
}

TEST_F(RandomCharts, ProfileIsThatOfAWholeLookAtEachBlock) {
  for (int walk = 0; walk < kWalks; ++walk) {
    const int start = walk % 4 == 0 ? Any(0, 30) : 0;
    Chart chart(Walk(400, 3), start);
    SPriceData &data = chart.Data();
    double date = 20240226093000.0;
    for (int i = 0; i < data.date.GetSize(); ++i) {
      data.date[i] = date;
      data.volume[i] = Any(0, 9);
      if (Any(0, 20) == 0) data.close[i] = Any(0, 1) == 0 ? 0.0 : -0.0;
      if (Any(0, 40) == 0) data.close[i] = std::nan("");
      date = GetNextTime(date, Any(0, 30) == 0 ? Any(600, 3000) : Any(1, 9));
    }
    const int minutes = Any(0, 3) == 0 ? Any(1000, 9000) : Any(15, 90);
    chart.index.VarValue[0] = minutes;
    chart.Run("CalcMarketProfile");
    const auto expected = DrawProfile(data, minutes);
    for (int i = 1; i < kExpressions; ++i)
      ASSERT_EQ(Elements(chart.index.ExpData[i]), expected[static_cast<std::size_t>(i - 1)])
          << "series " << i;
    if (start > 0) continue;
    double letter = 0.0;
    for (int i = 0; i < data.close.GetSize(); ++i) {
      if (At(chart, 1, i) == 0.0) continue;
      ASSERT_TRUE(At(chart, 2, i) == 1.0 || At(chart, 1, i) >= letter);
      letter = At(chart, 1, i);
    }
  }
}

TEST_F(RandomCharts, LadderStepsAreEvenAndTurnsAreMarked) {
  for (int walk = 0; walk < kWalks; ++walk) {
    Chart chart(Walk(400, 12));
    chart.index.VarValue[0] = "5";
    chart.Run("CalcZigZagOrgLine");
    const std::vector<double> levels = Elements(chart.index.ExpData[2]);
    ASSERT_GT(levels.size(), 20U);
    for (std::size_t i = 1; i + 1 < levels.size(); ++i) {
      const double in = levels[i] - levels[i - 1], out = levels[i + 1] - levels[i];
      ASSERT_NEAR(std::fabs(in), std::fabs(out), 1e-6);
      // The step of the turn stands where the leg before would have gone on.
      ASSERT_EQ(At(chart, 3, static_cast<int>(i)), in * out < 0.0 ? levels[i] : 0.0);
    }
  }
}

}  // namespace
}  // namespace trovenu::tests
