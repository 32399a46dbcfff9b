// The grammar: one walk over the text that parses and computes. Every level leaves exactly one operand on the
// stack; faults are recorded and leave an empty series, so that the walk always comes to the end of the text.

#include <utility>

#include "trovenu/formula/calc.h"
#include "trovenu/formula/function_table.h"
#include "trovenu/formula/messages.h"
#include "trovenu/formula/words.h"

namespace trovenu {

void SCalc::EvaluateExpr() {
  EvaluateRelop();
  for (;;) {
    switch (currentToken) {
      case AND:
        GetToken();
        EvaluateRelop();
        Combine(VecAND);
        break;
      case OR:
        GetToken();
        EvaluateRelop();
        Combine(VecOR);
        break;
      default:
        --exprDepth;
        return;
    }
  }
}

void SCalc::EvaluateRelop() {
  using Comparison = void (*)(SVector &, const SVector &, const SVector &);
  EvaluateAdd();
  for (;;) {
    Comparison comparison = nullptr;
    switch (currentToken) {
      case NAME:
      case NUMBER:
        operands_.pop_back();
        PushError(messages::kOperatorNeeded);
        --exprDepth;
        return;
      case LT:
        comparison = VecLT;
        break;
      case LE:
        comparison = VecLE;
        break;
      case GT:
        comparison = VecGT;
        break;
      case GE:
        comparison = VecGE;
        break;
      case EQ:
        comparison = VecEQ;
        break;
      case NE:
        comparison = VecNEQ;
        break;
      default:
        --exprDepth;
        return;
    }
    GetToken();
    EvaluateAdd();
    Combine(comparison);
  }
}

void SCalc::EvaluateAdd() {
  EvaluateTerm();
  for (;;) {
    switch (currentToken) {
      case PLUS:
        GetToken();
        EvaluateTerm();
        Combine(VecPlus);
        break;
      case MINUS:
        GetToken();
        EvaluateTerm();
        Combine(VecMinus);
        break;
      default:
        --exprDepth;
        return;
    }
  }
}

void SCalc::EvaluateTerm() {
  EvaluatePrim();
  for (;;) {
    switch (currentToken) {
      case MUL:
        GetToken();
        EvaluatePrim();
        Combine(VecMultiply);
        break;
      case DIV:
        GetToken();
        EvaluatePrim();
        Combine(VecDivide);
        break;
      case MOD:
        GetToken();
        EvaluatePrim();
        Combine(VecMod);
        break;
      default:
        --exprDepth;
        return;
    }
  }
}

void SCalc::EvaluatePrim() {
  ++exprDepth;
  // The tokens that are stepped over: unary plus, the comma before a further argument, and blanks. Also where
  // the nesting ends: a reader of arguments goes on for as long as it finds a comma.
  while (currentToken == PLUS || currentToken == COMMA || currentToken == 9 || currentToken == 10 ||
         currentToken == 11 || currentToken == 13 || currentToken == 32) {
    GetToken();
    ++exprDepth;
  }
  if (nesting_ >= kNestingLimit) {
    // As below, or the body of a function would never come to its end.
    if (currentToken == PRINT && *readPointer != '\0') ++readPointer;
    PushError(messages::kTooDeep);
    return;
  }
  ++nesting_;
  switch (currentToken) {
    case NUMBER:
      // Required: the value is read after the next token, so of two numbers side by side the second counts.
      GetToken();
      Push(SVector(numberValue));
      break;
    case LP:
      GetToken();
      EvaluateExpr();
      if (currentToken == RP) {
        GetToken();
      } else {
        operands_.pop_back();
        PushError(messages::kParenthesisNeeded);
      }
      break;
    case MINUS:
    case NOT: {
      const bool negates = currentToken == MINUS;
      GetToken();
      EvaluatePrim();
      Operand &top = operands_.back();
      if (top.IsTemporary()) {
        negates ? VecUMinus(top.Own(), top.Series()) : VecNot(top.Own(), top.Series());
      } else {
        top = negates ? -top.Series() : !top.Series();
      }
      break;
    }
    case END:
      Push(SVector(1));
      break;
    case NAME:
      EvaluateName();
      break;
    default:
      // The lexer leaves a character that starts no token to the grammar.
      if (*readPointer != '\0') ++readPointer;
      PushError(messages::kIncomplete);
      break;
  }
  --nesting_;
}

// A call: "(", what `evaluate` reads and leaves on the stack, ")".
template <class Evaluate>
void SCalc::EvaluateCall(Evaluate evaluate) {
  const std::size_t base = operands_.size();
  if (currentToken != LP) {
    PushError(messages::kFaultyFunction);
    return;
  }
  GetToken();
  evaluate();
  if (currentToken == RP) {
    GetToken();
  } else {
    ReplaceTop(base, Error(messages::kParenthesisNeeded));
  }
}

// The first meaning that a name has counts: assignment, variable, vector function, data word, math function,
// user function, time function, method word. What it is is found before the next token is read, since a
// further name would take its place.
void SCalc::EvaluateName() {
  const Name *const variable = Look(nameString, 0);
  const Word *const word = variable == nullptr ? FindName(nameString) : nullptr;
  // The words from Time on come after the user functions.
  const bool isBuiltIn = word != nullptr && word->family < WordFamily::Time;
  const bool isUserFunction = variable == nullptr && !isBuiltIn && IsUserFunction(nameString);
  SString name;
  if (isUserFunction || (variable == nullptr && word == nullptr)) name = nameString;

  GetToken();
  if (currentToken == ASSIGN) {
    EvaluateAssignment();
  } else if (variable != nullptr) {
    EvaluateVariable(*variable);
  } else if (isUserFunction) {
    EvaluateCall([&] { EvaluateUserCall(name.c_str()); });
  } else if (word == nullptr) {
    name += messages::kNotDefined;
    name += "\n";
    PushError(name.c_str());
  } else if (word->family == WordFamily::Data) {
    EvaluateDataWord(*trovenu::FindFunction(word->function));
  } else if (word->family == WordFamily::Method) {
    EvaluateMethodWord(word->function);
  } else {
    const Function *const function = trovenu::FindFunction(word->function);
    EvaluateCall([&] {
      if (function != nullptr) {
        Apply(*function);
      } else {
        Push(SVector());
      }
      if (word->family != WordFamily::Vector || currentToken != COMMA) return;
      // Every vector function takes one more argument, a shift of its result.
      EvaluateExpr();
      const int bars = TruncateToInt(operands_.back().Series()[0]);
      operands_.pop_back();
      ShiftTop(bars);
    });
  }
}

// Any name may be assigned; from then on it hides what the word meant before.
void SCalc::EvaluateAssignment() {
  Name *const variable = Look(nameString, 1);
  GetToken();
  EvaluateExpr();
  if (variable != nullptr) StoreTop(*variable);
}

// Reads the expression behind "(" and its ")"; the value stays on the stack. False, after the error, without
// ")".
bool SCalc::EvaluateInParentheses() {
  GetToken();
  EvaluateExpr();
  if (currentToken != RP) {
    Error(messages::kParenthesisNeeded);
    return false;
  }
  GetToken();
  return true;
}

void SCalc::NoteRead(const Name &variable) {
  if (variable.formula != formula) formulasRead |= 1U << (static_cast<unsigned>(variable.formula) & 31U);
}

void SCalc::EvaluateVariable(const Name &variable) {
  const std::size_t base = operands_.size();
  NoteRead(variable);
  Push(Operand::Borrow(variable.value, &variable));
  if (currentToken != LP) return;
  if (!EvaluateInParentheses()) {
    ReplaceTop(base, errorResult);
    return;
  }
  const int bars = TruncateToInt(operands_.back().Series()[0]);
  operands_.pop_back();
  ShiftTop(bars);
}

void SCalc::EvaluateDataWord(const Function &function) {
  const std::size_t base = operands_.size();
  Apply(function);
  if (currentToken != LP) return;
  if (!EvaluateInParentheses()) {
    ReplaceTop(base, errorResult);
    return;
  }
  const double bars = operands_.back().Series()[0];
  operands_.pop_back();
  if (bars < 0.0) {
    ReplaceTop(base, Error(messages::kNegativeValue));
    return;
  }
  ShiftTop(ToInt(bars));
}

void SCalc::EvaluateMethodWord(FunctionId method) {
  methodValue =
      SVector(static_cast<double>(static_cast<int>(method) - static_cast<int>(FunctionId::MethodSimple)));
  Push(SVector(methodValue));
}

// Drops the operands from `base` on and leaves `result` there.
void SCalc::ReplaceTop(std::size_t base, Operand result) {
  operands_.resize(base);
  Push(std::move(result));
}

void SCalc::ShiftTop(int bars) {
  Operand &top = operands_.back();
  top = Operand(top.Series()(bars));
}

// Applies an operator to the two operands on top, into the one that is a temporary series already.
void SCalc::Combine(void (*operation)(SVector &, const SVector &, const SVector &)) {
  Operand right = std::move(operands_.back());
  operands_.pop_back();
  Operand &left = operands_.back();
  if (left.IsTemporary() && !left.Series().IsConstant()) {
    operation(left.Own(), left.Series(), right.Series());
  } else if (right.IsTemporary() && !right.Series().IsConstant()) {
    operation(right.Own(), left.Series(), right.Series());
    left = std::move(right);
  } else {
    SVector result;
    operation(result, left.Series(), right.Series());
    left = Operand(std::move(result));
  }
}

}  // namespace trovenu
