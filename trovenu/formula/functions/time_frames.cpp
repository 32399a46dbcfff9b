#include "trovenu/formula/functions/time_frames.h"

#include <algorithm>

#include "trovenu/support/date_number.h"

namespace trovenu {
namespace {

int GroupKey(FunctionId unit, double date) {
  switch (unit) {
    case FunctionId::UnitDay:
      return static_cast<int>(GetDate(date));
    case FunctionId::UnitMonth:
      return static_cast<int>(GetMonth(date));
    case FunctionId::UnitYear:
      return static_cast<int>(GetYear(date));
    default:
      return static_cast<int>(GetHour(date));
  }
}

// Tells at which bars a group begins.
class Grouping {
 public:
  Grouping(const SVector &date, FunctionId unit, int groupBars)
      : date_(date), unit_(unit), groupBars_(std::max(groupBars, 1)) {
    if (unit_ != FunctionId::None) key_ = GroupKey(unit_, date_[0]);
  }
  // Asked once for each bar from 1 on, in order.
  bool BeginsAt(int i) {
    if (unit_ == FunctionId::None) return i % groupBars_ == 0;
    const int key = GroupKey(unit_, date_[i]);
    const bool begins = key != key_;
    key_ = key;
    return begins;
  }

 private:
  const SVector &date_;
  FunctionId unit_;
  int groupBars_;
  int key_ = 0;
};

double Joined(GroupValue value, double group, double bar) {
  switch (value) {
    case GroupValue::Last:
      return bar;
    case GroupValue::First:
      return group;
    case GroupValue::Largest:
      return bar > group ? bar : group;
    case GroupValue::Smallest:
      return bar < group ? bar : group;
    case GroupValue::Sum:
      return group + bar;
  }
  return bar;
}

template <Column kColumn, GroupValue kValue>
Operand CompressRule(Call &call) {
  return Compress(call.Bound(kColumn), call.Bound(Column::Date), kValue, call.unit, call.groupBars);
}

Operand DecompressRule(Call &call) {
  return Decompress(call.X(0), call.X(1), call.Bound(Column::Date), call.Bound(Column::Close).GetSize());
}

constexpr Function Frame(FunctionId id, Rule rule, const char *help) {
  return {id, Reading::TimeUnit, 1, 1, FullCalc::Always, nullptr, nullptr, rule, "unit", help};
}

constexpr Function kRows[] = {
    Frame(FunctionId::CompressClose, CompressRule<Column::Close, GroupValue::Last>,
          "Closing prices of a coarser time frame, one element a group of bars"),
    Frame(FunctionId::CompressOpen, CompressRule<Column::Open, GroupValue::First>,
          "Opening prices of a coarser time frame"),
    Frame(FunctionId::CompressHigh, CompressRule<Column::High, GroupValue::Largest>,
          "Highest prices of a coarser time frame"),
    Frame(FunctionId::CompressLow, CompressRule<Column::Low, GroupValue::Smallest>,
          "Lowest prices of a coarser time frame"),
    Frame(FunctionId::CompressVolume, CompressRule<Column::Volume, GroupValue::Sum>,
          "Volume of a coarser time frame"),
    Frame(FunctionId::CompressDate, CompressRule<Column::Date, GroupValue::Last>,
          "Date numbers of a coarser time frame, the last of each group"),
    {FunctionId::DeCompress, Reading::Plain, 2, 2, FullCalc::Never, nullptr, nullptr, DecompressRule, "x, d",
     "Spreads a compressed series x with its compressed dates d over the bars again"},
};

}  // namespace

SVector Compress(const SVector &source, const SVector &date, GroupValue value, FunctionId unit,
                 int groupBars) {
  SVector result;
  result.BeginResult(source.size, 0);
  if (result.size == 0) return result;
  Grouping grouping(date, unit, groupBars);
  int group = 0;
  int start = source.startIndex <= 0 ? 0 : -1;
  result.data[0] = source.data[0];
  for (int i = 1; i < result.size; ++i) {
    if (grouping.BeginsAt(i)) {
      result.data[++group] = source.data[i];
    } else {
      result.data[group] = Joined(value, result.data[group], source.data[i]);
    }
    if (i == source.startIndex) start = group;
  }
  result.SetSize(group + 1);
  result.startIndex = start >= 0 ? start : result.size;
  return result;
}

SVector Decompress(const SVector &groups, const SVector &groupDates, const SVector &date, int bars) {
  SVector result;
  result.BeginResult(bars, 0);
  const int last = std::min(groups.size, groupDates.size) - 1;
  const int wanted = groups.startIndex;
  int start = wanted <= 0 ? 0 : bars;
  int group = 0;
  for (int i = 0; i < result.size; ++i) {
    if (group < last && groupDates[group] < date[i]) {
      ++group;
      if (group == wanted) start = i;
    }
    result.data[i] = groups[group];
  }
  result.startIndex = start;
  return result;
}

FunctionRows TimeFrameRows() { return kRows; }

}  // namespace trovenu
