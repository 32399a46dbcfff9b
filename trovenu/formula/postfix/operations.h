#pragma once

/// \file
/// What the items of a compiled formula do: the one table of their codes.

#include "trovenu/formula/function.h"

namespace trovenu {

/// Codes of the items. Those from `kFirstFunctionCode` on run a function.
enum OperationCode : int {
  kNameCode = 0,
  kNumberCode = 1,
  kOpenCode = 6,
  kPlusSignCode = 8,
  kMinusSignCode = 9,
  kNotCode = 10,
  kPlusCode = 11,
  kMinusCode,
  kMultiplyCode,
  kDivideCode,
  kModCode,
  kLessCode,
  kLessEqualCode,
  kGreaterCode,
  kGreaterEqualCode,
  kEqualCode,
  kNotEqualCode,
  kAndCode,
  kOrCode,
  kAssignCode,
  kCommaCode,
  kFirstFunctionCode,
  kPowerCode = 39,
  kLagCode = 46,
  kFirstUserCode = 80,
  kLastUserCode = 89,
};

/// What becomes of an item when a program runs.
enum OperationType : int {
  kNameType = 0,
  kNumberType = 1,
  kFunctionType = 2,
  kOperatorType = 5,
  /// It is passed over.
  kNoType = 90,
};

/// User functions that a program can have compiled, and those of them that it can call.
inline constexpr int kCompiledFunctions = 10;
inline constexpr int kCallableFunctions = 4;

/// Where a function's values can differ from those of the direct path though its arguments are accepted.
enum class Differs : unsigned char {
  Nowhere,
  /// The growing form runs over the bars of close, the direct one over those of its argument.
  Growing,
  /// The arguments are compared from the last one down, which shows where one is no number.
  Order,
  /// A period of 1 goes through the window, the direct path gives the argument back.
  PeriodOne,
  /// A distance that is too large is a fault of both, which the direct path alone marks in its result.
  Distance,
  /// The result is written into the series or variable that the base is.
  InPlace,
};

/// One row of the table.
struct Operation {
  int code;
  /// The name of an operator's item; null for items that bear the name of the text.
  const char *mnemonic;
  int precedence;
  int type;
  /// The function whose rule it runs, and a second one that the code stands for as well.
  FunctionId function;
  FunctionId alias;
  /// Number of arguments that it accepts; none for a `most` below `least`.
  int least;
  int most;
  /// The last of `most` arguments shifts the result.
  bool lagged;
  /// Message for a period below 1, or null where nothing checks it.
  const char *badPeriod;
  /// In place of the function's rule, for a call that differs on purpose.
  Rule own;
  /// The argument that is a period, a count or a distance, -1 for none.
  int period;
  Differs differs;
};

/// The row of a code, or null for another number.
const Operation *FindOperation(int code);

/// The row that a function compiles to, or null for one that a program can't have.
const Operation *FindOperation(FunctionId function);

/// How a program reads a data word.
struct DataOperand {
  FunctionId function;
  Column column;
  /// Makes the value of a bar from its date; null for the series as it is bound.
  double (*own)(double date);
};

/// Null for a data word that has no calculation.
const DataOperand *FindDataOperand(FunctionId function);

}  // namespace trovenu
