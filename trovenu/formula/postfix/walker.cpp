// Runs programs over the bound series.

#include <utility>

#include "trovenu/formula/calc.h"
#include "trovenu/formula/messages.h"
#include "trovenu/formula/words.h"

namespace trovenu {

SStack &SCalc::Evaluation() {
  if (evaluationStack == nullptr) evaluationStack = std::make_unique<SStack>();
  return *evaluationStack;
}

SStackItem &SCalc::EvaluationSlot(int slot) { return Evaluation().Items[static_cast<std::size_t>(slot)]; }

SVector SCalc::CalcOp(SStack *program) {
  RunProgram(program);
  SVector result = *GetEvalValue(Evaluation().Top);
  result.InitTemp();
  return result;
}

void SCalc::RunProgram(SStack *program) {
  SStack &stack = Evaluation();
  const bool isMain = program == nullptr;
  if (isMain) {
    stack.Top = -1;
    assignmentFlag = 0;
    runningFunctions_ = 0;
    compiledCalls_ = 0;
    operands_.clear();
    program = programStack.get();
    if (program == nullptr) return;
  }
  const int first = program->Top;
  for (; program->Top >= 0; --program->Top) {
    const SStackItem &item = program->Items[static_cast<std::size_t>(program->Top)];
    switch (GetOpType(item.OpCode)) {
      case kNameType:
      case kNumberType:
        stack.Push(item);
        assignmentFlag = 0;
        break;
      case kFunctionType:
        ProcessFunction(program);
        assignmentFlag = 0;
        break;
      case kOperatorType:
        assignmentFlag = item.OpCode == kAssignCode ? 1 : 0;
        ProcessOperator(program);
        break;
      default:
        assignmentFlag = 0;
    }
  }
  program->Top = first;
  // The assignment has taken both its slots off; the lower one is the variable's.
  if (isMain && assignmentFlag != 0) ++stack.Top;
}

SVector *SCalc::GetEvalValue(int slot) {
  if (slot < 0 || slot >= Evaluation().MaxSize) return &errorResult;
  SStackItem &item = EvaluationSlot(slot);
  if (item.OpCode == kNumberCode) return &item.Value;
  const char *const name = item.Name.c_str();
  if (const Word *word = FindWord(name, WordFamily::Data)) return ReadDataWord(word->function);
  if (item.OpCode != kNameCode) return &errorResult;
  if (Name *variable = Look(name, 0)) {
    NoteRead(*variable);
    return &variable->value;
  }
  SString message = messages::kNameNotFound;
  message += " : ";
  message += name;
  Error(message.c_str());
  return &errorResult;
}

SVector *SCalc::ReadDataWord(FunctionId function) {
  const DataOperand *const operand = FindDataOperand(function);
  if (operand == nullptr) {
    Error(messages::kFaultyDataWord);
    return &errorResult;
  }
  SVector *const bound = BoundSeries(operand->column);
  if (bound == nullptr) return &errorResult;
  if (operand->own == nullptr) return bound;
  // Required: one series serves all of them, so that of two operands the later one counts for both.
  postfixResult.BeginResult(bound->size, 0);
  for (int i = 0; i < postfixResult.size; ++i) postfixResult.data[i] = operand->own(bound->data[i]);
  postfixResult.startIndex = bound->startIndex;
  return &postfixResult;
}

}  // namespace trovenu
