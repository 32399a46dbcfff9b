// Reads the arguments of a call from the text, as the function's row says, and applies its rule to them.

#include <algorithm>

#include "trovenu/formula/calc.h"
#include "trovenu/formula/function_table.h"
#include "trovenu/formula/messages.h"
#include "trovenu/formula/words.h"

namespace trovenu {

// What a call says in words instead of expressions.
struct SCalc::ArgumentWords {
  int method = -1;
  FunctionId unit = FunctionId::None;
  int groupBars = 1;
};

SVector &Call::Own(int i) { return args_[i].Own(calc_.CopiedFrom(X(i))); }

const SVector &Call::Bound(Column column) const { return calc_.Bound(column); }

int Call::GrowingBars(int i) const {
  return X(i).GetSize() == 1 ? Bound(Column::Close).GetSize() : X(i).GetSize();
}

Operand Call::Fail(const char *message) { return calc_.Error(message); }

Operand Call::FailPeriod() { return calc_.Error(badPeriod_); }

// The call has failed on its form: the error of its row, or a series without a valid bar where the row has
// none.
bool SCalc::Refuse(const Function &function) {
  if (function.badCall != nullptr) {
    PushError(function.badCall);
  } else {
    SVector nothing;
    nothing.SetStartIndex(kNoValidBar);
    Push(std::move(nothing));
  }
  return false;
}

// Pushes the arguments. False if the call has failed and its result has been pushed instead.
bool SCalc::ReadArguments(const Function &function, ArgumentWords &words) {
  switch (function.reading) {
    case Reading::None:
      return true;
    case Reading::Plain:
      for (int i = 0; i < function.least; ++i) EvaluateExpr();
      return true;
    case Reading::OptionalPeriod:
      EvaluateExpr();
      if (currentToken == RP) return true;
      if (currentToken != COMMA) return Refuse(function);
      EvaluateExpr();
      return true;
    case Reading::RequiredPeriod:
      EvaluateExpr();
      if (currentToken != COMMA) return Refuse(function);
      EvaluateExpr();
      return true;
    case Reading::MethodWord:
      EvaluateExpr();
      EvaluateExpr();
      if (currentToken == RP) return true;
      if (currentToken != COMMA) return Refuse(function);
      return ReadMethod(words);
    case Reading::OneOrMore:
      EvaluateExpr();
      return true;
    case Reading::TimeUnit:
      return ReadUnit(words);
  }
  return true;
}

bool SCalc::ReadMethod(ArgumentWords &words) {
  GetToken();
  if (currentToken != NAME && currentToken != NUMBER) {
    Push(SVector());
    return false;
  }
  // Required: a number means the simple average, whatever it is.
  words.method = 0;
  if (currentToken == NAME) {
    if (const Word *word = FindWord(nameString, WordFamily::Method)) {
      words.method = static_cast<int>(word->function) - static_cast<int>(FunctionId::MethodSimple);
    } else if (const Name *variable = Look(nameString, 0)) {
      NoteRead(*variable);
      // Any number that names no method means the simple average.
      words.method = std::max(TruncateToInt(variable->value[0]), 0);
    } else {
      PushError(messages::kWrongUse);
      return false;
    }
  }
  GetToken();
  return true;
}

// Required: the argument is a token, not an expression; an unknown word means the hour.
bool SCalc::ReadUnit(ArgumentWords &words) {
  if (currentToken != NAME && currentToken != NUMBER) {
    GetToken();
    Push(SVector(Bound(Column::Date).GetSize()));
    return false;
  }
  if (currentToken == NAME) {
    const Word *word = FindWord(nameString, WordFamily::Unit);
    words.unit = word != nullptr ? word->function : FunctionId::UnitHour;
  } else {
    words.groupBars = ToInt(numberValue);
  }
  GetToken();
  return true;
}

// Applies the rule to the operands from `base` on and leaves the result in their place.
void SCalc::ApplyRule(const Function &function, const ArgumentWords &words, std::size_t base) {
  const int count = static_cast<int>(operands_.size() - base);
  if (function.full == FullCalc::Always || (function.full == FullCalc::WithoutPeriod && count == 1) ||
      (function.full == FullCalc::ByMethod && words.method == 1)) {
    fullCalc = 1;
  }
  Call call(*this, function.badPeriod, operands_.data() + base, count);
  call.method = words.method;
  call.unit = words.unit;
  call.groupBars = words.groupBars;
  ReplaceTop(base, function.rule(call));
}

void SCalc::Apply(const Function &function) {
  const std::size_t base = operands_.size();
  ArgumentWords words;
  if (!ReadArguments(function, words)) {
    Operand result = std::move(operands_.back());
    if (function.full == FullCalc::Always) fullCalc = 1;
    ReplaceTop(base, std::move(result));
    return;
  }
  if (function.reading == Reading::OneOrMore) {
    while (currentToken == COMMA) {
      EvaluateExpr();
      ApplyRule(function, words, base);
    }
  } else {
    ApplyRule(function, words, base);
  }
}

SVector SCalc::ApplyWord(const Word *word) {
  const Function *function = word != nullptr ? trovenu::FindFunction(word->function) : nullptr;
  if (function == nullptr) return SVector();
  Apply(*function);
  return PopSeries();
}

SVector SCalc::ProcessVectorFunction(const char *word) {
  const Word *found = FindWord(word, WordFamily::Vector);
  return ApplyWord(found != nullptr ? found : FindWord(word, WordFamily::UnlistedVector));
}

SVector SCalc::ProcessDataVariable(const char *word) { return ApplyWord(FindWord(word, WordFamily::Data)); }

SVector SCalc::ProcessMathFunction(const char *word) { return ApplyWord(FindWord(word, WordFamily::Math)); }

SVector SCalc::ProcessTimeFunction(const char *word) { return ApplyWord(FindWord(word, WordFamily::Time)); }

}  // namespace trovenu
