#include <atomic>

#include "trovenu/support/kernels/builds.h"

namespace trovenu {
namespace {

std::atomic<const Kernels *> inUse = nullptr;

bool ProcessorHasAvx2() {
#if (defined(__x86_64__) || defined(__i386__)) && defined(__GNUC__)
  return __builtin_cpu_supports("avx2") != 0;
#else
  return false;
#endif
}

const Kernels *Find(Instructions instructions) {
  if (instructions == Instructions::Baseline) return BaselineKernels();
  return ProcessorHasAvx2() ? Avx2Kernels() : nullptr;
}

const Kernels &Choose() {
  const Kernels *best = Find(Instructions::Avx2);
  if (best == nullptr) best = BaselineKernels();
  // Two threads that come here at once choose alike; a choice that was made on purpose stays.
  const Kernels *none = nullptr;
  inUse.compare_exchange_strong(none, best, std::memory_order_relaxed);
  return *inUse.load(std::memory_order_relaxed);
}

}  // namespace

const Kernels &ActiveKernels() {
  const Kernels *kernels = inUse.load(std::memory_order_relaxed);
  return kernels != nullptr ? *kernels : Choose();
}

bool UseInstructions(Instructions instructions) {
  const Kernels *kernels = Find(instructions);
  if (kernels == nullptr) return false;
  inUse.store(kernels, std::memory_order_relaxed);
  return true;
}

Instructions InstructionsInUse() {
  return &ActiveKernels() == BaselineKernels() ? Instructions::Baseline : Instructions::Avx2;
}

}  // namespace trovenu
