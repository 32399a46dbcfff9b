#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <initializer_list>
#include <string>

#include "tools/trovenu/table_output.h"

namespace trovenu::tool {

/// Exit codes of the tool.
enum ExitCode { kDone = 0, kFailed = 1, kBadUsage = 2 };

/// One command: the options that it reads, and what runs once they are read. `run` gives the exit code, or
/// throws `Failure`.
struct Command {
  CLI::App *options;
  std::function<int()> run;
};

/// \name Commands
/// Each adds its command to the tool; `main` lists them.
/// @{
Command AddEval(CLI::App &tool);
Command AddCheck(CLI::App &tool);
Command AddWords(CLI::App &tool);
Command AddIndicator(CLI::App &tool);
Command AddReplay(CLI::App &tool);
Command AddScreen(CLI::App &tool);
Command AddCompile(CLI::App &tool);
Command AddLevels(CLI::App &tool);
Command AddChart(CLI::App &tool);
Command AddBacktest(CLI::App &tool);
Command AddOptimise(CLI::App &tool);
Command AddReport(CLI::App &tool);
Command AddTable(CLI::App &tool);
Command AddBars(CLI::App &tool);
/// @}

/// \name Options that commands share
/// @{

/// `--bars FILE`.
CLI::Option *AddBarsOption(CLI::App &command, std::string &path);

/// `--format NAME` with the given formats, the first one being the default.
class FormatOption {
 public:
  void Add(CLI::App &command, std::initializer_list<Format> formats);
  Format Get() const;

 private:
  std::string name_;
};

/// `--out FILE`.
void AddOutOption(CLI::App &command, std::string &path);
/// @}

/// Writes a table to the file `path`, or to standard output if it is empty.
void WriteResult(const Table &table, const FormatOption &format, const std::string &path);

}  // namespace trovenu::tool
