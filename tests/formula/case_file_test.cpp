#include "tests/formula/case_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

#include "trovenu/formula/words.h"
#include "trovenu/platform/code_page.h"
#include "trovenu/platform/code_page_text.h"

namespace trovenu::tests {
namespace {

const std::filesystem::path kFolder = TROVENU_SOURCE_DIR "/tests/cases";

std::vector<std::string> CaseFileNames() {
  std::vector<std::string> names;
  for (const auto &entry : std::filesystem::directory_iterator(kFolder)) {
    if (entry.path().extension() == ".case") names.push_back(entry.path().stem().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::string PathOf(const std::string &name) { return (kFolder / (name + ".case")).string(); }

CaseFile LoadCases(const std::string &name) {
  static const BarSets sets = [] {
    std::ifstream in(kFolder / "bars.txt");
    return ReadBarSets(in);
  }();
  std::ifstream in(PathOf(name));
  return ReadCases(in, sets);
}

bool IsNear(double actual, double expected, double tolerance) {
  // A zero has no sign here.
  if (SameNumber(actual, expected) || actual == expected) return true;
  return std::fabs(actual - expected) <= tolerance * std::fabs(expected);
}

std::string Print(const SVector &series) {
  std::ostringstream out;
  out.precision(17);
  for (int i = 0; i < series.GetSize(); ++i) {
    if (i < series.GetStartIndex()) {
      out << " -";
    } else {
      out << ' ' << series[i];
    }
  }
  return out.str();
}

bool SameSeries(const SVector &a, const SVector &b) {
  if (a.GetSize() != b.GetSize() || a.GetStartIndex() != b.GetStartIndex()) return false;
  for (int i = 0; i < a.GetSize(); ++i) {
    if (!SameNumber(a[i], b[i])) return false;
  }
  return true;
}

// What of a formula's outcome differs from the case; empty if nothing does.
std::string Differences(const Case &expected, const std::string &formula) {
  bool isKorean = true;
  const std::string text = CodePageFromUtf8(formula, &isKorean);
  if (!isKorean) return "a character outside the code page";
  Bars bars = expected.bars;
  SCalc calc;
  bars.Bind(calc);
  calc.SetExpression(text.c_str());
  const SVector result = calc.Calculate();

  std::ostringstream out;
  const std::string message = calc.errorCount > 0 ? Utf8FromCodePage(calc.errorText.c_str(), nullptr) : "";
  const std::string firstLine = message.substr(0, message.find('\n'));
  if (firstLine != expected.message) out << "message: " << message << '\n';
  if (result.GetStartIndex() != expected.start) out << "start: " << result.GetStartIndex() << '\n';
  if (expected.size >= 0 && result.GetSize() != expected.size) out << "size: " << result.GetSize() << '\n';
  if ((calc.fullCalc != 0) != expected.full) out << "full: " << calc.fullCalc << '\n';
  bool isNear = true;
  for (std::size_t i = 0; i < expected.values.size(); ++i) {
    isNear = isNear &&
             IsNear(result[expected.start + static_cast<int>(i)], expected.values[i], expected.tolerance);
  }
  if (!isNear) out << "values:" << Print(result) << '\n';
  // Whatever a formula computes, the bars that it reads stay as they are.
  Bars before = expected.bars;
  const std::vector<SVector *> now = bars.Columns();
  const std::vector<SVector *> old = before.Columns();
  for (std::size_t i = 0; i < now.size(); ++i) {
    if (!SameSeries(*now[i], *old[i])) out << "changed: bound series " << i << '\n';
  }
  return out.str();
}

class CaseFiles : public testing::TestWithParam<std::string> {};

TEST_P(CaseFiles, GiveTheirValues) {
  const CaseFile file = LoadCases(GetParam());
  for (const std::string &problem : file.problems) ADD_FAILURE() << PathOf(GetParam()) << ":" << problem;
  EXPECT_FALSE(file.cases.empty());
  for (const Case &expected : file.cases) {
    for (const std::string &formula : expected.formulas) {
      const std::string differences = Differences(expected, formula);
      if (!differences.empty()) {
        ADD_FAILURE_AT(PathOf(GetParam()).c_str(), expected.line) << formula << "\n" << differences;
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Folder, CaseFiles, testing::ValuesIn(CaseFileNames()),
                         [](const auto &file) { return file.param; });

// The words of a text in code-page bytes, in small letters.
void CollectWords(const std::string &text, std::set<std::string> &words) {
  const auto belongs = [](char c) { return isHangul(c) || IsLetterAscii(c) || IsDigitAscii(c); };
  for (std::size_t i = 0; i < text.size();) {
    std::string word;
    for (; i < text.size() && belongs(text[i]); ++i) word += ToLowerAscii(text[i]);
    if (word.empty()) ++i;
    words.insert(word);
  }
}

TEST(CaseFileFolder, UsesEverySpellingOfTheLanguage) {
  std::set<std::string> used = {"^"};  // No formula can spell this one.
  for (const std::string &name : CaseFileNames()) {
    for (const Case &expected : LoadCases(name).cases) {
      for (const std::string &formula : expected.formulas)
        CollectWords(CodePageFromUtf8(formula, nullptr), used);
    }
  }
  for (const Word &word : Words()) {
    std::string text;
    for (const char *c = word.text; *c != '\0'; ++c) text += ToLowerAscii(*c);
    EXPECT_TRUE(used.count(text)) << Utf8FromCodePage(word.text, nullptr);
  }
}

CaseFile ReadText(const std::string &text) {
  std::istringstream in(text);
  return ReadCases(in, BarSets());
}

TEST(CaseFileReader, UnderstandsACase) {
  const CaseFile file = ReadText(
      "# derivation\nformula  c(1)\nformula 종가(1)\nclose  1 2 1/4\nfrom 1\nfull 1\nstart 2\nvalues - - "
      "-2.5e1\n"
      "\n\n# another\nformula c(-1)\nmessage no good\n");
  ASSERT_EQ(file.cases.size(), 2U);
  EXPECT_TRUE(file.problems.empty());
  Case expected = file.cases[0];
  EXPECT_EQ(expected.formulas, (std::vector<std::string>{"c(1)", "종가(1)"}));
  EXPECT_TRUE(SameSeries(expected.bars.close, Series({1, 2, 0.25}, 1)));
  EXPECT_EQ(expected.start, 2);
  EXPECT_EQ(expected.size, 3);
  EXPECT_TRUE(expected.full);
  EXPECT_EQ(expected.values, (std::vector<double>{-25}));
  EXPECT_EQ(file.cases[1].message, "no good");
}

TEST(CaseFileReader, RefusesWhatItDoesNotKnow) {
  for (const char *text : {
           "start 0\nvalues 1\n",                         // no formula
           "formula c\nvalues 1\n",                       // no start
           "formula c\nstart 0\nvalues - 1\n",            // a bar too few
           "formula c\nstart 1\nvalues 1 -\n",            // a bar without a value
           "formula c\nstart 0\nsize 2\nvalues 1\n",      // two sizes
           "formula c\nstart 0\n",                        // no values
           "formula c\nstart none\n",                     // no size
           "formula c\nstart 0\nvalues 1x\n",             // no number
           "formula c\nstart 0\nvalues 1\nbars other\n",  // no such bars
           "formula c\nstart 0\nvalues 1\nfoo 1\n",       // no such key
           "formula c\nstart 0\nmessage m\n",             // both an error and a result
       }) {
    EXPECT_FALSE(ReadText(text).problems.empty()) << text;
  }
}

}  // namespace
}  // namespace trovenu::tests
