#pragma once

/// \file
/// A back-test as the commands that trade make it of their options.

#include <CLI/CLI.hpp>
#include <memory>
#include <string>

#include "tools/trovenu/backtest_options.h"
#include "tools/trovenu/backtest_rules.h"
#include "tools/trovenu/bars.h"
#include "trovenu/backtest/simulation.h"

namespace trovenu::tool {

struct SimulationOptions {
  std::string bars;
  RuleOptions rules;
  std::string folder;
  BacktestOptions settings;
  double tick = 0.0;
  double pointValue = 1.0;
  double margin = 0.0;
};

/// Bars, rules, settings, costs and stops.
void AddSimulationOptions(CLI::App &command, SimulationOptions &options);

/// Throws `CLI::ValidationError` unless the rules come either from a system or from formulas.
void CheckRuleUsage(const RuleOptions &options);

/// A back-test with its bars, rules and settings, bound and ready to run.
class Backtest {
 public:
  /// Throws `Failure` for options that can't be followed, and warns of prices that a back-test gets wrong.
  explicit Backtest(const SimulationOptions &options);

  SSimulation &Simulation() { return *simulation_; }
  Bars &GetBars() { return bars_; }

  /// Another trading system under the same settings. Throws `Failure` as the constructor does.
  SIndex Rules(const std::string &system);

  /// Runs it once.
  void Run();

 private:
  SIndex SoundRules(const RuleOptions &options);

  FormulaFolder folder_;
  SFunctionList functions_;
  Bars bars_;
  // Too large for a stack.
  std::unique_ptr<SSimulation> simulation_ = std::make_unique<SSimulation>();
};

}  // namespace trovenu::tool
