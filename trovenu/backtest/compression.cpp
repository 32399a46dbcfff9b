#include "trovenu/backtest/signals.h"
#include "trovenu/backtest/simulation.h"

namespace trovenu {
namespace {

double First(double first, double /*next*/) { return first; }
double Last(double /*last*/, double next) { return next; }
double Larger(double a, double b) { return b > a ? b : a; }
double Smaller(double a, double b) { return b < a ? b : a; }
double Sum(double a, double b) { return a + b; }

struct Grid {
  int bars;
  int perGroup;

  int Groups() const { return bars / perGroup + (bars % perGroup != 0 ? 1 : 0); }
};

// Target and source may be one series: a group is read before its place is written.
template <class Combine>
void Compress(SVector *target, const SVector *source, const Grid &grid, Combine combine) {
  if (target == nullptr) return;
  const SVector &from = BarsOf(source);
  const int groups = grid.Groups();
  if (target->GetSize() < groups) target->SetSize(groups);
  if (target->GetSize() < groups) return target->ClearData();
  int bar = 0;
  for (int k = 0; k < groups; ++k) {
    const int inGroup = grid.bars - bar < grid.perGroup ? grid.bars - bar : grid.perGroup;
    double value = from[bar];
    for (int i = 1; i < inGroup; ++i) value = combine(value, from[bar + i]);
    (*target)[k] = value;
    bar += inGroup;
  }
  target->SetSize(groups);
}

}  // namespace

void SSimulation::CompressData(int n) {
  if (n < 1) return;
  const Grid grid = {BarsOf(SourceClose).GetSize(), n};
  Compress(Open, SourceOpen, grid, First);
  Compress(High, SourceHigh, grid, Larger);
  Compress(Low, SourceLow, grid, Smaller);
  Compress(Volume, SourceVolume, grid, Sum);
  // Required: the date is that of the first bar.
  Compress(Date, SourceDate, grid, First);
  Compress(Close, SourceClose, grid, Last);
}

}  // namespace trovenu
