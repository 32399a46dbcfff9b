#include <algorithm>
#include <cstdint>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "trovenu/backtest/report_columns.h"
#include "trovenu/support/table_file.h"

namespace trovenu {
namespace {

constexpr char kTextField = 'c';

// Where a table has the columns; those that it lacks are left out.
template <class Column>
using Places = std::vector<std::pair<const TableField *, const Column *>>;

template <class Column>
Places<Column> PlacesIn(const TableFormat &format, std::span<const Column> columns) {
  Places<Column> places;
  places.reserve(columns.size());
  for (const Column &column : columns) {
    const int at = format.FindField(column.name);
    if (at >= 0) places.emplace_back(&format.Fields()[static_cast<std::size_t>(at)], &column);
  }
  return places;
}

// What all tables of the same columns begin with.
template <class Column>
struct NewTable {
  explicit NewTable(std::span<const Column> columns) {
    for (const Column &column : columns) format.AddField(column.name, kTextField, column.width);
    head = format.Head();
    places = PlacesIn(format, columns);
  }

  TableFormat format;
  std::string head;
  Places<Column> places;
};

// Records to be written. `put(record, field, column, i)` writes what a column holds in record i.
template <class Column, class Put>
struct Records {
  std::span<const Column> columns;
  int count;
  Put put;

  // Puts them behind the bytes of a table. A further byte finds room there.
  std::string Behind(std::string bytes, const TableFormat &format, const Places<Column> &places) const {
    const std::size_t size = format.RecordSize();
    bytes.reserve(bytes.size() + size * static_cast<std::size_t>(count) + 1);
    for (int i = 0; i < count; ++i) {
      bytes.append(size, ' ');
      char *const record = bytes.data() + bytes.size() - size;
      for (const auto &[field, column] : places) put(record, *field, *column, i);
    }
    return bytes;
  }
};

template <class Record>
auto TextRecords(std::span<const TextColumn<Record>> columns, const Record *records, int count) {
  using Column = TextColumn<Record>;
  const auto put = [records](char *record, const TableField &field, const Column &column, int i) {
    PutFieldValue(record, field, (records[i].*column.text).View());
  };
  return Records<Column, decltype(put)>{columns, count, put};
}

auto RunRecords(const SSummaryInfo *runs, int count) { return TextRecords(RunTableColumns(), runs, count); }

auto SummaryRecords(const SSummary *rows, int count) {
  return TextRecords(SummaryTableColumns(), rows, std::clamp(count, 0, kSummaryRows));
}

auto TradeRecords(const SVector *history, int count) {
  using Column = TradeTableColumn;
  const auto put = [history](char *record, const TableField &field, const Column &column, int i) {
    char *const to = record + field.offset;
    if (field.width >= TradeField::extent) return column.put(TradeField(to, TradeField::extent), history, i);
    std::string text(TradeField::extent, ' ');
    column.put(TradeField(text), history, i);
    const TableField whole{column.name, kTextField, 0, TradeField::extent};
    PutFieldValue(record, field, FieldValue(text.data(), whole));
  };
  return Records<Column, decltype(put)>{TradeTableColumns(), count, put};
}

template <class Column, class Put>
int Create(const SString &fileName, const Records<Column, Put> &records) {
  static const NewTable<Column> table(records.columns);
  TableFile::Create(fileName.c_str(), records.Behind(table.head, table.format, table.places),
                    static_cast<std::uint32_t>(records.count), Flush::ToSystem);
  return 1;
}

template <class Column, class Put>
int Insert(const SString &fileName, const Records<Column, Put> &records) {
  TableFile table;
  table.SkipFlush();
  if (!table.Open(fileName.c_str())) return 1;
  table.Append(records.Behind("", table.Format(), PlacesIn(table.Format(), records.columns)));
  return 1;
}

}  // namespace

int SSimulation::CreateSummaryDB(SString fileName) { return Create(fileName, RunRecords(nullptr, 0)); }

int SSimulation::CreateIndividualSummaryDB(SString fileName) {
  return Create(fileName, SummaryRecords(nullptr, 0));
}

int SSimulation::CreateTradingHistoryDB(SString fileName) {
  return Create(fileName, TradeRecords(nullptr, 0));
}

int SSimulation::InsertSummaryDB(SString fileName, SSummaryInfo &info) {
  return Insert(fileName, RunRecords(&info, 1));
}

int SSimulation::InsertIndividualSummaryDB(SString fileName) {
  return Insert(fileName, SummaryRecords(SummaryRows, SummaryCount));
}

int SSimulation::InsertTradingHistoryDB(SString fileName) {
  return Insert(fileName, TradeRecords(History, History[kTradeSide].GetSize()));
}

void SSimulation::WriteRunTables() {
  Create(IndividualSummaryFileName, SummaryRecords(SummaryRows, SummaryCount));
  Create(TradingHistoryFileName, TradeRecords(History, History[kTradeSide].GetSize()));
}

}  // namespace trovenu
