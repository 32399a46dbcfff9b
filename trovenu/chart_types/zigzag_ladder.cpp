#include "trovenu/chart_types/zigzag_ladder.h"

#include "trovenu/chart_types/zigzag_walk.h"

namespace trovenu {
namespace {

constexpr double kStepsInReversal = 10.0;

// The level follows the extremes step by step. The first step against the last one opens a leg.
class Ladder {
 public:
  Ladder(const ChartBars &bars, double step, SVector *results)
      : step_(step), level_(bars.close[bars.First()]), list_(bars.date, results) {}

  void Extend(int bar, double close, bool rising) {
    while (!isOver_ && (rising ? level_ < close : close < level_)) {
      const double level = level_;
      Move(rising, close);
      if (isOver_) return;
      const bool opens = !isOpened_ && rising != isRising_;
      isOpened_ = isOpened_ || opens;
      isRising_ = rising;
      list_.Add(bar, level, opens ? level : 0.0);
    }
  }
  void Turn(int /*bar*/) { isOpened_ = false; }

 private:
  // A step that does not move the level ends the ladder, one too many undoes it.
  void Move(bool rising, double close) {
    const double before = level_;
    if (rising ? limit_.Raise(level_, step_, close) : limit_.Lower(level_, step_, close)) return;
    isOver_ = true;
    const bool moves = rising ? before + step_ > before : before - step_ < before;
    if (moves) list_.GiveUp();
  }

  double step_;
  double level_;
  bool isOpened_ = true;
  // The way of the last step.
  bool isRising_ = true;
  bool isOver_ = false;
  StepLimit limit_;
  ResultList list_;
};

}  // namespace

void MakeZigZagLadder(const ChartBars &bars, double rate, SVector *results) {
  if (bars.FirstPrice() == 0.0) return;
  ZigZagWalk walk(bars, rate);
  // Required: a share of the close beyond the first triggers, not of the first one.
  Ladder ladder(bars, walk.FirstTurnClose() * rate / kStepsInReversal, results);
  for (int i = bars.First() + 1; i < bars.End(); ++i) walk.Step(i, bars.close[i], ladder);
}

void SIndex::CalcZigZagOrgLine(int automatic) {
  const ChartBars bars(*this);
  const double rate = ReadZigZagRate(VarValue[0], automatic, bars.FirstPrice());
  ClearResults(ExpData);
  MakeZigZagLadder(bars, rate, ExpData);
}

}  // namespace trovenu
