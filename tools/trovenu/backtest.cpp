#include <algorithm>
#include <cmath>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "tools/trovenu/backtest_options.h"
#include "tools/trovenu/backtest_report.h"
#include "tools/trovenu/backtest_rules.h"
#include "tools/trovenu/command.h"
#include "tools/trovenu/failure.h"
#include "tools/trovenu/formula_options.h"
#include "trovenu/backtest/simulation.h"

namespace trovenu::tool {

namespace {

constexpr BarField kPrices[] = {BarField::Open, BarField::High, BarField::Low, BarField::Close};

struct Options {
  std::string bars;
  RuleOptions rules;
  std::string folder;
  BacktestOptions settings;
  double tick = 0.0;
  double pointValue = 1.0;
  double margin = 0.0;
  bool trades = false;
  std::string equity;
  FormatOption format;
  std::string out;
};

// Checks an option for a number above 0.
CLI::Validator AboveZero() {
  const auto fault = [](const std::string &text) -> std::string {
    double value = 0.0;
    const bool isNumber = CLI::detail::lexical_cast(text, value) && std::isfinite(value) && value > 0.0;
    return isNumber ? "" : "expected a number above 0, found " + text;
  };
  return {fault, ""};
}

void CheckUsage(const Options &options) {
  const bool anyFormula = std::ranges::any_of(options.rules.formulas,
                                              [](const std::string &formula) { return !formula.empty(); });
  if (options.rules.system.empty() != anyFormula) {
    throw CLI::ValidationError("expected either --system or rules (--long-entry and its fellows)");
  }
  if (options.rules.system.empty() && !options.rules.settings.empty()) {
    throw CLI::ValidationError("--set needs --system");
  }
}

// Warns of prices that a back-test gets wrong.
void CheckPrices(const Bars &bars) {
  for (const BarField field : kPrices) {
    if ((bars.present & 1U << static_cast<unsigned>(field)) == 0) {
      throw FailureAt(bars.name, bars.headerLine,
                      "expected a column " + FieldName(field) + ", which a back-test reads");
    }
    const SVector &prices = bars[field];
    const double *const begin = prices.data;
    if (std::all_of(begin, begin + prices.GetSize(),
                    [](double price) { return price >= 0.0 && price < kStopScale; })) {
      continue;
    }
    std::fprintf(stderr, "trovenu: warning: %s: prices outside 0 to 100,000,000; stops and fills go wrong\n",
                 bars.name.c_str());
    return;
  }
}

// The last decimal place in which the prices are written.
double TickOf(const Bars &bars) {
  constexpr std::size_t kMostDecimals = 8;
  std::size_t decimals = 0;
  std::string text;
  for (const BarField field : kPrices) {
    for (int i = 0; i < bars.Size() && decimals < kMostDecimals; ++i) {
      text.clear();
      AppendNumber(text, bars[field][i]);
      const std::size_t point = text.find('.');
      if (point != text.npos) decimals = std::max(decimals, std::min(text.size() - point - 1, kMostDecimals));
    }
  }
  return std::pow(10.0, -static_cast<double>(decimals));
}

// A side that isn't traded has no signals, so that no figure of all trades takes it in.
void DropSide(SIndex &rules, int side) {
  rules.ExpData[2 * side].InitValue(0.0);
  rules.ExpData[2 * side + 1].InitValue(0.0);
}

void Simulate(SSimulation &simulation, const Options &options, SIndex &rules, Bars &bars,
              SFunctionList &functions) {
  simulation.SetIndex(rules);
  simulation.Setting = SettingOf(options.settings);
  simulation.TickSize = options.tick > 0.0 ? options.tick : TickOf(bars);
  simulation.SetFunction(&functions);
  simulation.SetVariablePointer(&bars[BarField::Close], &bars[BarField::Open], &bars[BarField::High],
                                &bars[BarField::Low], &bars[BarField::Volume], &bars[BarField::Date],
                                &bars[BarField::OpenInterest], &bars[BarField::Amount]);
  simulation.SetVariableToIndex();
  simulation.SetBigPointValue(options.pointValue);
  if (options.margin > 0.0) simulation.SetMargin(options.margin);
  simulation.SummaryCount = 0;
  // A command keeps no table of its runs.
  simulation.SummaryInfoFileName = "";
  simulation.SetHistoryToZero();
  simulation.Index.Calc();
  for (int side = 0; side < 2; ++side) {
    if (side < simulation.GetStartMode() || side > simulation.GetEndMode()) DropSide(simulation.Index, side);
  }
  simulation.ProcessStop(nullptr);
  simulation.Index.PreProcess();
  simulation.SetHistory();
  simulation.SetSummary();
  simulation.WriteSummary();
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
  CheckUsage(options);
  const FormulaFolder folder(options.folder);
  SFunctionList functions = folder.Functions();
  Bars bars = ReadBars(options.bars);
  CheckPrices(bars);
  SIndex rules = RulesOf(options.rules, folder, bars, functions);
  // Too large for a stack.
  const auto simulation = std::make_unique<SSimulation>();
  Simulate(*simulation, options, rules, bars, functions);
  if (!options.equity.empty()) {
    OutputFile out(options.equity);
    WriteTable(EquityTable(*simulation, bars), Format::Csv, out);
    out.Commit();
  }
  if (options.trades) {
    WriteResult(TradeTable(*simulation), options.format, options.out);
  } else {
    WriteSummary(*simulation, options.format, options.out);
  }
  return kDone;
}

}  // namespace

Command AddBacktest(CLI::App &tool) {
  CLI::App *command = tool.add_subcommand("backtest", "Trade by rules on bars, and sum up what came of it");
  const auto options = std::make_shared<Options>();
  AddBarsOption(*command, options->bars);
  command
      ->add_option("--system", options->rules.system,
                   "Trading system of the formula tables; of the starter set if the\nfolder has none")
      ->type_name("NAME");
  constexpr const char *kRules[] = {"--long-entry", "--long-exit", "--short-entry", "--short-exit"};
  for (int i = 0; i < 4; ++i) {
    command->add_option(kRules[i], options->rules.formulas[i], "Rule; 0 if it is left out")
        ->type_name("TEXT");
  }
  AddFolderOption(*command, options->folder);
  AddSetOption(*command, options->rules.settings);
  AddBacktestOptions(*command, options->settings);
  command
      ->add_option("--tick", options->tick,
                   "Price step to which stops are rounded (default: the last decimal place\nof the prices)")
      ->type_name("T")
      ->check(AboveZero());
  command->add_option("--point-value", options->pointValue, "Money that a point is worth")
      ->type_name("V")
      ->check(AboveZero())
      ->capture_default_str();
  command->add_option("--margin", options->margin, "Capital of a trade, for returns (default: its cost)")
      ->type_name("M")
      ->check(AboveZero());
  command->add_flag("--trades", options->trades, "Print the trades instead of the summary");
  command->add_option("--equity", options->equity, "CSV file for the equity on all bars")->type_name("FILE");
  options->format.Add(*command, {Format::Table, Format::Csv, Format::Json});
  AddOutOption(*command, options->out);
  command->footer(
      "A distance or cost is a part of the price, such as 2%, or a plain number: points for a distance,\n"
      "money for a cost. A signal fills at the close of its bar.");
  return {command, [options] { return Run(*options); }};
}

}  // namespace trovenu::tool
