#pragma once

#include <cstddef>
#include <string>

#include "trovenu/support/table_writer.h"

namespace trovenu::tests {

/// Makes a table of three fields: Name, a LongerFieldName with 300 bytes, Value.
inline void MakeTable(const std::string &path) {
  DB table;
  table.CreateDB(path.c_str());
  table.ClearField();
  table.InsertField("Name", 'c', 20);
  table.InsertField("LongerFieldName", 'c', 300);
  table.InsertField("Value", 'c', 10);
  table.WriteHead();
  table.WriteField();
  table.WriteEof();
}

constexpr std::size_t kMadeHeadSize = 32 + 4 * 32 + 1;
constexpr std::size_t kMadeRecordSize = 1 + 20 + 300 + 10;

/// Adds a record whose values all tell its number.
inline int AddRecord(DB *table, int number) {
  const std::string text = std::to_string(number);
  table->Append("");
  table->InsField("Name", ("name " + text).c_str());
  table->InsField("LongerFieldName", (std::string(200, 'x') + text).c_str());
  table->InsField("Value", text.c_str());
  return table->WriteRecord();
}

/// Makes a table with the records 0 to `count` - 1.
inline void MakeTable(const std::string &path, int count) {
  MakeTable(path);
  DB table(path.c_str());
  for (int i = 0; i < count; ++i) AddRecord(&table, i);
}

/// True if the values at the place are those of record `number`.
template <class Table>
bool IsRecord(const Table &table, int number) {
  const std::string text = std::to_string(number);
  return table.GetStr("Name") == ("name " + text).c_str() &&
         table.GetStr("LongerFieldName") == (std::string(200, 'x') + text).c_str() &&
         table.GetStr("Value") == text.c_str();
}

/// The number of records if the table holds the records from 0 on, each one whole; -1 if not.
inline int CountRecords(const std::string &path) {
  DB table(path.c_str());
  int count = 0;
  for (table.MoveFirst(1); table.Eof() == 0; table.MoveNext(1)) {
    if (!IsRecord(table, count)) return -1;
    ++count;
  }
  return table.State == DB::Open ? count : -1;
}

}  // namespace trovenu::tests
