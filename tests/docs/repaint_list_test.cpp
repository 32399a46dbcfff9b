// The words that docs/language.md says can repaint are those that do.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <random>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "tests/formula/bars.h"
#include "tests/formula/random_formula.h"
#include "trovenu/formula/function_table.h"
#include "trovenu/formula/words.h"
#include "trovenu/platform/code_page.h"
#include "trovenu/support/korean.h"

namespace trovenu::tests {
namespace {

constexpr int kSeries = 100;
constexpr int kBars = 40;
constexpr int kCallsOnASeries = 8;

// Values that never change as bars arrive: the arguments of the words under test.
constexpr const char *kArguments[] = {"c", "o", "h", "v", "d",  "c > o", "v > 700", "c(1)", "0.5",
                                      "1", "2", "3", "5", "-1", "-2",    "d - 1",   "(-c)"};
constexpr const char *kUnits[] = {"hour", "day", "month", "year", "2", "3"};

class Chart {
 public:
  explicit Chart(unsigned seed) : random_(seed) {
    double price = 100.0;
    double days = 0.0;
    for (int i = 0; i < kBars; ++i) {
      const double open = price;
      price *= 0.95 + 0.1 * Share();
      all_.open.Add(open);
      all_.close.Add(price);
      all_.high.Add(std::max(open, price) * (1.0 + 0.03 * Share()));
      all_.low.Add(std::min(open, price) * (1.0 - 0.03 * Share()));
      all_.volume.Add(std::floor(1000.0 * Share()));
      all_.openInterest.Add(std::floor(5000.0 * Share()));
      all_.amount.Add(std::floor(1e6 * Share()));
      // A few bars a day, a few days a month.
      days += Share() < 0.7 ? 0.02 + 0.1 * Share() : 1.0 + 8.0 * Share();
      const int day = static_cast<int>(days);
      const double date = (2023 + day / 336) * 1e4 + (day / 28 % 12 + 1) * 1e2 + day % 28 + 1;
      all_.date.Add(date * 1e6 + std::floor((days - day) * 24.0) * 1e4 + i);
    }
  }

  std::string Argument() { return Any(kArguments); }
  std::string Unit() { return Any(kUnits); }

  // Whether a value that a formula gives for a bar is another one once there are more bars. Where elements
  // are groups of bars, a further element is no change.
  bool Repaints(const std::string &formula, bool countsGroups = false) {
    Bars bars;
    std::vector<SVector *> columns = bars.Columns();
    SVector before;
    for (int i = 0; i < kBars; ++i) {
      for (std::size_t k = 0; k < columns.size(); ++k) columns[k]->Add((*all_.Columns()[k])[i]);
      SCalc calc;
      bars.Bind(calc);
      calc.SetFunction(&functions_);
      calc.SetExpression(formula.c_str());
      SVector now = calc.Calculate();
      const int known = countsGroups ? before.GetSize() : i;
      for (int bar = 0; bar < known; ++bar) {
        const bool had = bar >= before.GetStartIndex() && bar < before.GetSize();
        const bool has = bar >= now.GetStartIndex() && bar < now.GetSize();
        if (had != has || (had && !(before[bar] == now[bar]) && !SameNumber(before[bar], now[bar])))
          return true;
      }
      before = std::move(now);
    }
    return false;
  }

 private:
  double Share() { return static_cast<double>(random_()) / 4294967296.0; }
  template <std::size_t kSize>
  std::string Any(const char *const (&texts)[kSize]) {
    return texts[random_() % kSize];
  }

  std::mt19937 random_;
  SFunctionList functions_ = RandomFormula::UserFunctions();
  Bars all_;
};

// A call, up to its closing parenthesis.
std::string RandomCall(const Word &word, const Function &function, Chart &chart) {
  std::string call = word.text;
  call += "(";
  for (int i = 0; i < function.most; ++i) {
    const bool isMethod = i == 2 && function.reading == Reading::MethodWord;
    const bool isUnit = function.reading == Reading::TimeUnit;
    call += i > 0 ? ", " : "";
    call += isMethod ? "단순"_kr : isUnit ? chart.Unit() : chart.Argument();
  }
  return call;
}

std::set<std::string> WordsThatRepaint() {
  std::set<FunctionId> found;
  for (unsigned seed = 1; seed <= kSeries; ++seed) {
    Chart chart(seed);
    for (const Word &word : Words()) {
      const Function *const function = FindFunction(word.function);
      const bool isCalled = word.family == WordFamily::Vector || word.family == WordFamily::Data ||
                            word.family == WordFamily::Math || word.family == WordFamily::Time;
      if (!isCalled || function == nullptr || found.contains(word.function)) continue;
      for (int i = 0; i < kCallsOnASeries; ++i) {
        const std::string call =
            word.family == WordFamily::Data ? word.text : RandomCall(word, *function, chart) + ")";
        if (!chart.Repaints(call, function->reading == Reading::TimeUnit)) continue;
        found.insert(word.function);
        break;
      }
    }
  }
  std::set<std::string> words;
  for (const Word &word : Words()) {
    if (word.family != WordFamily::UnlistedVector && found.contains(word.function)) {
      words.insert(Utf8FromCodePage(word.text, nullptr));
    }
  }
  return words;
}

// What stands in backquotes in the first column of the section's table.
std::set<std::string> WordsOfThePage() {
  std::set<std::string> words;
  std::ifstream page(TROVENU_SOURCE_DIR "/docs/language.md");
  bool inside = false;
  for (std::string line; std::getline(page, line);) {
    if (line.starts_with("## ")) inside = line == "## What repaints";
    if (!inside || !line.starts_with("| `")) continue;
    const std::string column = line.substr(1, line.find('|', 1) - 1);
    const std::regex quoted("`([^`]+)`");
    for (std::sregex_iterator i(column.begin(), column.end(), quoted), end; i != end; ++i) {
      words.insert((*i)[1]);
    }
  }
  return words;
}

TEST(LanguagePage, ListsTheWordsThatRepaint) { EXPECT_EQ(WordsOfThePage(), WordsThatRepaint()); }

TEST(LanguagePage, SaysThatAnyNegativeShiftRepaints) {
  Chart chart(1);
  EXPECT_FALSE(chart.Repaints("x = c; x(1) + avg(c, 2, 1) + ref(c, 1) + shift(c, 1)"));
  EXPECT_TRUE(chart.Repaints("x = c; x(-1)"));
  const std::set<std::string> listed = WordsOfThePage();
  for (const Word &word : Words()) {
    const Function *const function = FindFunction(word.function);
    if (word.family != WordFamily::Vector || function == nullptr) continue;
    if (function->reading == Reading::OneOrMore || listed.contains(Utf8FromCodePage(word.text, nullptr)))
      continue;
    bool found = false;
    for (int i = 0; i < 200 && !found; ++i) {
      const std::string call = RandomCall(word, *function, chart);
      found = !chart.Repaints(call + ")") && chart.Repaints(call + ", -2)");
    }
    EXPECT_TRUE(found) << Utf8FromCodePage(word.text, nullptr);
  }
}

TEST(LanguagePage, FormulasOfOtherWordsDoNotRepaint) {
  Chart chart(7);
  RandomFormula formulas(7, RandomFormula::Words::TailCalls);
  for (int i = 0; i < 300; ++i) {
    const std::string formula = formulas.Next();
    EXPECT_FALSE(chart.Repaints(formula)) << Utf8FromCodePage(formula, nullptr);
  }
}

}  // namespace
}  // namespace trovenu::tests
