#include "trovenu/chart_types/kagi.h"

#include "trovenu/support/number_text.h"

namespace trovenu {
namespace {

constexpr double kAutomaticShare = 0.05;
constexpr double kUsualWidth = 1.0;

class Line {
 public:
  Line(const ChartBars &bars, double width, SVector *results)
      : width_(width),
        high_(bars.FirstPrice() + width),
        low_(bars.FirstPrice() - width),
        rising_(FindFirstTurn(bars, low_, high_).IsRising()),
        last_(bars.First()),
        points_(bars, results, {}) {}

  // The level opposite to the extreme moves only when the extreme does: before the first one it stays a width
  // away from the first close.
  void Step(int bar, double close) {
    if (rising_ ? close < low_ : close > high_) return Turn(bar, close);
    if (rising_ ? close > high_ : close < low_) MoveTo(close);
  }

  // Required: the last line ends at the upper level in both directions.
  void Finish(int lastBar) {
    if (last_ < lastBar) points_.Add(last_, high_);
  }

 private:
  void Turn(int bar, double close) {
    points_.Add(bar, rising_ ? high_ : low_);
    last_ = bar;
    rising_ = !rising_;
    MoveTo(close);
  }

  void MoveTo(double extreme) {
    if (rising_) {
      high_ = extreme;
      low_ = high_ - width_;
    } else {
      low_ = extreme;
      high_ = low_ + width_;
    }
  }

  double width_;
  double high_;
  double low_;
  bool rising_;
  // The bar of the last turn.
  int last_;
  TurningPoints<JoinedStart> points_;
};

}  // namespace

void MakeKagi(const ChartBars &bars, double width, SVector *results) {
  if (bars.FirstPrice() == 0.0) return;
  Line line(bars, width, results);
  for (int i = bars.First(); i < bars.End(); ++i) line.Step(i, bars.close[i]);
  line.Finish(bars.End() - 1);
}

void SIndex::CalcKagi(int automatic) {
  const ChartBars bars(*this);
  if (automatic != 0) WriteRoundedStep(VarValue[0], bars.FirstPrice() * kAutomaticShare, 0.0);
  const double width = AnsiStringToFloat(VarValue[0]);
  ClearResults(ExpData);
  // Required: the variable keeps its 0.
  MakeKagi(bars, width == 0.0 ? kUsualWidth : width, ExpData);
}

}  // namespace trovenu
