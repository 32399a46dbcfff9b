#pragma once

/// \file
/// How the blocks of a window compare with its longest one.

#include "trovenu/support/kernels/short_windows.h"

namespace trovenu {
namespace {

struct BlockShares {
  explicit BlockShares(int n) : longest(LongestBlock(n)), ofWindow(longest / n) {}

  /// How many blocks of `size` bars the longest block would hold, and which part of it one of them is. Both
  /// are exact, being powers of two.
  TROVENU_INLINE FourBars Times(int size) const { return All(longest / size); }
  TROVENU_INLINE FourBars Share(int size) const { return All(size / longest); }

  double longest;
  /// The part of the window that the longest block is.
  double ofWindow;
};

}  // namespace
}  // namespace trovenu
