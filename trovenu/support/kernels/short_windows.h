#pragma once

/// \file
/// Windows of up to 35 bars, put together from blocks of 1, 2, 4, 8, 16 and 32 bars.
///
/// A block of 2m bars is merged from its two halves, the older of which was the newer one a few bars before.
/// A window consists of the blocks that the binary digits of its length name. So it costs a handful of
/// merges, the same ones at every bar: the value depends on the elements of the window alone, and recomputing
/// a tail gives the same bits.
///
/// Within a window the blocks of 4 and 8 bars come behind the longest one, where they are at hand, and those
/// of 1 and 2 bars, which are read again, before it:
///
///     31 bars    1  2  16  8  4    the newest bar is the rightmost
///
/// A statistic supplies, i standing for the four bars i to i + 3 side by side,
///   kOperands                           how many series it reads; `operand` points to their elements
///   kFlatIsElement                      whether the value of equal elements is exactly that element
///   Block                               what is known of the bars that end at a bar
///   Block One(int i)                    of one bar
///   Block Two(int i)                    of two
///   Block Merge(newer, older, at)       of two blocks of the newer one's size
///   Block Earlier(before, now)          `TwoBarsEarlier` of every field
///   Total Begin(block, at)              the longest block of a window
///   void Add(Total &, block, at)        another one
///   FourBars Value(total)

#include <cstring>

#include "trovenu/support/kernels/flat_windows.h"
#include "trovenu/support/kernels/four_bars.h"
#include "trovenu/support/kernels/recent_blocks.h"

namespace trovenu {
namespace {

// The highest power of two that is not above n, the length of a short window.
constexpr int LongestBlock(int n) {
  int size = 1;
  while (2 * size <= n) size *= 2;
  return size;
}

constexpr int kPlaceBars = 4;

// Longer ones cost less block by block (long_windows.h).
constexpr int kLongestShortWindow = 35;

// Places between two looks for flat windows, so that the bars are still in the cache.
constexpr int kStripBars = 128 * kPlaceBars;

// Where a block lies: its newest bar, its number of bars, and how many bars of its window are newer.
struct BlockPlace {
  int end;
  int size;
  int lag = 0;
};

// Windows of n bars: kWhole bars, the largest multiple of four that fits, and up to three older ones. Below
// four bars kWhole is 1 or 2. kHasOlder says whether there are older ones.
template <class Statistic, int kWhole, bool kHasOlder>
class ShortWindows {
  using Block = typename Statistic::Block;
  using Total = typename Statistic::Total;

 public:
  ShortWindows(const Statistic &statistic, int n) : statistic_(statistic), n_(n) {}

  // The windows that end at the bars from `from` on; `to` lies whole places behind it.
  TROVENU_INLINE void Slide(int from, int to, double *out) {
    Recall<4>(fours_, from);
    Recall<8>(eights_, from);
    Recall<16>(sixteens_, from);
    while (from < to) {
      const int bars = to - from < kStripBars ? to - from : kStripBars;
      SlideStrip(from, from + bars, out);
      if constexpr (Statistic::kFlatIsElement) {
        MendFlatWindows(statistic_.operand[0], from, from + bars, n_, out);
      }
      from += bars;
      out += bars;
    }
  }

 private:
  static constexpr int kLongest = LongestBlock(kWhole);

  // Bars of the window that are newer than its block of kSize bars.
  template <int kSize>
  static constexpr int Lag() {
    return kSize >= kPlaceBars ? kWhole & (kSize - 1) : 0;
  }
  template <int kSize>
  static constexpr bool HasPart() {
    return (kWhole & kSize) != 0;
  }
  // How many places back a block of kSize bars is needed: as an older half, or as a part of the window.
  template <int kSize>
  static constexpr int Depth() {
    const int asHalf = kSize < kLongest ? kSize / kPlaceBars : 0;
    const int asPart = HasPart<kSize>() ? Lag<kSize>() / kPlaceBars : 0;
    return asPart > asHalf ? asPart : asHalf;
  }
  template <int kSize>
  using Recent = RecentBlocks<Block, Depth<kSize>() + 1>;

  template <int kSize>
  TROVENU_INLINE Block BlockAt(int i) const {
    if constexpr (kSize == 2) {
      return statistic_.Two(i);
    } else {
      return statistic_.Merge(BlockAt<kSize / 2>(i), BlockAt<kSize / 2>(i - kSize / 2), {i, kSize / 2});
    }
  }

  // The blocks that end before bar i.
  template <int kSize>
  TROVENU_INLINE void Recall(Recent<kSize> &recent, int i) const {
    for (int place = Depth<kSize>(); place > 0; --place) recent.Push(BlockAt<kSize>(i - place * kPlaceBars));
  }

  TROVENU_INLINE void SlideStrip(int i, int end, double *out) {
    Block before{};
    if constexpr (kWhole >= kPlaceBars) {
      // Only the newer two of its bars are looked at.
      const Block earlier = statistic_.Two(i - 2);
      before = statistic_.Earlier(earlier, earlier);
    }
    // Two places at a time: the blocks then change their places and not their registers.
    for (; end - i >= 2 * kPlaceBars; i += 2 * kPlaceBars, out += 2 * kPlaceBars) {
      Store(out, Window(i, before));
      Store(out + kPlaceBars, Window(i + kPlaceBars, before));
    }
    if (i < end) Store(out, Window(i, before));
  }

  TROVENU_INLINE FourBars Window(int i, Block &before) {
    Total total = BeginWindow(i, before);
    if constexpr (kLongest > 8 && HasPart<8>()) AddPart<8>(total, eights_, i);
    if constexpr (kLongest > 4 && HasPart<4>()) AddPart<4>(total, fours_, i);
    if (kHasOlder && kWhole >= kPlaceBars && (n_ & 2) != 0) {
      statistic_.Add(total, statistic_.Two(i - kWhole), {i - kWhole, 2, kWhole});
    }
    if (kHasOlder && kWhole > 1 && (n_ & 1) != 0) {
      const int lag = n_ - 1;
      statistic_.Add(total, statistic_.One(i - lag), {i - lag, 1, lag});
    }
    return statistic_.Value(total);
  }

  TROVENU_INLINE Total BeginWindow(int i, Block &before) {
    if constexpr (kLongest == 1) {
      return statistic_.Begin(statistic_.One(i), {i, 1});
    } else if constexpr (kLongest == 2) {
      return statistic_.Begin(statistic_.Two(i), {i, 2});
    } else {
      const Block two = statistic_.Two(i);
      const Block four = statistic_.Merge(two, statistic_.Earlier(before, two), {i, 2});
      before = two;
      return Grow<4>(four, i, fours_);
    }
  }

  // Goes on from a block of kSize bars to the longest one.
  template <int kSize>
  TROVENU_INLINE Total Grow(const Block &block, int i, Recent<kSize> &recent) {
    recent.Push(block);
    if constexpr (kSize == kLongest) {
      constexpr int kLag = Lag<kSize>();
      return statistic_.Begin(recent.template Back<kLag / kPlaceBars>(), {i - kLag, kSize, kLag});
    } else {
      const Block twice = statistic_.Merge(block, recent.template Back<kSize / kPlaceBars>(), {i, kSize});
      if constexpr (kSize == 4) return Grow<8>(twice, i, eights_);
      if constexpr (kSize == 8) return Grow<16>(twice, i, sixteens_);
      if constexpr (kSize == 16) return statistic_.Begin(twice, {i, 32});
    }
  }

  template <int kSize>
  TROVENU_INLINE void AddPart(Total &total, const Recent<kSize> &recent, int i) const {
    constexpr int kLag = Lag<kSize>();
    statistic_.Add(total, recent.template Back<kLag / kPlaceBars>(), {i - kLag, kSize, kLag});
  }

  const Statistic statistic_;
  const int n_;
  Recent<4> fours_;
  Recent<8> eights_;
  Recent<16> sixteens_;
};

// `out` is that of bar `from`.
template <class Statistic, int kWhole, bool kHasOlder>
TROVENU_NO_INLINE void SlidePlaces(const Statistic &statistic, int from, int to, int n, double *out) {
  ShortWindows<Statistic, kWhole, kHasOlder> windows(statistic, n);
  windows.Slide(from, to, out);
}

// Fewer bars than a place has, computed on a copy that is as long as a place needs.
template <class Statistic, int kWhole>
TROVENU_NO_INLINE void SlideFew(Statistic statistic, int from, int to, int n, double *out) {
  double copy[Statistic::kOperands][kLongestShortWindow + kPlaceBars - 1] = {};
  const int elements = to - from + n - 1;
  for (int k = 0; k < Statistic::kOperands; ++k) {
    std::memcpy(copy[k], statistic.operand[k] + (from - n + 1),
                sizeof(double) * static_cast<unsigned>(elements));
    statistic.operand[k] = copy[k];
  }
  double values[kPlaceBars];
  SlidePlaces<Statistic, kWhole, true>(statistic, n - 1, n - 1 + kPlaceBars, n, values);
  for (int i = from; i < to; ++i) out[i] = values[i - from];
}

// Whole places where the series has them, aligned; the bars at both ends in places that overlap those.
template <class Statistic, int kWhole>
void SlideBars(const Statistic &statistic, int from, int to, int n, double *out) {
  const auto slide =
      n > kWhole ? SlidePlaces<Statistic, kWhole, true> : SlidePlaces<Statistic, kWhole, false>;
  if (to - from < kPlaceBars) return SlideFew<Statistic, kWhole>(statistic, from, to, n, out);
  slide(statistic, from, from + kPlaceBars, n, out + from);
  const int aligned = (from / kPlaceBars + 1) * kPlaceBars;
  const int whole = to / kPlaceBars * kPlaceBars;
  if (aligned < whole) slide(statistic, aligned, whole, n, out + aligned);
  if (whole < to) slide(statistic, to - kPlaceBars, to, n, out + (to - kPlaceBars));
}

template <class Statistic>
void SlideShortWindows(const Statistic &statistic, int from, int to, int n, double *out) {
  switch (n / kPlaceBars) {
    case 0:
      if (n == 1) return SlideBars<Statistic, 1>(statistic, from, to, n, out);
      return SlideBars<Statistic, 2>(statistic, from, to, n, out);
    case 1:
      return SlideBars<Statistic, 4>(statistic, from, to, n, out);
    case 2:
      return SlideBars<Statistic, 8>(statistic, from, to, n, out);
    case 3:
      return SlideBars<Statistic, 12>(statistic, from, to, n, out);
    case 4:
      return SlideBars<Statistic, 16>(statistic, from, to, n, out);
    case 5:
      return SlideBars<Statistic, 20>(statistic, from, to, n, out);
    case 6:
      return SlideBars<Statistic, 24>(statistic, from, to, n, out);
    case 7:
      return SlideBars<Statistic, 28>(statistic, from, to, n, out);
    default:
      return SlideBars<Statistic, 32>(statistic, from, to, n, out);
  }
}

}  // namespace
}  // namespace trovenu
