#include <algorithm>
#include <span>
#include <utility>
#include <vector>

#include "trovenu/backtest/report_columns.h"
#include "trovenu/support/table_format.h"
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

// Adds `count` records; `put(record, field, column, i)` writes what a column holds in record i.
template <class Column, class Put>
int InsertRecords(const SString &fileName, std::span<const Column> columns, int count, Put put) {
  DB table(fileName.c_str(), 1);
  table.SkipFlush();
  table.MoveFirst(1);
  std::vector<std::pair<const TableField *, const Column *>> fields;
  for (const Column &column : columns) {
    if (const TableField *field = table.FindField(column.name)) fields.emplace_back(field, &column);
  }
  table.AppendRecords(count, [&](char *record, int i) {
    for (const auto &[field, column] : fields) put(record, *field, *column, i);
  });
  return 1;
}

template <class Record, class RecordAt>
int InsertTexts(const SString &fileName, std::span<const TextColumn<Record>> columns, int count,
                RecordAt recordAt) {
  return InsertRecords(fileName, columns, count,
                       [&](char *record, const TableField &field, const TextColumn<Record> &column, int i) {
                         PutFieldValue(record, field, (recordAt(i).*column.text).View());
                       });
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
  return InsertTexts(fileName, RunTableColumns(), 1, [&info](int) -> const SSummaryInfo & { return info; });
}

int SSimulation::InsertIndividualSummaryDB(SString fileName) {
  return InsertTexts(fileName, SummaryTableColumns(), std::min(SummaryCount, kSummaryRows),
                     [this](int i) -> const SSummary & { return SummaryRows[i]; });
}

int SSimulation::InsertTradingHistoryDB(SString fileName) {
  return InsertRecords(fileName, TradeTableColumns(), History[kTradeSide].GetSize(),
                       [this](char *record, const TableField &field, const TradeTableColumn &column, int i) {
                         column.put({record + field.offset, field.width}, History, i);
                       });
}

}  // namespace trovenu
