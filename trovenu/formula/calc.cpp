#include "trovenu/formula/calc.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "trovenu/formula/messages.h"
#include "trovenu/formula/words.h"

namespace trovenu {

SCalc::SCalc() {
  expression[0] = '\0';
  nameString[0] = '\0';
  wordBuffer[0] = '\0';
}

namespace {

void CopyStack(std::unique_ptr<SStack> &to, const std::unique_ptr<SStack> &from) {
  to = from != nullptr ? std::make_unique<SStack>(*from) : nullptr;
}

}  // namespace

SCalc::SCalc(const SCalc &other) : SCalc() { *this = other; }

SCalc &SCalc::operator=(const SCalc &other) {
  if (this == &other) return *this;
  CopyStack(programStack, other.programStack);
  for (int i = 0; i < kCompiledFunctions; ++i) CopyStack(functionStacks[i], other.functionStacks[i]);
  CopyStack(evaluationStack, other.evaluationStack);
  errorResult = other.errorResult;
  methodValue = other.methodValue;
  postfixResult = other.postfixResult;
  assignmentFlag = other.assignmentFlag;
  itemsDropped = other.itemsDropped;
  close = other.close;
  open = other.open;
  high = other.high;
  low = other.low;
  volume = other.volume;
  date = other.date;
  openInterest = other.openInterest;
  amount = other.amount;
  functionList = other.functionList;
  fullCalc = other.fullCalc;
  exprDepth = other.exprDepth;
  userDepth = other.userDepth;
  std::memcpy(expression, other.expression, std::strlen(other.expression) + 1);
  // The copy reads on in its own text.
  readPointer = expression + (other.readPointer - other.expression);
  numberValue = other.numberValue;
  std::memcpy(nameString, other.nameString, std::strlen(other.nameString) + 1);
  std::memcpy(wordBuffer, other.wordBuffer, std::strlen(other.wordBuffer) + 1);
  std::copy(other.table, other.table + kTableEntries, table);
  tableCount = other.tableCount;
  errorCount = other.errorCount;
  errorText = other.errorText;
  errorPosition = other.errorPosition;
  calcStart = other.calcStart;
  currentToken = other.currentToken;
  functions = nullptr;
  if (other.functions != nullptr) {
    functions = std::make_unique<SFunction[]>(kCompiledFunctions);
    std::copy_n(other.functions.get(), kCompiledFunctions, functions.get());
  }
  functionCount = other.functionCount;
  funcHistory = other.funcHistory;
  formula = other.formula;
  formulasRead = other.formulasRead;
  columnsRead = other.columnsRead;
  textTooLong_ = other.textTooLong_;
  return *this;
}

SCalc::~SCalc() = default;

void SCalc::SetVariable(SVector &closeSeries, SVector &openSeries, SVector &highSeries, SVector &lowSeries,
                        SVector &volumeSeries, SVector &dateSeries, SVector &openInterestSeries,
                        SVector &amountSeries) {
  close = &closeSeries;
  open = &openSeries;
  high = &highSeries;
  low = &lowSeries;
  volume = &volumeSeries;
  date = &dateSeries;
  openInterest = &openInterestSeries;
  amount = &amountSeries;
}

void SCalc::SetFunction(SFunctionList *list) { functionList = list; }

void SCalc::SetFuncHist(SAnsiStringList *history) { funcHistory = history; }

void SCalc::SetExpression(const char *text) {
  if (text == nullptr) text = "";
  const std::size_t length = std::strlen(text);
  textTooLong_ = length >= kExpressionBytes;
  const std::size_t kept = std::min<std::size_t>(length, kExpressionBytes - 1);
  std::memmove(expression, text, kept);
  expression[kept] = '\0';
  readPointer = expression;
}

int SCalc::ToInt(double x) { return TruncateToInt(x + 0.0001); }

void SCalc::InitCalc() {
  ClearNameTable();
  errorCount = 0;
  calcStart = 0;
  functionCount = 0;
}

SVector SCalc::Error(const char *message) {
  const bool first = errorCount == 0;
  if (errorCount < 0x7fffffff) ++errorCount;
  if (first) {
    errorPosition = static_cast<int>((callPosition_ != nullptr ? callPosition_ : readPointer) - expression);
    try {
      errorText = message != nullptr ? message : "";
    } catch (const std::bad_alloc &) {
      // The fault counts also where there is no memory for its words.
    }
  }
  return errorResult;
}

// Evaluates statement after statement; the value of the last one stays on the operand stack.
void SCalc::RunText() {
  exprDepth = 0;
  userDepth = 0;
  if (textTooLong_) Error(messages::kFormulaTooLong);
  textTooLong_ = false;
  nesting_ = 0;
  frame_ = nullptr;
  callPosition_ = nullptr;
  operands_.clear();
  try {
    while (*readPointer != '\0') {
      GetToken();
      operands_.clear();
      EvaluateExpr();
      SkipWhite();
    }
    if (operands_.empty()) Push(SVector());
  } catch (const std::bad_alloc &) {
    Error(messages::kOutOfMemory);
    operands_.clear();
    readPointer = expression + std::strlen(expression);
  }
}

SVector SCalc::Calculate() {
  errorCount = 0;
  isTail_ = false;
  RunText();
  SVector result = PopSeries();
  if (errorCount > 0) {
    result.SetStartIndex(kNoValidBar);
  } else if (result.IsConstant() || result.GetSize() == 0) {
    SVector wide = Bound(Column::Close) * 0.0;
    VecPlus(wide, wide, result);
    result = std::move(wide);
  }
  return result;
}

// While it lives, the first five series count as valid from a given bar.
class SCalc::TailStart {
 public:
  TailStart(const SCalc &calc, int start) : series_{calc.close, calc.open, calc.high, calc.low, calc.volume} {
    for (int i = 0; i < kCount; ++i) {
      if (series_[i] == nullptr) continue;
      saved_[i] = series_[i]->startIndex;
      series_[i]->SetStartIndex(start);
    }
  }
  TailStart(const TailStart &) = delete;
  TailStart &operator=(const TailStart &) = delete;
  // In reverse, since one series may be bound to several words.
  ~TailStart() {
    for (int i = kCount - 1; i >= 0; --i) {
      if (series_[i] != nullptr) series_[i]->SetStartIndex(saved_[i]);
    }
  }

 private:
  static constexpr int kCount = 5;
  SVector *series_[kCount];
  int saved_[kCount] = {};
};

SVector SCalc::Calculate(int start) {
  calcStart = std::max(start, 0);
  const TailStart tail(*this, calcStart);
  isTail_ = true;
  RunText();
  SVector result = PopSeries();
  isTail_ = false;
  return result;
}

// Null for a series that the host has not bound.
SVector *SCalc::BoundSeries(Column column) {
  SVector *const series[] = {close, open, high, low, volume, date, openInterest, amount};
  const auto index = static_cast<unsigned>(column);
  columnsRead |= 1U << index;
  return series[index];
}

const SVector &SCalc::Bound(Column column) {
  static const SVector unbound;
  const SVector *const series = BoundSeries(column);
  return series != nullptr ? *series : unbound;
}

SVector SCalc::PopSeries() {
  if (operands_.empty()) return SVector();
  Operand &top = operands_.back();
  SVector series = std::move(top.Own(CopiedFrom(top.Series())));
  operands_.pop_back();
  return series;
}

SVector SCalc::Expr() {
  EvaluateExpr();
  return PopSeries();
}

SVector SCalc::Relop() {
  EvaluateRelop();
  return PopSeries();
}

SVector SCalc::Add() {
  EvaluateAdd();
  return PopSeries();
}

SVector SCalc::Term() {
  EvaluateTerm();
  return PopSeries();
}

SVector SCalc::Prim() {
  EvaluatePrim();
  return PopSeries();
}

bool SCalc::IsVectorFunction(const char *word) const { return FindWord(word, WordFamily::Vector) != nullptr; }
bool SCalc::IsDataVariable(const char *word) const { return FindWord(word, WordFamily::Data) != nullptr; }
bool SCalc::IsMathFunction(const char *word) const { return FindWord(word, WordFamily::Math) != nullptr; }
bool SCalc::IsTimeFunction(const char *word) const { return FindWord(word, WordFamily::Time) != nullptr; }
bool SCalc::IsMethodVariable(const char *word) const { return FindWord(word, WordFamily::Method) != nullptr; }

SVector SCalc::CalcCandlePattern() { return SVector(); }

}  // namespace trovenu
