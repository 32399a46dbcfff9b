#pragma once

/// \file
/// Blocks of elements for series, recycled per thread.
///
/// A fresh page from the operating system costs more than the arithmetic that fills it, so a block that a
/// series gives back waits for the next series of about its size. Each thread keeps its own few blocks; a
/// block may be given back on another thread than the one that took it.
///
/// Invariant: a block that is handed out holds 0.0 in every element below the first one that its taker
/// promises to write. A block remembers which span was written, so that a series of which only the tail was
/// computed costs what the tail costs and never a pass over all bars.
///
/// Built with the address sanitizer, the idle part of a block and a block that waits may not be touched, and
/// the elements that a taker promises to write hold NaN until it does.

#include <cstddef>

namespace trovenu {

/// What a thread's pool keeps at most.
inline constexpr std::size_t kMostRetainedBytes = std::size_t{sizeof(void *) == 4 ? 16 : 96} << 20;

/// Takes a block for `elements` values (at least 1). Every element below `firstWritten` reads as 0.0; the
/// taker writes those from there on before it reads them. \return the first element, aligned to 64 bytes, or
/// null when memory is exhausted.
double *AcquireBlock(int elements, int firstWritten);

/// Gives a block back. Elements outside `writtenFrom` to `writtenTo` - 1 must hold 0.0. Null is ignored.
void ReleaseBlock(double *block, int writtenFrom, int writtenTo);

/// Blocks taken from the system's allocator by this thread so far; a steady state leaves it unchanged.
unsigned long long AllocatedBlockCount();

/// Blocks that this thread was refused so far for want of memory: a calculation during which that grows is
/// not to be built upon.
unsigned long long RefusedBlockCount();

/// Elements in the blocks that wait in this thread's pool.
unsigned long long RetainedElementCount();

/// For tests: the n-th block from now on that this thread asks for (1 is the next) is refused, as when memory
/// is exhausted; 0 withdraws that.
void FailBlockAllocation(int n);

}  // namespace trovenu
