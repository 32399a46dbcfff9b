#include "tests/formula/naive_evaluator.h"

#include <cmath>
#include <cstdlib>
#include <cstring>

#include "trovenu/formula/words.h"
#include "trovenu/platform/code_page_text.h"

namespace trovenu::tests {
namespace {

bool BelongsToWord(char c) { return isHangul(c) || IsLetterAscii(c) || IsDigitAscii(c) || c == '_'; }

std::string Lower(std::string text) {
  for (char &c : text) c = ToLowerAscii(c);
  return text;
}

const char *SignOf(const std::string &word) {
  const trovenu::Word *found = FindWord(word.c_str(), WordFamily::Operator);
  if (found == nullptr) return "";
  return found->function == FunctionId::And ? "&&" : found->function == FunctionId::Or ? "||" : "!";
}

}  // namespace

void NaiveEvaluator::SkipBlanks() {
  for (;;) {
    if (*at_ != '\0' && std::strchr(" \t\n\v\r", *at_) != nullptr) {
      ++at_;
    } else if (std::strncmp(at_, "//", 2) == 0) {
      at_ += std::strcspn(at_, "\n");
    } else if (std::strncmp(at_, "/*", 2) == 0) {
      at_ = std::strstr(at_, "*/") + 2;
    } else {
      return;
    }
  }
}

// Steps over a sign of the language, or a word that stands for it.
bool NaiveEvaluator::Takes(const char *text) {
  SkipBlanks();
  const char *end = at_;
  while (BelongsToWord(*end)) ++end;
  if (end != at_) {
    if (std::strcmp(SignOf(std::string(at_, end)), text) != 0) return false;
    at_ = end;
    return true;
  }
  if (std::strncmp(at_, text, std::strlen(text)) != 0) return false;
  at_ += std::strlen(text);
  return true;
}

std::string NaiveEvaluator::Word() {
  std::string word;
  for (; BelongsToWord(*at_); ++at_) word += *at_;
  return word;
}

SVector NaiveEvaluator::Logic() {
  SVector value = Comparison();
  for (;;) {
    if (Takes("&&")) {
      value = value && Comparison();
    } else if (Takes("||")) {
      value = value || Comparison();
    } else {
      return value;
    }
  }
}

SVector NaiveEvaluator::Comparison() {
  SVector value = Sum();
  for (;;) {
    if (Takes("<=")) {
      value = value <= Sum();
    } else if (Takes(">=")) {
      value = value >= Sum();
    } else if (Takes("==")) {
      value = value == Sum();
    } else if (Takes("!=") || Takes("<>")) {
      value = value != Sum();
    } else if (Takes("<")) {
      value = value < Sum();
    } else if (Takes(">")) {
      value = value > Sum();
    } else {
      return value;
    }
  }
}

SVector NaiveEvaluator::Sum() {
  SVector value = Product();
  for (;;) {
    if (Takes("+")) {
      value = value + Product();
    } else if (Takes("-")) {
      value = value - Product();
    } else {
      return value;
    }
  }
}

SVector NaiveEvaluator::Product() {
  SVector value = Primary();
  for (;;) {
    if (Takes("*")) {
      value = value * Primary();
    } else if (Takes("/")) {
      value = value / Primary();
    } else if (Takes("%")) {
      value = value % Primary();
    } else {
      return value;
    }
  }
}

SVector NaiveEvaluator::Primary() {
  if (Takes("+")) return Primary();
  if (Takes("-")) return -Primary();
  if (Takes("!")) return !Primary();
  if (Takes("(")) {
    SVector value = Logic();
    Takes(")");
    return value;
  }
  if (IsDigitAscii(*at_)) {
    char *end = nullptr;
    const double number = std::strtod(at_, &end);
    at_ = end;
    return number;
  }
  const std::string name = Lower(Word());
  SkipBlanks();
  if (*at_ == '=' && at_[1] != '=') {
    ++at_;
    SVector value = Logic();
    variables_.insert_or_assign(name, value);
    return value;
  }
  const auto variable = variables_.find(name);
  const bool isVariable = variable != variables_.end();
  SVector value;
  if (isVariable) {
    value = variable->second;
  } else {
    const SVector *const series[] = {&bars_.close,  &bars_.open,         &bars_.high,  &bars_.low,
                                     &bars_.volume, &bars_.openInterest, &bars_.amount};
    const int column = static_cast<int>(FindWord(name.c_str(), WordFamily::Data)->function) -
                       static_cast<int>(FunctionId::Close);
    if (column < 7) {
      value = *series[column];
    } else {
      // The date and the time of the bar.
      const bool isDate = column == 7;
      value = bars_.date;
      for (int i = 0; i < value.GetSize(); ++i) {
        value[i] = isDate ? std::floor(value[i] / 1e6) : std::fmod(value[i], 1e6);
      }
    }
  }
  if (!Takes("(")) return value;
  const double bars = Logic()[0];
  Takes(")");
  return value(static_cast<int>(isVariable ? bars : bars + 0.0001));
}

SVector NaiveEvaluator::Calculate(const std::string &text) {
  at_ = text.c_str();
  SVector value;
  do {
    value = Logic();
  } while (Takes(";"));
  return value.IsConstant() ? bars_.close * 0.0 + value : value;
}

}  // namespace trovenu::tests
