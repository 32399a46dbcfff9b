#include <algorithm>

#include "trovenu/formula/user_function_list.h"
#include "trovenu/indicator/index.h"
#include "trovenu/support/block_pool.h"

namespace trovenu {
namespace {

constexpr double kNoPattern = -1.0;

}  // namespace

// Required: the formula and the variables of the object are overwritten by the patterns, and stay those of
// the last.
void SIndex::LoadPattern(const SFunction &pattern, SCalc &calc) {
  Expression[0] = pattern.Expression;
  for (int i = 0; i < kVariables; ++i) {
    VarName[i] = pattern.VarName[i];
    VarValue[i] = pattern.VarValue[i];
    if (VarName[i].IsEmpty()) break;
  }
  ConvertExpression();
  calc.InitCalc();
}

void SIndex::CalcCandlePattern() {
  if (CandleList == nullptr) return;
  SCalc calc;
  Bind(calc);
  SVector &marks = ExpData[0];
  marks.InitTemp();
  const unsigned long long refused = RefusedBlockCount();
  const int size = Variable[0] != nullptr ? Variable[0]->GetSize() : 0;
  const int old = marks.GetSize();
  const bool tail = CalcCount[0] >= 0 && old > 0;
  const int first = tail ? old - 1 : 0;
  marks.SetSize(size);
  for (int i = first; i < size; ++i) marks[i] = tail ? 0.0 : kNoPattern;

  bool isFirst = true;
  for (int p = 0; p < CandleList->Size; ++p) {
    LoadPattern((*CandleList)[p], calc);
    if (ConvExpression[0].IsEmpty()) continue;
    calc.fullCalc = 0;
    calc.SetExpression(ConvExpression[0].c_str());
    const SVector found = tail ? calc.Calculate(MoveIndex(first, -CalcStart[0])) : calc.Calculate();
    if (!tail && calc.fullCalc == 0) {
      CalcStart[0] = std::max(CalcStart[0], found.GetStartIndex());
      // Required: the count of the pattern's own number, so that only a scan whose first pattern looks at a
      // window is kept up from its tail.
      if (isFirst && p < kExpressions) ++CalcCount[p];
      isFirst = false;
    }
    // A faulty pattern, or one without a valid bar, leaves the marks of the others in place.
    if (calc.errorCount > 0 || found.GetStartIndex() >= found.GetSize()) continue;
    for (int i = first; i < size; ++i) {
      if (found[i] != 0.0) marks[i] = p;
    }
  }
  marks.InitTemp();
  // Where memory ran out some patterns are missing, so the next update starts from nothing.
  if (RefusedBlockCount() != refused) SetCalcInit();
}

}  // namespace trovenu
