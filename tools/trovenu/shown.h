#pragma once

#include <cmath>
#include <optional>
#include <string>

#include "tools/trovenu/bars.h"
#include "trovenu/support/series.h"

namespace trovenu::tool {

/// What a line shows on a bar; no number where the bar has no value.
using Shown = std::optional<double>;

inline Shown ShownAt(const SVector &line, int bar) {
  const bool has = bar >= line.GetStartIndex() && bar < line.GetSize();
  return has ? Shown(line[bar]) : Shown();
}

/// Two values that are no number are the same.
inline bool IsSame(const Shown &a, const Shown &b) {
  if (!a || !b) return a.has_value() == b.has_value();
  return *a == *b || (std::isnan(*a) && std::isnan(*b));
}

/// The value for a person, or "no value".
std::string ShownText(const Shown &shown);

/// "2024-01-02 (bar 0)".
std::string BarText(const Bars &bars, int bar);

}  // namespace trovenu::tool
