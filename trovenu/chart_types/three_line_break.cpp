#include "trovenu/chart_types/three_line_break.h"

#include <algorithm>

#include "trovenu/support/number_text.h"

namespace trovenu {
namespace {

constexpr long kUsualLines = 3;

// The first of the newest `lines` of `count` edges.
int WindowStart(int first, int count, int lines) {
  const long long start = static_cast<long long>(count) - lines;
  return static_cast<int>(std::clamp<long long>(start, first, std::max(first, kNoValidBar)));
}

// The lower or the upper edges of the lines, with what `ExtremeEdge` gives for the newest ones. An edge that
// a newer one outdoes can be no extreme any more; those that still can wait in a queue, the extreme in front.
class Edges {
 public:
  // `bars`: as many edges as there can be.
  Edges(bool smallest, int bars, int first, int lines)
      : edges_(bars), queue_(bars), smallest_(smallest), first_(first), lines_(lines) {}

  void Add(double edge) {
    while (end_ > begin_ && !(smallest_ ? Waiting(end_ - 1) < edge : Waiting(end_ - 1) > edge)) --end_;
    queue_[end_++] = count_;
    edges_[count_++] = edge;
    const int from = WindowStart(first_, count_, lines_);
    while (end_ > begin_ && queue_[begin_] < from) ++begin_;
  }

  bool HasRoom() const { return count_ < edges_.GetSize() && count_ < queue_.GetSize(); }
  double Newest() const { return edges_[count_ - 1]; }
  double Extreme() const { return end_ > begin_ ? Waiting(begin_) : Newest(); }

 private:
  double Waiting(int place) const { return edges_[static_cast<int>(queue_[place])]; }

  SVector edges_;
  SVector queue_;
  bool smallest_;
  int first_;
  int lines_;
  int count_ = 0;
  int begin_ = 0;
  int end_ = 0;
};

class Lines {
 public:
  Lines(const ChartBars &bars, int lines, SVector *results)
      : highest_(bars.FirstPrice()),
        lowest_(highest_),
        upBreak_(highest_),
        downBreak_(highest_),
        bottoms_(true, bars.End(), bars.First(), lines),
        tops_(false, bars.End(), bars.First(), lines),
        points_(bars, results, {}) {
    bottoms_.Add(bars.close[bars.First()]);
    tops_.Add(bars.close[bars.First()]);
  }

  // False where memory is exhausted. There are never more lines than bars.
  bool HasRoom() const { return bottoms_.HasRoom() && tops_.HasRoom(); }
  // A line that goes on is followed by the look for a reversal on the same bar.
  void Step(int bar, double close) {
    if (rising_) {
      if (close > highest_) AddUp(bar, close);
      if (close < upBreak_) AddDown(bar, close);
    } else {
      if (close < lowest_) AddDown(bar, close);
      if (close > downBreak_) AddUp(bar, close);
    }
  }

  void GiveUp() { points_.GiveUp(); }
  double ChangeValue() const { return changeValue_; }

 private:
  void AddUp(int bar, double close) {
    rising_ = true;
    highest_ = close;
    bottoms_.Add(tops_.Newest());
    tops_.Add(close);
    upBreak_ = changeValue_ = bottoms_.Extreme();
    points_.Add(bar, close);
  }

  void AddDown(int bar, double close) {
    rising_ = false;
    lowest_ = close;
    tops_.Add(bottoms_.Newest());
    bottoms_.Add(close);
    downBreak_ = changeValue_ = tops_.Extreme();
    points_.Add(bar, close);
  }

  // While there is no line, both ways begin at the first close and draw the same.
  bool rising_ = false;
  // Where the last line up, and down, ended.
  double highest_;
  double lowest_;
  // What turns the chart while it rises, and while it falls.
  double upBreak_;
  double downBreak_;
  double changeValue_ = 0.0;
  Edges bottoms_;
  Edges tops_;
  TurningPoints<SharedStart> points_;
};

}  // namespace

double ExtremeEdge(bool smallest, const SVector &edges, int from, int count) {
  if (from >= count) return edges[MoveIndex(count, -1)];
  // The element behind the series stands for all of those, which read alike.
  const int end = std::min(count, edges.GetSize() + 1);
  from = std::min(from, end - 1);
  double extreme = edges[from];
  for (int i = from + 1; i < end; ++i) {
    extreme = smallest ? std::min(extreme, edges[i]) : std::max(extreme, edges[i]);
  }
  return extreme;
}

double MakeThreeLineBreak(const ChartBars &bars, int lines, SVector *results) {
  if (bars.FirstPrice() == 0.0) return 0.0;
  Lines chart(bars, lines, results);
  for (int i = bars.First() + 1; i < bars.End(); ++i) {
    if (!chart.HasRoom()) {
      chart.GiveUp();
      return 0.0;
    }
    chart.Step(i, bars.close[i]);
  }
  return chart.ChangeValue();
}

void SIndex::CalcThreeLineBreak(int automatic) {
  const ChartBars bars(*this);
  if (automatic != 0) VarValue[0] = kUsualLines;
  long lines = AnsiStringToInt(VarValue[0]);
  if (lines == 0) {
    lines = kUsualLines;
    VarValue[0] = lines;
  }
  ClearResults(ExpData);
  if (bars.FirstPrice() == 0.0) return;
  const double changeValue = MakeThreeLineBreak(bars, static_cast<int>(lines), ExpData);
  VarValue[1] = changeValue;
}

// Required: the positions of the edges are bounded by the start index of close.
double SIndex::MakeChangeValue(int up, SVector &edges, int count, int lines) {
  return ExtremeEdge(up != 0, edges, WindowStart(ChartBars(*this).First(), count, lines), count);
}

}  // namespace trovenu
