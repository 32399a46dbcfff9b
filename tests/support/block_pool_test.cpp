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

constexpr int kMostRetained = kMostRetainedBytes / sizeof(double);

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

TEST(BlockPool, HasRoomForEverySize) {
  // The sanitizer sees a block that is too small; the marks see two that overlap.
  std::vector<Held> held;
  for (int elements = 1; elements <= 700; ++elements) held.push_back(Take(elements, 0, elements));
  for (int power = 10; power <= 17; ++power) {
    for (const int off : {-1, 0, 1}) held.push_back(Take((1 << power) + off, 0, power));
  }
  for (const Held &each : held) GiveBack(each);
}

TEST(BlockPool, GivesABlockThatWaitsToTheNextTakerOfItsSize) {
  OnFreshThread([] {
    double *const block = AcquireBlock(1000, 0);
    ReleaseBlock(block, 0, 1000);
    double *const again = AcquireBlock(1001, 0);
    EXPECT_EQ(again, block);
    EXPECT_EQ(AllocatedBlockCount(), 1U);
    ReleaseBlock(again, 0, 1001);
  });
}

TEST(BlockPool, PrefersTheBlockThatNeedsTheLeastClearing) {
  OnFreshThread([] {
    const Held whole = Take(20000, 0, 1.0);
    const Held tail = Take(20000, 19990, 2.0);
    GiveBack(tail);
    GiveBack(whole);
    const Held again = Take(20000, 19995, 3.0);
    EXPECT_EQ(again.values, tail.values);
    // What is left would have to be cleared whole, which costs more than a block of fresh pages.
    const Held fresh = Take(20000, 19995, 4.0);
    EXPECT_NE(fresh.values, whole.values);
    GiveBack(again);
    GiveBack(fresh);
  });
}

TEST(BlockPool, KeepsAFewBlocksOfASize) {
  OnFreshThread([] {
    std::vector<Held> held;
    for (int i = 0; i < 40; ++i) held.push_back(Take(1024, 0, i));
    EXPECT_EQ(RetainedElementCount(), 0U);
    for (const Held &each : held) GiveBack(each);
    EXPECT_EQ(RetainedElementCount(), 8U * 1024U);
  });
}

TEST(BlockPool, KeepsABoundedAmountOfMemory) {
  OnFreshThread([] {
    // Six blocks of each size, three times as much as is kept; they stay untouched pages.
    constexpr int kUnit = kMostRetained / 96;
    std::vector<std::pair<double *, int>> blocks;
    for (const int units : {8, 10, 12, 14, 7}) {
      for (int i = 0; i < 6; ++i) blocks.emplace_back(AcquireBlock(units * kUnit, units * kUnit), units);
    }
    for (const auto &[block, units] : blocks) {
      ReleaseBlock(block, 0, 0);
      EXPECT_LE(RetainedElementCount(), static_cast<unsigned long long>(kMostRetained));
    }
    // One that is larger than all that may be kept goes back to the system and drives nothing out.
    const unsigned long long before = RetainedElementCount();
    ReleaseBlock(AcquireBlock(kMostRetained + 1, kMostRetained + 1), 0, 0);
    EXPECT_EQ(RetainedElementCount(), before);
    // The sizes that were asked for last have stayed: six times 7 units and three times 14 are 84 of 96.
    const unsigned long long allocated = AllocatedBlockCount();
    blocks.clear();
    for (int i = 0; i < 9; ++i) {
      const int units = i < 6 ? 7 : 14;
      blocks.emplace_back(AcquireBlock(units * kUnit, units * kUnit), units);
    }
    EXPECT_EQ(AllocatedBlockCount(), allocated);
    for (const auto &[block, units] : blocks) ReleaseBlock(block, 0, 0);
  });
}

TEST(BlockPool, KeepsABlockWhereItIsGivenBack) {
  double *block = nullptr;
  OnFreshThread([&block] { block = AcquireBlock(500, 0); });
  std::fill(block, block + 500, 1.0);
  OnFreshThread([block] {
    ReleaseBlock(block, 0, 500);
    EXPECT_EQ(RetainedElementCount(), 512U);
    GiveBack(Take(500, 500, 0.0));
    EXPECT_EQ(AllocatedBlockCount(), 0U);
  });
}

TEST(BlockPool, IgnoresNull) { ReleaseBlock(nullptr, 0, 0); }

TEST(BlockPool, RefusesTheBlockThatATestNames) {
  OnFreshThread([] {
    FailBlockAllocation(2);
    double *const first = AcquireBlock(10, 0);
    EXPECT_NE(first, nullptr);
    OnFreshThread([] { GiveBack(Take(10, 0, 1.0)); });
    EXPECT_EQ(AcquireBlock(10, 0), nullptr);
    double *const third = AcquireBlock(10, 0);
    EXPECT_NE(third, nullptr);
    FailBlockAllocation(1);
    FailBlockAllocation(0);
    double *const fourth = AcquireBlock(100, 0);
    EXPECT_NE(fourth, nullptr);
    for (double *block : {first, third}) ReleaseBlock(block, 0, 10);
    ReleaseBlock(fourth, 0, 100);
  });
}

// Also where whole series and tails alternate, as on a tick that redoes one formula whole and another's tail.
TEST(BlockPool, ASteadyStateAllocatesNothing) {
  OnFreshThread([] {
    const SVector price = Series(RandomWalk(6000, 1.0));
    SVector tail(price);
    tail.SetStartIndex(5000);
    // As the evaluator works: each operation in a temporary that is there already.
    const auto round = [](const SVector &x) {
      SVector result;
      result.CalcWAvg(x, 700);
      VecMinus(result, x, result);
      SVector band;
      band.CalcStdev(x, 20);
      VecDivide(result, result, band);
      band.CalcGAvg(x(3), 5);
      VecGT(result, result, band);
      result = x.CopyFrom(5950);
    };
    for (int i = 0; i < 20; ++i) {
      round(price);
      round(tail);
    }
    const unsigned long long before = AllocatedBlockCount();
    for (int i = 0; i < 20; ++i) {
      round(price);
      round(tail);
    }
    EXPECT_EQ(AllocatedBlockCount(), before);
  });
}

TEST(BlockPool, OutlivesSeriesOfStaticLifetime) {
  // Destroyed when the pool of the main thread is gone; a fault shows at the end of the program.
  static SVector kept(5000);
  kept.InitValue(1.0);
  EXPECT_EQ(kept.GetMax(), 1.0);
}

}  // namespace
}  // namespace trovenu
