#pragma once

/// \file
/// The messages of the formula language, in code-page bytes, with their meaning in English.

#include "trovenu/support/korean.h"

namespace trovenu::messages {

/// A character that starts no operator.
inline constexpr const char *kBadToken = "bad token";
/// Two operands stand side by side.
inline constexpr const char *kOperatorNeeded = "연산자가 필요합니다"_kr;
/// A closing parenthesis is missing.
inline constexpr const char *kParenthesisNeeded = ")가 필요합니다."_kr;
/// A function name without its opening parenthesis.
inline constexpr const char *kFaultyFunction = "함수의 정의에 오류가 있습니다."_kr;
/// A data word that has no calculation.
inline constexpr const char *kFaultyVariable = "변수의 정의에 오류가 있습니다."_kr;
/// A negative shift of a data word.
inline constexpr const char *kNegativeValue = "음수값을 사용할 수 없습니다."_kr;
/// Follows an unknown name, with a line feed behind it.
inline constexpr const char *kNotDefined = "이(가) 정의되지 않았습니다."_kr;
/// An expression is wanted and none stands here.
inline constexpr const char *kIncomplete = "수식이 불완전합니다. 필요한 변수나 연산자가 없습니다."_kr;

/// A moving-average period below 1. Required: the number is always 0, whatever the period was.
inline constexpr const char *kAveragePeriod = "이동평균 기간이 0보다 작음"_kr;
/// `sum`: the period must not be below 1.
inline constexpr const char *kSumPeriod = "기간이 1보다 작으면 안됩니다."_kr;
/// `esum`: the period is below 1.
inline constexpr const char *kExponentialSumPeriod = "이동평균 기간이 1보다 작음"_kr;
/// `highest`, `lowest`: the period must be 1 or more.
inline constexpr const char *kExtremePeriod = "기간은 1이상이어야 합니다."_kr;
/// An average whose period is missing.
inline constexpr const char *kUnknownError = "알수 없는 오류"_kr;
/// The same for `sum`.
inline constexpr const char *kUnknownSumError = "알수 없는 오류입니다"_kr;
/// `ma` with an unknown method word.
inline constexpr const char *kWrongUse = "함수 사용법이 잘못 되었습니다"_kr;
/// `shift` over a span that is too long.
inline constexpr const char *kPeriodTooLarge = "기간이 너무 큽니다."_kr;

inline constexpr const char *kCciPeriod = "CCI 함수의 기간에는 1이상의 정수를 사용하여야 합니다"_kr;
/// Required: the slope names the value function as well.
inline constexpr const char *kRegressionPeriod =
    "LinearRegressionValue의 기간에는 1이상의 값을 사용하여야 합니다."_kr;
inline constexpr const char *kCorrelationPeriod =
    "Correlation 함수는 기간은 1이상의 값을 사용하여야 합니다"_kr;
inline constexpr const char *kRSquaredPeriod = "RSquared의 기간에는 1이상의 값을 사용하여야 합니다."_kr;
inline constexpr const char *kHighestSinceCount =
    "HighestSince의 첫번째 파라미터는 1이상의 값이어야 합니다."_kr;
inline constexpr const char *kLowestSinceCount =
    "LowestSince의 첫번째 파라미터는 1이상의 값이어야 합니다."_kr;
/// `valuewhen`: an integer of 1 or more must be used.
inline constexpr const char *kPositiveInteger = "1이상의 정수를 사용하여야 합니다"_kr;

/// The same of a compiled formula, which names the function.
inline constexpr const char *kValueWhenCount =
    "ValueWhen의 첫번째 인자는 1이상의 정수를 사용하여야 합니다."_kr;

/// In a compiled formula: a data word without a calculation, and the words before the name of a variable that
/// is gone.
inline constexpr const char *kFaultyDataWord = "변수 정의에 오류가 있습니다."_kr;
inline constexpr const char *kNameNotFound = "이름을 찾을 수 없습니다"_kr;

/// More calls of user functions than an evaluation may have.
inline constexpr const char *kTooManyCalls = "함수식이 너무 복잡합니다."_kr;
inline constexpr const char *kFunctionNotFound = "함수를 찾을 수 없습니다."_kr;

/// The limits of the language: the text, a word, a number, the name of a variable, the number of variables,
/// and the depth of nesting.
inline constexpr const char *kFormulaTooLong = "수식이 너무 깁니다."_kr;
inline constexpr const char *kWordTooLong = "이름이 너무 깁니다."_kr;
inline constexpr const char *kNumberTooLong = "숫자가 너무 깁니다."_kr;
inline constexpr const char *kVariableNameTooLong = "변수의 이름이 너무 깁니다."_kr;
inline constexpr const char *kTooManyVariables = "변수가 너무 많습니다."_kr;
inline constexpr const char *kTooDeep = "수식이 너무 복잡합니다."_kr;
/// Memory ran out on the way; what has been computed is given up.
inline constexpr const char *kOutOfMemory = "메모리가 부족합니다."_kr;

}  // namespace trovenu::messages
