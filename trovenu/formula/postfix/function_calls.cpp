// Applies functions to the slots of the evaluation stack. The arguments stand in the top slots, the first one
// lowest; the result takes the place of the first one.

#include <algorithm>
#include <utility>

#include "trovenu/formula/calc.h"
#include "trovenu/formula/function_table.h"
#include "trovenu/formula/functions/math.h"
#include "trovenu/formula/messages.h"
#include "trovenu/formula/user_function_list.h"

namespace trovenu {
namespace {

// The name of a slot that a mathematical function has computed.
constexpr const char *kComputed = "VALUE";

// Takes the arguments that a call has beyond those that its function knows.
constexpr const char *kSurplusName = "PreValueProgramInserted";

bool IsMath(const Operation &row) { return row.code >= kFirstFunctionCode && row.code <= kPowerCode; }

}  // namespace

void SCalc::ProcessFunction(SStack *program) {
  if (program == nullptr || program->Top < 0) return;
  const SStackItem &item = program->Items[static_cast<std::size_t>(program->Top)];
  const int count = item.ParamCount;
  const Operation *const row = trovenu::FindOperation(item.OpCode);
  if (Evaluation().Top + 1 < count || row == nullptr || count < row->least || count > row->most) return;
  if (row->code == kPowerCode) {
    ApplyPower();
  } else if (row->code == kLagCode) {
    ApplyLag();
  } else if (row->code >= kFirstUserCode) {
    CallCompiled(row->code - kFirstUserCode, count);
  } else if (row->function != FunctionId::None) {
    ApplyOperation(*row, count);
  }
}

void SCalc::ApplyOperation(const Operation &row, int count) {
  SStack &stack = Evaluation();
  const int first = stack.Top - count + 1;
  if (first >= stack.MaxSize) return;
  const int lagged = row.lagged && count == row.most ? 1 : 0;
  const int lag = lagged != 0 ? TruncateToInt((*GetEvalValue(stack.Top))[0]) : 0;
  const std::size_t base = operands_.size();
  for (int i = first; i + lagged <= stack.Top; ++i) {
    SStackItem &slot = EvaluationSlot(i);
    const SVector &x = *GetEvalValue(i);
    // The slot of the first argument is written to anyway.
    if (i == first && &x == &slot.Value) {
      Push(Operand(slot.Value.TakeElements()));
    } else {
      Push(Operand::Borrow(x));
    }
  }
  Call call(*this, row.badPeriod, operands_.data() + base, count - lagged);
  const Rule rule = row.own != nullptr ? row.own : trovenu::FindFunction(row.function)->rule;
  Operand result = rule(call);
  SStackItem &slot = EvaluationSlot(first);
  if (lagged != 0) {
    VecRef(slot.Value, result.Series(), lag);
  } else {
    slot.Value = std::move(result.Own());
  }
  operands_.resize(base);
  slot.OpCode = kNumberCode;
  if (IsMath(row)) slot.Name = kComputed;
  stack.Top = first;
}

// Required: the power is stored in the base itself, also where that is a bound series or a variable.
void SCalc::ApplyPower() {
  SStack &stack = Evaluation();
  if (stack.Top < 1) return;
  SVector &base = *GetEvalValue(stack.Top - 1);
  const SVector &exponent = *GetEvalValue(stack.Top);
  SStackItem &slot = EvaluationSlot(stack.Top - 1);
  SVector result = Power(base, exponent);
  const bool fits = base.size == exponent.size || base.size == 1 || exponent.size == 1;
  if (fits && &base != &slot.Value && &base != &errorResult) {
    const int changed = base.minMaxChanged;
    base = result;
    base.minMaxChanged = changed;
    base.InitTemp();
  }
  slot.Value = std::move(result);
  slot.OpCode = kNumberCode;
  slot.Name = kComputed;
  --stack.Top;
}

void SCalc::ApplyLag() {
  SStack &stack = Evaluation();
  if (stack.Top < 1) return;
  const SVector &x = *GetEvalValue(stack.Top - 1);
  const int bars = TruncateToInt((*GetEvalValue(stack.Top))[0]);
  SStackItem &slot = EvaluationSlot(stack.Top - 1);
  VecRef(slot.Value, x, bars);
  slot.OpCode = kNumberCode;
  --stack.Top;
}

void SCalc::CallCompiled(int index, int count) {
  SStack &stack = Evaluation();
  if (functionList == nullptr || index >= functionList->Size || functionStacks[index] == nullptr) return;
  const unsigned bit = 1U << index;
  // A function that calls itself would never end, since both paths of an `if` are computed, and few functions
  // that call one another make millions of calls.
  if ((runningFunctions_ & bit) != 0 || ++compiledCalls_ > kCompiledCallLimit) {
    Error(messages::kTooManyCalls);
    return;
  }
  const SFunction &function = (*functionList)[index];
  bool hasSurplus = false;
  for (int k = 0; k < count; ++k) {
    const bool isKnown = k < kParameters && !function.VarName[k].IsEmpty();
    hasSurplus = hasSurplus || !isKnown;
    const SVector &argument = *GetEvalValue(stack.Top - count + k + 1);
    Name *const parameter = Look(isKnown ? function.VarName[k].c_str() : kSurplusName, 1);
    if (parameter == nullptr) continue;
    parameter->value = argument;
    parameter->value.InitTemp();
    parameter->formula = formula;
  }
  stack.Top -= count;
  const int base = stack.Top;
  runningFunctions_ |= bit;
  RunProgram(functionStacks[index].get());
  runningFunctions_ &= ~bit;
  if (assignmentFlag != 0 && stack.Top < stack.MaxSize - 1) ++stack.Top;

  const auto storeTop = [&](int slot, SVector value) {
    EvaluationSlot(slot).Value = std::move(value);
    EvaluationSlot(slot).OpCode = kNumberCode;
    stack.Top = slot;
  };
  if (stack.Top > base + 1) storeTop(base + 1, *GetEvalValue(stack.Top));
  if (!hasSurplus || stack.Top < 0) return;
  const Name *const surplus = Look(kSurplusName, 0);
  const int bars = surplus != nullptr ? TruncateToInt(surplus->value[0]) : 0;
  storeTop(stack.Top, (*GetEvalValue(stack.Top))(bars));
}

}  // namespace trovenu
