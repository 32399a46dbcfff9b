#include "trovenu/formula/calc.h"

namespace trovenu {
namespace {

using BinaryOperation = void (*)(SVector &out, const SVector &a, const SVector &b);

// From `kPlusCode` to `kOrCode`.
constexpr BinaryOperation kBinary[] = {VecPlus, VecMinus, VecMultiply, VecDivide, VecMod, VecLT, VecLE,
                                       VecGT,   VecGE,    VecEQ,       VecNEQ,    VecAND, VecOR};
static_assert(std::size(kBinary) == kOrCode - kPlusCode + 1);

}  // namespace

void SCalc::ProcessOperator(SStack *program) {
  if (program == nullptr || program->Top < 0) return;
  const int code = program->Items[static_cast<std::size_t>(program->Top)].OpCode;
  SStack &stack = Evaluation();
  // The series are read before the slot changes, from the lower one up.
  if (code == kMinusSignCode || code == kNotCode) {
    if (stack.Top < 0) return;
    const SVector &x = *GetEvalValue(stack.Top);
    SStackItem &slot = EvaluationSlot(stack.Top);
    code == kNotCode ? VecNot(slot.Value, x) : VecUMinus(slot.Value, x);
    slot.OpCode = kNumberCode;
  } else if (code >= kPlusCode && code <= kOrCode) {
    if (stack.Top < 1) return;
    const SVector &left = *GetEvalValue(stack.Top - 1);
    const SVector &right = *GetEvalValue(stack.Top);
    SStackItem &slot = EvaluationSlot(stack.Top - 1);
    kBinary[code - kPlusCode](slot.Value, left, right);
    slot.OpCode = kNumberCode;
    --stack.Top;
  } else if (code == kAssignCode) {
    if (stack.Top < 1) return;
    const SVector &value = *GetEvalValue(stack.Top);
    if (Name *variable = Look(EvaluationSlot(stack.Top - 1).Name.c_str(), 1)) {
      variable->value = value;
      variable->value.InitTemp();
      variable->formula = formula;
    }
    stack.Top -= 2;
  }
}

}  // namespace trovenu
