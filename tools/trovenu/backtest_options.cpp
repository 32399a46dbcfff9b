#include "tools/trovenu/backtest_options.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>

#include "tools/trovenu/date_text.h"
#include "tools/trovenu/failure.h"
#include "tools/trovenu/terminal_text.h"
#include "trovenu/backtest/simulation.h"
#include "trovenu/platform/code_page_text.h"
#include "trovenu/platform/platform.h"
#include "trovenu/support/number_text.h"

namespace trovenu::tool {

namespace {

constexpr int kFraction = 0;
constexpr int kPoints = 1;
constexpr double kPercent = 100.0;
constexpr const char *kSides[] = {"long", "short", "both"};

// A distance or a cost: a fraction of the price, typed in percent, or a plain number.
struct Amount {
  double value;
  int mode;
};

Amount AmountOf(const char *option, std::string_view typed) {
  std::string_view text = TrimBlanks(typed);
  const bool isPercent = text.ends_with('%');
  if (isPercent) text.remove_suffix(1);
  double value = 0.0;
  if (text.empty() || ParseNumber(text, &value) != text.size() || !std::isfinite(value) || value < 0.0) {
    throw CLI::ValidationError(std::string(option) + ": expected an amount such as 2% or 1.5, found " +
                               Quoted(typed));
  }
  return isPercent ? Amount{value / kPercent, kFraction} : Amount{value, kPoints};
}

// "FIRST,SECOND"; the second part is empty if there is no comma.
std::pair<std::string_view, std::string_view> SplitAtComma(std::string_view text) {
  const std::size_t comma = text.find(',');
  if (comma == text.npos) return {text, {}};
  return {text.substr(0, comma), text.substr(comma + 1)};
}

void Take(const char *option, std::string_view typed, double &value, int &mode) {
  const Amount amount = AmountOf(option, typed);
  value = amount.value;
  mode = amount.mode;
}

int BarsOf(const char *option, std::string_view typed) {
  const std::string_view text = TrimBlanks(typed);
  double bars = 0.0;
  if (text.empty() || ParseNumber(text, &bars) != text.size() || !(bars >= 1.0 && bars <= 1e9) ||
      bars != std::trunc(bars)) {
    throw CLI::ValidationError(std::string(option) + ": expected a number of bars, found " + Quoted(typed));
  }
  return static_cast<int>(bars);
}

// Closing time on a clock of 24 hours.
SString DayEndOf(const std::string &typed) {
  int time = 0;
  if (!ReadTime(TrimBlanks(typed), time)) {
    throw CLI::ValidationError("--day-end: expected a time such as 15:15, found " + Quoted(typed));
  }
  return FormatValue("%02d:%02d", time / 10000, time / 100 % 100);
}

void ReadConfig(const std::string &path, SSimulationSetting &setting) {
  std::string content;
  if (!ReadFileBytes(path, &content)) throw Failure(path + ": can't be read");
  // What a file lacks has its default, so another file than that of the settings would go unnoticed.
  std::ranges::transform(content, content.begin(), ToLowerAscii);
  if (content.find("simulationconfigure") == content.npos) {
    throw Failure(path + ": expected settings in a section SimulationConfigure");
  }
  SSimulation reader;
  reader.ReadSetting(path.c_str());
  setting = reader.Setting;
}

void TakeStops(const BacktestOptions &options, SSimulationSetting &setting) {
  if (!options.stopLoss.empty()) {
    setting.BlMoneyManagementStop = 1;
    Take("--stop-loss", options.stopLoss, setting.MoneyManagementStop, setting.ModeMoneyManagementStop);
  }
  if (!options.target.empty()) {
    setting.BlProfitTargetStop = 1;
    Take("--target", options.target, setting.ProfitTargetStop, setting.ModeProfitTargetStop);
  }
  if (!options.trail.empty()) {
    setting.BlRiskTrailingStop2 = 1;
    Take("--trail", options.trail, setting.RiskTrailingStop2, setting.ModeRiskTrailingStop2);
  }
  if (!options.trailProfit.empty()) {
    const auto [share, start] = SplitAtComma(options.trailProfit);
    setting.BlRiskTrailingStop = 1;
    Take("--trail-profit", share, setting.RiskTrailingStop, setting.ModeRiskTrailingStop);
    if (start.data() != nullptr) {
      Take("--trail-profit", start, setting.RiskTrailingStopStart, setting.ModeRiskTrailingStopStart);
    }
  }
  if (!options.quietExit.empty()) {
    const auto [range, bars] = SplitAtComma(options.quietExit);
    setting.BlMinVariationStop = 1;
    Take("--quiet-exit", range, setting.MinVariationStop, setting.ModeMinVariationStop);
    if (bars.data() != nullptr) setting.MinVariationStopCount = BarsOf("--quiet-exit", bars);
  }
  if (!options.dayEnd.empty()) {
    setting.BlDayTradingStop = 1;
    setting.DayTradingStop = DayEndOf(options.dayEnd);
    setting.ModeDayTradingStop = 0;
  }
}

void TakeCosts(const BacktestOptions &options, SSimulationSetting &setting) {
  if (!options.commission.empty()) {
    const auto [entry, exit] = SplitAtComma(options.commission);
    Take("--commission", entry, setting.EntryCommission, setting.ModeEntryCommission);
    Take("--commission", exit.data() != nullptr ? exit : entry, setting.ExitCommission,
         setting.ModeExitCommission);
  }
  if (!options.slippage.empty()) {
    Take("--slippage", options.slippage, setting.Slippage, setting.ModeSlippage);
  }
}

}  // namespace

void AddBacktestOptions(CLI::App &command, BacktestOptions &options) {
  // An empty text is none of these values, so it must not pass for an option that was left out.
  const CLI::Validator hasValue(
      [](const std::string &text) -> std::string {
        return text.empty() ? "expected a value, found nothing" : "";
      },
      "");
  const auto add = [&](const char *name, std::string &text, const char *help, const char *type) {
    return command.add_option(name, text, help)->type_name(type)->check(hasValue);
  };
  add("--config", options.config, "Settings file to begin with, section SimulationConfigure", "FILE.ini");
  add("--side", options.side, "Sides to trade (default: both)", "NAME")
      ->check(CLI::IsMember({kSides[0], kSides[1], kSides[2]}));
  add("--stop-loss", options.stopLoss, "Leave at this loss from the entry", "DIST");
  add("--target", options.target, "Leave at this profit from the entry", "DIST");
  add("--trail", options.trail, "Leave at this distance from the best price so far", "DIST");
  add("--trail-profit", options.trailProfit,
      "Leave when this share of the best profit, or this distance from the\nbest price, is given back; armed "
      "at the profit START (default 2%)",
      "SHARE[,START]");
  add("--quiet-exit", options.quietExit, "Leave when the range of so many bars (default 10) is smaller",
      "DIST[,BARS]");
  add("--day-end", options.dayEnd, "Leave, and enter no more, from this time of day on (24 hours)", "HH:MM");
  add("--commission", options.commission, "Cost of an entry and of an exit (default 0.01%)", "COST[,EXIT]");
  add("--slippage", options.slippage, "Cost of either on top (default 0.05%)", "COST");
}

SSimulationSetting SettingOf(const BacktestOptions &options) {
  SSimulationSetting setting;
  if (!options.config.empty()) ReadConfig(options.config, setting);
  for (int side = 0; side < 3; ++side) {
    if (options.side == kSides[side]) setting.Position = side;
  }
  TakeStops(options, setting);
  TakeCosts(options, setting);
  return setting;
}

}  // namespace trovenu::tool
