#include "tools/trovenu/backtest_rules.h"

#include <algorithm>

#include "tools/trovenu/failure.h"
#include "tools/trovenu/indicator_lines.h"
#include "tools/trovenu/starter_texts.h"
#include "tools/trovenu/terminal_text.h"
#include "trovenu/indicator/starter_set.h"
#include "trovenu/platform/code_page.h"
#include "trovenu/platform/platform.h"

namespace trovenu::tool {

namespace {

SIndex StarterSystem(const SString &name) {
  std::vector<SIndex> entries;
  for (const StarterText &text : StarterTexts()) {
    ParseStarterSet(CodePageFromUtf8(text.text, nullptr), &entries, nullptr);
  }
  std::string names;
  for (const SIndex &entry : entries) {
    if (entry.IndexType != kSystemIndex) continue;
    if (entry.IndexName == name) return entry;
    names += (names.empty() ? "" : ", ") + Utf8FromCodePage(entry.IndexName.c_str(), nullptr);
  }
  throw Failure("no system " + Quoted(name.c_str()) + " in the starter set, which has " + names);
}

SIndex SystemOf(const std::string &typed, const FormulaFolder &folder) {
  const SString name = NameInCodePage(typed, "--system");
  const FormulaKind &kind = KindOfType(kSystemIndex);
  const std::vector<SString> tables = FormulaFolder::Tables(kind);
  const bool anyTable =
      std::ranges::any_of(tables, [](const SString &path) { return FileExist(path.c_str()) != 0; });
  return anyTable ? folder.Read(kind, name) : StarterSystem(name);
}

// Gives formulas variables of their own.
void DeclareVariables(SIndex &rules, const std::vector<std::string> &settings) {
  int count = 0;
  for (const std::string &setting : settings) {
    const SString name = NameInCodePage(setting.substr(0, setting.find('=')), "--set");
    const auto isNamed = [&](const SString &variable) { return variable.CompareNoCase(name.c_str()) == 0; };
    if (std::ranges::any_of(rules.VarName, isNamed)) continue;
    if (count == kVariables) throw Failure("--set: more than " + std::to_string(kVariables) + " variables");
    rules.VarName[count++] = name;
  }
  SetVariables(rules, settings);
}

}  // namespace

SIndex RulesOf(const RuleOptions &options, const FormulaFolder &folder, Bars &bars,
               SFunctionList &functions) {
  SIndex rules;
  if (!options.system.empty()) {
    rules = SystemOf(options.system, folder);
    SetVariables(rules, options.settings);
  } else {
    std::vector<std::string> formulas;
    for (const std::string &formula : options.formulas) {
      formulas.push_back(TrimBlanks(formula).empty() ? "0" : formula);
    }
    rules = IndicatorOf(formulas);
    rules.IndexType = kSystemIndex;
    DeclareVariables(rules, options.settings);
  }
  RequireSound(rules, bars, functions);
  return rules;
}

}  // namespace trovenu::tool
