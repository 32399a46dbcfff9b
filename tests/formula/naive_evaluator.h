#pragma once

#include <map>
#include <string>

#include "tests/formula/bars.h"

namespace trovenu::tests {

/// Evaluates formulas of data words, numbers, variables and operators the plain way: every value is a copy of
/// its own, taken where the text has it.
class NaiveEvaluator {
 public:
  explicit NaiveEvaluator(const Bars &bars) : bars_(bars) {}

  /// The value of a sound text, a number widened over close.
  SVector Calculate(const std::string &text);

 private:
  void SkipBlanks();
  bool Takes(const char *text);
  std::string Word();
  SVector Logic();
  SVector Comparison();
  SVector Sum();
  SVector Product();
  SVector Primary();

  const Bars &bars_;
  const char *at_ = nullptr;
  std::map<std::string, SVector> variables_;
};

}  // namespace trovenu::tests
