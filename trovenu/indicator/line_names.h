#pragma once

/// \file
/// Names of the lines of those kinds of indicator whose lines have a meaning of their own.

#include "trovenu/indicator/index_property.h"
#include "trovenu/support/korean.h"

namespace trovenu {

/// A pair of patterns: bull, bear.
inline constexpr const char *kPatternNames[kExpressions] = {"강세패턴"_kr, "약세 패턴"_kr, "", "", ""};

/// A trading system in the legend: buy, leave, sell short, cover.
inline constexpr const char *kSignalNames[kExpressions] = {"매수"_kr, "매수청산"_kr, "매도"_kr, "매도청산"_kr,
                                                           ""};

/// The same as orders.
inline constexpr const char *kOrderNames[kExpressions] = {"신규매수"_kr, "매수청산"_kr, "신규매도"_kr,
                                                          "매도청산"_kr, ""};

/// The one line of an equity curve.
inline constexpr const char *kEquityName = "수익곡선"_kr;

/// True for 0 to 4.
constexpr bool IsLine(int line) { return line >= 0 && line < kExpressions; }

}  // namespace trovenu
