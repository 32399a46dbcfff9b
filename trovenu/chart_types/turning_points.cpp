#include "trovenu/chart_types/turning_points.h"

#include <algorithm>

#include "trovenu/price/price_data.h"
#include "trovenu/support/number_text.h"
#include "trovenu/support/price_steps.h"

namespace trovenu {
namespace {

// By half, so that an element costs the same in a long series.
void AddGrowing(SVector &series, double value) {
  constexpr int kLeast = 1000;
  const int size = series.GetSize();
  if (size == series.capacity) series.ReAlloc(MoveIndex(size, std::max(size / 2, kLeast)));
  series.Add(value);
}

}  // namespace

void WriteRoundedStep(SString &variable, double step, double defaultValue) {
  variable = step;
  variable = conditionProove(AnsiStringToFloat(variable, defaultValue));
}

double ReadStepOfTicks(SString &variable, double defaultValue, const SIndex &index, double ticks) {
  double step = AnsiStringToFloat(variable, defaultValue);
  if (step == 0.0) {
    variable = 1;
    step = 1.0;
  }
  const SPriceData *data = index.GetCurPriceData();
  const double tick = data != nullptr ? data->TickSize : 0.0;
  if (step < tick) {
    variable = tick * ticks;
    step = AnsiStringToFloat(variable, defaultValue);
  }
  return step;
}

void ClearResults(SVector *results) {
  for (int i = 0; i < kExpressions; ++i) results[i].ClearData();
}

FirstTurn FindFirstTurn(const ChartBars &bars, double lower, double upper) {
  FirstTurn turn;
  for (int i = bars.First(); i < bars.End() && turn.way == FirstTurn::Way::None; ++i) {
    turn.close = bars.close[i];
    if (turn.close >= upper) {
      turn.way = FirstTurn::Way::Up;
    } else if (turn.close <= lower) {
      turn.way = FirstTurn::Way::Down;
    }
  }
  return turn;
}

void ResultList::Add(int bar, double value, double otherValue) {
  if (isOver_) return;
  const int size = results_[0].GetSize() + 1;
  const double values[kColumns] = {date_[bar], static_cast<double>(bar), value, otherValue};
  for (int i = 0; i < kColumns; ++i) {
    AddGrowing(results_[i], values[i]);
    if (results_[i].GetSize() != size) return GiveUp();
  }
}

void ResultList::GiveUp() {
  isOver_ = true;
  for (int i = 0; i < kColumns; ++i) results_[i].TakeElements();
}

}  // namespace trovenu
