#include "tools/trovenu/formula_text.h"

#include <algorithm>
#include <string_view>

#include "tools/trovenu/formula_folder.h"
#include "tools/trovenu/terminal_text.h"
#include "trovenu/indicator/formula_fields.h"
#include "trovenu/indicator/starter_set.h"
#include "trovenu/platform/code_page.h"

namespace trovenu::tool {

namespace {

constexpr const char *kPatternWords[] = {"bull", "bear"};
constexpr const char *kSystemWords[] = {"open-long", "close-long", "open-short", "close-short"};
constexpr std::size_t kWordWidth = 12;

std::string InUtf8(const SString &text) { return Utf8FromCodePage(text.c_str(), nullptr); }

std::string Statement(const std::string &word, const std::string &value) {
  const std::size_t width = word.size() + 1 > kWordWidth ? word.size() + 1 : kWordWidth;
  return word + std::string(width - word.size(), ' ') + value + "\n";
}

// A formula in one line. Its comments to the end of a line become ones in between.
std::string InOneLine(const std::string &formula) {
  std::string text;
  for (std::size_t i = 0; i < formula.size();) {
    const std::string_view rest = std::string_view(formula).substr(i);
    if (rest.starts_with("/*")) {
      const std::size_t end = rest.find("*/", 2);
      const std::size_t length = end == rest.npos ? rest.size() : end + 2;
      text += rest.substr(0, length);
      i += length;
    } else if (rest.starts_with("//")) {
      const std::size_t length = std::min(rest.find('\n'), rest.size());
      text += "/*";
      text += rest.substr(2, length - 2);
      text += "*/ ";
      i += length;
    } else {
      text += formula[i++];
    }
  }
  return OneLine(text);
}

const char *SlotWord(const SIndex &entry, int slot) {
  if (entry.IndexType == kPatternIndex) return kPatternWords[slot];
  if (entry.IndexType == kSystemIndex) return kSystemWords[slot];
  return "formula";
}

std::string VariableText(const SIndex &entry, int i) {
  std::string text = InUtf8(entry.VarName[i]);
  if (entry.IndexType != kFunctionIndex) text += " " + InUtf8(entry.VarValue[i]);
  if (entry.IndexType == kSystemIndex) {
    for (const SString *range : {&entry.VarStart[i], &entry.VarEnd[i], &entry.VarIncrement[i]}) {
      text += " " + InUtf8(*range);
    }
  }
  return Statement("variable", OneLine(text));
}

// The fields that are not as a new object of the kind has them: those of a formula, or those of the whole.
std::string FieldsText(const SIndex &entry, bool ofFormula, int slot) {
  const SIndex untouched("", entry.IndexType);
  std::string text;
  for (const StarterField &word : StarterFields()) {
    if (word.isOfFormula != ofFormula) continue;
    const FormulaField *const field = FindStarterField(word, entry.IndexType, slot);
    if (field == nullptr || field->Get(entry) == field->Get(untouched)) continue;
    text += Statement(word.word, OneLine(InUtf8(field->Get(entry))));
  }
  return text;
}

std::string LineText(const SIndex &entry, int slot) {
  const std::string name = OneLine(InUtf8(entry.ExpName[slot]));
  std::string text = Statement("line", name.empty() ? std::to_string(slot + 1) : name);
  text += Statement("formula", InOneLine(InUtf8(entry.Expression[slot])));
  return text;
}

}  // namespace

std::string FormulaText(const SIndex &entry) {
  const FormulaKind &kind = KindOfType(entry.IndexType);
  std::string text = Statement(kind.word, OneLine(InUtf8(entry.IndexName)));
  const std::string description = OneLine(InUtf8(entry.Description));
  if (!description.empty()) text += Statement("korean", description);
  for (int i = 0; i < kVariables; ++i) {
    if (!entry.VarName[i].IsEmpty()) text += VariableText(entry, i);
  }
  for (int slot = 0; slot < kind.slots; ++slot) {
    if (entry.Expression[slot].IsEmpty()) continue;
    text += kind.type == kIndicatorIndex
                ? LineText(entry, slot)
                : Statement(SlotWord(entry, slot), InOneLine(InUtf8(entry.Expression[slot])));
    text += FieldsText(entry, true, slot);
  }
  std::string bases;
  for (const SString &base : entry.YValue) {
    if (!base.IsEmpty()) bases += (bases.empty() ? "" : " ") + OneLine(InUtf8(base));
  }
  if (kind.type == kIndicatorIndex && !bases.empty()) text += Statement("base", bases);
  return text + FieldsText(entry, false, 0);
}

}  // namespace trovenu::tool
