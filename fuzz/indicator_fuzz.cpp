// An indicator whose formulas share variables: filling them in, checks, black box, calculation, search,
// titles.

#include <algorithm>
#include <string>
#include <vector>

#include "fuzz/check.h"
#include "fuzz/functions.h"
#include "fuzz/market.h"
#include "trovenu/formula/postfix/carried.h"
#include "trovenu/indicator/index.h"

namespace trovenu::fuzz {
namespace {

constexpr int kMostBars = 32;
constexpr std::size_t kLongestText = 1000;
constexpr std::size_t kLengtheningLimit = 150;

void Bind(SIndex &index, Market &bars) {
  SVector *const s = bars.series;
  index.SetVariable(s[0], s[1], s[2], s[3], s[4], s[5], s[6], s[7]);
}

void CheckTexts(SIndex index) {
  SIndex::SkipComments(index.Expression[1]);
  std::string buffer(index.Expression[0].View());
  Require(SIndex::ProcessString(buffer.data()) == buffer.data(), "the buffer comes back");
  const IndexError first = index.CheckError();
  const IndexError second = index.CheckError();
  Require(first.Message == second.Message && first.ExpIndex == second.ExpIndex, "a check is repeatable");
  for (int line = -1; line <= kExpressions; ++line) {
    for (const int position : {-1, 0, 5, kMostBars}) {
      index.GetExpNameWithValue(line, position);
      index.GetExpTitle(1, 1, 1, line, position);
      index.GetExpValue(line, position);
      index.GetPriceTitle(1, 1, position);
    }
    index.GetExpName(line);
    index.GetExpNameWithVariable(line);
    index.GetExpTitleName(line);
  }
  index.GetIndexVariable();
  index.GetMaxExpNameLength();
}

bool IsTooCostly(const SIndex &index) {
  std::size_t size = 0;
  bool lengthens = false;
  for (const SString &text : index.ConvExpression) {
    size += text.View().size();
    lengthens = lengthens || MayLengthen(text.View());
  }
  return lengthens && size > kLengtheningLimit;
}

// A search runs the first formula as a program, for symbol after symbol.
void CheckSearch(SIndex &index, Market &bars, SFunctionList &functions) {
  const bool isCarried = FindNotCarried(index.ConvExpression[0].c_str(), &functions).reason == nullptr;
  const SVector whole = index.ExpData[0];
  Require(index.GetMinDataSize() >= 0, "a formula needs no bars or some");
  index.CalcSrch();
  if (isCarried && !index.ConvExpression[0].IsEmpty())
    Require(IsSameSeries(index.ExpData[0], whole), "a search finds the value of the direct path");
  Market none;
  std::ranges::swap(bars.series, none.series);
  index.CalcSrch();
}

void Run(Input input) {
  SIndex index;
  for (SString &text : index.Expression) {
    text = input.Text().substr(0, kLongestText).c_str();
    if (input.IsEmpty()) break;
  }
  for (int i = 0; i < kVariables && !input.IsEmpty(); ++i) {
    index.VarName[i] = input.Text().c_str();
    index.VarValue[i] = input.Text().substr(0, 100).c_str();
    if (index.VarName[i].IsEmpty()) break;
  }
  SFunctionList functions = ReadFunctions(input, 200);
  const int condition = input.Below(9);
  const int slot = input.Below(kExpressions + 2) - 1;
  const double params[] = {input.Number(), input.Number(), input.Number()};
  const bool isSignal = input.Flag();
  Market bars = ReadWildMarket(input, kMostBars);

  CheckTexts(index);
  if (condition < 8) index.ConvBlackBoxToExpression(slot, static_cast<TypeBlackBox>(condition), params);
  index.ConvertExpression();
  if (IsTooCostly(index)) return;
  std::vector<SString> converted(std::begin(index.ConvExpression), std::end(index.ConvExpression));
  Bind(index, bars);
  index.SetFunction(&functions);
  index.Calc();
  Require(std::ranges::equal(converted, index.ConvExpression), "filling in variables is repeatable");
  CheckTexts(index);

  if (isSignal) {
    index.IndexType = kConditionIndex;
    index.Calc();
    index.CalcLast();
    index.CalcLast();
    index.PreProcess();
    return;
  }
  CheckSearch(index, bars, functions);
}

}  // namespace
}  // namespace trovenu::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  trovenu::fuzz::Run({data, size});
  return 0;
}
