#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tools/trovenu/command.h"
#include "tools/trovenu/failure.h"
#include "tools/trovenu/output_file.h"
#include "trovenu/platform/code_page.h"
#include "trovenu/platform/platform.h"
#include "trovenu/support/table_check.h"
#include "trovenu/support/table_file.h"

namespace trovenu::tool {

namespace {

struct ShowOptions {
  std::string path;
  bool deleted = false;
  FormatOption format;
  std::string out;
};

struct CheckOptions {
  std::string path;
  std::string repaired;
};

Failure NoTable(const std::string &path) {
  return Failure(path + (FileExist(path.c_str()) != 0
                             ? ": expected a table, which begins with a head of fields"
                             : ": can't be read (no such file)"));
}

/// Damaged heads may give two fields one name.
std::string OwnHeading(const Table &table, const std::string &name) {
  std::string heading = name;
  const auto taken = [&](const TableColumn &column) { return column.heading == heading; };
  for (int i = 2; std::any_of(table.columns.begin(), table.columns.end(), taken); ++i) {
    heading = name + "_" + std::to_string(i);
  }
  return heading;
}

/// The value as one line for a terminal, or byte for byte.
std::string Shown(std::string_view value, bool oneLine) {
  std::string text = Utf8FromCodePage(value, nullptr);
  if (oneLine) {
    std::replace_if(
        text.begin(), text.end(), [](char c) { return (c >= '\0' && c < ' ') || c == '\x7F'; }, ' ');
  }
  return text;
}

int Show(const ShowOptions &options) {
  TableFile file;
  if (!file.Open(options.path)) throw NoTable(options.path);
  const bool oneLine = options.format.Get() == Format::Table;
  const std::vector<TableField> &fields = file.Format().Fields();
  std::vector<std::vector<std::string>> values(fields.size());
  std::vector<std::string> marks;
  for (std::uint32_t i = 0; i < file.RecordCount(); ++i) {
    const char *record = file.Record(i);
    if (!IsGoodRecord(record)) continue;
    const bool deleted = *record == static_cast<char>(RecordMark::Deleted);
    if (deleted && !options.deleted) continue;
    marks.emplace_back(deleted ? "*" : "");
    for (std::size_t k = 0; k < fields.size(); ++k) {
      values[k].push_back(Shown(FieldValue(record, fields[k]), oneLine));
    }
  }
  Table table;
  if (options.deleted) table.columns.push_back({"deleted", TableColumn::Texts{std::move(marks)}});
  for (std::size_t k = 0; k < fields.size(); ++k) {
    const std::string heading = OwnHeading(table, Shown(fields[k].name, true));
    table.columns.push_back({heading, TableColumn::Texts{std::move(values[k])}});
  }
  WriteResult(table, options.format, options.out);
  return kDone;
}

std::string Count(std::uint64_t count, const std::string &what) {
  return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
}

std::string Records(std::uint64_t records, std::uint64_t deleted) {
  return Count(records, "record") + (deleted > 0 ? " (" + std::to_string(deleted) + " deleted)" : "");
}

/// What is wrong, one line for each fault.
std::string FaultsOf(const TableReport &report) {
  std::string lines;
  const auto add = [&](const std::string &fault) { lines += "  " + fault + '\n'; };
  const std::uint64_t held = std::uint64_t{report.records} + report.markFaults;
  if (report.sizesDiffer) add("the lengths in the head don't agree with its fields");
  if (report.countDiffers) {
    add("the head counts " + Count(report.counted, "record") + ", the file holds " + std::to_string(held));
  }
  if (report.markFaults > 0) add(Count(report.markFaults, "record") + " without a good deletion mark");
  if (report.unfinishedBytes > 0) {
    add(Count(report.unfinishedBytes, "byte") + " of an unfinished record behind the last one");
  }
  if (report.noEndMark) add("no end mark behind the last record");
  if (report.bytesBehindEnd > 0) add(Count(report.bytesBehindEnd, "byte") + " behind the end");
  return lines;
}

int Check(const CheckOptions &options) {
  const TableReport report = CheckTable(options.path);
  if (!report.isTable) throw NoTable(options.path);
  OutputFile out("");
  if (report.IsWhole()) {
    out.Write(options.path + ": whole, " + Records(report.records, report.deleted) + ", " +
              Count(report.fields, "field") + '\n');
    out.Commit();
    return kDone;
  }
  const std::uint64_t savable = std::uint64_t{report.records} + report.markFaults;
  const std::string records = Records(savable, std::uint64_t{report.deleted} + report.markFaults);
  std::string text = options.path + ": damaged\n" + FaultsOf(report) + "  can be saved: " + records + '\n';
  const bool repair = !options.repaired.empty();
  if (repair) {
    if (FileExist(options.repaired.c_str()) != 0) {
      throw Failure(options.repaired + ": is there already; expected the name of a new file");
    }
    if (!SaveReadableTable(options.path, options.repaired))
      throw Failure(options.repaired + ": can't be written");
    text += options.repaired + ": " + records + " saved\n";
  }
  out.Write(text);
  out.Commit();
  return repair ? kDone : kFailed;
}

CLI::App *AddShow(CLI::App &parent, ShowOptions &options) {
  CLI::App *command = parent.add_subcommand("show", "Print the records of a table");
  command->add_option("file", options.path, "Table file")->type_name("FILE")->required();
  command->add_flag("--deleted", options.deleted, "Deleted records too, with a column that marks them");
  options.format.Add(*command, {Format::Table, Format::Csv, Format::Json});
  AddOutOption(*command, options.out);
  return command;
}

CLI::App *AddTableCheck(CLI::App &parent, CheckOptions &options) {
  CLI::App *command =
      parent.add_subcommand("check", "Say whether a table is whole, and if not, what can be saved of it");
  command->add_option("file", options.path, "Table file")->type_name("FILE")->required();
  command->add_option("--repair", options.repaired, "New file for what can be saved of a damaged table")
      ->type_name("NEWFILE");
  return command;
}

}  // namespace

Command AddTable(CLI::App &tool) {
  CLI::App *command = tool.add_subcommand("table", "Look into table files: formula tables and results");
  command->require_subcommand(1);
  const auto showOptions = std::make_shared<ShowOptions>();
  const auto checkOptions = std::make_shared<CheckOptions>();
  CLI::App *show = AddShow(*command, *showOptions);
  AddTableCheck(*command, *checkOptions);
  return {command, [=] { return show->parsed() ? Show(*showOptions) : Check(*checkOptions); }};
}

}  // namespace trovenu::tool
