#include "trovenu/chart_types/point_figure.h"

#include "trovenu/support/number_text.h"

namespace trovenu {
namespace {

constexpr long kUsualReversal = 3;
constexpr double kUsualBox = 1.0;
constexpr double kAutomaticShare = 0.02;
constexpr double kTicksOfBox = 50.0;
// Required: the last column shows from this many boxes on, whatever the reversal.
constexpr int kShownBoxes = 3;

class Columns {
 public:
  Columns(const ChartBars &bars, double box, double reversal, SVector *results)
      : box_(box), apart_((reversal + 1.0) * box), last_(bars.First()), points_(bars, results, {box}) {
    const double first = bars.FirstPrice();
    down_ = first - box;
    up_ = first + box;
    const FirstTurn turn = FindFirstTurn(bars, first - box * reversal, first + box * reversal);
    rising_ = turn.IsRising();
    if (turn.way == FirstTurn::Way::Up) up_ = down_ + box;
    if (turn.way == FirstTurn::Way::Down) down_ = up_ - box;
  }

  /// False when the chart is to be given up. A close that is no number changes nothing.
  bool Step(int bar, double close) {
    if (rising_ ? close > down_ : close < up_) return GoOn(bar, close);
    if (rising_ ? close <= down_ : close >= up_) return Turn(bar, close);
    return true;
  }

  void Finish() {
    if (boxes_ >= kShownBoxes) points_.Add(last_, rising_ ? up_ : down_);
  }
  void GiveUp() { points_.GiveUp(); }

 private:
  bool GoOn(int bar, double close) {
    const int before = boxes_;
    if (!Draw(close)) return false;
    if (boxes_ != before) SetReversal();
    if (boxes_ >= kShownBoxes) last_ = bar;
    return true;
  }

  bool Turn(int bar, double close) {
    points_.Add(bar, rising_ ? up_ : down_);
    last_ = bar;
    boxes_ = 0;
    rising_ = !rising_;
    if (rising_) {
      up_ = down_ + box_;
    } else {
      down_ = up_ - box_;
    }
    const bool drawn = Draw(close);
    SetReversal();
    return drawn;
  }

  bool Draw(double close) {
    for (; rising_ ? up_ <= close : close <= down_; ++boxes_) {
      if (!(rising_ ? limit_.Raise(up_, box_, close) : limit_.Lower(down_, box_, close))) return false;
    }
    return true;
  }

  // The level at which the column turns.
  void SetReversal() {
    if (rising_) {
      down_ = up_ - apart_;
    } else {
      up_ = apart_ + down_;
    }
  }

  double box_;
  // Boxes from the next one in the direction of the column to the one that turns it, as a price.
  double apart_;
  // The next price that adds a box above, and below.
  double up_;
  double down_;
  bool rising_;
  int boxes_ = 0;
  int last_;
  StepLimit limit_;
  TurningPoints<BoxAwayStart> points_;
};

}  // namespace

void MakePointFigure(const ChartBars &bars, double box, double reversal, SVector *results) {
  if (bars.FirstPrice() == 0.0) return;
  Columns columns(bars, box, reversal, results);
  for (int i = bars.First(); i < bars.End(); ++i) {
    if (!columns.Step(i, bars.close[i])) return columns.GiveUp();
  }
  columns.Finish();
}

void SIndex::CalcPnF(int automatic) {
  const ChartBars bars(*this);
  if (automatic != 0) {
    VarValue[0] = kUsualReversal;
    WriteRoundedStep(VarValue[1], bars.FirstPrice() * kAutomaticShare, kUsualBox);
  }
  long reversal = AnsiStringToInt(VarValue[0], kUsualReversal);
  if (reversal == 0) {
    reversal = kUsualReversal;
    VarValue[0] = reversal;
  }
  const double box = ReadStepOfTicks(VarValue[1], kUsualBox, *this, kTicksOfBox);
  ClearResults(ExpData);
  MakePointFigure(bars, box, static_cast<double>(reversal), ExpData);
}

}  // namespace trovenu
