#include "tools/trovenu/command.h"

#include <array>
#include <vector>

#include "tools/trovenu/output_file.h"

namespace trovenu::tool {

namespace {

constexpr std::array<const char *, 4> kFormatNames = {"table", "csv", "json", "markdown"};

const char *NameOf(Format format) { return kFormatNames[static_cast<std::size_t>(format)]; }

}  // namespace

CLI::Option *AddBarsOption(CLI::App &command, std::string &path) {
  return command
      .add_option("--bars", path,
                  "CSV file with a header and one bar a line, oldest first; - for\n"
                  "standard input. Columns in any order: date, time, open, high, low,\n"
                  "close, volume, amount, openinterest or their Korean names")
      ->type_name("FILE")
      ->required();
}

void FormatOption::Add(CLI::App &command, std::initializer_list<Format> formats) {
  std::vector<std::string> names;
  for (const Format format : formats) names.emplace_back(NameOf(format));
  name_ = names.front();
  command.add_option("--format", name_, "Form of the result")
      ->type_name("NAME")
      ->check(CLI::IsMember(names))
      ->capture_default_str();
}

Format FormatOption::Get() const {
  std::size_t i = 0;
  while (i + 1 < kFormatNames.size() && name_ != kFormatNames[i]) ++i;
  return static_cast<Format>(i);
}

void AddOutOption(CLI::App &command, std::string &path) {
  command.add_option("--out", path, "File to write, whole or not at all (default: standard output)")
      ->type_name("FILE");
}

void WriteResult(const Table &table, const FormatOption &format, const std::string &path) {
  OutputFile out(path);
  WriteTable(table, format.Get(), out);
  out.Commit();
}

}  // namespace trovenu::tool
