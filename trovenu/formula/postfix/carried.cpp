#include "trovenu/formula/postfix/carried.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "trovenu/formula/calc.h"
#include "trovenu/formula/function_table.h"
#include "trovenu/formula/user_function_list.h"
#include "trovenu/formula/words.h"
#include "trovenu/support/korean.h"

namespace trovenu {
namespace {

constexpr const char *kReadOtherwise = "the formula is faulty or reads otherwise when it is compiled";
constexpr const char *kTooLong = "the program has more than 100 items";
constexpr const char *kTooDeepStack = "more than 100 values would wait for their operator";
constexpr const char *kStartingSign = "a sign stands where a statement begins";
constexpr const char *kTwoSigns = "two signs stand in a row";
constexpr const char *kNumberValue = "its value is a single number";
constexpr const char *kDropped = "has no code in a program";
constexpr const char *kPassedOver = "is passed over by a program";
constexpr const char *kOtherRule = "runs the rule of another word in a program";
constexpr const char *kOtherArguments = "takes other arguments in a program";
constexpr const char *kOtherDate = "reads the date otherwise in a program";
constexpr const char *kNoCalculation = "has no calculation";
constexpr const char *kLag = "is shifted by something else than a whole number";
constexpr const char *kPeriod = "has a period that is no number or too small";
constexpr const char *kDistance = "moves by a distance that is no number or too large";
constexpr const char *kGrowing = "runs over the bars of close in a program, which its argument may not have";
constexpr const char *kOrder =
    "could meet a power that is no number, which a program compares in another order";
constexpr const char *kInPlace = "would change the series or variable that is its base";
constexpr const char *kInnerAssignment = "is assigned inside an expression";
constexpr const char *kBuiltIn = "is assigned, which a program does not read back";
constexpr const char *kNoValue = "has no value where it is read";
constexpr const char *kNotCallable = "is not among the first four user functions";
constexpr const char *kSharedName = "is or sets a variable of a called function and of its caller";
constexpr const char *kNameResult = "ends with a bare variable or an assignment";
constexpr const char *kRecursive = "calls itself";

// A shift by more bars may be a fault, which only the direct path marks in its result.
constexpr int kPlainShift = 1000;

// What is known of a value before it is computed.
struct Value {
  enum class Kind {
    Number,
    /// As many bars as close.
    Bars,
    /// A series of a size that is not followed.
    Other,
  };
  Kind kind = Kind::Other;
  /// A series or a variable by its name alone.
  bool isName = false;
  /// A number that the text gives.
  bool isKnown = false;
  double number = 0.0;
};

Value::Kind Joined(Value::Kind a, Value::Kind b) {
  if (a == Value::Kind::Other || b == Value::Kind::Other) return Value::Kind::Other;
  return a == Value::Kind::Number ? b : a;
}

struct Variable {
  SString name;
  Value value;
};

bool Contains(const std::vector<SString> &names, const SString &name) {
  return std::any_of(names.begin(), names.end(),
                     [&](const SString &other) { return EqualNoCase(other.c_str(), name.c_str()); });
}

bool IsSign(TokenValue token) { return token == PLUS || token == MINUS || token == NOT; }

// The kind of what a built-in function gives.
Value::Kind ResultOf(const Function &function, const std::vector<Value> &args, bool isLagged) {
  const auto count = [&](Value::Kind kind) {
    return std::count_if(args.begin(), args.end(), [&](const Value &x) { return x.kind == kind; });
  };
  const auto numbers = count(Value::Kind::Number) - (isLagged ? 1 : 0);
  if (function.id == FunctionId::Ref) return args[0].kind;
  if (function.id == FunctionId::Shift || count(Value::Kind::Other) > 0) return Value::Kind::Other;
  // A period, and no number where a series may stand: its single element would be the size of the result.
  const bool hasSeriesOnly = count(Value::Kind::Bars) > 0 && numbers <= 1;
  switch (function.id) {
    case FunctionId::If:
      return count(Value::Kind::Bars) > 0 ? Value::Kind::Bars : Value::Kind::Other;
    case FunctionId::Pow:
      return count(Value::Kind::Bars) > 0 ? Value::Kind::Bars : Value::Kind::Number;
    case FunctionId::Min:
    case FunctionId::Max:
      if (count(Value::Kind::Bars) == 0) return Value::Kind::Number;
      return numbers == 0 ? Value::Kind::Bars : Value::Kind::Other;
    default:
      return args.empty() || hasSeriesOnly ? Value::Kind::Bars : Value::Kind::Other;
  }
}

// What the readers of a formula and of its user functions find.
struct Findings {
  NotCarried fault;
  // A power may be no number.
  bool hasPower = false;
  // Calls of user functions, of which the direct path allows so many.
  int userCalls = 0;
};

// Reads one text, the formula or the body of a user function.
class TextReader {
 public:
  TextReader(SFunctionList *functions, std::vector<int> running, Findings &findings)
      : functions_(functions), running_(std::move(running)), findings_(findings) {
    lexer_.SetFunction(functions);
  }

  void Bind(const SString &name, Value value) {
    value.isName = false;
    variables_.push_back({name, value});
  }

  // The value of the last statement.
  Value Read(const char *text) {
    if (std::strlen(text) >= kExpressionBytes) return Refuse(kReadOtherwise);
    SStack program;
    lexer_.SetExpression(text);
    lexer_.InToPost(&program);
    if (lexer_.itemsDropped > 0) return Refuse(kTooLong);
    lexer_.SetExpression(text);
    Value result;
    bool hasStatement = false;
    while (*lexer_.readPointer != '\0' && !IsRefused()) {
      lexer_.GetToken();
      isStart_ = true;
      result = Expr();
      hasStatement = true;
      if (lexer_.currentToken != PRINT) return Refuse(kReadOtherwise);
      lexer_.SkipWhite();
    }
    if (!hasStatement || lexer_.errorCount > 0) return Refuse(kReadOtherwise);
    return result;
  }

  // Variables that the text sets, those of the functions that it calls among them.
  std::vector<SString> Names() const {
    std::vector<SString> names = called_;
    for (const Variable &variable : variables_) names.push_back(variable.name);
    return names;
  }

  // Slots that it needs at most.
  int Deepest() const { return deepest_; }

 private:
  bool IsRefused() const { return findings_.fault.reason != nullptr; }

  // The first reason counts. The rest of the text is not read.
  Value Refuse(const char *reason, const SString &word = SString()) {
    if (!IsRefused()) findings_.fault = {reason, word};
    lexer_.SetExpression("");
    lexer_.currentToken = PRINT;
    return {};
  }

  void Occupy(int slots) {
    depth_ += slots;
    deepest_ = std::max(deepest_, depth_);
    if (deepest_ > kStackItems) Refuse(kTooDeepStack);
  }

  template <class Next, class IsOperator>
  Value Level(Next next, IsOperator isOperator) {
    Value value = next();
    while (isOperator(lexer_.currentToken)) {
      lexer_.GetToken();
      const Value right = next();
      Occupy(-1);
      value = {Joined(value.kind, right.kind)};
    }
    return value;
  }

  Value Expr() {
    return Level([this] { return Relop(); }, [](TokenValue token) { return token == AND || token == OR; });
  }
  Value Relop() {
    return Level([this] { return Add(); }, [](TokenValue token) { return token >= LT && token <= NE; });
  }
  Value Add() {
    return Level([this] { return Term(); }, [](TokenValue token) { return token == PLUS || token == MINUS; });
  }
  Value Term() {
    return Level([this] { return Prim(); },
                 [](TokenValue token) { return token == MUL || token == DIV || token == MOD; });
  }

  Value Prim() {
    const bool isStart = std::exchange(isStart_, false);
    if (++nesting_ > kNestingLimit) return Refuse(kReadOtherwise);
    const Value value = PrimAt(isStart);
    --nesting_;
    return value;
  }

  Value PrimAt(bool isStart) {
    const TokenValue token = lexer_.currentToken;
    switch (token) {
      case NUMBER: {
        const Value value{Value::Kind::Number, false, true, lexer_.numberValue};
        Occupy(1);
        lexer_.GetToken();
        return value;
      }
      case LP: {
        lexer_.GetToken();
        const Value value = Expr();
        return Close() ? value : Value();
      }
      case PLUS:
      case MINUS:
      case NOT: {
        // A program takes a sign for an operator there; `not` is none in either place.
        if (isStart && token != NOT) return Refuse(kStartingSign);
        lexer_.GetToken();
        if (IsSign(lexer_.currentToken)) return Refuse(kTwoSigns);
        Value value = Prim();
        if (token == PLUS) return value;
        value.isName = false;
        value.isKnown = value.isKnown && token == MINUS;
        value.number = -value.number;
        return value;
      }
      case NAME:
        return NameAt(isStart);
      default:
        return Refuse(kReadOtherwise);
    }
  }

  bool Close() {
    if (lexer_.currentToken != RP) {
      Refuse(kReadOtherwise);
      return false;
    }
    lexer_.GetToken();
    return true;
  }

  Value NameAt(bool isStart) {
    const SString name = lexer_.nameString;
    lexer_.GetToken();
    if (lexer_.currentToken == ASSIGN) return Assignment(name, isStart);
    if (const Variable *variable = FindVariable(name)) return Shifted(name, variable->value, false);
    const Word *const word = FindName(name.c_str());
    const int index = functions_ != nullptr ? functions_->Find(name.c_str()) : -1;
    if (word != nullptr && word->family == WordFamily::Data) {
      const DataOperand *const operand = FindDataOperand(word->function);
      if (operand == nullptr) return Refuse(kNoCalculation, name);
      if (operand->own != nullptr) return Refuse(kOtherDate, name);
      return Shifted(name, {Value::Kind::Bars}, true);
    }
    if (word != nullptr && (word->family == WordFamily::Vector || word->family == WordFamily::Math)) {
      return BuiltIn(name, *word);
    }
    // A program knows the words of time before the user functions, the direct path after them.
    if (word != nullptr && word->family == WordFamily::Time) {
      return Refuse(trovenu::FindOperation(word->function) != nullptr ? kPassedOver : kDropped, name);
    }
    return index >= 0 ? UserCall(name, index) : Refuse(kNoValue, name);
  }

  Value Assignment(const SString &name, bool isStart) {
    if (!isStart) return Refuse(kInnerAssignment, name);
    const bool isFunction = functions_ != nullptr && functions_->Find(name.c_str()) >= 0;
    if (FindName(name.c_str()) != nullptr || isFunction) return Refuse(kBuiltIn, name);
    if (Contains(called_, name)) return Refuse(kSharedName, name);
    lexer_.GetToken();
    Occupy(1);
    Value value = Expr();
    Occupy(-2);
    if (Variable *variable = FindVariable(name)) {
      variable->value = value;
      variable->value.isName = false;
    } else {
      Bind(name, value);
    }
    value.isName = true;
    return value;
  }

  Variable *FindVariable(const SString &name) {
    for (Variable &variable : variables_) {
      if (EqualNoCase(variable.name.c_str(), name.c_str())) return &variable;
    }
    return nullptr;
  }

  // A name with the shift that may follow it. That of a data word is rounded a little on the direct path, and
  // not in a program.
  Value Shifted(const SString &name, Value value, bool isDataWord) {
    Occupy(1);
    value.isName = true;
    if (lexer_.currentToken != LP) return value;
    lexer_.GetToken();
    const Value lag = Expr();
    Occupy(-1);
    const bool isWhole =
        lag.isKnown && lag.number >= 0.0 && SCalc::ToInt(lag.number) == TruncateToInt(lag.number);
    if (isDataWord && !isWhole) return Refuse(kLag, name);
    value.isName = false;
    return Close() ? value : Value();
  }

  // The arguments of a call with their parentheses.
  std::vector<Value> Arguments() {
    std::vector<Value> args;
    if (lexer_.currentToken != LP) {
      Refuse(kReadOtherwise);
      return args;
    }
    lexer_.GetToken();
    while (lexer_.currentToken != RP && !IsRefused()) {
      args.push_back(Expr());
      if (lexer_.currentToken != COMMA) break;
      lexer_.GetToken();
      if (lexer_.currentToken == RP) Refuse(kReadOtherwise);
    }
    Close();
    return args;
  }

  Value BuiltIn(const SString &name, const Word &word) {
    const Operation *const row = trovenu::FindOperation(word.function);
    const Function *const function = trovenu::FindFunction(word.function);
    if (row == nullptr || function == nullptr) return Refuse(kDropped, name);
    if (row->type != kFunctionType) return Refuse(kPassedOver, name);
    if (row->function != word.function) return Refuse(kOtherRule, name);
    const std::vector<Value> args = Arguments();
    if (IsRefused()) return {};
    const int count = static_cast<int>(args.size());
    const int most =
        function->reading == Reading::OneOrMore ? kStackItems : function->most + (row->lagged ? 1 : 0);
    if (count < std::max(function->least, row->least) || count > std::min(most, row->most)) {
      return Refuse(kOtherArguments, name);
    }
    const bool isLagged = row->lagged && count == row->most;
    if (row->differs == Differs::InPlace) {
      if (args[0].isName) return Refuse(kInPlace, name);
      findings_.hasPower = true;
    }
    if (row->differs == Differs::Order && findings_.hasPower) return Refuse(kOrder, name);
    if (row->differs == Differs::Growing && count == 1 && args[0].kind != Value::Kind::Bars) {
      return Refuse(kGrowing, name);
    }
    if (row->period >= 0 && row->period < count) {
      const Value &period = args[static_cast<std::size_t>(row->period)];
      const int n = TruncateToInt(period.number);
      if (row->differs == Differs::Distance) {
        if (!period.isKnown || n < -kPlainShift || n > kPlainShift) return Refuse(kDistance, name);
      } else if (!period.isKnown || n < (row->differs == Differs::PeriodOne ? 2 : 1)) {
        return Refuse(kPeriod, name);
      }
    }
    Occupy(1 - count);
    const bool isMath = word.family == WordFamily::Math && word.function != FunctionId::Pow;
    return {isMath ? args[0].kind : ResultOf(*function, args, isLagged)};
  }

  Value UserCall(const SString &name, int index) {
    const Operation *const row = trovenu::FindOperation(kFirstUserCode + index);
    if (row == nullptr || row->most < row->least) return Refuse(kNotCallable, name);
    if (std::ranges::find(running_, index) != running_.end()) return Refuse(kRecursive, name);
    if (++findings_.userCalls > kUserCallLimit) return Refuse(kReadOtherwise);
    const auto leftBefore = static_cast<std::ptrdiff_t>(left_.size());
    const std::vector<Value> args = Arguments();
    if (IsRefused()) return {};
    const SFunction &function = (*functions_)[index];
    const std::vector<SString> leftByArguments(left_.begin() + leftBefore, left_.end());
    std::size_t parameters = 0;
    while (parameters < kParameters && !function.VarName[parameters].IsEmpty()) ++parameters;
    if (args.size() != parameters && (parameters == 0 || args.size() != parameters + 1)) {
      return Refuse(kOtherArguments, name);
    }

    std::vector<int> running = running_;
    running.push_back(index);
    TextReader body(functions_, std::move(running), findings_);
    for (std::size_t i = 0; i < parameters; ++i) {
      const SString &parameter = function.VarName[i];
      if (FindName(parameter.c_str()) != nullptr || body.FindVariable(parameter) != nullptr ||
          (parameters > 1 && Contains(leftByArguments, parameter))) {
        return Refuse(kSharedName, name);
      }
      body.Bind(parameter, args[i]);
    }
    const Value result = body.Read(function.Expression.c_str());
    if (IsRefused()) return Refuse(findings_.fault.reason);
    // The direct path gives the caller its variables back, a program does not.
    for (const SString &set : body.Names()) {
      if (FindVariable(set) != nullptr) return Refuse(kSharedName, name);
      called_.push_back(set);
      if (args.size() > parameters) left_.push_back(set);
    }
    if (result.isName) return Refuse(kNameResult, name);
    Occupy(-static_cast<int>(args.size()));
    Occupy(body.Deepest());
    Occupy(1 - body.Deepest());
    return {result.kind};
  }

  SFunctionList *functions_;
  // The user functions whose bodies are being read.
  std::vector<int> running_;
  Findings &findings_;
  SCalc lexer_;
  std::vector<Variable> variables_;
  // Variables that called functions have set.
  std::vector<SString> called_;
  // Those of calls with a shift as last argument. The direct path does not give them back, so that such a
  // call among the arguments of another changes the parameters that this one has taken before.
  std::vector<SString> left_;
  bool isStart_ = false;
  int nesting_ = 0;
  int depth_ = 0;
  int deepest_ = 0;
};

}  // namespace

NotCarried FindNotCarried(const char *text, SFunctionList *functions) {
  Findings findings;
  NotCarried &fault = findings.fault;
  TextReader reader(functions, {}, findings);
  const Value result = reader.Read(text != nullptr ? text : "");
  if (fault.reason == nullptr && result.kind == Value::Kind::Number) fault.reason = kNumberValue;
  return fault;
}

}  // namespace trovenu
