#include "trovenu/support/table_names.h"

#include "trovenu/platform/code_page_text.h"
#include "trovenu/platform/string.h"

namespace trovenu {

namespace {

constexpr int kMostNumbers = 9999;

std::string Cut(std::string_view name, std::size_t bytes) {
  std::string text(name);
  text.resize(CutAtCharacter(text.c_str(), bytes));
  return text;
}

/// The digits that tell one of several names like "LineWidth0" from the others.
std::string_view DigitsAtEnd(std::string_view name) {
  std::size_t begin = name.size();
  while (begin > 0 && IsDigitAscii(name[begin - 1])) --begin;
  return name.substr(begin);
}

}  // namespace

bool TableNames::Take(std::string_view name) {
  if (name.size() > kLongest) return false;
  CString folded(name);
  folded.MakeLower();
  return taken_.emplace(folded.View()).second;
}

std::string TableNames::TakeShort(std::string_view name) {
  const std::size_t least = name.size() > kLongestRest ? name.size() - kLongestRest : 1;
  const std::string_view digits = DigitsAtEnd(name);
  const std::string_view stem = name.substr(0, name.size() - digits.size());
  if (digits.size() < kLongest / 2) {
    const std::string begin = Cut(stem, kLongest - digits.size());
    if (begin.size() >= least && Take(begin + std::string(digits))) return begin + std::string(digits);
  }
  const std::string_view whole = stem.size() >= least ? stem : name;
  for (int i = 1; i <= kMostNumbers; ++i) {
    const std::string number = std::to_string(i);
    const std::string begin = Cut(whole, kLongest - number.size());
    if (begin.size() < least) break;
    if (Take(begin + number)) return begin + number;
  }
  return {};
}

std::string TableNames::TakeContinuation(std::string_view shortName, std::size_t number) {
  const std::string_view digits = DigitsAtEnd(shortName);
  const std::string ending = std::string(digits) + '_' + std::to_string(number);
  if (ending.size() < kLongest) {
    const std::string form =
        Cut(shortName.substr(0, shortName.size() - digits.size()), kLongest - ending.size()) + ending;
    if (Take(form)) return form;
  }
  return TakeShort(shortName);
}

}  // namespace trovenu
