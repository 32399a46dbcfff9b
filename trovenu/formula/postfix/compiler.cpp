// Turns a text into a program: operators and names wait on a stack of their own until what they apply to has
// been compiled, numbers go straight out.

#include <algorithm>
#include <cstring>

#include "trovenu/formula/calc.h"
#include "trovenu/formula/user_function_list.h"
#include "trovenu/formula/words.h"

namespace trovenu {
namespace {

struct TokenOperation {
  TokenValue token;
  int code;
  /// Where an operand is expected; 0 for an operator that is no sign.
  int signCode;
  const char *mnemonic;
};

constexpr TokenOperation kTokens[] = {
    {MOD, kModCode, 0, nullptr},
    {AND, kAndCode, 0, nullptr},
    {MUL, kMultiplyCode, 0, nullptr},
    {PLUS, kPlusCode, kPlusSignCode, nullptr},
    {MINUS, kMinusCode, kMinusSignCode, nullptr},
    {DIV, kDivideCode, 0, nullptr},
    {ASSIGN, kAssignCode, 0, nullptr},
    {CARET, kPowerCode, 0, "OPPOW"},
    {OR, kOrCode, 0, nullptr},
    {LT, kLessCode, 0, nullptr},
    {LE, kLessEqualCode, 0, nullptr},
    {GT, kGreaterCode, 0, nullptr},
    {GE, kGreaterEqualCode, 0, nullptr},
    {EQ, kEqualCode, 0, nullptr},
    {NE, kNotEqualCode, 0, nullptr},
    {NOT, kNotCode, 0, nullptr},
};

const TokenOperation *FindToken(TokenValue token) {
  for (const TokenOperation &row : kTokens) {
    if (row.token == token) return &row;
  }
  return nullptr;
}

const char *MnemonicOf(int code) { return FindOperation(code)->mnemonic; }

SStackItem MakeItem(int code, const char *name, int paramCount = 0) {
  SStackItem item;
  item.OpCode = code;
  item.ParamCount = paramCount;
  item.Name = name;
  return item;
}

}  // namespace

class SCalc::Compiler {
 public:
  Compiler(SCalc &calc, SStack &out) : calc_(calc), out_(out) {}

  void Compile() {
    calc_.readPointer = calc_.expression;
    while (*calc_.readPointer != '\0') {
      const char *const before = calc_.readPointer;
      const TokenValue token = calc_.GetToken();
      if (token != PRINT) {
        Take(token);
      } else if (calc_.readPointer != before && calc_.readPointer[-1] == ';') {
        while (waiting_.Top >= 0) MoveToOut();
        expectOperand_ = false;
      } else if (*calc_.readPointer != '\0') {
        // A character that starts no token.
        ++calc_.readPointer;
      }
    }
    while (waiting_.Top >= 0) MoveToOut();
    Reverse();
  }

 private:
  void Take(TokenValue token) {
    switch (token) {
      case NAME:
        TakeName();
        expectOperand_ = false;
        break;
      case NUMBER:
        TakeNumber();
        break;
      case LP:
        Wait(MakeItem(kOpenCode, MnemonicOf(kOpenCode)));
        expectOperand_ = true;
        break;
      case RP:
        Close();
        expectOperand_ = false;
        break;
      case COMMA:
        MoveUntilBelow(calc_.GetPrecedence(kCommaCode));
        expectOperand_ = true;
        break;
      default:
        if (const TokenOperation *row = FindToken(token)) TakeOperator(*row);
    }
  }

  void TakeName() {
    const SString name = calc_.nameString;
    const Word *const word = FindName(name.c_str());
    if (word != nullptr && word->family == WordFamily::Data) {
      Wait(MakeItem(kNameCode, name.c_str()));
      return;
    }
    const Operation *const row = word != nullptr ? trovenu::FindOperation(word->function) : nullptr;
    if (word != nullptr && word->family == WordFamily::Math) {
      if (row != nullptr) {
        const int arguments = word->function == FunctionId::Pow ? 2 : 1;
        Wait(Function(row->code, name.c_str(), arguments));
      }
      return;
    }
    if (word != nullptr && word->family == WordFamily::Vector) {
      // Without a row the word is dropped, and its arguments stay as a list in brackets.
      if (row != nullptr) Wait(Function(row->code, name.c_str(), calc_.GetParamCount()));
      return;
    }
    if (word != nullptr && word->family == WordFamily::Time) {
      constexpr int kCompressArguments = 2;
      if (row != nullptr) Emit(Function(row->code, name.c_str(), kCompressArguments));
      return;
    }
    const int index = calc_.FindFunction(name.c_str());
    if (index >= 0) {
      Wait(Function(kFirstUserCode + index, name.c_str(), calc_.GetParamCount()));
      return;
    }
    calc_.Look(name.c_str(), 1);
    Wait(MakeItem(kNameCode, name.c_str()));
  }

  SStackItem Function(int code, const char *name, int arguments) {
    lastArguments_ = arguments;
    return MakeItem(code, name, arguments);
  }

  void TakeNumber() {
    SStackItem item = MakeItem(kNumberCode, MnemonicOf(kNumberCode));
    item.Value = SVector(calc_.numberValue);
    Emit(item);
    expectOperand_ = false;
  }

  void TakeOperator(const TokenOperation &row) {
    const int code = expectOperand_ && row.signCode != 0 ? row.signCode : row.code;
    const char *const mnemonic = row.mnemonic != nullptr ? row.mnemonic : MnemonicOf(code);
    MoveUntilBelow(calc_.GetPrecedence(code));
    // Required: `^` runs as a function and bears the arguments of the last one.
    Wait(MakeItem(code, mnemonic, code == kPowerCode ? lastArguments_ : 0));
    expectOperand_ = true;
  }

  // Operators of the same precedence go out as well, so that all of them group from the left.
  void MoveUntilBelow(int precedence) {
    while (waiting_.Top >= 0) {
      const int top = waiting_.Items[static_cast<std::size_t>(waiting_.Top)].OpCode;
      if (top == kOpenCode || calc_.GetPrecedence(top) < precedence) return;
      MoveToOut();
    }
  }

  void Close() {
    // Required: the lowest one is not looked at, so a ")" without its "(" loses it.
    while (waiting_.Top > 0 && TopCode() != kOpenCode) MoveToOut();
    const bool isOpen = waiting_.Top >= 0 && TopCode() == kOpenCode;
    const int inside = isOpen ? openedAt_[waiting_.Top] : out_.Top + 1;
    SStackItem dropped;
    waiting_.Pop(dropped);
    if (waiting_.Top < 0) return;
    const int type = calc_.GetOpType(TopCode());
    if (type == kFunctionType) MoveToOut();
    if (type != kNameType) return;
    // A lag: name, lag, "PREV".
    SStackItem name;
    waiting_.Pop(name);
    const bool hasRoom = !out_.IsFull();
    Emit(name);
    if (hasRoom) std::rotate(&Out(inside), &Out(out_.Top), &Out(out_.Top) + 1);
    Emit(Function(kLagCode, MnemonicOf(kLagCode), 1));
  }

  // The first item is to stand at the top.
  void Reverse() {
    if (out_.Top > 0) std::reverse(&Out(0), &Out(out_.Top) + 1);
  }

  SStackItem &Out(int i) { return out_.Items[static_cast<std::size_t>(i)]; }
  int TopCode() const { return waiting_.Items[static_cast<std::size_t>(waiting_.Top)].OpCode; }

  void Wait(const SStackItem &item) {
    if (waiting_.IsFull()) {
      ++calc_.itemsDropped;
      return;
    }
    waiting_.Push(item);
    if (item.OpCode == kOpenCode) openedAt_[waiting_.Top] = out_.Top + 1;
  }

  void Emit(const SStackItem &item) {
    if (out_.IsFull()) ++calc_.itemsDropped;
    out_.Push(item);
  }

  void MoveToOut() {
    SStackItem item;
    waiting_.Pop(item);
    Emit(item);
  }

  SCalc &calc_;
  SStack &out_;
  SStack waiting_;
  // Where the items inside each waiting "(" begin.
  int openedAt_[kStackItems] = {};
  bool expectOperand_ = false;
  int lastArguments_ = 0;
};

void SCalc::InToPost(SStack *out) {
  if (out != nullptr) Compiler(*this, *out).Compile();
}

void SCalc::InfixToPostFix() {
  const auto compileTo = [this](std::unique_ptr<SStack> &stack) {
    if (stack == nullptr) stack = std::make_unique<SStack>();
    InToPost(stack.get());
  };
  char text[kExpressionBytes];
  std::memcpy(text, expression, std::strlen(expression) + 1);
  itemsDropped = 0;
  Evaluation();
  const int count = functionList != nullptr ? std::min(functionList->Size, kCompiledFunctions) : 0;
  for (int i = 0; i < count; ++i) {
    const char *const body = (*functionList)[i].Expression.c_str();
    const std::size_t kept = std::min<std::size_t>(std::strlen(body), kExpressionBytes - 1);
    std::memcpy(expression, body, kept);
    expression[kept] = '\0';
    compileTo(functionStacks[i]);
  }
  std::memcpy(expression, text, std::strlen(text) + 1);
  compileTo(programStack);
}

int SCalc::GetPrecedence(int code) const {
  const Operation *const row = trovenu::FindOperation(code);
  return row != nullptr ? row->precedence : 1;
}

int SCalc::GetOpType(int code) const {
  const Operation *const row = trovenu::FindOperation(code);
  return row != nullptr ? row->type : kNoType;
}

int SCalc::GetParamCount() {
  const char *const cursor = readPointer;
  int count = 0;
  if (GetToken() == LP) {
    bool hasContent = false;
    for (int depth = 1; depth > 0 && *readPointer != '\0';) {
      const char *const before = readPointer;
      switch (GetToken()) {
        case COMMA:
          if (depth == 1) ++count;
          break;
        case NAME:
        case NUMBER:
          hasContent = true;
          break;
        case LP:
          ++depth;
          break;
        case RP:
          if (depth == 1 && hasContent) ++count;
          --depth;
          break;
        case PRINT:
          // A character that starts no token.
          if (*readPointer != '\0' && (readPointer == before || readPointer[-1] != ';')) ++readPointer;
          break;
        default:
          break;
      }
    }
  }
  readPointer = cursor;
  return count;
}

}  // namespace trovenu
