#include <string>

#include "trovenu/indicator/index.h"
#include "trovenu/platform/code_page_text.h"
#include "trovenu/support/text_edit.h"

namespace trovenu {

void SIndex::ConvertExpression(int slot) {
  if (slot < 0 || slot >= kExpressions) return;
  const std::string_view text = Expression[slot].View();
  std::string converted;
  bool changed = false;
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t length = NameLength(text.data() + i);
    if (length == 0) {
      converted += text[i++];
      continue;
    }
    const std::string name(text.substr(i, length));
    const SString *value = nullptr;
    for (int k = 0; k < kVariables && value == nullptr; ++k) {
      if (EqualNoCase(VarName[k].c_str(), name.c_str())) value = &VarValue[k];
    }
    // A text that no engine can hold any more need not grow further: its evaluation reports it.
    if (value != nullptr && converted.size() < kExpressionBytes) {
      converted += value->View();
      changed = true;
    } else {
      converted += name;
    }
    i += length;
  }
  if (!changed) {
    if (ConvExpression[slot] != Expression[slot]) ConvExpression[slot] = Expression[slot];
  } else if (ConvExpression[slot].View() != converted) {
    ConvExpression[slot] = SString(std::string_view(converted));
  }
}

void SIndex::ConvertExpression() {
  for (int i = 0; i < kExpressions; ++i) ConvertExpression(i);
}

}  // namespace trovenu
