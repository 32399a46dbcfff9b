#pragma once

/// \file
/// Sliding windows in one pass, exactly reproducible.
///
/// The bars are cut into blocks of n by their absolute index. A window that ends in a block consists of a
/// suffix of the block before (its older part) and a prefix of the block (its newer part). Both grow by one
/// element at a time, so the value at a bar comes from the elements of its window and their index alone: no
/// running sum drags its history along, an outlier leaves nothing behind, and recomputing a tail gives the
/// same bits.
///
/// A statistic supplies
///   Part                              what is carried along for a run of bars, default-constructed for none
///   void Append(Part &, int i, int block)    lengthens the run by bar i on its newer side
///   void Prepend(Part &, int i, int block)   lengthens the run by bar i on its older side
///   double Value(const Part &older, const Part &newer, int newerCount, int i, int block)
/// where `block` is the first bar of the block in which the window ends; it lies in every such window, so its
/// element may serve as the origin of deviations.

#include <algorithm>
#include <vector>

namespace trovenu {

/// Suffixes are kept for this many bars at a time; where a block is longer, the suffix at the edge of each
/// strip is kept and the others are built again from it.
inline constexpr int kWindowStrip = 512;

/// Writes `out[i]` for every window of `n` bars (at least 1) that ends at a bar i from `first` + n - 1 to
/// `size` - 1 and begins at or after `first`.
template <class Statistic>
void SlideWindow(const Statistic &statistic, int first, int size, int n, double *out) {
  using Part = typename Statistic::Part;
  if (size - first < n) return;
  Part suffixes[kWindowStrip];
  std::vector<Part> edges;
  int i = first + n - 1;
  long long block = static_cast<long long>(i) / n * n;
  while (i < size) {
    const int begin = static_cast<int>(block);
    const int end = static_cast<int>(std::min<long long>(block + n, size));
    // The older parts that windows ending in i .. end - 1 need begin at i - n + 1 .. begin - 1 or are empty.
    const int oldest = i - n + 1;
    const int strips = (begin - oldest) / kWindowStrip + 1;
    Part part{};
    if (strips > 1) {
      edges.assign(static_cast<std::size_t>(strips), Part{});
      for (int j = begin - 1; j >= oldest + kWindowStrip; --j) {
        statistic.Prepend(part, j, begin);
        if ((j - oldest) % kWindowStrip == 0)
          edges[static_cast<std::size_t>((j - oldest) / kWindowStrip)] = part;
      }
    }
    Part newer{};
    for (int j = begin; j < i; ++j) statistic.Append(newer, j, begin);
    int strip = 0;
    while (i < end) {
      // Windows whose oldest bar lies in [left, right).
      const int left = oldest + strip * kWindowStrip;
      const int right = std::min(left + kWindowStrip, begin);
      part = right < begin ? edges[static_cast<std::size_t>(strip + 1)] : Part{};
      for (int j = right - 1; j >= left; --j) {
        statistic.Prepend(part, j, begin);
        suffixes[j - left] = part;
      }
      const int stop = right < begin ? std::min(right + n - 1, end) : end;
      for (; i < stop; ++i) {
        statistic.Append(newer, i, begin);
        const int tail = i - n + 1;
        out[i] =
            statistic.Value(tail < begin ? suffixes[tail - left] : Part{}, newer, i - begin + 1, i, begin);
      }
      ++strip;
    }
    block += n;
  }
}

/// Calls `flat(i)` for every window of `n` bars that ends at a bar i as in `SlideWindow` and whose elements
/// are all equal.
template <class Flat>
void ForEachFlatWindow(const double *x, int first, int size, int n, Flat flat) {
  if (size - first < n) return;
  int runBegin = first;
  for (int i = first + 1; i < first + n - 1; ++i) {
    if (x[i] != x[i - 1]) runBegin = i;
  }
  for (int i = first + n - 1; i < size; ++i) {
    if (i > first && x[i] != x[i - 1]) runBegin = i;
    if (runBegin <= i - n + 1 && x[i] == x[i]) flat(i);
  }
}

/// The sum of the elements of a window.
struct WindowSum {
  struct Part {
    double sum = 0.0;
  };
  const double *x;
  double divisor = 1.0;

  void Append(Part &part, int i, int /*block*/) const { part.sum += x[i]; }
  void Prepend(Part &part, int i, int /*block*/) const { part.sum += x[i]; }
  double Value(const Part &older, const Part &newer, int, int, int) const {
    return (older.sum + newer.sum) / divisor;
  }
};

}  // namespace trovenu
