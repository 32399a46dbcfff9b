#include <charconv>
#include <cstring>

#include "trovenu/formula/calc.h"
#include "trovenu/formula/messages.h"
#include "trovenu/formula/words.h"
#include "trovenu/support/korean.h"

namespace trovenu {
namespace {

bool IsBlank(char c) { return c == 9 || c == 10 || c == 11 || c == 13 || c == 32; }

bool StartsWord(char c) { return isHangul(c) || IsLetterAscii(c); }

const char *FindLineEnd(const char *text) {
  while (*text != '\0' && *text != '\n') ++text;
  return text;
}

// Behind the "*/" of a comment whose "/*" stands at `text`, or the end of the text.
const char *FindCommentEnd(const char *text) {
  const char *end = std::strstr(text + 2, "*/");
  return end != nullptr ? end + 2 : text + std::strlen(text);
}

// Copies the characters that `belongs` accepts, as many as `room` holds with a final zero, and moves `text`
// behind all of them. Tells whether they fitted.
template <class Belongs>
bool CopyWhile(const char *&text, char *out, int room, Belongs belongs) {
  int length = 0;
  for (; belongs(*text); ++text) {
    if (length < room - 1) out[length] = *text;
    ++length;
  }
  out[length < room ? length : room - 1] = '\0';
  return length < room;
}

}  // namespace

TokenValue SCalc::GetToken() {
  const auto take = [this](TokenValue token, int characters) {
    readPointer += characters;
    return currentToken = token;
  };
  for (;;) {
    const char next = *readPointer != '\0' ? readPointer[1] : '\0';
    switch (*readPointer) {
      case 9:
      case 10:
      case 11:
      case 13:
      case 32:
        ++readPointer;
        continue;
      case '!':
        return next == '=' ? take(NE, 2) : take(NOT, 1);
      case '%':
      case '(':
      case ')':
      case '*':
      case '+':
      case '-':
      case '^':
      case ',':
        return take(static_cast<TokenValue>(*readPointer), 1);
      // Required: a lone "&" or "|" is an error and then goes on as a comparison.
      case '&':
        if (next == '&') return take(AND, 2);
        Error(messages::kBadToken);
        [[fallthrough]];
      case '|':
        if (next == '|') return take(OR, 2);
        Error(messages::kBadToken);
        [[fallthrough]];
      case '<':
        return next == '=' ? take(LE, 2) : next == '>' ? take(NE, 2) : take(LT, 1);
      case '/':
        if (next == '/') {
          readPointer = FindLineEnd(readPointer);
          continue;
        }
        if (next == '*') {
          readPointer = FindCommentEnd(readPointer);
          continue;
        }
        return take(DIV, 1);
      case '=':
        return next == '=' ? take(EQ, 2) : take(ASSIGN, 1);
      case '>':
        return next == '=' ? take(GE, 2) : take(GT, 1);
      case ';':
        return take(PRINT, 1);
      default:
        break;
    }
    if (IsDigitAscii(*readPointer)) {
      numberValue = GetNumber();
      return currentToken = NUMBER;
    }
    if (!StartsWord(*readPointer)) return currentToken = PRINT;

    const Word *keyword = FindWord(PeekName(readPointer), WordFamily::Operator);
    GetName(readPointer);
    if (keyword == nullptr) {
      std::memcpy(nameString, wordBuffer, sizeof(nameString));
      return currentToken = NAME;
    }
    return currentToken = keyword->function == FunctionId::And  ? AND
                          : keyword->function == FunctionId::Or ? OR
                                                                : NOT;
  }
}

double SCalc::GetNumber() {
  char digits[kNumberBytes];
  const bool fits =
      CopyWhile(readPointer, digits, kNumberBytes, [](char c) { return IsDigitAscii(c) || c == '.'; });
  if (!fits) Error(messages::kNumberTooLong);
  double value = 0.0;
  std::from_chars(digits, digits + std::strlen(digits), value, std::chars_format::fixed);
  return value;
}

char *SCalc::GetName(const char * /*text*/) {
  wordBuffer[0] = '\0';
  if (!StartsWord(*readPointer)) return wordBuffer;
  const bool fits = CopyWhile(readPointer, wordBuffer, kWordBytes,
                              [](char c) { return StartsWord(c) || IsDigitAscii(c) || c == '_'; });
  if (!fits) Error(messages::kWordTooLong);
  return wordBuffer;
}

char *SCalc::PeekName(const char *from) {
  wordBuffer[0] = '\0';
  if (from == nullptr || !StartsWord(*from)) return wordBuffer;
  // Required: the "_" is looked for where the read pointer stands, so a peeked word ends at its first
  // underscore and a name such as and_x is taken for the keyword before it.
  const bool underscores = *readPointer == '_';
  CopyWhile(from, wordBuffer, kWordBytes,
            [underscores](char c) { return StartsWord(c) || IsDigitAscii(c) || (underscores && c == '_'); });
  return wordBuffer;
}

void SCalc::SkipWhite() {
  while (IsBlank(*readPointer)) ++readPointer;
  if (*readPointer != '/') return;
  // Required: one comment at most, and a line comment leaves its line feed, so what follows begins a
  // statement.
  if (readPointer[1] == '/') {
    readPointer = FindLineEnd(readPointer);
  } else if (readPointer[1] == '*') {
    readPointer = FindCommentEnd(readPointer);
  }
}

}  // namespace trovenu
