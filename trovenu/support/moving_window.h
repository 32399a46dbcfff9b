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
#include <array>
#include <cstddef>
#include <optional>

namespace trovenu {

/// Suffixes are kept for this many bars at a time. Where a block is longer, the suffixes at the edges of this
/// many such strips are kept and the others are built again from them, so that no length needs memory of its
/// own.
inline constexpr int kWindowStrip = 512;

/// The older parts of the windows that end in one block: suffixes of the bars from `oldest` to `block` - 1.
template <class Statistic>
class WindowSuffixes {
  using Part = typename Statistic::Part;

 public:
  explicit WindowSuffixes(const Statistic &statistic) : statistic_(statistic) {}

  /// Begins with the first strip of a block.
  void BeginBlock(int oldest, int block) {
    block_ = block;
    left_ = right_ = oldest;
    usedEdges_ = kWindowStrip;
    NextStrip();
  }

  /// Goes on to the suffixes that begin at `Right()` or later.
  void NextStrip() {
    left_ = right_;
    right_ = block_ - left_ > kWindowStrip ? left_ + kWindowStrip : block_;
    Part part{};
    if (right_ < block_) {
      if (usedEdges_ == kWindowStrip) BuildEdges();
      part = (*edges_)[static_cast<std::size_t>(usedEdges_++)];
    }
    for (int j = right_ - 1; j >= left_; --j) {
      statistic_.Prepend(part, j, block_);
      suffixes_[j - left_] = part;
    }
  }

  /// The first bar behind the current strip; it is the block's first bar where no strip follows.
  int Right() const { return right_; }

  /// The suffix that begins at bar i of the current strip, or nothing for the block's first bar.
  Part From(int i) const { return i < block_ ? suffixes_[i - left_] : Part{}; }

 private:
  // Fills the edges of the current strip and of those behind it.
  void BuildEdges() {
    if (!edges_) edges_.emplace();
    usedEdges_ = 0;
    Part part{};
    for (int j = block_ - 1; j >= right_; --j) {
      statistic_.Prepend(part, j, block_);
      const int distance = j - right_;
      if (distance % kWindowStrip == 0 && distance / kWindowStrip < kWindowStrip)
        (*edges_)[static_cast<std::size_t>(distance / kWindowStrip)] = part;
    }
  }

  const Statistic &statistic_;
  int block_ = 0;
  int left_ = 0;
  int right_ = 0;
  int usedEdges_ = kWindowStrip;
  Part suffixes_[kWindowStrip];
  std::optional<std::array<Part, kWindowStrip>> edges_;
};

/// Writes `out[i]` for every window of `n` bars (at least 1) that ends at a bar i from `first` + n - 1 to
/// `size` - 1 and begins at or after `first`.
template <class Statistic>
void SlideWindow(const Statistic &statistic, int first, int size, int n, double *out) {
  if (size - first < n) return;
  WindowSuffixes<Statistic> older(statistic);
  int i = first + n - 1;
  long long block = static_cast<long long>(i) / n * n;
  while (i < size) {
    const int begin = static_cast<int>(block);
    const int end = static_cast<int>(std::min<long long>(block + n, size));
    older.BeginBlock(i - n + 1, begin);
    typename Statistic::Part newer{};
    for (int j = begin; j < i; ++j) statistic.Append(newer, j, begin);
    while (i < end) {
      const int stop = older.Right() < begin ? std::min(older.Right() + n - 1, end) : end;
      for (; i < stop; ++i) {
        statistic.Append(newer, i, begin);
        out[i] = statistic.Value(older.From(i - n + 1), newer, i - begin + 1, i, begin);
      }
      if (i < end) older.NextStrip();
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
