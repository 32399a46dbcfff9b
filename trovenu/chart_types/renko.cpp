#include "trovenu/chart_types/renko.h"

namespace trovenu {
namespace {

constexpr double kAutomaticShare = 0.04;
constexpr double kTicksOfBrick = 100.0;

class Bricks {
 public:
  Bricks(const ChartBars &bars, double size, SVector *results)
      : size_(size),
        high_(bars.FirstPrice() + size),
        low_(bars.FirstPrice() - size),
        rising_(FindFirstTurn(bars, low_, high_).IsRising()),
        points_(bars, results, {}) {}

  /// False when the chart is to be given up.
  /// Required: downward a close on the level makes a brick and turns the chart, upward it takes one beyond.
  bool Step(int bar, double close) {
    if (rising_ ? close <= low_ : close > high_) rising_ = !rising_;
    return rising_ ? Rise(bar, close) : Fall(bar, close);
  }

  void GiveUp() { points_.GiveUp(); }

 private:
  bool Rise(int bar, double close) {
    while (high_ < close) {
      const double level = high_;
      if (!limit_.Raise(high_, size_, close)) return false;
      points_.Add(bar, level);
      low_ = level - 2.0 * size_;
    }
    return true;
  }

  bool Fall(int bar, double close) {
    while (close <= low_) {
      const double level = low_;
      if (!limit_.Lower(low_, size_, close)) return false;
      points_.Add(bar, level);
      high_ = 2.0 * size_ + level;
    }
    return true;
  }

  double size_;
  // The next price that makes a brick upward, and downward.
  double high_;
  double low_;
  bool rising_;
  StepLimit limit_;
  TurningPoints<SharedStart> points_;
};

}  // namespace

void MakeRenko(const ChartBars &bars, double size, SVector *results) {
  if (bars.FirstPrice() == 0.0) return;
  Bricks bricks(bars, size, results);
  for (int i = bars.First(); i < bars.End(); ++i) {
    if (!bricks.Step(i, bars.close[i])) return bricks.GiveUp();
  }
}

void SIndex::CalcRenko(int automatic) {
  const ChartBars bars(*this);
  if (automatic != 0) WriteRoundedStep(VarValue[0], bars.FirstPrice() * kAutomaticShare, 0.0);
  const double size = ReadStepOfTicks(VarValue[0], 0.0, *this, kTicksOfBrick);
  ClearResults(ExpData);
  MakeRenko(bars, size, ExpData);
}

}  // namespace trovenu
