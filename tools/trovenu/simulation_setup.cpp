#include "tools/trovenu/simulation_setup.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>

#include "tools/trovenu/command.h"
#include "tools/trovenu/failure.h"
#include "tools/trovenu/formula_options.h"
#include "tools/trovenu/path_text.h"
#include "trovenu/platform/code_page.h"

namespace trovenu::tool {

namespace {

constexpr BarField kPrices[] = {BarField::Open, BarField::High, BarField::Low, BarField::Close};

// Checks an option for a number above 0.
CLI::Validator AboveZero() {
  const auto fault = [](const std::string &text) -> std::string {
    double value = 0.0;
    const bool isNumber = CLI::detail::lexical_cast(text, value) && std::isfinite(value) && value > 0.0;
    return isNumber ? "" : "expected a number above 0, found " + text;
  };
  return {fault, ""};
}

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

// The name of the bar file without its folder and extension.
SString SymbolOf(const Bars &bars) {
  return CodePageFromUtf8(TextOf(PathOf(bars.name).stem()), nullptr).c_str();
}

}  // namespace

void AddSimulationOptions(CLI::App &command, SimulationOptions &options) {
  AddBarsOption(command, options.bars);
  command
      .add_option("--system", options.rules.system,
                  "Trading system of the formula tables; of the starter set if the\nfolder has none")
      ->type_name("NAME");
  constexpr const char *kRuleOptions[] = {"--long-entry", "--long-exit", "--short-entry", "--short-exit"};
  for (int i = 0; i < kRules; ++i) {
    command.add_option(kRuleOptions[i], options.rules.formulas[i], "Rule; 0 if it is left out")
        ->type_name("TEXT");
  }
  AddFolderOption(command, options.folder);
  AddSetOption(command, options.rules.settings);
  AddBacktestOptions(command, options.settings);
  command
      .add_option("--tick", options.tick,
                  "Price step to which stops are rounded (default: the last decimal place\nof the prices)")
      ->type_name("T")
      ->check(AboveZero());
  command.add_option("--point-value", options.pointValue, "Money that a point is worth")
      ->type_name("V")
      ->check(AboveZero())
      ->capture_default_str();
  command.add_option("--margin", options.margin, "Capital of a trade, for returns (default: its cost)")
      ->type_name("M")
      ->check(AboveZero());
}

void CheckRuleUsage(const RuleOptions &options) {
  const bool anyFormula =
      std::ranges::any_of(options.formulas, [](const std::string &formula) { return !formula.empty(); });
  if (options.system.empty() != anyFormula) {
    throw CLI::ValidationError("expected either --system or rules (--long-entry and its fellows)");
  }
}

Backtest::Backtest(const SimulationOptions &options)
    : folder_(options.folder), functions_(folder_.Functions()), bars_(ReadBars(options.bars)) {
  CheckPrices(bars_);
  SSimulation &simulation = *simulation_;
  simulation.Setting = SettingOf(options.settings);
  SIndex rules = SoundRules(options.rules);
  simulation.SetIndex(rules);
  simulation.SetSymbolName(SymbolOf(bars_));
  simulation.TickSize = options.tick > 0.0 ? options.tick : TickOf(bars_);
  simulation.SetFunction(&functions_);
  bars_.BindTo(simulation);
  simulation.SetVariableToIndex();
  simulation.SetBigPointValue(options.pointValue);
  if (options.margin > 0.0) simulation.SetMargin(options.margin);
  // Tables of runs are written where they are asked for.
  simulation.SummaryInfoFileName = "";
}

SIndex Backtest::SoundRules(const RuleOptions &options) {
  SIndex rules = RulesOf(options, folder_, bars_, functions_);
  // A side that isn't traded has no signals, so that no figure of all trades takes it in.
  for (int side = 0; side < 2; ++side) {
    if (side >= simulation_->GetStartMode() && side <= simulation_->GetEndMode()) continue;
    for (const int rule : {2 * side, 2 * side + 1}) rules.SetExpression(rule, "0");
  }
  return rules;
}

SIndex Backtest::Rules(const std::string &system) {
  RuleOptions options;
  options.system = system;
  return SoundRules(options);
}

void Backtest::Run() {
  simulation_->Index.Calc();
  simulation_->TradeRules();
  simulation_->WriteSummary();
}

}  // namespace trovenu::tool
