#pragma once

/// \file
/// Options of a back-test that change its settings: sides, costs and stops.

#include <CLI/CLI.hpp>
#include <string>

#include "trovenu/backtest/setting.h"

namespace trovenu::tool {

/// What the user gave, each as typed; an empty text stands for an option that was left out.
struct BacktestOptions {
  std::string config;
  std::string side;
  std::string stopLoss;
  std::string target;
  std::string trail;
  std::string trailProfit;
  std::string quietExit;
  std::string dayEnd;
  std::string commission;
  std::string slippage;
};

void AddBacktestOptions(CLI::App &command, BacktestOptions &options);

/// The defaults, what the settings file has in their place, and what the options say in place of both. Throws
/// `CLI::ValidationError` for an option that is no amount, and `Failure` for a settings file that is not
/// there or is none.
SSimulationSetting SettingOf(const BacktestOptions &options);

}  // namespace trovenu::tool
