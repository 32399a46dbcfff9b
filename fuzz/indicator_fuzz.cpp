// An indicator whose formulas share variables: filling them in, checks, black box, calculation, search,
// titles.

#include <algorithm>
#include <iterator>
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

bool IsBlank(const SString &text) { return SString(text).Trim().IsEmpty(); }

void CheckFaults(SIndex index) {
  bool hasNothing = false;
  for (int i = 0; i < kVariables; ++i)
    hasNothing = hasNothing || (IsBlank(index.VarName[i]) && IsBlank(index.VarValue[i]));
  int uneven = 0;
  const auto isUneven = [](const SString &text) {
    return std::ranges::count(text.View(), '(') != std::ranges::count(text.View(), ')');
  };
  while (uneven < kExpressions && !isUneven(index.Expression[uneven])) ++uneven;
  const bool hasUneven = !hasNothing && uneven < kExpressions;
  for (int run = 0; run < 2; ++run) {
    const IndexError error = index.CheckError();
    Require(error.Message.IsEmpty() == !(hasNothing || hasUneven), "a check tells of a fault");
    Require(error.BlVariable == (hasNothing ? 1 : 0), "a variable has a name or a value");
    Require(error.ExpIndex == (hasUneven ? uneven : 0), "the first formula with uneven parentheses is told");
  }
}

void CheckTexts(SIndex index) {
  SIndex::SkipComments(index.Expression[1]);
  std::string buffer(index.Expression[0].View());
  Require(SIndex::ProcessString(buffer.data()) == buffer.data(), "the buffer comes back");
  CheckFaults(index);
  // Variables that are not in use would hide what is wrong with the formulas.
  for (SString &value : index.VarValue) {
    if (IsBlank(value)) value = "1";
  }
  CheckFaults(index);
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

// What the black box appends for a direction and two levels.
std::string EndingOf(int kind, bool isFirst, const std::string &first, const std::string &second) {
  switch (kind) {
    case BlackBoxCross:
      return (isFirst ? "; CrossUp(Black1Box1Exp1," : "; CrossDown(Black1Box1Exp1,") + first + "),0)>==";
    case BlackBoxLevel:
      return "; Black1Box1Exp1 " + (isFirst ? ">= " + first : "<= " + second) + ",0)>==";
    case BlackBoxBand:
      return "; Black1Box1Exp1 >= " + first + " And Black1Box1Exp1 <= " + second + ",0)>==";
    case BlackBoxTurn:
      return isFirst
                 ? "; Black1Box1Exp1(2) > Black1Box1Exp1(1) And Black1Box1Exp1(1) <= Black1Box1Exp1,0)>=="
                 : "; Black1Box1Exp1(2) <= Black1Box1Exp1(1) And Black1Box1Exp1(1) > Black1Box1Exp1,0)>==";
    case BlackBoxTrend:
      return isFirst
                 ? "; Black1Box1Exp1(2) <= Black1Box1Exp1(1) And Black1Box1Exp1(1) <= Black1Box1Exp1,0)>=="
                 : "; Black1Box1Exp1(2) > Black1Box1Exp1(1) And Black1Box1Exp1(1) > Black1Box1Exp1,0)>==";
    default:
      return ",0)>==";
  }
}

// The formula without comments and, unless it stands first, without its last ";". Behind the one before it
// the last statement begins.
std::string WithBlackBox(SString formula, const std::string &ending) {
  SIndex::SkipComments(formula);
  std::string text(formula.View());
  if (const std::size_t last = text.rfind(';'); last != std::string::npos && last > 0) text.erase(last, 1);
  std::size_t begin = text.rfind(';');
  begin = begin == std::string::npos || begin == 0 ? 0 : begin + 1;
  return text.substr(0, begin) + "Sum(Black1Box1Exp1 = " + text.substr(begin) + ending;
}

void CheckBlackBox(const SIndex &index, int slot, const double *params) {
  const std::string first(SString().dtos(params[1], 0).View());
  const std::string second(SString().dtos(params[2], 0).View());
  for (int kind = -1; kind < 8; ++kind) {
    SIndex changed(index);
    changed.ConvBlackBoxToExpression(slot, static_cast<TypeBlackBox>(kind), params);
    for (int i = 0; i < kExpressions; ++i) {
      const std::string expected =
          i == slot ? WithBlackBox(index.Expression[i], EndingOf(kind, params[0] == 0.0, first, second))
                    : std::string(index.Expression[i].View());
      Require(changed.Expression[i].View() == expected, "the black box makes a condition of its slot alone");
    }
    changed.ConvBlackBoxToExpression(slot, static_cast<TypeBlackBox>(kind), nullptr);
    changed.ConvertExpression();
  }
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
  const int condition = input.Below(9) - 1;
  const int choice = input.Below(16);
  const int slot = choice == 15 ? -1 : choice == 14 ? kExpressions : choice % kExpressions;
  const double params[] = {input.Number(), input.Number(), input.Number()};
  const bool isSignal = input.Flag();
  Market bars = ReadWildMarket(input, kMostBars);

  CheckTexts(index);
  CheckBlackBox(index, slot, params);
  if (condition >= 0) index.ConvBlackBoxToExpression(slot, static_cast<TypeBlackBox>(condition), params);
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
