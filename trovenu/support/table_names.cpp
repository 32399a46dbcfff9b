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
  const std::string_view digits = DigitsAtEnd(name);
  const std::string_view stem = name.substr(0, name.size() - digits.size());
  if (digits.size() < kLongest / 2) {
    const std::string form = Cut(stem, kLongest - digits.size()) + std::string(digits);
    if (Take(form)) return form;
  }
  for (int i = 1; i <= kMostNumbers; ++i) {
    const std::string number = std::to_string(i);
    const std::string form = Cut(stem, kLongest - number.size()) + number;
    if (Take(form)) return form;
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
