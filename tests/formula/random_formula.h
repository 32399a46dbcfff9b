#pragma once

#include <cstdint>
#include <functional>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "trovenu/formula/function_id.h"
#include "trovenu/formula/user_function_list.h"

namespace trovenu::tests {

/// Makes formulas without a fault from all words of the language, alike for the same seed.
///
/// Kept out: what may make a tail differ from the whole by rule. A math function never leaves its domain, no
/// shift looks ahead, periods and shifts are numbers, numbers are no arguments where a series of one bar
/// would come of them, and `RSquared` sees no flat window.
class RandomFormula {
 public:
  enum class Words {
    /// Data words, variables and operators.
    Operators,
    /// And every call that leaves `SCalc::fullCalc` clear, user functions among them.
    TailCalls,
    /// And those that need all bars; some of their results have another size than close.
    AllCalls,
  };

  RandomFormula(std::uint32_t seed, Words words)
      : RandomFormula([random = std::mt19937(seed)]() mutable { return random(); }, words) {}
  /// Every choice is the rest of a number of `choose`, which must come to zeros where it has no end.
  RandomFormula(std::function<std::uint_fast32_t()> choose, Words words)
      : choose_(std::move(choose)), words_(words) {}

  /// The next formula in code-page bytes, of one to four statements.
  std::string Next();
  /// The functions that the formulas may call.
  static SFunctionList UserFunctions();
  /// The built-in functions that have been called so far.
  const std::set<FunctionId> &Used() const { return used_; }

 private:
  int UpTo(int n) { return static_cast<int>(choose_() % static_cast<unsigned>(n)); }
  bool OneIn(int n) { return UpTo(n) == 0; }
  std::string Pick(std::initializer_list<const char *> texts);
  std::string Spelling(FunctionId function);
  std::string Series(int depth);
  std::string Number();
  std::string Period();
  std::string Leaf();
  std::string Binary(int depth);
  std::string Assignment(int depth);
  std::string CallOf(int depth);
  std::string UserCall(int depth);
  std::string Filled(const std::string &form, int depth);
  std::string Unit();

  std::function<std::uint_fast32_t()> choose_;
  Words words_;
  int calls_ = 0;
  std::vector<std::string> seriesNames_;
  std::vector<std::string> numberNames_;
  std::set<FunctionId> used_;
};

}  // namespace trovenu::tests
