// The examples of docs/language.md are what they say.

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <sstream>
#include <string>

#include "tests/formula/case_file.h"
#include "trovenu/platform/code_page.h"

namespace trovenu::tests {
namespace {

constexpr const char *kPage = TROVENU_SOURCE_DIR "/docs/language.md";

struct Example {
  int line;
  std::string text;
};

// The blocks of the page, each as a case whose start index is the number of bars without a value.
std::vector<Example> Examples() {
  std::vector<Example> examples;
  std::ifstream in(kPage);
  std::string line;
  bool inside = false;
  for (int number = 1; std::getline(in, line); ++number) {
    if (line == "```case") {
      inside = true;
      examples.push_back({number, ""});
    } else if (line == "```") {
      inside = false;
    } else if (inside) {
      if (line.starts_with("values")) {
        std::istringstream words(line);
        std::string word;
        int start = 0;
        while (words >> word) start += word == "-";
        examples.back().text += "start " + std::to_string(start) + "\n";
      }
      examples.back().text += line + "\n";
    }
  }
  return examples;
}

TEST(LanguagePage, ExamplesGiveTheirValues) {
  const std::vector<Example> examples = Examples();
  EXPECT_GT(examples.size(), 25U);
  for (const Example &example : examples) {
    std::istringstream in(example.text);
    const CaseFile file = ReadCases(in, BarSets());
    for (const std::string &problem : file.problems) {
      ADD_FAILURE_AT(kPage, example.line) << problem;
    }
    for (const Case &expected : file.cases) {
      SCOPED_TRACE(expected.formulas.front());
      Bars bars = expected.bars;
      SCalc calc;
      bars.Bind(calc);
      calc.SetExpression(CodePageFromUtf8(expected.formulas.front(), nullptr).c_str());
      const SVector result = calc.Calculate();
      EXPECT_EQ(Utf8FromCodePage(calc.errorText.c_str(), nullptr), expected.message);
      EXPECT_EQ(result.GetStartIndex(), expected.start);
      if (!expected.message.empty()) continue;
      EXPECT_EQ(result.GetSize(), expected.start + static_cast<int>(expected.values.size()));
      for (std::size_t i = 0; i < expected.values.size(); ++i) {
        const double value = result[expected.start + static_cast<int>(i)];
        EXPECT_LE(std::fabs(value - expected.values[i]), expected.tolerance * std::fabs(expected.values[i]));
      }
    }
  }
}

}  // namespace
}  // namespace trovenu::tests
