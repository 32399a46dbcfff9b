// The grammar of formulas once more, without a value: what the engine computes on its walk becomes a tree.

#include "tools/trovenu/expression_tree.h"

#include <utility>

#include "trovenu/formula/calc.h"

namespace trovenu::tool {

namespace {

class TreeReader {
 public:
  explicit TreeReader(const std::string &formula) : text_(formula.c_str()) { lexer_.readPointer = text_; }

  std::vector<Expression> Statements() {
    std::vector<Expression> statements;
    while (*lexer_.readPointer != '\0') {
      Next();
      statements.push_back(Level(kLoosest));
      lexer_.SkipWhite();
    }
    return statements;
  }

 private:
  // Levels of operators, the tightest 0.
  static constexpr int kLoosest = 3;

  static int LevelOf(TokenValue token) {
    switch (token) {
      case AND:
      case OR:
        return 3;
      case LT:
      case LE:
      case GT:
      case GE:
      case EQ:
      case NE:
        return 2;
      case PLUS:
      case MINUS:
        return 1;
      case MUL:
      case DIV:
      case MOD:
        return 0;
      default:
        return kLoosest + 1;
    }
  }

  std::size_t Position() const { return static_cast<std::size_t>(lexer_.readPointer - text_); }
  TokenValue Token() const { return lexer_.currentToken; }

  // Steps to the next token and notes where the last one ended and where this one begins.
  void Next() {
    lastEnd_ = Position();
    do {
      begin_ = Position();
      lexer_.SkipWhite();
    } while (Position() != begin_);
    lexer_.GetToken();
  }

  Expression Level(int level) {
    if (level < 0) return Primary();
    Expression left = Level(level - 1);
    while (LevelOf(Token()) == level) {
      Next();
      Expression both;
      both.begin = left.begin;
      both.parts.push_back(std::move(left));
      both.parts.push_back(Level(level - 1));
      both.end = lastEnd_;
      left = std::move(both);
    }
    return left;
  }

  Expression Primary() {
    while (Token() == PLUS || Token() == COMMA) Next();
    Expression result;
    result.begin = begin_;
    switch (Token()) {
      case NUMBER:
        Next();
        break;
      case LP:
        Next();
        result.parts.push_back(Level(kLoosest));
        if (Token() == RP) Next();
        break;
      case MINUS:
      case NOT:
        Next();
        result.parts.push_back(Primary());
        break;
      case NAME:
        ReadName(result);
        break;
      default:
        // The lexer stays at a character that starts no token.
        if (*lexer_.readPointer != '\0') ++lexer_.readPointer;
        break;
    }
    result.end = lastEnd_ > result.begin ? lastEnd_ : result.begin;
    return result;
  }

  void ReadName(Expression &result) {
    result.kind = Expression::Kind::Name;
    result.word = lexer_.nameString;
    Next();
    if (Token() == ASSIGN) {
      Next();
      result.kind = Expression::Kind::Assignment;
      result.parts.push_back(Level(kLoosest));
    } else if (Token() == LP) {
      Next();
      if (Token() != RP) result.parts.push_back(Level(kLoosest));
      while (Token() == COMMA) result.parts.push_back(Level(kLoosest));
      if (Token() == RP) Next();
    }
  }

  SCalc lexer_;
  const char *text_;
  std::size_t lastEnd_ = 0;
  std::size_t begin_ = 0;
};

}  // namespace

std::vector<Expression> ReadStatements(const std::string &formula) {
  return TreeReader(formula).Statements();
}

}  // namespace trovenu::tool
