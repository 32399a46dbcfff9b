#include <algorithm>
#include <cstdio>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "tools/trovenu/at_least.h"
#include "tools/trovenu/command.h"
#include "tools/trovenu/formula_folder.h"
#include "tools/trovenu/formula_options.h"
#include "tools/trovenu/indicator_lines.h"
#include "tools/trovenu/symbol_screen.h"

namespace trovenu::tool {

namespace {

using Outcome = ScreenResult::Outcome;

struct Options {
  std::string formula;
  std::string condition;
  std::string folder;
  std::string files;
  int within = 1;
  int jobs = 1;
  FormatOption format;
  std::string out;
};

Table TableOf(const std::vector<SymbolFile> &files, const std::vector<ScreenResult> &results) {
  TableColumn::Texts names;
  TableColumn::Dates dates;
  TableColumn::Numbers closes;
  for (std::size_t i = 0; i < files.size(); ++i) {
    if (results[i].outcome != Outcome::True) continue;
    names.values.push_back(files[i].name);
    dates.values.push_back(results[i].date);
    closes.values.push_back(results[i].close);
  }
  return {{{"symbol", std::move(names)}, {"date", std::move(dates)}, {"close", std::move(closes)}}};
}

void ReportFaults(const std::vector<ScreenResult> &results) {
  for (const ScreenResult &result : results) {
    if (result.outcome == Outcome::Faulty) std::fprintf(stderr, "trovenu: %s\n", result.fault.c_str());
  }
}

long long Count(const std::vector<ScreenResult> &results, Outcome outcome) {
  return std::ranges::count(results, outcome, &ScreenResult::outcome);
}

int Run(const Options &options) {
  const FormulaFolder folder(options.folder);
  Screen screen;
  screen.condition =
      options.condition.empty()
          ? IndicatorOf({options.formula})
          : folder.Read(KindOfWord("condition"), NameInCodePage(options.condition, "--condition"));
  screen.functions = folder.Functions();
  screen.within = options.within;
  Prepare(screen);
  const std::vector<SymbolFile> files = FindSymbolFiles(options.files);
  if (!screen.directReason.empty()) {
    std::fprintf(stderr, "runs on the direct path: %s\n", screen.directReason.c_str());
  }
  const std::vector<ScreenResult> results = RunScreen(screen, files, options.jobs);
  WriteResult(TableOf(files, results), options.format, options.out);
  ReportFaults(results);
  std::string summary = std::to_string(files.size()) + (files.size() == 1 ? " symbol: " : " symbols: ") +
                        std::to_string(Count(results, Outcome::True)) + " found";
  if (const long long skipped = Count(results, Outcome::TooFewBars); skipped > 0) {
    summary += ", " + std::to_string(skipped) + " skipped with fewer than " +
               std::to_string(screen.leastBars) + " bars";
  }
  const long long faulty = Count(results, Outcome::Faulty);
  if (faulty > 0) summary += ", " + std::to_string(faulty) + " faulty";
  std::fprintf(stderr, "%s\n", summary.c_str());
  return faulty > 0 ? kFailed : kDone;
}

}  // namespace

Command AddScreen(CLI::App &tool) {
  CLI::App *command = tool.add_subcommand("screen", "Search symbols for those on which a condition is true");
  const auto options = std::make_shared<Options>();
  options->jobs = static_cast<int>(std::max(std::thread::hardware_concurrency(), 1U));
  CLI::Option_group *what = command->add_option_group("What to look for");
  what->add_option("--formula,formula", options->formula, "Formula; the option's name may be left out")
      ->type_name("TEXT");
  what->add_option("--condition", options->condition, "Condition of the formula tables")->type_name("NAME");
  what->require_option(1);
  AddFolderOption(*command, options->folder);
  command
      ->add_option("--bars", options->files,
                   "CSV files, one a symbol, as for eval; * and ? in the name stand\n"
                   "for any characters and for one (in quotes: the shell is not to fill them in)")
      ->type_name("PATTERN")
      ->required();
  command->add_option("--within", options->within, "Look at the newest N bars")
      ->type_name("N")
      ->check(AtLeast(1))
      ->capture_default_str();
  command->add_option("--jobs", options->jobs, "Threads (default: one for each processor)")
      ->type_name("N")
      ->check(AtLeast(1));
  options->format.Add(*command, {Format::Table, Format::Csv, Format::Json});
  AddOutOption(*command, options->out);
  command->footer(
      "Prints the symbols with the newest bar on which the condition is true, that is not 0. Standard\n"
      "error tells how many symbols were looked at, skipped for too few bars, and faulty. A faulty file\n"
      "keeps no other from being looked at; the exit code is then 1.");
  return {command, [options] { return Run(*options); }};
}

}  // namespace trovenu::tool
