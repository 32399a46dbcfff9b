#pragma once

/// \file
/// A folder of finished runs: their tables, and the pages that are made of them.

#include <string>
#include <vector>

#include "trovenu/backtest/summary_rows.h"

namespace trovenu::tool {

/// One run as the run table tells it.
struct FinishedRun {
  long number = 0;
  SSummaryInfo figures;
  int tradeRecords = 0;
  int summaryRecords = 0;

  /// False where its tables could not be written.
  bool IsComplete() const;
};

class ReportFolder {
 public:
  /// Throws `Failure` for a path that is too long for the run table.
  explicit ReportFolder(const std::string &path);

  /// Whole path, with a separator at the end.
  const std::string &Path() const { return path_; }
  /// The path as the user gave it.
  const std::string &Shown() const { return shown_; }
  std::string RunTable() const;
  std::string SummaryTable(long run) const;
  std::string TradeTable(long run) const;

  /// Throws `Failure` if the folder holds anything but reports of earlier runs, or is none.
  void RequireReportsAlone() const;
  /// Throws `Failure` if the run table is not there, after it should have been made.
  void RequireRunTable() const;

  /// All runs, in their order. Throws `Failure` if there is no run table.
  std::vector<FinishedRun> Runs() const;

  /// Makes the four pages of a run. Throws `Failure` if one can't be written.
  void WritePages(const FinishedRun &run) const;

 private:
  std::string shown_;
  std::string path_;
};

}  // namespace trovenu::tool
