#include "tools/trovenu/indicator_lines.h"

#include <algorithm>
#include <optional>

#include "tools/trovenu/failure.h"
#include "tools/trovenu/formula.h"
#include "tools/trovenu/formula_folder.h"
#include "tools/trovenu/terminal_text.h"
#include "trovenu/platform/code_page.h"

namespace trovenu::tool {

namespace {

std::string InUtf8(const SString &text) { return Utf8FromCodePage(text.c_str(), nullptr); }

std::string VariablesOf(const SIndex &indicator) {
  std::string names;
  for (const SString &name : indicator.VarName) {
    if (!name.IsEmpty()) names += (names.empty() ? "" : ", ") + InUtf8(name);
  }
  return names.empty() ? "it has none" : "it has " + names;
}

}  // namespace

SIndex IndicatorOf(const std::vector<std::string> &formulas) {
  SIndex indicator;
  for (std::size_t i = 0; i < std::min<std::size_t>(formulas.size(), kExpressions); ++i) {
    indicator.Expression[i] = SString(std::string_view(FormulaInCodePage(formulas[i])));
  }
  return indicator;
}

void SetVariables(SIndex &indicator, const std::vector<std::string> &settings) {
  for (const std::string &setting : settings) {
    const std::size_t equals = std::min(setting.find('='), setting.size());
    const std::string name(TrimBlanks(std::string_view(setting).substr(0, equals)));
    const SString key = NameInCodePage(name, "--set");
    const std::string value = equals < setting.size() ? setting.substr(equals + 1) : "";
    const auto found = std::ranges::find_if(
        indicator.VarName, [&](const SString &variable) { return variable.CompareNoCase(key.c_str()) == 0; });
    if (found == std::end(indicator.VarName)) {
      throw Failure(ShownIndicator(indicator) + ": no variable " + Quoted(name) + "; " +
                    VariablesOf(indicator));
    }
    indicator.VarValue[found - indicator.VarName] = NameInCodePage(value, ("--set " + name).c_str());
  }
}

void RequireSound(SIndex &indicator, Bars &bars, SFunctionList &functions) {
  indicator.ConvertExpression();
  FormulaEngine engine(bars, &functions);
  for (int line = 0; line < kExpressions; ++line) {
    if (indicator.ConvExpression[line].IsEmpty()) continue;
    std::optional<FormulaFault> fault;
    const std::string formula = InUtf8(indicator.ConvExpression[line]);
    engine.Evaluate(formula, fault);
    if (!fault) continue;
    const std::string owner = indicator.IndexName.IsEmpty() ? "" : ShownIndicator(indicator) + ", ";
    throw Failure(owner + "formula " + std::to_string(line + 1) + " " + Quoted(OneLine(formula)) + ": " +
                  fault->OneLine());
  }
}

std::string LineName(const SIndex &indicator, int line) {
  SString name;
  if (indicator.IndexType == kSystemIndex) {
    name = indicator.GetExpNameWithVariable(line);
  } else if (indicator.IndexType != kIndicatorIndex || !indicator.ExpName[line].IsEmpty()) {
    name = indicator.GetExpName(line);
  }
  const std::string text = OneLine(InUtf8(name));
  return text.empty() ? OneLine(InUtf8(indicator.Expression[line])) : text;
}

std::string ShownIndicator(const SIndex &indicator) {
  return std::string(KindOfType(indicator.IndexType).word) + " " + Quoted(InUtf8(indicator.IndexName));
}

}  // namespace trovenu::tool
