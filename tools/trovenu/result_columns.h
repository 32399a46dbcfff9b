#pragma once

#include <set>
#include <string>
#include <vector>

#include "tools/trovenu/bars.h"
#include "tools/trovenu/table.h"
#include "trovenu/support/series.h"

namespace trovenu::tool {

/// A table of results on bars: the dates, and a column for each series.
class ResultColumns {
 public:
  /// The newest `last` bars, all for 0.
  ResultColumns(const Bars &bars, int last);

  /// Adds a series. What has no value on a bar is an empty cell, and values past the last bar are left out. A
  /// heading that is there already gets a number behind it.
  void Add(const std::string &heading, const SVector &series);

  Table Take() && { return std::move(table_); }

 private:
  int count_;
  int first_;
  std::set<std::string> taken_;
  Table table_;
};

}  // namespace trovenu::tool
