#pragma once

/// \file
/// What the non-time charts share: the bars they read, their parameters, the limit of a walk, the first
/// direction, and the lists that they write.

#include "trovenu/indicator/index.h"
#include "trovenu/support/series.h"

namespace trovenu {

/// The series that a chart reads; what is not bound counts as empty.
class ChartBars {
 private:
  const SVector none_;

 public:
  explicit ChartBars(const SVector *closeSeries, const SVector *dateSeries = nullptr,
                     const SVector *volumeSeries = nullptr)
      : close(closeSeries != nullptr ? *closeSeries : none_),
        date(dateSeries != nullptr ? *dateSeries : none_),
        volume(volumeSeries != nullptr ? *volumeSeries : none_) {}
  explicit ChartBars(const SIndex &index)
      : ChartBars(index.Variable[0], index.Variable[5], index.Variable[4]) {}
  ChartBars(const ChartBars &) = delete;
  ChartBars &operator=(const ChartBars &) = delete;

  /// The first bar of close.
  int First() const { return close.GetStartIndex() > 0 ? close.GetStartIndex() : 0; }
  /// The bar behind the last one.
  int End() const { return close.GetSize(); }
  /// The first close that is not 0, where every chart begins; 0 without one.
  double FirstPrice() const { return close.GetFirstNonZeroValue(); }

  const SVector &close;
  const SVector &date;
  const SVector &volume;
};

/// \name Parameters
/// @{

/// Writes `step` into the variable, then what is left of it once it is read again and rounded.
void WriteRoundedStep(SString &variable, double step, double defaultValue);
/// Reads the step of a chart. 0 is replaced by 1 and a step below the tick by `ticks` ticks, in the variable
/// too.
double ReadStepOfTicks(SString &variable, double defaultValue, const SIndex &index, double ticks);
/// @}

/// Empties the five results.
void ClearResults(SVector *results);

/// What a chart may walk in boxes, bricks, steps or bands before it is given up.
inline constexpr int kMostSteps = 10000000;

/// Moves a level step by step toward a target, unless that takes too long or the step does not move it.
class StepLimit {
 public:
  /// False when the walk is to be given up; the level then stays.
  bool Raise(double &level, double step, double target) {
    return Move(level, level + step, level + step > level && IsNear(target - level, step));
  }
  bool Lower(double &level, double step, double target) {
    return Move(level, level - step, level - step < level && IsNear(level - target, step));
  }

 private:
  // A walk that is far too long is given up before it fills the memory. Rounding can't double a step.
  bool IsNear(double distance, double step) const { return !(distance > 2.0 * left_ * step); }

  bool Move(double &level, double next, bool goesOn) {
    if (!goesOn || left_ == 0) return false;
    --left_;
    level = next;
    return true;
  }

  int left_ = kMostSteps;
};

/// Where a chart begins to rise or fall.
struct FirstTurn {
  enum class Way { None, Up, Down };
  Way way = Way::None;
  /// The close that decided it; the last one where none did.
  double close = 0.0;

  /// A chart that never leaves its first price counts as falling.
  bool IsRising() const { return way == Way::Up; }
};

/// Finds the first close at or beyond one of two levels, the upper one if it is beyond both.
FirstTurn FindFirstTurn(const ChartBars &bars, double lower, double upper);

/// The list that a chart writes into its first four results: date and position of a bar and two values.
class ResultList {
 public:
  /// `results` are the five of an indicator, which must be empty.
  ResultList(const SVector &date, SVector *results) : date_(date), results_(results) {}
  void Add(int bar, double value, double otherValue);
  /// Empties the results for good and gives their memory back.
  void GiveUp();

 private:
  static constexpr int kColumns = 4;

  const SVector &date_;
  SVector *results_;
  bool isOver_ = false;
};

/// A stretch of price between two turning points.
struct Stretch {
  double start = 0.0;
  double end = 0.0;

  bool Rises() const { return start < end; }
};

/// \name Where a stretch starts, given the stretch from turning point to turning point and the one written
/// before it
/// @{

/// A Kagi line starts where the line before it ended.
struct JoinedStart {
  double operator()(const Stretch &now, const Stretch & /*before*/) const { return now.start; }
};

/// A brick that turns, or a line that breaks, starts where the one before it started.
struct SharedStart {
  double operator()(const Stretch &now, const Stretch &before) const {
    return now.Rises() == before.Rises() ? now.start : before.start;
  }
};

/// A column starts one box away from the end of the one before it.
struct BoxAwayStart {
  double operator()(const Stretch &now, const Stretch & /*before*/) const {
    Stretch shifted = now;
    if (shifted.Rises()) shifted.start += box;
    // Required: an up column of one box, which the shift leaves without height, is shifted back.
    if (!shifted.Rises()) shifted.start -= box;
    return shifted.start;
  }

  double box;
};
/// @}

/// Turns turning points into the stretches between them, the first one from the anchor as it stands.
template <class Start>
class TurningPoints {
 public:
  TurningPoints(const ChartBars &bars, SVector *results, Start start)
      : list_(bars.date, results), start_(start), level_(bars.close[bars.First()]) {}

  void Add(int bar, double level) {
    Stretch stretch{level_, level};
    if (!isFirst_) stretch.start = start_(stretch, before_);
    isFirst_ = false;
    list_.Add(bar, stretch.start, stretch.end);
    level_ = level;
    before_ = stretch;
  }
  void GiveUp() { list_.GiveUp(); }

 private:
  ResultList list_;
  Start start_;
  double level_;
  Stretch before_;
  bool isFirst_ = true;
};

}  // namespace trovenu
