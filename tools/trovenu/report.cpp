#include <algorithm>
#include <memory>
#include <vector>

#include "tools/trovenu/command.h"
#include "tools/trovenu/failure.h"
#include "tools/trovenu/report_folder.h"

namespace trovenu::tool {

namespace {

struct Options {
  std::string runs;
  std::vector<long> numbers;
};

int Run(const Options &options) {
  const ReportFolder folder(options.runs);
  const std::vector<FinishedRun> runs = folder.Runs();
  for (const long number : options.numbers) {
    if (std::ranges::find(runs, number, &FinishedRun::number) == runs.end()) {
      throw Failure(folder.RunTable() + ": expected a run " + std::to_string(number) + ", but it has " +
                    std::to_string(runs.size()) + " runs and none of that number");
    }
  }
  std::size_t done = 0;
  for (const FinishedRun &run : runs) {
    const bool wanted =
        options.numbers.empty() || std::ranges::find(options.numbers, run.number) != options.numbers.end();
    if (!wanted) continue;
    folder.WritePages(run);
    ++done;
  }
  OutputFile out("");
  out.Write("pages of " + std::to_string(done) + (done == 1 ? " run" : " runs") + " are in " + options.runs +
            "\n");
  out.Commit();
  return kDone;
}

}  // namespace

Command AddReport(CLI::App &tool) {
  CLI::App *command = tool.add_subcommand("report", "Make pages of the tables that finished runs have left");
  const auto options = std::make_shared<Options>();
  command->add_option("--runs", options->runs, "Folder of the runs: --report of backtest and optimise")
      ->type_name("DIR")
      ->required();
  command->add_option("--run", options->numbers, "Number of a run (default: all); may be repeated")
      ->type_name("N");
  command->footer(
      "Each run gets four pages beside its tables: its summary and its trades, each for the screen and\n"
      "narrower for print.");
  return {command, [options] { return Run(*options); }};
}

}  // namespace trovenu::tool
