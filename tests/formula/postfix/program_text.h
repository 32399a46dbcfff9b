#pragma once

#include <string>

#include "trovenu/formula/calc.h"
#include "trovenu/platform/code_page.h"

namespace trovenu::tests {

/// A program in the order in which it runs, its items apart by blanks: numbers as such, functions as
/// name/arguments, everything else by its name. UTF-8.
inline std::string ProgramText(const SStack &program) {
  std::string text;
  for (int i = program.Top; i >= 0; --i) {
    const SStackItem &item = program.Items[static_cast<std::size_t>(i)];
    if (!text.empty()) text += ' ';
    if (item.OpCode == kNumberCode) {
      SString number;
      text += number.dtos(item.Value[0], 0).c_str();
      continue;
    }
    text += Utf8FromCodePage(item.Name.c_str(), nullptr);
    if (item.OpCode >= kFirstFunctionCode) text += "/" + std::to_string(item.ParamCount);
  }
  return text;
}

}  // namespace trovenu::tests
