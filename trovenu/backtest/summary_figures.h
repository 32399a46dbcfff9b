#pragma once

/// \file
/// The figures of a group of trades, before they become text.

#include <algorithm>
#include <optional>

namespace trovenu {

/// A figure; nothing where a group has none, such as the mean of no losses.
using Figure = std::optional<double>;

/// The runs of one kind, winning or losing.
struct Runs {
  int length = 0;
  double sum = 0.0;
  int longest = 0;
  /// The largest sum of a winning run, the smallest of a losing one; 0 without one.
  double extreme = 0.0;

  void GoOn(double profit) {
    longest = std::max(longest, ++length);
    sum += profit;
  }
  void End() {
    length = 0;
    sum = 0.0;
  }
};

/// The trades of one group, taken in the order of the table. One that breaks even is a win.
struct Tally {
  int trades = 0;
  int wins = 0;
  int losses = 0;
  double grossProfit = 0.0;
  double grossLoss = 0.0;
  double largestWin = 0.0;
  double largestLoss = 0.0;
  double winBars = 0.0;
  double lossBars = 0.0;
  double entryEfficiencies = 0.0;
  double exitEfficiencies = 0.0;
  Runs winning;
  Runs losing;

  void Take(double profit, double bars, double entryEfficiency, double exitEfficiency) {
    ++trades;
    entryEfficiencies += entryEfficiency;
    exitEfficiencies += exitEfficiency;
    if (profit >= 0.0) {
      ++wins;
      grossProfit += profit;
      largestWin = std::max(largestWin, profit);
      winBars += bars;
      winning.GoOn(profit);
      winning.extreme = std::max(winning.extreme, winning.sum);
      losing.End();
    } else {
      ++losses;
      grossLoss += profit;
      largestLoss = std::min(largestLoss, profit);
      lossBars += bars;
      losing.GoOn(profit);
      losing.extreme = std::min(losing.extreme, losing.sum);
      winning.End();
    }
  }
};

/// Nothing for a divisor of 0.
inline Figure Ratio(double value, double divisor) {
  return divisor != 0.0 ? Figure(value / divisor) : Figure();
}

/// What the rows of a summary show of a group. `drawdown` and `deviation` are for the caller to fill in.
struct Figures {
  explicit Figures(const Tally &tally)
      : total(tally.grossProfit + tally.grossLoss),
        grossProfit(tally.grossProfit),
        grossLoss(tally.grossLoss),
        profitFactor(Ratio(-tally.grossProfit, tally.grossLoss)),
        trades(tally.trades),
        winRatio(Ratio(tally.wins, tally.trades)),
        wins(tally.wins),
        losses(tally.losses),
        winBars(tally.wins > 0 ? tally.winBars / tally.wins : tally.winBars),
        lossBars(tally.losses > 0 ? tally.lossBars / tally.losses : tally.lossBars),
        largestWin(tally.largestWin),
        largestLoss(tally.largestLoss),
        bestRun(tally.winning.extreme),
        worstRun(tally.losing.extreme),
        longestWinning(tally.winning.longest),
        longestLosing(tally.losing.longest),
        averageWin(Ratio(tally.grossProfit, tally.wins)),
        averageLoss(Ratio(tally.grossLoss, tally.losses)),
        averageProfit(Ratio(*total, tally.trades)) {
    if (averageWin && averageLoss) winLossRatio = Ratio(-*averageWin, *averageLoss);
    if (tally.trades == 0) return;
    entryEfficiency = tally.entryEfficiencies / tally.trades;
    exitEfficiency = tally.exitEfficiencies / tally.trades;
    // Required: not the mean of TotalEff.
    totalEfficiency = *entryEfficiency + *exitEfficiency - 100.0;
  }

  Figure total;
  Figure grossProfit;
  Figure grossLoss;
  Figure profitFactor;
  Figure trades;
  Figure winRatio;
  Figure wins;
  Figure losses;
  Figure winBars;
  Figure lossBars;
  Figure largestWin;
  Figure largestLoss;
  Figure bestRun;
  Figure worstRun;
  Figure longestWinning;
  Figure longestLosing;
  Figure averageWin;
  Figure averageLoss;
  Figure averageProfit;
  Figure winLossRatio;
  Figure drawdown;
  Figure deviation = 0.0;
  Figure entryEfficiency = 0.0;
  Figure exitEfficiency = 0.0;
  Figure totalEfficiency = 0.0;
};

}  // namespace trovenu
