#include "trovenu/support/block_pool.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <new>

#if defined(__MINGW32__) && !defined(__clang__)
#include <cxxabi.h>
#endif

#if defined(__SANITIZE_ADDRESS__)
#define TROVENU_POISON_BLOCKS 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define TROVENU_POISON_BLOCKS 1
#endif
#endif
#ifdef TROVENU_POISON_BLOCKS
#include <sanitizer/asan_interface.h>
#endif

#if defined(__MINGW32__) && !defined(__clang__)
// GCC keeps thread-local objects in memory that a key of POSIX threads frees at the end of a thread, and
// destroys them by another key. Keys go in the order in which they were made, and that of the memory comes
// first unless something is to be destroyed before any such object is touched.
namespace {

// Called as a destructor is.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wattributes"
void __thiscall DestroyNothing(void * /*object*/) {}
#pragma GCC diagnostic pop

constexpr int kFirstOfAll = 101;
__attribute__((constructor(kFirstOfAll))) void DestroyBeforeFreeing() {
  abi::__cxa_thread_atexit(DestroyNothing, nullptr, nullptr);
}

}  // namespace
#endif

namespace trovenu {
namespace {

constexpr std::size_t kAlignment = 64;
constexpr int kSmallestBlock = 8;
constexpr int kStepsPerDoubling = 4;
constexpr int kClasses = 32 * kStepsPerDoubling;
constexpr int kBlocksPerClass = 8;
// Clearing more than this costs more than a new block of pages that the system has cleared.
constexpr int kCheapClear = 4096;

struct Block {
  Block *next;
  void *allocation;
  int sizeClass;
  int writtenFrom;
  int writtenTo;
};
static_assert(sizeof(Block) <= kAlignment);

double *Elements(Block *block) {
  return reinterpret_cast<double *>(reinterpret_cast<std::byte *>(block) + kAlignment);
}

Block *BlockOf(double *elements) {
  return reinterpret_cast<Block *>(reinterpret_cast<std::byte *>(elements) - kAlignment);
}

// Classes grow by a quarter of a power of two, so at most a fifth of a block is idle.
int ClassOf(int elements) {
  const auto n = static_cast<std::uint32_t>(std::max(elements, kSmallestBlock));
  const int shift = static_cast<int>(std::bit_width(n)) - 3;
  const std::uint32_t quarters = (n + (1U << shift) - 1) >> shift;
  return shift * kStepsPerDoubling + static_cast<int>(quarters) - 4;
}

std::size_t ClassElements(int sizeClass) {
  return static_cast<std::size_t>(sizeClass % kStepsPerDoubling + 4) << (sizeClass / kStepsPerDoubling);
}

struct Pool {
  Block *free[kClasses] = {};
  int count[kClasses] = {};
  // When a class was last asked for a block, in requests.
  unsigned long long lastUse[kClasses] = {};
  unsigned long long requests = 0;
  std::size_t retained = 0;
  unsigned long long allocated = 0;
};

// Series with static lifetime are destroyed after the pool of their thread, so the pool is reached through a
// pointer that outlives it.
enum class PoolState : unsigned char { NotMade, Alive, Gone };
thread_local PoolState poolState = PoolState::NotMade;
thread_local Pool *currentPool = nullptr;

struct PoolOwner {
  PoolOwner() : pool(new (std::nothrow) Pool) {
    currentPool = pool;
    poolState = PoolState::Alive;
  }
  PoolOwner(const PoolOwner &) = delete;
  PoolOwner &operator=(const PoolOwner &) = delete;
  ~PoolOwner() {
    poolState = PoolState::Gone;
    currentPool = nullptr;
    if (pool == nullptr) return;
    for (Block *block : pool->free) {
      while (block != nullptr) {
        Block *next = block->next;
        std::free(block->allocation);
        block = next;
      }
    }
    delete pool;
  }
  Pool *pool;
};

Pool *ThreadPool() {
  if (poolState == PoolState::NotMade) {
    thread_local PoolOwner owner;
    (void)owner;
  }
  return currentPool;
}

// Counts down to the request that a test wants to fail; 0 where none does.
thread_local int requestsToFailure = 0;

thread_local unsigned long long refused = 0;

Block *AllocateBlock(int sizeClass, Pool *pool) {
  const std::size_t elements = ClassElements(sizeClass);
  if (elements > (SIZE_MAX - 2 * kAlignment) / sizeof(double)) return nullptr;
  // Zeroed pages come from the system without being touched.
  void *allocation = std::calloc(1, elements * sizeof(double) + 2 * kAlignment);
  if (allocation == nullptr) return nullptr;
  const auto address = reinterpret_cast<std::uintptr_t>(allocation);
  const std::uintptr_t aligned = (address + kAlignment - 1) / kAlignment * kAlignment;
  Block *block = reinterpret_cast<Block *>(static_cast<std::byte *>(allocation) + (aligned - address));
  *block = Block{nullptr, allocation, sizeClass, 0, 0};
  if (pool != nullptr) ++pool->allocated;
  return block;
}

std::size_t BytesOf(int sizeClass) { return ClassElements(sizeClass) * sizeof(double); }

// The sanitizer knows no blocks, only what was allocated: it is told which elements are in use.
#ifdef TROVENU_POISON_BLOCKS
void GuardElements(Block *block) { ASAN_POISON_MEMORY_REGION(Elements(block), BytesOf(block->sizeClass)); }

void OpenElements(Block *block, int elements) {
  ASAN_UNPOISON_MEMORY_REGION(Elements(block), static_cast<std::size_t>(elements) * sizeof(double));
}

void OpenAllElements(Block *block) {
  ASAN_UNPOISON_MEMORY_REGION(Elements(block), BytesOf(block->sizeClass));
}

void SpoilElements(double *from, double *to) {
  std::fill(from, to, std::numeric_limits<double>::quiet_NaN());
}
#else
void GuardElements(Block *) {}
void OpenElements(Block *, int) {}
void OpenAllElements(Block *) {}
void SpoilElements(double *, double *) {}
#endif

// Frees the block of a class that has waited the longest.
void FreeOldest(Pool &pool, int sizeClass) {
  Block **link = &pool.free[sizeClass];
  while ((*link)->next != nullptr) link = &(*link)->next;
  Block *block = *link;
  *link = nullptr;
  --pool.count[sizeClass];
  pool.retained -= BytesOf(sizeClass);
  std::free(block->allocation);
}

// Frees a block of the class that has not been asked for the longest.
void FreeLeastUsed(Pool &pool) {
  int oldest = -1;
  for (int i = 0; i < kClasses; ++i) {
    if (pool.free[i] != nullptr && (oldest < 0 || pool.lastUse[i] < pool.lastUse[oldest])) oldest = i;
  }
  if (oldest >= 0) FreeOldest(pool, oldest);
}

int WrittenBelow(const Block &block, int firstWritten) {
  return std::max(0, std::min(block.writtenTo, firstWritten) - block.writtenFrom);
}

int WrittenPast(const Block &block, int elements) {
  return std::max(0, block.writtenTo - std::max(block.writtenFrom, elements));
}

int ToClear(const Block &block, int firstWritten, int elements) {
  return WrittenBelow(block, firstWritten) + WrittenPast(block, elements);
}

// Elements that hold 0.0 now and will be written.
int NewlyWritten(const Block &block, int firstWritten, int elements) {
  const int from = std::max(block.writtenFrom, firstWritten);
  const int written = std::max(0, std::min(block.writtenTo, elements) - from);
  return elements - firstWritten - written;
}

// Takes the free block whose written span is most like the one that will be written, so that blocks of which
// little is written stay for those who write little. Null if clearing it costs more than a new block.
Block *TakeFree(Pool &pool, int sizeClass, int firstWritten, int elements) {
  pool.lastUse[sizeClass] = ++pool.requests;
  Block **best = nullptr;
  int leastUnlike = 0;
  for (Block **link = &pool.free[sizeClass]; *link != nullptr; link = &(*link)->next) {
    const int unlike = ToClear(**link, firstWritten, elements) + NewlyWritten(**link, firstWritten, elements);
    if (best == nullptr || unlike < leastUnlike) {
      best = link;
      leastUnlike = unlike;
      if (unlike == 0) break;
    }
  }
  if (best == nullptr) return nullptr;
  Block *block = *best;
  const int cheap = std::max(kCheapClear, (elements - firstWritten) / 2);
  if (ToClear(*block, firstWritten, elements) > cheap) return nullptr;
  *best = block->next;
  --pool.count[sizeClass];
  pool.retained -= BytesOf(sizeClass);
  return block;
}

}  // namespace

double *AcquireBlock(int elements, int firstWritten) {
  const int sizeClass = ClassOf(elements);
  firstWritten = std::min(std::max(firstWritten, 0), elements);
  Pool *pool = ThreadPool();
  Block *block = nullptr;
  if (requestsToFailure == 0 || --requestsToFailure > 0) {
    if (pool != nullptr) block = TakeFree(*pool, sizeClass, firstWritten, elements);
    if (block == nullptr) block = AllocateBlock(sizeClass, pool);
  }
  if (block == nullptr) {
    ++refused;
    return nullptr;
  }
  OpenAllElements(block);
  double *values = Elements(block);
  std::fill_n(values + block->writtenFrom, WrittenBelow(*block, firstWritten), 0.0);
  // The taker will report only its own elements, so nothing may stay behind past them.
  std::fill_n(values + std::max(block->writtenFrom, elements), WrittenPast(*block, elements), 0.0);
  SpoilElements(values + firstWritten, values + elements);
  GuardElements(block);
  OpenElements(block, elements);
  return values;
}

void ReleaseBlock(double *elements, int writtenFrom, int writtenTo) {
  if (elements == nullptr) return;
  Block *block = BlockOf(elements);
  Pool *pool = ThreadPool();
  const std::size_t bytes = BytesOf(block->sizeClass);
  if (pool == nullptr || bytes > kMostRetainedBytes) {
    std::free(block->allocation);
    return;
  }
  if (pool->count[block->sizeClass] >= kBlocksPerClass) FreeOldest(*pool, block->sizeClass);
  while (pool->retained + bytes > kMostRetainedBytes) FreeLeastUsed(*pool);
  block->writtenFrom = std::max(writtenFrom, 0);
  block->writtenTo = std::max(writtenTo, block->writtenFrom);
  GuardElements(block);
  block->next = pool->free[block->sizeClass];
  pool->free[block->sizeClass] = block;
  ++pool->count[block->sizeClass];
  pool->retained += bytes;
}

unsigned long long AllocatedBlockCount() {
  const Pool *pool = ThreadPool();
  return pool != nullptr ? pool->allocated : 0;
}

unsigned long long RefusedBlockCount() { return refused; }

unsigned long long RetainedElementCount() {
  const Pool *pool = ThreadPool();
  return pool != nullptr ? pool->retained / sizeof(double) : 0;
}

void FailBlockAllocation(int n) { requestsToFailure = n; }

}  // namespace trovenu
