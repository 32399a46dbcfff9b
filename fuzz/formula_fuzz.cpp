// One formula: by the direct path as a whole and as a tail, compiled and run.

#include <string>

#include "fuzz/check.h"
#include "fuzz/functions.h"
#include "fuzz/market.h"
#include "trovenu/formula/postfix/carried.h"

namespace trovenu::fuzz {
namespace {

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

void Run(Input input) {
  const std::string formula = input.Text().substr(0, kLimit);
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
  tail.calc.Calculate(from);
  Require(*tail.calc.readPointer == '\0', "a tail comes to the end of the text");
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
