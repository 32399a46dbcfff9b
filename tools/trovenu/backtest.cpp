#include <memory>
#include <string>
#include <vector>

#include "tools/trovenu/backtest_report.h"
#include "tools/trovenu/command.h"
#include "tools/trovenu/failure.h"
#include "tools/trovenu/report_folder.h"
#include "tools/trovenu/simulation_setup.h"
#include "trovenu/backtest/optimiser.h"

namespace trovenu::tool {

namespace {

struct Options {
  SimulationOptions simulation;
  bool trades = false;
  std::string equity;
  std::string report;
  FormatOption format;
  std::string out;
};

// The folder for tables and pages of the run; empty if none is asked for.
std::unique_ptr<ReportFolder> PrepareReport(SSimulation &simulation, const std::string &path) {
  if (path.empty()) return nullptr;
  auto folder = std::make_unique<ReportFolder>(path);
  folder->RequireReportsAlone();
  SSimulationMain(&simulation, SSimulationMain::Variables, folder->Path().c_str());
  folder->RequireRunTable();
  simulation.IndividualSummaryFileName = folder->SummaryTable(0).c_str();
  simulation.TradingHistoryFileName = folder->TradeTable(0).c_str();
  return folder;
}

void WriteReport(SSimulation &simulation, const ReportFolder &folder) {
  simulation.WriteRunTables();
  const std::vector<FinishedRun> runs = folder.Runs();
  if (runs.empty() || !runs.front().IsComplete())
    throw Failure(folder.Shown() + ": the tables can't be written");
  folder.WritePages(runs.front());
}

void WriteSummary(const SSimulation &simulation, const FormatOption &format, const std::string &path) {
  OutputFile out(path);
  if (format.Get() == Format::Table) out.Write(RunText(simulation) + "\n");
  if (format.Get() == Format::Json) out.Write("{" + RunJson(simulation) + ",\n\"figures\":");
  WriteTable(SummaryTable(simulation), format.Get(), out);
  if (format.Get() == Format::Json) out.Write("}\n");
  out.Commit();
}

int Run(const Options &options) {
  CheckRuleUsage(options.simulation.rules);
  if (!options.equity.empty() && options.equity == options.out) {
    throw CLI::ValidationError("--equity", "names the same file as --out");
  }
  Backtest backtest(options.simulation);
  SSimulation &simulation = backtest.Simulation();
  const std::unique_ptr<ReportFolder> report = PrepareReport(simulation, options.report);
  backtest.Run();
  if (report) WriteReport(simulation, *report);
  if (!options.equity.empty()) {
    OutputFile out(options.equity);
    WriteTable(EquityTable(simulation, backtest.GetBars()), Format::Csv, out);
    out.Commit();
  }
  if (options.trades) {
    WriteResult(TradeTable(simulation), options.format, options.out);
  } else {
    WriteSummary(simulation, options.format, options.out);
  }
  return kDone;
}

}  // namespace

Command AddBacktest(CLI::App &tool) {
  CLI::App *command = tool.add_subcommand("backtest", "Trade by rules on bars, and sum up what came of it");
  const auto options = std::make_shared<Options>();
  AddSimulationOptions(*command, options->simulation);
  command->add_flag("--trades", options->trades, "Print the trades instead of the summary");
  command->add_option("--equity", options->equity, "CSV file for the equity on all bars")->type_name("FILE");
  command
      ->add_option("--report", options->report,
                   "Folder for tables and pages of the run; what earlier reports left there\nis deleted")
      ->type_name("DIR");
  options->format.Add(*command, {Format::Table, Format::Csv, Format::Json});
  AddOutOption(*command, options->out);
  command->footer(
      "A distance or cost is a part of the price, such as 2%, or a plain number: points for a distance,\n"
      "money for a cost. A signal fills at the close of its bar.");
  return {command, [options] { return Run(*options); }};
}

}  // namespace trovenu::tool
