#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <thread>
#include <vector>

namespace trovenu::tests {
namespace {

std::atomic<int> intact = 0;

// Looks at itself when it is destroyed, after memory that is free by then has been written to.
struct Witness {
  ~Witness() {
    std::vector<void *> blocks;
    for (std::size_t size = 8; size < 400; ++size) {
      blocks.push_back(std::memset(std::malloc(size), 0xEE, size));
    }
    if (first == kValue && last == kValue) ++intact;
    for (void *block : blocks) std::free(block);
  }

  static constexpr unsigned long long kValue = 0x0123456789abcdef;
  unsigned long long first = kValue;
  unsigned long long last = kValue;
};

// The blocks of a thread are freed by such an object: on Windows it found its memory gone, and the program
// hung.
TEST(ThreadEnd, ThreadLocalObjectsAreDestroyedBeforeTheirMemoryIsFreed) {
  constexpr int kThreads = 20;
  intact = 0;
  for (int i = 0; i < kThreads; ++i) {
    std::thread([] {
      thread_local Witness witness;
      EXPECT_EQ(witness.first, Witness::kValue);
    }).join();
  }
  EXPECT_EQ(intact, kThreads);
}

}  // namespace
}  // namespace trovenu::tests
