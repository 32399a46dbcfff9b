#pragma once

#include <span>
#include <vector>

namespace trovenu {

/// The order in which an exchange sort leaves rows: for each i and each later j in turn, rows i and j are
/// swapped if the key at j is less. Element k is the place from which the row at k comes. The order is by
/// key, but rows of equal keys don't keep theirs, and a row whose key is NaN keeps its place.
std::vector<int> ExchangeSortOrder(std::span<const double> keys);

}  // namespace trovenu
