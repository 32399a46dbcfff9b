// One formula: by the direct path as a whole and as a tail, compiled and run.

#include <algorithm>
#include <cmath>
#include <string>

#include "fuzz/check.h"
#include "fuzz/functions.h"
#include "fuzz/market.h"
#include "tests/formula/random_formula.h"
#include "trovenu/formula/postfix/carried.h"

namespace trovenu::fuzz {
namespace {

using tests::RandomFormula;

constexpr int kMostBars = 48;
constexpr int kLimit = kExpressionBytes + 20;
// A long text may work a million bars again and again.
constexpr int kLengtheningLimit = 300;

struct Reader {
  Reader(Market &bars, SFunctionList &functions, const std::string &formula) {
    bars.Bind(calc);
    calc.SetFunction(&functions);
    calc.SetExpression(formula.c_str());
  }
  SCalc calc;
};

void CheckTokensEnd(const std::string &formula) {
  SCalc calc;
  calc.SetExpression(formula.c_str());
  for (const char *last = calc.readPointer; *calc.readPointer != '\0'; last = calc.readPointer) {
    const TokenValue token = calc.GetToken();
    if (calc.readPointer != last) continue;
    Require(token == PRINT, "only what starts no token stays");
    ++calc.readPointer;
  }
}

// Bars whose neighbours are never alike: the determination of a flat window is carried over from the bar
// before, which a tail doesn't see.
Market ReadUnevenMarket(Input &input) {
  Market bars = ReadMarket(input, kMostBars);
  for (const int series : {2, 3, 4}) {
    SVector &values = bars.series[series];
    for (int i = 0; i < values.GetSize(); ++i) values[i] = 2.0 * std::floor(values[i]) + i % 2;
  }
  return bars;
}

// A made formula that looks at windows of bars has the same values in a tail.
void CheckMadeFormula(Input input) {
  static SFunctionList functions = RandomFormula::UserFunctions();
  const int later = input.Below(kMostBars);
  Input choices = input.Part(160);
  RandomFormula formulas([&choices] { return std::uint_fast32_t{choices.Byte()}; },
                         RandomFormula::Words::TailCalls);
  const std::string formula = formulas.Next();
  Market bars = ReadUnevenMarket(input);
  Reader direct(bars, functions, formula);
  const SVector whole = direct.calc.Calculate();
  Require(direct.calc.errorCount == 0, "a made formula is faultless");
  if (direct.calc.fullCalc != 0) return;
  const int first = whole.GetStartIndex() + later;
  Reader reader(bars, functions, formula);
  const SVector tail = reader.calc.Calculate(later);
  for (int bar = first; bar < whole.GetSize(); ++bar)
    Require(IsSameNumber(tail[bar], whole[bar]), "a tail has the values of the whole");
}

void Run(Input input) {
  const std::string formula = input.Text().substr(0, kLimit);
  if (formula.empty()) return CheckMadeFormula(input);
  SFunctionList functions = ReadFunctions(input, 400);
  std::string all = formula;
  for (int i = 0; i < functions.Size; ++i) all += ';' + std::string(functions[i].Expression.View());
  if (all.size() > kLengtheningLimit && MayLengthen(all)) return;
  const int from = input.Below(kMostBars + 2) - 1;
  Market bars = ReadWildMarket(input, kMostBars);
  const Market before = bars;

  CheckTokensEnd(formula);
  Reader direct(bars, functions, formula);
  const SVector whole = direct.calc.Calculate();
  Require(*direct.calc.readPointer == '\0', "an evaluation comes to the end of the text");
  Require(direct.calc.errorCount == 0 || whole.GetStartIndex() == kNoValidBar,
          "no bar is valid after an error");
  Reader again(bars, functions, formula);
  Require(IsSameSeries(again.calc.Calculate(), whole), "an evaluation is repeatable");
  Reader tail(bars, functions, formula);
  const SVector rest = tail.calc.Calculate(from);
  Require(*tail.calc.readPointer == '\0', "a tail comes to the end of the text");
  // A constant is not widened there, and an error doesn't count.
  const bool hasAll =
      std::ranges::all_of(bars.series, [](const SVector &s) { return s.GetStartIndex() == 0; });
  if (from <= 0 && hasAll && direct.calc.errorCount == 0 && rest.GetSize() > 1)
    Require(IsSameSeries(rest, whole), "a tail from the first bar on is the whole");
  Require(bars.IsSameAs(before), "an evaluation changes no bars");

  // A program may change the bars.
  const bool isCarried = FindNotCarried(formula.c_str(), &functions).reason == nullptr;
  Reader compiled(bars, functions, formula);
  compiled.calc.InfixToPostFix();
  for (int run = 0; run < 2; ++run) {
    const SVector value = compiled.calc.CalcOp(nullptr);
    if (!isCarried) continue;
    Require(direct.calc.errorCount == 0, "a formula that a program carries is faultless");
    Require(IsSameSeries(value, whole), "a program gives the value of the direct path");
  }
}

}  // namespace
}  // namespace trovenu::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  trovenu::fuzz::Run({data, size});
  return 0;
}
