#pragma once

/// \file
/// Which values of a formula change as later bars arrive, and which word makes them.

#include <optional>
#include <string>

#include "tools/trovenu/bars.h"
#include "tools/trovenu/shown.h"

namespace trovenu {
class SFunctionList;
}

namespace trovenu::tool {

/// The changes of a formula's values on bars that were there already.
struct Repaint {
  /// The oldest bar that has changed, from 0, what it showed before and after its first change, and the
  /// newest bar at that moment.
  int bar = 0;
  Shown before;
  Shown after;
  int arrived = 0;
  /// Bars that have changed, and how often in all.
  int changedBars = 0;
  long long changes = 0;
};

/// Why a formula repaints.
struct RepaintCause {
  /// The word of the smallest part that repaints by itself, code page; empty where that part has none.
  std::string word;
  /// In a few words of English; empty for a word that is not known to repaint.
  std::string reason;
  /// Where the part stands in the formula, in bytes. A part of a user function stands at its call.
  std::size_t position = 0;
  /// The user function whose body has the part, code page; else empty.
  std::string function;
};

/// Evaluates formulas as the bars arrive one by one.
class RepaintSearch {
 public:
  /// So many evenly spread numbers of bars are looked at, or all of them for `samples` of 0. `functions` may
  /// be null. What it is given must outlive the search.
  RepaintSearch(const Bars &bars, SFunctionList *functions, int samples);

  /// How often the bars are looked at.
  int Looks() const;

  /// What changes in a formula of code-page text; nothing if nothing does. A bar on which the formula is
  /// faulty has no value.
  std::optional<Repaint> Find(const std::string &formula) const;

  /// Tells whether the formula can be evaluated on all bars.
  bool IsSound(const std::string &formula) const;

  /// Why a formula repaints: the smallest part that does so by itself, its variables being known.
  RepaintCause FindCause(const std::string &formula) const;

 private:
  const Bars &bars_;
  SFunctionList *functions_;
  int samples_;
};

}  // namespace trovenu::tool
