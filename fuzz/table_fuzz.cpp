// Table files: any bytes are read as far as they go, and a table that is made gives its records back. No
// table begins with a zero byte; such an input tells what table to make, any other one is a file.

#include <string>
#include <vector>

#include "fuzz/check.h"
#include "fuzz/input.h"
#include "tests/platform/temp_folder.h"
#include "trovenu/support/table_check.h"
#include "trovenu/support/table_delete.h"
#include "trovenu/support/table_reader.h"
#include "trovenu/support/table_writer.h"

namespace trovenu::fuzz {
namespace {

constexpr int kMostFields = 6;
constexpr int kMostRecords = 8;

const tests::TempFolder &Folder() {
  static const tests::TempFolder folder;
  return folder;
}

void ReadAll(const std::string &path) {
  DDB both(path.c_str(), path.c_str(), 1);
  for (; both.Eof() == 0; both.MoveNext()) {
    both.GetStr("NAME");
    both.Deleted();
  }
  DB table(path.c_str());
  for (; table.Eof() == 0; table.MoveNext()) table.GetStr("NAME");
}

void CheckAnyFile(const std::string &bytes) {
  const std::string path = Folder().Put("any", bytes);
  const TableReport report = CheckTable(path);
  ReadAll(path);
  if (SaveReadableTable(path, Folder().Path("saved"))) {
    const TableReport saved = CheckTable(Folder().Path("saved"));
    Require(saved.IsWhole(), "a saved table is whole");
    Require(saved.records == report.records + report.markFaults, "a saved table has all records");
    Require(saved.deleted == report.deleted + report.markFaults, "damaged records are saved as deleted ones");
  }
  {
    DDB table(path.c_str(), "", 1);
    table.FindFirst("NAME", "x");
    table.InsField("NAME", "changed");
    table.WriteRecord();
    table.Append("");
    table.InsField("NAME", "added");
    table.WriteRecord();
  }
  DeleteRecords(path, "NAME", "changed");
  ReadAll(path);
}

struct Column {
  std::string name;
  char type;
  std::size_t width;
};

// What of a value a field keeps, unless it has to be cut.
bool Keeps(const Column &column, const std::string &value) {
  const bool fillsWithBlank = value.size() == column.width && value.ends_with(' ');
  const bool hasBlanksBefore = column.type != 'C' && value.starts_with(' ');
  return value.size() <= column.width && !fillsWithBlank && !hasBlanksBefore;
}

void CheckMadeTable(Input input) {
  const std::string path = Folder().Path("made");
  std::vector<Column> columns;
  {
    DB table;
    table.SkipFlush();
    table.CreateDB(path.c_str());
    for (int n = input.Below(kMostFields) + 1; n > 0; --n) {
      const std::string name = input.Text();
      const char type = "CNFDL"[input.Below(5)];
      const int width = input.Below(600);
      if (table.InsertField(name.c_str(), type, width) != 0)
        columns.push_back({name, type, static_cast<std::size_t>(width)});
    }
    table.WriteHead();
    table.WriteField();
    if (table.WriteEof() == 0) {
      Require(columns.empty(), "a table with fields is made");
      return;
    }
  }
  std::vector<std::vector<std::string>> records;
  {
    DB table(path.c_str());
    table.SkipFlush();
    for (int n = input.Below(kMostRecords); n > 0; --n) {
      std::vector<std::string> values;
      Require(table.Append("") != 0, "a record is begun");
      for (const Column &column : columns) {
        values.push_back(input.Text());
        Require(table.InsField(column.name.c_str(), values.back().c_str()) != 0, "a field is set");
      }
      Require(table.WriteRecord() != 0, "a record is written");
      records.push_back(std::move(values));
    }
  }
  Require(CheckTable(path).IsWhole(), "a table is whole");
  DB table(path.c_str());
  for (const std::vector<std::string> &values : records) {
    Require(table.Eof() == 0, "all records are there");
    for (std::size_t i = 0; i < columns.size(); ++i) {
      const SString found = table.GetStr(columns[i].name.c_str());
      if (Keeps(columns[i], values[i])) {
        Require(found.View() == values[i], "a value comes back");
      } else if (columns[i].type == 'C') {
        Require(values[i].starts_with(found.View()), "a value that is cut begins as it was");
      }
    }
    table.MoveNext();
  }
  Require(table.Eof() != 0, "there are no other records");
}

}  // namespace
}  // namespace trovenu::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  trovenu::fuzz::Input input(data, size);
  if (size > 0 && data[0] == 0) {
    input.Byte();
    trovenu::fuzz::CheckMadeTable(input);
  } else {
    trovenu::fuzz::CheckAnyFile(input.Rest());
  }
  return 0;
}
