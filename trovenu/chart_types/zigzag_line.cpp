#include "trovenu/chart_types/zigzag_line.h"

#include <algorithm>

#include "trovenu/chart_types/zigzag_walk.h"

namespace trovenu {
namespace {

// Marks the extreme of a leg once the leg is over.
class Pivots {
 public:
  Pivots(const SVector &close, SVector &marks) : close_(close), marks_(marks) {}

  void Extend(int bar, double /*close*/, bool /*rising*/) { pivot_ = bar; }
  void Turn(int bar) {
    Mark();
    pivot_ = bar;
  }
  void Mark() { marks_[pivot_] = close_[pivot_]; }
  int Newest() const { return pivot_; }

 private:
  const SVector &close_;
  SVector &marks_;
  int pivot_ = 0;
};

}  // namespace

void MakeZigZagLine(const ChartBars &bars, double rate, SVector *results) {
  if (bars.FirstPrice() == 0.0) return;
  SVector &dates = results[0];
  SVector &marks = results[1];
  dates.BeginResult(bars.End(), 0);
  marks.BeginResult(bars.End(), 0);
  if (dates.GetSize() != bars.End() || marks.GetSize() != bars.End()) return ClearResults(results);
  marks.InitValue(0.0);
  marks[0] = bars.close[bars.First()];
  ZigZagWalk walk(bars, rate);
  Pivots pivots(bars.close, marks);
  for (int i = bars.First() + 1; i < bars.End(); ++i) walk.Step(i, bars.close[i], pivots);
  // The running extreme counts as a turning point, and nothing follows it.
  pivots.Mark();
  marks.SetSize(pivots.Newest() + 1);
  dates.SetSize(marks.GetSize());
  // Required: the first date stands twice, the others one entry late.
  dates[0] = bars.date[std::max(bars.date.GetStartIndex(), 0)];
  for (int i = 1; i < dates.GetSize(); ++i) dates[i] = bars.date[i - 1];
}

void SIndex::CalcZigZagLine(int automatic) {
  const ChartBars bars(*this);
  const double rate = ReadZigZagRate(VarValue[0], automatic, bars.FirstPrice());
  ClearResults(ExpData);
  MakeZigZagLine(bars, rate, ExpData);
}

}  // namespace trovenu
