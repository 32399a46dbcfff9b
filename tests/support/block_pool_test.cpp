#include "trovenu/support/block_pool.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <mutex>
#include <random>
#include <thread>
#include <utility>
#include <vector>

#include "tests/support/series_tools.h"

namespace trovenu {
namespace {

// A block that is in use: it holds `mark` from `writtenFrom` on and 0.0 below.
struct Held {
  double *values;
  int elements;
  int writtenFrom;
  double mark;
};

Held Take(int elements, int firstWritten, double mark) {
  const Held held{AcquireBlock(elements, firstWritten), elements, firstWritten, mark};
  EXPECT_NE(held.values, nullptr);
  EXPECT_EQ(reinterpret_cast<std::uintptr_t>(held.values) % 64, 0U);
  int notZero = 0;
  for (int i = 0; i < firstWritten; ++i) notZero += Bits(held.values[i]) != 0;
  EXPECT_EQ(notZero, 0) << elements << " elements, written from " << firstWritten;
  std::fill(held.values + firstWritten, held.values + elements, mark);
  return held;
}

// Writes further elements below those promised.
void WriteDownTo(Held &held, int from) {
  std::fill(held.values + from, held.values + held.writtenFrom, held.mark);
  held.writtenFrom = from;
}

void GiveBack(const Held &held) {
  int changed = 0;
  for (int i = 0; i < held.elements; ++i)
    changed += held.values[i] != (i < held.writtenFrom ? 0.0 : held.mark);
  EXPECT_EQ(changed, 0);
  ReleaseBlock(held.values, held.writtenFrom, held.elements);
}

TEST(BlockPool, ReadsZeroBelowTheFirstWrittenElementWhateverWasReleasedBefore) {
  // Blocks wander between the threads: what one takes another may give back.
  std::mutex lock;
  std::vector<Held> shared;
  const auto work = [&](unsigned seed) {
    std::mt19937 random(seed);
    const auto below = [&random](int bound) {
      return static_cast<int>(random() % static_cast<unsigned>(bound));
    };
    std::vector<Held> held;
    for (int step = 0; step < 4000; ++step) {
      if (held.size() < 12 && random() % 2 == 0) {
        const int elements = 1 + (random() % 20 == 0 ? below(9000) : below(300));
        const int shape = below(4);
        const int first = shape == 0   ? 0
                          : shape == 1 ? elements
                          : shape == 2 ? elements - 1
                                       : below(elements);
        held.push_back(Take(elements, first, 1.0 + step));
        if (random() % 4 == 0 && first > 0) WriteDownTo(held.back(), below(first));
      } else if (!held.empty()) {
        std::swap(held[random() % held.size()], held.back());
        Held last = held.back();
        held.pop_back();
        if (random() % 4 == 0) {
          const std::lock_guard guard(lock);
          shared.push_back(last);
          std::swap(shared[random() % shared.size()], shared.back());
          last = shared.back();
          shared.pop_back();
        }
        GiveBack(last);
      }
    }
    for (const Held &rest : held) GiveBack(rest);
  };
  std::vector<std::thread> threads;
  for (unsigned seed = 1; seed <= 4; ++seed) threads.emplace_back(work, seed);
  for (std::thread &thread : threads) thread.join();
  for (const Held &rest : shared) GiveBack(rest);
}

}  // namespace
}  // namespace trovenu
