#include <algorithm>

#include "trovenu/backtest/report_columns.h"
#include "trovenu/support/table_writer.h"

namespace trovenu {
namespace {

constexpr char kTextField = 'c';

template <class Columns>
int CreateTable(const SString &fileName, const Columns &columns) {
  DB table;
  table.SkipFlush();
  table.CreateDB(fileName.c_str());
  table.ClearField();
  for (const auto &column : columns) table.InsertField(column.name, kTextField, column.width);
  table.WriteHead();
  table.WriteField();
  table.WriteEof();
  return 1;
}

// Adds `count` records; `text(column, i)` is what a column holds in record i.
template <class Columns, class Text>
int InsertRecords(const SString &fileName, const Columns &columns, int count, Text text) {
  DB table(fileName.c_str(), 1);
  table.SkipFlush();
  table.MoveFirst(1);
  table.CollectRecords();
  for (int i = 0; i < count; ++i) {
    table.Append("");
    for (const auto &column : columns) table.InsField(column.name, text(column, i).c_str());
    table.WriteRecord();
  }
  table.WriteCollected();
  return 1;
}

}  // namespace

int SSimulation::CreateSummaryDB(SString fileName) { return CreateTable(fileName, RunTableColumns()); }

int SSimulation::CreateIndividualSummaryDB(SString fileName) {
  return CreateTable(fileName, SummaryTableColumns());
}

int SSimulation::CreateTradingHistoryDB(SString fileName) {
  return CreateTable(fileName, TradeTableColumns());
}

int SSimulation::InsertSummaryDB(SString fileName, SSummaryInfo &info) {
  return InsertRecords(fileName, RunTableColumns(), 1,
                       [&info](const auto &column, int) -> const SString & { return info.*column.text; });
}

int SSimulation::InsertIndividualSummaryDB(SString fileName) {
  return InsertRecords(
      fileName, SummaryTableColumns(), SummaryCount,
      [this](const auto &column, int i) -> const SString & { return SummaryRows[i].*column.text; });
}

int SSimulation::InsertTradingHistoryDB(SString fileName) {
  return InsertRecords(fileName, TradeTableColumns(), History[kTradeSide].GetSize(),
                       [this](const auto &column, int i) { return column.text(History, i); });
}

}  // namespace trovenu
