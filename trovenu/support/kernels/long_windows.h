#pragma once

/// \file
/// Windows of any length in one pass.
///
/// The bars are cut into blocks of n by their absolute index. A window that ends in a block consists of a
/// suffix of the block before (its older part) and a prefix of the block (its newer part). Both grow by one
/// element at a time, so the value at a bar comes from the elements of its window and their index alone: no
/// running sum drags its history along, an outlier leaves nothing behind, and recomputing a tail gives the
/// same bits.
///
/// A statistic supplies
///   Part                              what is carried along for a run of bars
///   Part None()                       for no bars
///   void Append(Part &, int i, int block)    lengthens the run by bar i on its newer side
///   void Prepend(Part &, int i, int block)   lengthens the run by bar i on its older side
///   double Value(const Part &older, const Part &newer, int newerCount, int i, int block)
/// where `block` is the first bar of the block in which the window ends; it lies in every such window, so its
/// element may serve as the origin of deviations.
///
/// A place of four bars may stand for a bar: see long_places.h. `Value` then gives four values.

#include "trovenu/support/kernels/four_bars.h"

namespace trovenu {
namespace {

/// Suffixes are kept for this many bars at a time. Where a block is longer, the suffixes at the edges of a
/// number of such strips are kept and the others are built again from them, so that no length needs memory of
/// its own.
constexpr int kWindowStrip = 1024;
constexpr int kWindowEdges = 256;

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
    usedEdges_ = kWindowEdges;
    NextStrip();
  }

  /// Goes on to the suffixes that begin at `Right()` or later.
  void NextStrip() {
    left_ = right_;
    right_ = block_ - left_ > kWindowStrip ? left_ + kWindowStrip : block_;
    Part part = statistic_.None();
    if (right_ < block_) {
      if (usedEdges_ == kWindowEdges) BuildEdges();
      part = edges_[usedEdges_++];
    }
    for (int j = right_ - 1; j >= left_; --j) {
      statistic_.Prepend(part, j, block_);
      suffixes_[j - left_] = part;
    }
  }

  /// The first bar behind the current strip; it is the block's first bar where no strip follows.
  int Right() const { return right_; }

  /// The suffix that begins at bar i of the current strip, or nothing for the block's first bar.
  Part From(int i) const { return i < block_ ? suffixes_[i - left_] : statistic_.None(); }

 private:
  // Fills the edges of the current strip and of those behind it.
  void BuildEdges() {
    usedEdges_ = 0;
    Part part = statistic_.None();
    for (int j = block_ - 1; j >= right_; --j) {
      statistic_.Prepend(part, j, block_);
      const int distance = j - right_;
      if (distance % kWindowStrip == 0 && distance / kWindowStrip < kWindowEdges) {
        edges_[distance / kWindowStrip] = part;
      }
    }
  }

  const Statistic &statistic_;
  int block_ = 0;
  int left_ = 0;
  int right_ = 0;
  int usedEdges_ = kWindowEdges;
  Part suffixes_[kWindowStrip];
  Part edges_[kWindowEdges];
};

TROVENU_INLINE void Put(double *out, int i, double value) { out[i] = value; }
TROVENU_INLINE void Put(double *out, int place, FourBars values) { Store(out + 4 * place, values); }

// Writes `out[i]` for the windows of n bars that end at the bars i from `from` to `to` - 1.
template <class Statistic>
void SlideLongWindows(const Statistic &statistic, int from, int to, int n, double *out) {
  WindowSuffixes<Statistic> older(statistic);
  int i = from;
  long long block = static_cast<long long>(i) / n * n;
  while (i < to) {
    const int begin = static_cast<int>(block);
    const int end = block + n < to ? begin + n : to;
    older.BeginBlock(i - n + 1, begin);
    typename Statistic::Part newer = statistic.None();
    for (int j = begin; j < i; ++j) statistic.Append(newer, j, begin);
    while (i < end) {
      const int reach = older.Right() + n - 1;
      const int stop = older.Right() < begin && reach < end ? reach : end;
      for (; i < stop; ++i) {
        statistic.Append(newer, i, begin);
        Put(out, i, statistic.Value(older.From(i - n + 1), newer, i - begin + 1, i, begin));
      }
      if (i < end) older.NextStrip();
    }
    block += n;
  }
}

}  // namespace
}  // namespace trovenu
