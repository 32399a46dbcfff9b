#pragma once

/// \file
/// The last few blocks of one size, the newest at distance 0. They move up when another is pushed. They come
/// and go by value: the compiler keeps them in registers then, as far as there are, and in memory only once.

#include "trovenu/support/kernels/four_bars.h"

namespace trovenu {
namespace {

template <class Block, int kCount>
class RecentBlocks {
 public:
  template <int kDistance>
  TROVENU_INLINE Block Back() const {
    if constexpr (kDistance == 0) {
      return newest_;
    } else {
      return older_.template Back<kDistance - 1>();
    }
  }
  TROVENU_INLINE void Push(Block block) {
    older_.Push(newest_);
    newest_ = block;
  }

 private:
  Block newest_{};
  RecentBlocks<Block, kCount - 1> older_;
};

template <class Block>
class RecentBlocks<Block, 0> {
 public:
  TROVENU_INLINE void Push(Block) {}
};

}  // namespace
}  // namespace trovenu
