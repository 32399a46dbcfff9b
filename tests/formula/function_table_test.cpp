// What holds for every function of the language, whatever it is given. The calls are made from the rows of
// the table, so a new function takes part by itself.

#include "trovenu/formula/function_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "tests/formula/bars.h"
#include "tests/support/series_tools.h"
#include "trovenu/formula/words.h"
#include "trovenu/support/block_pool.h"
#include "trovenu/support/korean.h"

namespace trovenu::tests {
namespace {

// What the arguments are called in the rows.
constexpr std::string_view kSeriesNames[] = {"x", "y", "a", "b", "cond", "d"};
constexpr std::string_view kNumberNames[] = {"n", "k", "step", "maximum", "percent", "strength", "depth"};

struct Form {
  std::string formula;
  // The names of the arguments; "method" and "unit" stand for words.
  std::vector<std::string> arguments;
  bool HasNumbers() const {
    return std::ranges::any_of(arguments, [](const std::string &name) {
      return std::ranges::find(kNumberNames, name) != std::end(kNumberNames);
    });
  }
};

std::string Joined(const std::vector<std::string> &arguments) {
  std::string text;
  for (const std::string &argument : arguments) text += (text.empty() ? "" : ", ") + argument;
  return text;
}

// "x, n[, method]" as a list, with the optional ones or without.
std::vector<std::string> ArgumentNames(std::string text, bool hasOptional) {
  if (const std::size_t bracket = text.find('['); bracket != std::string::npos) {
    text = hasOptional ? text.erase(bracket, 1).substr(0, text.size() - 1) : text.substr(0, bracket);
  }
  std::vector<std::string> names;
  for (std::size_t begin = 0; begin < text.size();) {
    const std::size_t end = std::min(text.find(", ", begin), text.size());
    names.push_back(text.substr(begin, end - begin));
    if (names.back() == "...") names.back() = "a";
    begin = end + 2;
  }
  return names;
}

void AddForms(const std::string &word, const Function &function, std::vector<Form> &forms) {
  if (function.reading == Reading::None) {
    forms.push_back({word, {}});
    forms.push_back({word + "(n)", {"n"}});
    return;
  }
  if (function.reading == Reading::TimeUnit) {
    for (const char *unit : {"hour", "day", "month", "year", "0", "1", "3", "2147483647", "9999999999"}) {
      forms.push_back({word + "(" + unit + ")", {"unit"}});
    }
    return;
  }
  const std::string arguments = function.arguments;
  for (const bool hasOptional : {false, true}) {
    if (hasOptional && arguments.find('[') == std::string::npos) break;
    std::vector<std::string> names = ArgumentNames(arguments, hasOptional);
    if (!names.empty() && names.back() == "method") {
      names.pop_back();
      for (const char *method : {"단순"_kr, "지수"_kr, "가중"_kr, "기하"_kr, "조화"_kr}) {
        forms.push_back({word + "(" + Joined(names) + ", " + method + ")", names});
      }
      continue;
    }
    forms.push_back({word + "(" + Joined(names) + ")", names});
    // One more argument shifts the result.
    names.push_back("n");
    forms.push_back({word + "(" + Joined(names) + ")", names});
  }
}

// Every function, by its first spelling, in each of its forms.
std::vector<Form> AllForms() {
  std::vector<Form> forms;
  std::set<FunctionId> seen;
  for (const Word &word : Words()) {
    const Function *function = FindFunction(word.function);
    const bool isName = word.family <= WordFamily::Method && word.function != FunctionId::Caret;
    if (function != nullptr && isName && seen.insert(word.function).second) {
      AddForms(word.text, *function, forms);
    }
  }
  return forms;
}

// Leaves blocks behind that hold `junk`, for the next series to take.
void LitterBlocks(double junk) {
  std::vector<SVector> series;
  for (const int size : {3, 9, 11, 13, 15, 17, 21, 25, 33}) {
    for (int i = 0; i < 8; ++i) {
      series.emplace_back(size);
      series.back() = junk;
    }
  }
}

struct Scenario {
  const char *name;
  Bars bars;
  SVector x;
  SVector y;
  bool isBound = true;
};

SVector Wave(int size, int start) {
  SVector series(size);
  for (int i = 0; i < size; ++i) series[i] = 1.5 + i % 5 - i % 3;
  series.SetStartIndex(start);
  return series;
}

SVector Dates(int size, int start) {
  SVector dates(size);
  for (int i = 0; i < size; ++i) dates[i] = 20240102090000.0 + i / 4 * 1000000 + i % 4 * 10000;
  dates.SetStartIndex(start);
  return dates;
}

Scenario Alike(const char *name, int size, int start) {
  Scenario scenario{name, {}, Wave(size, start), Wave(size, start)};
  for (SVector *series : scenario.bars.Columns()) *series = Wave(size, start);
  scenario.bars.date = Dates(size, start);
  return scenario;
}

Scenario OfDifferentSizes() {
  Scenario scenario{"different sizes", {}, Wave(13, 2), Wave(22, 5)};
  int size = 23;
  for (SVector *series : scenario.bars.Columns()) {
    *series = Wave(size, size % 4);
    size = size > 10 ? size - 5 : 30 - size;
  }
  scenario.bars.date = Dates(11, 1);
  return scenario;
}

Scenario WithoutNumbers() {
  Scenario scenario = Alike("no numbers and infinite ones", 24, 1);
  const double kOdd[] = {kNaN, kInfinity, -kInfinity, 1e308, -1e308, 5e-324, -0.0};
  int i = 0;
  const auto spoil = [&](SVector &series) {
    for (int bar = i % 3; bar < series.GetSize(); bar += 3) series[bar] = kOdd[++i % 7];
  };
  for (SVector *series : scenario.bars.Columns()) spoil(*series);
  spoil(scenario.x);
  spoil(scenario.y);
  return scenario;
}

Scenario OfNumbers() {
  Scenario scenario = Alike("numbers for series", 24, 2);
  scenario.x = SVector(1.5);
  scenario.y = SVector(0.0);
  return scenario;
}

Scenario Unbound() {
  Scenario scenario{"unbound", {}, Wave(24, 2), SVector()};
  scenario.isBound = false;
  return scenario;
}

std::vector<Scenario> AllScenarios() {
  return {
      Alike("ordinary", 24, 2),
      Alike("empty", 0, 0),
      Alike("empty with a start index", 0, 3),
      Alike("one bar", 1, 0),
      Alike("start beyond the size", 24, 30),
      Alike("no valid bar", 24, kNoValidBar),
      Alike("negative start", 24, -3),
      OfDifferentSizes(),
      WithoutNumbers(),
      OfNumbers(),
      Unbound(),
  };
}

class CallOf {
 public:
  CallOf(const Scenario &scenario, const Form &form, double number) : bars_(scenario.bars), form_(form) {
    if (scenario.isBound) bars_.Bind(calc_);
    for (const std::string &name : form.arguments) {
      if (std::ranges::find(kNumberNames, name) != std::end(kNumberNames)) {
        Set(name, number);
      } else if (name == "d") {
        Set(name, bars_.date);
      } else if (std::ranges::find(kSeriesNames, name) != std::end(kSeriesNames)) {
        Set(name, name == "x" || name == "a" ? scenario.x : scenario.y);
      } else if (name != "unit") {
        ADD_FAILURE() << "an argument that this test has no value for: " << name;
      }
    }
  }

  SVector Calculate() {
    calc_.SetExpression(form_.formula.c_str());
    return calc_.Calculate();
  }
  SVector Calculate(int start) {
    calc_.SetExpression(form_.formula.c_str());
    return calc_.Calculate(start);
  }

 private:
  void Set(const std::string &name, const SVector &value) { calc_.Insert(name.c_str())->value = value; }

  Bars bars_;
  const Form &form_;
  SCalc calc_;
};

void ExpectSane(const SVector &result) {
  EXPECT_GE(result.GetSize(), 0);
  EXPECT_LE(result.GetSize(), 40);
  EXPECT_GE(result.GetStartIndex(), -5);
  EXPECT_LE(result.GetStartIndex(), kNoValidBar);
}

// All elements count, those below the start index too.
testing::AssertionResult SameElements(const SVector &a, const SVector &b) {
  if (a.GetSize() != b.GetSize() || a.GetStartIndex() != b.GetStartIndex()) {
    return testing::AssertionFailure() << "size " << a.GetSize() << " and " << b.GetSize() << ", start "
                                       << a.GetStartIndex() << " and " << b.GetStartIndex();
  }
  for (int i = 0; i < a.GetSize(); ++i) {
    if (!SameNumber(a[i], b[i])) return testing::AssertionFailure() << "bar " << i << ": " << a[i];
  }
  return testing::AssertionSuccess();
}

TEST(FunctionTable, EveryFunctionIsSafeAndLeavesNoElementUnset) {
  const std::vector<Form> forms = AllForms();
  EXPECT_GT(forms.size(), 120U);
  for (const Scenario &scenario : AllScenarios()) {
    for (const Form &form : forms) {
      std::vector<double> numbers = {0};
      if (form.HasNumbers()) numbers = {-1, 0, 1, 2.5, 2147483647, -2147483648.0, 1e300, kNaN};
      for (const double number : numbers) {
        SCOPED_TRACE(std::string(scenario.name) + ": " + form.formula + " with " + std::to_string(number));
        LitterBlocks(-7e77);
        const SVector whole = CallOf(scenario, form, number).Calculate();
        const SVector tail = CallOf(scenario, form, number).Calculate(6);
        ExpectSane(whole);
        ExpectSane(tail);
        // What nothing has written would differ now.
        LitterBlocks(9e99);
        EXPECT_TRUE(SameElements(CallOf(scenario, form, number).Calculate(), whole));
        EXPECT_TRUE(SameElements(CallOf(scenario, form, number).Calculate(6), tail));
      }
      if (HasFailure()) return;
    }
  }
}

// A thread of its own starts without blocks, so what it takes from the system is what it holds at once. The
// swing highs of a ZigZag line wait while its swing lows are found.
TEST(FunctionTable, EveryFunctionHoldsTwoSeriesAtMostBesidesItsArguments) {
  const Scenario scenario = Alike("many bars", 5000, 2);
  for (const Form &form : AllForms()) {
    OnFreshThread([&] {
      CallOf call(scenario, form, 3);
      const unsigned long long before = AllocatedBlockCount();
      const SVector result = call.Calculate();
      const bool isZigZag = form.formula.starts_with("ZigZag");
      EXPECT_LE(AllocatedBlockCount() - before, isZigZag ? 3U : 2U) << form.formula;
    });
  }
}

// Whichever block is refused: what comes out is sound, and the same object computes what it should next time.
TEST(FunctionTable, EveryFunctionSurvivesRefusedMemory) {
  const ErrorTrap trap;
  const Scenario scenario = Alike("some bars", 24, 2);
  for (const Form &form : AllForms()) {
    SCOPED_TRACE(form.formula);
    for (const int start : {0, 20}) {
      CallOf call(scenario, form, 3);
      const SVector expected = call.Calculate(start);
      bool refused = true;
      for (int nth = 1; refused; ++nth) {
        const unsigned long long refusals = RefusedBlockCount();
        FailBlockAllocation(nth);
        ExpectSane(call.Calculate(start));
        FailBlockAllocation(0);
        refused = RefusedBlockCount() != refusals;
        EXPECT_TRUE(SameElements(call.Calculate(start), expected)) << "block " << nth;
      }
    }
    if (HasFailure()) return;
  }
}

}  // namespace
}  // namespace trovenu::tests
