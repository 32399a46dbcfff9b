#pragma once

/// \file
/// What the hand-made arrays of the library share: an owned block of `capacity` elements, the first `size` of
/// them in use. The lists keep the members themselves, since their hosts read them.

#include <algorithm>
#include <limits>
#include <memory>
#include <new>
#include <utility>

namespace trovenu {

/// Makes room for `wanted` elements, to which the first `size` are assigned; only ever grows. False if memory
/// is exhausted, and the list is then as it was.
template <class Element>
bool GrowListTo(std::unique_ptr<Element[]> &data, int size, int &capacity, long wanted) {
  constexpr long kMost = std::numeric_limits<int>::max();
  if (wanted <= capacity) return true;
  const int room = static_cast<int>(std::min(wanted, kMost));
  try {
    auto grown = std::make_unique<Element[]>(static_cast<std::size_t>(room));
    for (int i = 0; i < size; ++i) grown.get()[i] = std::as_const(data.get()[i]);
    data = std::move(grown);
  } catch (const std::bad_alloc &) {
    return false;
  }
  capacity = room;
  return true;
}

/// Makes room for one more element: a full list grows by `step`.
template <class Element>
bool GrowFullList(std::unique_ptr<Element[]> &data, int size, int &capacity, int step) {
  if (size < capacity) return true;
  const long long wanted =
      std::max(static_cast<long long>(capacity) + step, static_cast<long long>(size) + 1);
  if (wanted > std::numeric_limits<int>::max()) return false;
  return GrowListTo(data, size, capacity, static_cast<long>(wanted));
}

/// Assigns to each element from `index` on the one behind it, and lowers `size`, not below 0. An index at or
/// past `size` lowers it too; a negative one moves nothing.
template <class Element>
void DeleteFromList(std::unique_ptr<Element[]> &data, int &size, int index) {
  if (index >= 0) {
    for (int i = index; i + 1 < size; ++i) data.get()[i] = std::as_const(data.get()[i + 1]);
  }
  size = std::max(size - 1, 0);
}

}  // namespace trovenu
