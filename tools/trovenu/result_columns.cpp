#include "tools/trovenu/result_columns.h"

#include <algorithm>
#include <limits>

namespace trovenu::tool {

namespace {

constexpr double kNoValue = std::numeric_limits<double>::quiet_NaN();

// The values of the bars from `first` to `bars` - 1, with none below the start index and behind the end.
std::vector<double> ValuesOf(const SVector &result, int first, int bars) {
  std::vector<double> values(static_cast<std::size_t>(bars - first), kNoValue);
  const int end = std::min(bars, result.GetSize());
  for (int i = std::max(first, result.GetStartIndex()); i < end; ++i) {
    values[static_cast<std::size_t>(i - first)] = result[i];
  }
  return values;
}

}  // namespace

ResultColumns::ResultColumns(const Bars &bars, int last)
    : count_(bars.Size()), first_(last > 0 ? std::max(0, count_ - last) : 0), taken_({"date"}) {
  table_.columns.push_back({"date", TableColumn::Dates{ValuesOf(bars[BarField::Date], first_, count_)}});
}

void ResultColumns::Add(const std::string &heading, const SVector &series) {
  std::string numbered = heading;
  for (int i = 2; !taken_.insert(numbered).second; ++i) numbered = heading + " (" + std::to_string(i) + ")";
  table_.columns.push_back({numbered, TableColumn::Numbers{ValuesOf(series, first_, count_)}});
}

}  // namespace trovenu::tool
