#pragma once

/// \file
/// Coarser time frames: series condensed to one element a group, and spread over the bars again.

#include "trovenu/formula/function.h"

namespace trovenu {

/// How the bars of a group become one element.
enum class GroupValue : unsigned char { Last, First, Largest, Smallest, Sum };

/// Condenses `source` to one element for each group of bars. A group ends where `unit` (hour, day of the
/// month, month, year) of the adjacent dates differs, or, for `FunctionId::None`, at every multiple of
/// `groupBars` (below 1 counts as 1). The start index is the group of the start index of `source`, or the
/// size if no bar is valid.
SVector Compress(const SVector &source, const SVector &date, GroupValue value, FunctionId unit,
                 int groupBars);

/// Gives each of `bars` bars the element of the first group whose date in `groupDates` is not before its own;
/// past the last group that of the last one. The start index is 0 if that of `groups` is 0, otherwise the bar
/// at which the walk reaches it, or `bars`.
SVector Decompress(const SVector &groups, const SVector &groupDates, const SVector &date, int bars);

FunctionRows TimeFrameRows();

}  // namespace trovenu
