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
  FormulaFault fault;
  fault.message = OneLine(Utf8FromCodePage(calc.errorText.c_str(), nullptr));
  const std::size_t position =
      std::min(codePage.size(), static_cast<std::size_t>(std::max(0, calc.errorPosition)));
  const std::string before = Utf8Before(codePage, position);
  fault.lineNumber = 1 + static_cast<int>(std::count(before.begin(), before.end(), '\n'));
  const std::size_t lastFeed = before.rfind('\n');
  const std::size_t begin = std::min(formula.size(), lastFeed == before.npos ? 0 : lastFeed + 1);
  fault.line = formula.substr(begin, std::min(formula.find('\n', begin), formula.size()) - begin);
  if (fault.line.ends_with('\r')) fault.line.pop_back();
  std::replace(fault.line.begin(), fault.line.end(), '\t', ' ');
  fault.column = DisplayWidth(std::string_view(before).substr(std::min(begin, before.size())));
  return fault;
}

}  // namespace

std::string FormulaFault::OneLine() const {
  return message + " (line " + std::to_string(lineNumber) + ", column " + std::to_string(column + 1) + ")";
}

FormulaEngine::FormulaEngine(Bars &bars) : bars_(bars) {
  calc_.SetVariable(bars[BarField::Close], bars[BarField::Open], bars[BarField::High], bars[BarField::Low],
                    bars[BarField::Volume], bars[BarField::Date], bars[BarField::OpenInterest],
                    bars[BarField::Amount]);
}

SVector FormulaEngine::Evaluate(const std::string &formula, std::optional<FormulaFault> &fault) {
  bool ok = true;
  const std::string codePage = CodePageFromUtf8(formula, &ok);
  if (!ok) {
    throw Failure("formula " + Quoted(formula) + ": " +
                  (IsUtf8(formula) ? "has a character that is not in the Korean code page"
                                   : "expected UTF-8, found other bytes"));
  }
  calc_.SetExpression(codePage.c_str());
  calc_.columnsRead = 0;
  SVector result = calc_.Calculate();
  fault.reset();
  if (calc_.errorCount > 0) {
    fault = DescribeFault(calc_, formula, codePage);
  } else {
    CheckColumns(formula);
  }
  return result;
}

SVector FormulaEngine::Evaluate(const std::string &formula) {
  std::optional<FormulaFault> fault;
  SVector result = Evaluate(formula, fault);
  if (fault) throw Failure("formula " + Quoted(OneLine(formula)) + ": " + fault->OneLine());
  return result;
}

void FormulaEngine::CheckColumns(const std::string &formula) const {
  for (int i = 0; i < kSeriesFields; ++i) {
    const unsigned bit = 1U << i;
    if ((calc_.columnsRead & bit) == 0 || (bars_.present & bit) != 0) continue;
    throw FailureAt(bars_.name, bars_.headerLine,
                    "expected a column " + FieldName(static_cast<BarField>(i)) + ", which the formula " +
                        Quoted(OneLine(formula)) + " reads");
  }
}

}  // namespace trovenu::tool
