#include <algorithm>

#include "trovenu/indicator/index.h"
#include "trovenu/support/block_pool.h"

namespace trovenu {

void SIndex::Bind(SCalc &calc) const {
  calc.close = Variable[0];
  calc.open = Variable[1];
  calc.high = Variable[2];
  calc.low = Variable[3];
  calc.volume = Variable[4];
  calc.date = Variable[5];
  calc.openInterest = Variable[6];
  calc.amount = Variable[7];
  calc.SetFunction(FunctionList);
}

bool SIndex::IsFedFromOutside() const {
  return IndexType == kFedIndex || IndexType == kEquityIndex || IndexType == kFedIndicatorIndex;
}

// Signals become the close of their bar, so that a chart can draw them on the price scale.
void SIndex::MarkPrices(SVector &series, int from) const {
  if (IndexType != kConditionIndex && IndexType != kSystemIndex) return;
  if (Variable[0] == nullptr) return;
  const SVector &close = *Variable[0];
  for (int i = std::max(from, 0); i < series.GetSize(); ++i) {
    if (series[i] != 0.0) series[i] = close[i];
  }
}

void SIndex::Calc() {
  if (IndexType == kCandleIndex) {
    CalcCandlePattern();
    return;
  }
  if (IsFedFromOutside()) return;
  SCalc calc;
  Bind(calc);
  FuncHistory.Clear();
  calc.SetFuncHist(&FuncHistory);
  ConvertExpression();
  for (int i = 0; i < kExpressions; ++i) {
    if (ConvExpression[i].IsEmpty()) continue;
    calc.SetExpression(ConvExpression[i].c_str());
    ExpData[i].InitTemp();
    ExpData[i] = calc.Calculate();
    MarkPrices(ExpData[i], ExpData[i].GetStartIndex());
  }
}

void SIndex::CalcLast() {
  if (IndexType == kCandleIndex) {
    CalcCandlePattern();
    return;
  }
  if (IsFedFromOutside()) return;
  SCalc calc;
  Bind(calc);
  ConvertExpression();
  const int size = Variable[0] != nullptr ? Variable[0]->GetSize() : 0;
  const unsigned long long refused = RefusedBlockCount();

  // How each formula runs: over all bars, or from a bar on.
  bool full[kExpressions];
  int from[kExpressions];
  for (int i = 0; i < kExpressions; ++i) {
    const int old = ExpData[i].GetSize();
    full[i] = CalcCount[i] < 0 || old == 0;
    from[i] = MoveIndex(old - 1, -CalcStart[i]);
  }
  // A formula that assigns variables runs as far back as the later ones that read them.
  for (int i = kExpressions - 1; i > 0; --i) {
    if (ConvExpression[i].IsEmpty()) continue;
    for (int j = 0; j < i; ++j) {
      if ((reads_[i] >> j & 1U) == 0) continue;
      from[j] = std::min(from[j], from[i]);
      full[j] = full[j] || full[i];
    }
  }

  for (int i = 0; i < kExpressions; ++i) {
    if (ConvExpression[i].IsEmpty()) continue;
    const int old = ExpData[i].GetSize();
    const bool hasBase = CalcCount[i] >= 0 && old > 0;
    calc.formula = i;
    calc.formulasRead = 0;
    calc.fullCalc = 0;
    calc.SetExpression(ConvExpression[i].c_str());
    SVector result = full[i] ? calc.Calculate() : calc.Calculate(from[i]);
    int redone = 0;
    if (hasBase) {
      redone = old - 1;
      ExpData[i].SetSize(size);
      for (int k = redone; k < size; ++k) ExpData[i][k] = static_cast<const SVector &>(result)[k];
      ExpData[i].InitTemp();
    } else {
      ExpData[i] = std::move(result);
      ExpData[i].InitTemp();
      reads_[i] = calc.formulasRead;
      if (calc.fullCalc == 0) {
        CalcStart[i] = ExpData[i].GetStartIndex();
        ++CalcCount[i];
      }
    }
    MarkPrices(ExpData[i], redone);
  }
  // Where memory ran out some of the results lack bars, so the next update starts from nothing.
  if (RefusedBlockCount() != refused) SetCalcInit();
}

void SIndex::SetCalcInit() {
  for (int i = 0; i < kExpressions; ++i) {
    CalcStart[i] = -1;
    CalcCount[i] = -1;
    reads_[i] = kReadsUnknown;
    ExpData[i].InitTemp();
  }
}

}  // namespace trovenu
