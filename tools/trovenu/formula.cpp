#include "tools/trovenu/formula.h"

#include <algorithm>

#include "tools/trovenu/failure.h"
#include "tools/trovenu/terminal_text.h"
#include "trovenu/platform/code_page.h"
#include "trovenu/support/korean.h"

namespace trovenu::tool {

namespace {

// The code-page text up to about `bytes`, in UTF-8; no character is split.
std::string Utf8Before(const std::string &codePage, std::size_t bytes) {
  return ToUtf8(std::string_view(codePage).substr(0, CutAtCharacter(codePage.c_str(), bytes)));
}

FormulaFault DescribeFault(const SCalc &calc, const std::string &formula, const std::string &codePage) {
  return {OneLine(Utf8FromCodePage(calc.errorText.c_str(), nullptr)),
          PlaceIn(formula, codePage, static_cast<std::size_t>(std::max(0, calc.errorPosition)))};
}

}  // namespace

FormulaPlace PlaceIn(const std::string &formula, const std::string &codePage, std::size_t position) {
  FormulaPlace place;
  const std::string before = Utf8Before(codePage, std::min(codePage.size(), position));
  place.lineNumber = 1 + static_cast<int>(std::count(before.begin(), before.end(), '\n'));
  const std::size_t lastFeed = before.rfind('\n');
  const std::size_t begin = std::min(formula.size(), lastFeed == before.npos ? 0 : lastFeed + 1);
  place.line = formula.substr(begin, std::min(formula.find('\n', begin), formula.size()) - begin);
  if (place.line.ends_with('\r')) place.line.pop_back();
  std::replace(place.line.begin(), place.line.end(), '\t', ' ');
  place.column = DisplayWidth(std::string_view(before).substr(std::min(begin, before.size())));
  return place;
}

std::string FormulaPlace::InWords() const {
  return "(line " + std::to_string(lineNumber) + ", column " + std::to_string(column + 1) + ")";
}

std::string FormulaPlace::Shown() const { return line + "\n" + std::string(column, ' ') + "^\n"; }

std::string FormulaFault::OneLine() const { return message + " " + place.InWords(); }

std::string FormulaInCodePage(const std::string &formula) {
  bool ok = true;
  std::string codePage = CodePageFromUtf8(formula, &ok);
  if (!ok) {
    throw Failure("formula " + Quoted(formula) + ": " +
                  (IsUtf8(formula) ? "has a character that is not in the Korean code page"
                                   : "expected UTF-8, found other bytes"));
  }
  return codePage;
}

FormulaEngine::FormulaEngine(Bars &bars, SFunctionList *functions) : bars_(bars) {
  bars.BindTo(calc_);
  calc_.SetFunction(functions);
}

SVector FormulaEngine::Evaluate(const std::string &formula, std::optional<FormulaFault> &fault) {
  const std::string codePage = FormulaInCodePage(formula);
  calc_.SetExpression(codePage.c_str());
  calc_.columnsRead = 0;
  SVector result = calc_.Calculate();
  fault.reset();
  if (calc_.errorCount > 0) {
    fault = DescribeFault(calc_, formula, codePage);
  } else {
    RequireColumns(bars_, calc_.columnsRead, formula);
  }
  return result;
}

SVector FormulaEngine::Evaluate(const std::string &formula) {
  std::optional<FormulaFault> fault;
  SVector result = Evaluate(formula, fault);
  if (fault) throw Failure("formula " + Quoted(OneLine(formula)) + ": " + fault->OneLine());
  return result;
}

void RequireColumns(const Bars &bars, unsigned columnsRead, const std::string &formula) {
  for (int i = 0; i < kSeriesFields; ++i) {
    const unsigned bit = 1U << i;
    if ((columnsRead & bit) == 0 || (bars.present & bit) != 0) continue;
    throw FailureAt(bars.name, bars.headerLine,
                    "expected a column " + FieldName(static_cast<BarField>(i)) + ", which the formula " +
                        Quoted(OneLine(formula)) + " reads");
  }
}

}  // namespace trovenu::tool
