#pragma once

#include <span>

#include "trovenu/backtest/simulation.h"

/// \file
/// The columns of the three result tables, in the order of their fields. They drive both how a table is made
/// and how it is filled.

namespace trovenu {

/// A column that holds a text of a record as it is.
template <class Record>
struct TextColumn {
  const char *name;
  int width;
  SString Record::*text;
};

/// Bytes of a field of a result table, paths aside.
inline constexpr int kTextWidth = 50;

/// A field of the trade table.
using TradeField = std::span<char, kTextWidth>;

/// A column of the trade table. `put` writes a value to the front of its field, which is blank, and cuts what
/// does not fit.
struct TradeTableColumn {
  const char *name;
  void (*put)(TradeField field, const SVector *history, int trade);
  int width = kTextWidth;
};

std::span<const TextColumn<SSummaryInfo>> RunTableColumns();
std::span<const TextColumn<SSummary>> SummaryTableColumns();
std::span<const TradeTableColumn> TradeTableColumns();

}  // namespace trovenu
