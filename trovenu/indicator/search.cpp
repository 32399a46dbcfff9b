#include <algorithm>

#include "trovenu/indicator/index.h"

namespace trovenu {

int SIndex::GetMinDataSize() {
  SVector nothing[kInputSeries];
  SCalc calc;
  calc.SetVariable(nothing[0], nothing[1], nothing[2], nothing[3], nothing[4], nothing[5], nothing[6],
                   nothing[7]);
  calc.SetFunction(FunctionList);
  ConvertExpression();

  // A program that is compiled onto another adds to it.
  SearchCalc = SCalc();
  Bind(SearchCalc);
  SearchCalc.SetExpression(ConvExpression[0].c_str());
  SearchCalc.InfixToPostFix();

  // Windows push the start index on, also over no bars at all.
  int bars = 0;
  for (int i = 0; i < kExpressions; ++i) {
    if (ConvExpression[i].IsEmpty()) continue;
    calc.SetExpression(ConvExpression[i].c_str());
    ExpData[i] = calc.Calculate();
    ExpData[i].InitTemp();
    bars = std::max(bars, ExpData[i].GetStartIndex() + 1);
  }
  return bars;
}

void SIndex::CalcSrch() {
  if (!ConvExpression[0].IsEmpty()) ExpData[0] = SearchCalc.CalcOp(nullptr);
}

}  // namespace trovenu
