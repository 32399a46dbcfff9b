// A back-test from any settings, rules and bars.

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "fuzz/check.h"
#include "fuzz/functions.h"
#include "fuzz/market.h"
#include "fuzz/stored_text.h"
#include "trovenu/backtest/signals.h"
#include "trovenu/backtest/simulation.h"

namespace trovenu::fuzz {
namespace {

constexpr int kMostBars = 64;
constexpr std::size_t kLongestRule = 120;

struct BackTest {
  std::string settings;
  SIndex rules{"rules", kSystemIndex};
  SFunctionList functions;
  Market bars;
  double tick, bigPoint, margin;
  int isMargin, pointUnit, compression;
};

// The passes in the order in which hosts make them.
void RunPasses(BackTest &given, SSimulation &test) {
  SVector *const s = given.bars.series;
  test.SetIndex(given.rules);
  CKqArchive settings = ArchiveOf(given.settings);
  test.Load(settings);
  test.TickSize = given.tick;
  test.SetFunction(&given.functions);
  test.SetVariable(s[0], s[1], s[2], s[3], s[4], s[5], s[6], s[7]);
  if (given.compression > 0) test.CompressData(given.compression);
  test.SetVariableToIndex();
  test.SetBigPointValue(given.bigPoint);
  test.BlPointUnit = given.pointUnit;
  if (given.isMargin != 0) test.SetMargin(given.margin);
  test.Index.Calc();
  test.TradeRules();
}

// Required: behind the end of the shorter series of a side nothing alternates, entries below their start
// index are not looked at, and neither are exits below theirs until a position has been opened.
void CheckAlternation(const SSimulation &test) {
  for (const int entry : {kLongEntry, kShortEntry}) {
    const SVector &entries = test.Index.ExpData[entry];
    const SVector &exits = test.Index.ExpData[entry + 1];
    if (entries.GetSize() != exits.GetSize()) continue;
    bool isOpen = false;
    bool isBefore = true;
    for (int bar = std::max(entries.GetStartIndex(), 0); bar < entries.GetSize(); ++bar) {
      const bool enters = HasSignal(entries, bar);
      const bool leaves = HasSignal(exits, bar) && !(isBefore && bar < exits.GetStartIndex());
      Require(!(enters && (isOpen || leaves)), "an entry opens a position");
      Require(!leaves || isOpen, "an exit closes a position");
      isOpen = enters || (isOpen && !leaves);
      isBefore = isBefore && !enters;
    }
  }
}

void CheckTrades(const SSimulation &test) {
  const int trades = test.History[kTradeSide].GetSize();
  for (const SVector &column : test.History)
    Require(column.GetSize() == trades, "all columns have all trades");
  const SVector &entry = test.History[kTradeEntryDate];
  for (int i = 1; i < trades; ++i) Require(!(entry[i] < entry[i - 1]), "trades are in order");
}

std::vector<std::string> RowsOf(const SSimulation &test) {
  std::vector<std::string> rows;
  for (int i = 0; i < test.SummaryCount; ++i) {
    const SSummary &row = test.SummaryRows[i];
    for (const SString *text : {&row.GroupID, &row.Name1, &row.Value1, &row.Name2, &row.Value2})
      rows.emplace_back(text->View());
  }
  return rows;
}

void Run(Input input) {
  BackTest given;
  for (int rule = 0; rule < kRules; ++rule) {
    const std::string text = input.Text().substr(0, kLongestRule);
    if (MayLengthen(text)) return;
    given.rules.SetExpression(rule, text.c_str());
  }
  given.functions = ReadFunctions(input, 60);
  for (int i = 0; i < given.functions.Size; ++i) {
    if (MayLengthen(given.functions[i].Expression.View())) return;
  }
  given.tick = input.Below(4) == 3 ? input.Number() : 1.0;
  given.bigPoint = input.Below(4) == 3 ? input.Number() : 1.0;
  given.margin = input.Number();
  given.isMargin = input.Below(2);
  given.pointUnit = 1 - input.Below(2);
  given.compression = input.Below(4) == 3 ? input.Below(256) - 100 : 0;
  Input settings = input.Part(input.Below(60));
  static const std::string defaults = StoredText(SSimulation());
  given.settings = WithOtherValues(defaults, settings);
  given.bars = ReadWildMarket(input, kMostBars);

  const auto test = std::make_unique<SSimulation>();
  const auto again = std::make_unique<SSimulation>();
  test->SummaryInfoFileName = again->SummaryInfoFileName = "";
  RunPasses(given, *test);
  CheckAlternation(*test);
  CheckTrades(*test);
  const std::vector<std::string> rows = RowsOf(*test);
  for (int run = 0; run < 2; ++run) {
    RunPasses(given, *again);
    for (int i = 0; i < kTradeColumns; ++i)
      Require(HaveSameElements(again->History[i], test->History[i]), "the trades are repeatable");
    Require(RowsOf(*again) == rows, "the summary is repeatable");
  }
  for (int mode = -1; mode < 3; ++mode) {
    SVector equity;
    test->CalcEquity(&equity, mode);
  }
  test->CalcProfitLoss();
  int bar = kMostBars;
  double price = 0.0;
  test->MaxBarStop(nullptr, 0, input.Below(kMostBars + 4) - 2, &bar, &price);
}

}  // namespace
}  // namespace trovenu::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  trovenu::fuzz::Run({data, size});
  return 0;
}
