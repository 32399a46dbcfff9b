#pragma once

/// \file
/// The last few blocks of one size, the newest at distance 0: in registers where they fit, else in a strip of
/// memory that stays in the cache.

#include "trovenu/support/kernels/four_bars.h"

namespace trovenu {
namespace {

// How often a block is pushed at most between two calls of `Rewind`.
constexpr int kStripPlaces = 64;

template <class Block, int kDepth>
class InRegisters {
 public:
  template <int kDistance>
  TROVENU_INLINE const Block &Back() const {
    if constexpr (kDistance == 0) {
      return newest_;
    } else {
      return older_.template Back<kDistance - 1>();
    }
  }
  TROVENU_INLINE void Push(const Block &block) {
    older_.Push(newest_);
    newest_ = block;
  }
  TROVENU_INLINE void Rewind() {}

 private:
  Block newest_{};
  InRegisters<Block, kDepth - 1> older_;
};

template <class Block>
class InRegisters<Block, 0> {
 public:
  TROVENU_INLINE void Push(const Block &) {}
  TROVENU_INLINE void Rewind() {}
};

template <class Block, int kDepth>
class InMemory {
 public:
  template <int kDistance>
  TROVENU_INLINE const Block &Back() const {
    return next_[-1 - kDistance];
  }
  TROVENU_INLINE void Push(const Block &block) { *next_++ = block; }
  TROVENU_INLINE void Rewind() {
    for (int k = 0; k < kKept; ++k) places_[k] = next_[k - kKept];
    next_ = places_ + kKept;
  }

 private:
  // Those that are asked for once the next one has been pushed.
  static constexpr int kKept = kDepth - 1;

  Block places_[kKept + kStripPlaces];
  Block *next_ = places_;
};

template <bool kFits, class Block, int kDepth>
struct RecentBlocksChoice {
  using Type = InMemory<Block, kDepth>;
};
template <class Block, int kDepth>
struct RecentBlocksChoice<true, Block, kDepth> {
  using Type = InRegisters<Block, kDepth>;
};
template <bool kFits, class Block, int kDepth>
using RecentBlocks = typename RecentBlocksChoice<kFits, Block, kDepth>::Type;

}  // namespace
}  // namespace trovenu
