// The lines of docs/search.md are what the two paths give.

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <iomanip>
#include <sstream>
#include <string>
#include <vector>

#include "tests/formula/engine.h"
#include "trovenu/formula/postfix/carried.h"
#include "trovenu/formula/user_function_list.h"
#include "trovenu/formula/words.h"
#include "trovenu/platform/code_page.h"

namespace trovenu::tests {
namespace {

constexpr const char *kPage = TROVENU_SOURCE_DIR "/docs/search.md";

struct Row {
  int line;
  std::string shape;
  std::string formula;
  std::string values[2];
};

struct Page {
  Bars bars;
  SFunctionList functions;
  std::vector<Row> differences;
  std::vector<Row> runs;
};

std::string Unquoted(const std::string &cell) {
  const std::size_t first = cell.find('`');
  return cell.substr(first + 1, cell.rfind('`') - first - 1);
}

Row ReadRow(const std::string &line, int number) {
  std::vector<std::string> cells;
  std::istringstream in(line);
  for (std::string cell; std::getline(in, cell, '|');) cells.push_back(cell);
  return {number, cells.at(1), Unquoted(cells.at(2)), {Unquoted(cells.at(3)), Unquoted(cells.at(4))}};
}

Page ReadPage() {
  Page page;
  std::ifstream in(kPage);
  std::string block;
  bool isRuns = false;
  int number = 0;
  for (std::string line; std::getline(in, line);) {
    ++number;
    if (line.starts_with("```")) {
      block = line.substr(3);
    } else if (block == "bars") {
      std::istringstream words(line);
      std::string column;
      words >> column;
      for (double value = 0; words >> value;) page.bars.Column(column)->Add(value);
    } else if (block == "functions") {
      std::string text = CodePageFromUtf8(line, nullptr);
      page.functions.SetExpressionWithVariable(text.data());
    } else if (line.starts_with("| Shape")) {
      isRuns = line.find("First run") != line.npos;
    } else if (line.starts_with("| ") && !line.starts_with("| ---")) {
      (isRuns ? page.runs : page.differences).push_back(ReadRow(line, number));
    }
  }
  return page;
}

std::string ValueText(const SVector &series, int i) {
  if (i < series.GetStartIndex()) return "-";
  if (std::isnan(series[i])) return "nan";
  std::ostringstream text;
  text << std::setprecision(8) << series[i];
  return text.str();
}

std::string ValuesText(const SVector &series) {
  std::string text;
  for (int i = 0; i < series.GetSize(); ++i) text += (i > 0 ? " " : "") + ValueText(series, i);
  return text;
}

std::string CodePageFormula(const Row &row) {
  std::string formula = CodePageFromUtf8(row.formula, nullptr);
  const std::size_t dots = formula.find("...");
  if (dots == formula.npos) return formula;
  std::string sum = "c";
  for (int i = 1; i < 60; ++i) sum += "+c";
  return sum;
}

// An engine with the page's bars and functions, which has compiled the formula.
struct PageEngine : Engine {
  PageEngine(Page &page, const Row &row) : Engine(page.bars) {
    calc.SetFunction(&page.functions);
    calc.SetExpression(CodePageFormula(row).c_str());
  }
};

TEST(SearchPage, DifferencesAreAsShown) {
  Page page = ReadPage();
  EXPECT_GT(page.differences.size(), 25U);
  for (const Row &row : page.differences) {
    PageEngine direct(page, row);
    const SVector expected = direct.calc.Calculate();
    PageEngine compiled(page, row);
    compiled.calc.InfixToPostFix();
    const std::string left = direct.calc.errorCount > 0 ? "error" : ValuesText(expected);
    const std::string right = ValuesText(compiled.calc.CalcOp(nullptr));
    EXPECT_EQ(row.values[0], left) << kPage << ":" << row.line;
    EXPECT_EQ(row.values[1], right) << kPage << ":" << row.line;
    EXPECT_NE(FindNotCarried(CodePageFormula(row).c_str(), &page.functions).reason == nullptr, left != right)
        << row.formula;
  }
}

TEST(SearchPage, RunsAreAsShown) {
  Page page = ReadPage();
  EXPECT_EQ(page.runs.size(), 2U);
  for (const Row &row : page.runs) {
    PageEngine compiled(page, row);
    compiled.calc.InfixToPostFix();
    for (const std::string &values : row.values) {
      EXPECT_EQ(values, ValuesText(compiled.calc.CalcOp(nullptr))) << kPage << ":" << row.line;
    }
  }
}

TEST(SearchPage, NamesEveryWordThatIsDropped) {
  std::string shapes;
  for (const Row &row : ReadPage().differences) shapes += row.shape;
  for (const Word &word : Words()) {
    const bool isCall = word.family == WordFamily::Vector || word.family == WordFamily::Time;
    const std::string quoted = "`" + Utf8FromCodePage(word.text, nullptr) + "`";
    if (!isCall || FindOperation(word.function) != nullptr) continue;
    EXPECT_NE(shapes.find(quoted), std::string::npos) << quoted;
  }
}

}  // namespace
}  // namespace trovenu::tests
