// Calls of user functions. A body is evaluated in the caller's table of variables; what the caller knew is
// put back afterwards, and what the call has added stays.

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>

#include "trovenu/formula/calc.h"
#include "trovenu/formula/messages.h"
#include "trovenu/formula/user_function_list.h"
#include "trovenu/support/string_list.h"

namespace trovenu {

// What a call must put back. A variable is saved when it is first changed, which costs less than copying all
// of them beforehand.
struct SCalc::CallFrame {
  // Entries of the table when the call began.
  int known;
  CallFrame *caller;
  struct Saved {
    Name *variable;
    SVector value;
    int formula;
  };
  std::vector<Saved> saved;

  bool Has(const Name *variable) const {
    return std::any_of(saved.begin(), saved.end(),
                       [&](const auto &entry) { return entry.variable == variable; });
  }
};

bool SCalc::IsUserFunction(const char *word) const { return FindFunction(word) >= 0; }

int SCalc::FindFunction(const char *word) const {
  return functionList != nullptr && word != nullptr ? functionList->Find(word) : -1;
}

SVector SCalc::ProcessUserFunction(const char *word) {
  EvaluateUserCall(word);
  return PopSeries();
}

// An operand that waits with the old value of a variable keeps it.
void SCalc::LetWaitersOwn(const Name &variable) {
  for (Operand &operand : operands_) {
    if (operand.Lender() == &variable) operand.Own(CopiedFrom(operand.Series()));
  }
}

// The variable is about to change: its value goes to the call that must put it back.
void SCalc::SaveForCaller(Name &variable) {
  if (frame_ == nullptr || frame_->Has(&variable)) return;
  for (int i = 0; i < frame_->known && i < tableCount; ++i) {
    if (table[i].get() != &variable) continue;
    frame_->saved.push_back({&variable, std::move(variable.value), variable.formula});
  }
}

// Stores the value on top of the stack, which stays there as a loan from the variable.
void SCalc::StoreTop(Name &variable) {
  LetWaitersOwn(variable);
  SaveForCaller(variable);
  Operand &top = operands_.back();
  variable.value = std::move(top.Own(CopiedFrom(top.Series())));
  variable.formula = formula;
  top = Operand::Borrow(variable.value, &variable);
}

void SCalc::RunBody(const char *text) {
  const std::size_t base = operands_.size();
  const std::string cut(text, std::min<std::size_t>(std::strlen(text), kExpressionBytes - 1));
  if (cut.size() < std::strlen(text)) Error(messages::kFormulaTooLong);
  const char *const savedPointer = std::exchange(readPointer, cut.c_str());
  const TokenValue savedToken = currentToken;
  const bool isOutermost = callPosition_ == nullptr;
  if (isOutermost) callPosition_ = savedPointer;
  while (*readPointer != '\0') {
    GetToken();
    operands_.resize(base);
    EvaluateExpr();
    SkipWhite();
  }
  if (operands_.size() == base) Push(SVector());
  if (isOutermost) callPosition_ = nullptr;
  readPointer = savedPointer;
  currentToken = savedToken;
}

void SCalc::EvaluateUserCall(const char *name) {
  // Required: the calls of one evaluation are counted, not how deep they are nested.
  if (++userDepth > kUserCallLimit) {
    PushError(messages::kTooManyCalls);
    return;
  }
  const int index = FindFunction(name);
  if (index < 0) {
    PushError(messages::kFunctionNotFound);
    return;
  }
  const SFunction &function = (*functionList)[index];
  const SString called = name;
  CallFrame frame{tableCount, frame_, {}};
  frame_ = &frame;
  // An argument sees the parameters that are bound before it.
  for (int i = 0; i < kParameters && function.VarName[i].Length() > 0; ++i) {
    EvaluateExpr();
    if (Name *parameter = Look(function.VarName[i].c_str(), 1)) StoreTop(*parameter);
    operands_.pop_back();
  }
  if (funcHistory != nullptr) funcHistory->Add(called);
  RunBody(function.Expression.c_str());

  frame_ = frame.caller;
  if (currentToken == COMMA) {
    // Required: a call with a shift puts nothing back. A call around it then has to, as if it had made the
    // changes.
    for (CallFrame::Saved &entry : frame.saved) {
      std::swap(entry.variable->value, entry.value);
      std::swap(entry.variable->formula, entry.formula);
      SaveForCaller(*entry.variable);
      entry.variable->value = std::move(entry.value);
      entry.variable->formula = entry.formula;
    }
    EvaluateExpr();
    const int bars = TruncateToInt(operands_.back().Series()[0]);
    operands_.pop_back();
    ShiftTop(bars);
    return;
  }
  for (CallFrame::Saved &entry : frame.saved) {
    LetWaitersOwn(*entry.variable);
    entry.variable->value = std::move(entry.value);
    entry.variable->formula = entry.formula;
  }
}

}  // namespace trovenu
