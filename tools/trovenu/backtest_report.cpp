#include "tools/trovenu/backtest_report.h"

#include <iterator>
#include <nlohmann/json.hpp>
#include <utility>
#include <vector>

#include "tools/trovenu/date_text.h"
#include "tools/trovenu/result_columns.h"
#include "tools/trovenu/terminal_text.h"
#include "trovenu/platform/code_page.h"

namespace trovenu::tool {

namespace {

constexpr int kAllTrades = -1;
constexpr double kPercent = 100.0;

std::string InUtf8(const SString &text) { return Utf8FromCodePage(text.c_str(), nullptr); }

// By the number in front of an exit's price.
constexpr const char *kExitNames[] = {"rule",   "stop-loss",  "trail-profit", "trail",
                                      "target", "quiet-exit", "day-end"};

// What ended a trade.
std::string ExitName(const SSimulation &simulation, int trade) {
  const SVector *history = simulation.History;
  if (history[kTradeExitDate][trade] == 0.0) return "end of data";
  const int side = static_cast<int>(history[kTradeSide][trade]);
  const int bar = simulation.Date->FindPos(history[kTradeExitDate][trade], 0);
  const SVector &exits = simulation.Index.ExpData[2 * side + 1];
  const int stop = TruncateToInt(exits[bar] / kStopScale);
  return stop >= 0 && stop < static_cast<int>(std::size(kExitNames)) ? kExitNames[stop] : "";
}

constexpr const char *kRuleNames[] = {"long entry", "long exit", "short entry", "short exit"};

// The run as pairs of a name and a text.
std::vector<std::pair<const char *, std::string>> RunFields(const SSimulation &simulation) {
  const SSummaryInfo &info = simulation.SummaryInfo;
  std::vector<std::pair<const char *, std::string>> fields;
  if (!simulation.Index.IndexName.IsEmpty()) {
    fields.emplace_back("system", InUtf8(info.IndicatorName));
  } else {
    for (int i = 0; i < kRules; ++i) {
      fields.emplace_back(kRuleNames[i], OneLine(InUtf8(simulation.Index.Expression[i])));
    }
  }
  fields.emplace_back("term", InUtf8(info.Term));
  fields.emplace_back("status", InUtf8(info.Status));
  fields.emplace_back("entry cost", InUtf8(info.EntryCommission));
  fields.emplace_back("exit cost", InUtf8(info.ExitCommission));
  fields.emplace_back("slippage", InUtf8(info.Slippage));
  fields.emplace_back("in market", InUtf8(info.InMarketRatio) + "%");
  return fields;
}

}  // namespace

Table SummaryTable(const SSimulation &simulation) {
  TableColumn::Texts sections;
  TableColumn::Texts labels;
  std::vector<std::pair<std::string, TableColumn::Figures>> groups;
  for (int i = 0; i < simulation.SummaryCount; ++i) {
    const SSummary &row = simulation.SummaryRows[i];
    const std::string group = InUtf8(row.GroupName);
    if (groups.empty() || groups.back().first != group) groups.push_back({group, {}});
    const auto add = [&](const SString &label, const SString &value) {
      if (label.IsEmpty()) return;
      groups.back().second.values.push_back(InUtf8(value));
      if (groups.size() > 1) return;
      sections.values.push_back(InUtf8(row.SubGroupName));
      labels.values.push_back(InUtf8(label));
    };
    add(row.Name1, row.Value1);
    add(row.Name2, row.Value2);
  }
  Table table{{{"section", std::move(sections)}, {"figure", std::move(labels)}}};
  for (auto &[heading, figures] : groups) table.columns.push_back({heading, std::move(figures)});
  return table;
}

std::string RunText(const SSimulation &simulation) {
  std::string text;
  for (const auto &[name, value] : RunFields(simulation)) {
    text += name;
    text.append(12 - std::string_view(name).size(), ' ');
    text += value + "\n";
  }
  return text;
}

std::string RunJson(const SSimulation &simulation) {
  std::string text;
  for (const auto &[name, value] : RunFields(simulation)) {
    text += (text.empty() ? "" : ",") + nlohmann::json(name).dump() + ":" + nlohmann::json(value).dump();
  }
  return text;
}

Table TradeTable(const SSimulation &simulation) {
  const SVector *history = simulation.History;
  const int trades = history[kTradeSide].GetSize();
  TableColumn::Texts sides;
  TableColumn::Texts exitDates;
  TableColumn::Texts exits;
  for (int i = 0; i < trades; ++i) {
    const double exitDate = history[kTradeExitDate][i];
    sides.values.emplace_back(history[kTradeSide][i] == 0.0 ? "long" : "short");
    exitDates.values.push_back(exitDate != 0.0 ? DateText(exitDate) : "");
    exits.values.push_back(ExitName(simulation, i));
  }
  const auto valuesOf = [&](int column) {
    return std::vector<double>(history[column].data, history[column].data + trades);
  };
  const auto numbers = [&](int column) { return TableColumn::Numbers{valuesOf(column)}; };
  // A ratio of 1.02 is a return of two percent.
  const auto returns = [&](int column) {
    std::vector<double> values = valuesOf(column);
    for (double &value : values) value = (value - 1.0) * kPercent;
    return TableColumn::Numbers{std::move(values)};
  };
  return {{{"side", std::move(sides)},
           {"entry", TableColumn::Dates{valuesOf(kTradeEntryDate)}},
           {"price", numbers(kTradeEntryPrice)},
           {"cost", numbers(kTradeEntryCost)},
           {"exit", std::move(exitDates)},
           {"exit price", numbers(kTradeExitPrice)},
           {"exit cost", numbers(kTradeExitCost)},
           {"by", std::move(exits)},
           {"bars", numbers(kTradeBarsHeld)},
           {"quantity", numbers(kTradeQuantity)},
           {"profit", numbers(kTradeProfitLoss)},
           {"return %", returns(kTradeProfitLossRatio)},
           {"total", numbers(kTradeCumProfitLoss)},
           {"total %", returns(kTradeCumProfitLossRatio)},
           {"runup", numbers(kTradeRunup)},
           {"drawdown", numbers(kTradeDrawdown)},
           {"entry eff", numbers(kTradeEntryEff)},
           {"exit eff", numbers(kTradeExitEff)},
           {"total eff", numbers(kTradeTotalEff)}}};
}

Table EquityTable(SSimulation &simulation, const Bars &bars) {
  ResultColumns columns(bars, 0);
  for (const auto &[heading, mode] : {std::pair{"long", 0}, {"short", 1}, {"all", kAllTrades}}) {
    SVector equity;
    simulation.CalcEquity(&equity, mode);
    columns.Add(heading, equity);
  }
  return std::move(columns).Take();
}

}  // namespace trovenu::tool
