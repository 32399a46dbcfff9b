#pragma once

/// \file
/// A function of the language: how its arguments are read, when it needs all bars, and its rule.

#include <span>

#include "trovenu/formula/function_id.h"
#include "trovenu/formula/operand.h"

namespace trovenu {

class SCalc;

/// How the arguments of a call are read from the text.
enum class Reading : unsigned char {
  /// A word without arguments.
  None,
  /// `least` expressions, one after the other.
  Plain,
  /// x, then "," and a period, or ")".
  OptionalPeriod,
  /// x, then "," and a period.
  RequiredPeriod,
  /// x and a period, then ")" or "," and a method word.
  MethodWord,
  /// Expressions for as long as "," follows; the rule folds the next one into the first.
  OneOrMore,
  /// A unit word or a number of bars; no expression.
  TimeUnit,
};

/// When a call needs all bars, because its value at a bar comes from the bar before.
enum class FullCalc : unsigned char { Never, Always, WithoutPeriod, ByMethod };

/// Where a data series stands in the order of `SCalc::SetVariable`.
enum class Column : unsigned char { Close, Open, High, Low, Volume, Date, OpenInterest, Amount };

/// One call on its way to a rule: the arguments, and what a rule may ask of the engine.
class Call {
 public:
  /// `badPeriod` is the message for a period below 1.
  Call(SCalc &calc, const char *badPeriod, Operand *args, int count)
      : calc_(calc), badPeriod_(badPeriod), args_(args), count_(count) {}

  int Count() const { return count_; }
  const SVector &X(int i) const { return args_[i].Series(); }
  /// Element 0 of an argument, truncated toward zero.
  int N(int i) const { return TruncateToInt(X(i)[0]); }
  /// The argument itself, for a rule that gives it back.
  Operand Take(int i) { return std::move(args_[i]); }
  /// The argument as a temporary that the rule may write to.
  SVector &Own(int i);
  /// A bound series; an empty one if the host has bound none.
  const SVector &Bound(Column column) const;
  /// The number of bars for a growing form over argument i: its size, or that of close for a size of 1.
  int GrowingBars(int i) const;
  /// Records an error and gives the empty series that stands for it.
  Operand Fail(const char *message);
  /// The error for a period below 1.
  Operand FailPeriod();

  /// Number of the method word of `Reading::MethodWord`: 0 simple, 1 exponential, 2 weighted, 3 geometric, 4
  /// harmonic; -1 for a call without one.
  int method = -1;
  /// Unit of `Reading::TimeUnit`, or `FunctionId::None` for a number of bars.
  FunctionId unit = FunctionId::None;
  /// Bars in a group, for a unit of `FunctionId::None`.
  int groupBars = 1;

 private:
  SCalc &calc_;
  const char *badPeriod_;
  Operand *args_;
  int count_;
};

using Rule = Operand (*)(Call &);

/// One row of the function table.
struct Function {
  FunctionId id;
  Reading reading;
  /// Number of arguments that a call reads at least and at most; the shift behind them is not counted.
  int least;
  int most;
  FullCalc full;
  /// Message for a period (or count) below 1, or null where nothing checks it.
  const char *badPeriod;
  /// Message for a call whose period or method is missing, or null where the reading says nothing.
  const char *badCall;
  /// Null for a word without a calculation.
  Rule rule;
  /// For people: the arguments, as "x, n", and one line of meaning.
  const char *arguments;
  const char *help;
};

using FunctionRows = std::span<const Function>;

}  // namespace trovenu
