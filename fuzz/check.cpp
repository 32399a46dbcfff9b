#include "fuzz/check.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace trovenu::fuzz {

void Require(bool holds, const char *what) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %s\n", what);
  std::abort();
}

bool IsSameNumber(double a, double b) {
  if (a != a && b != b) return true;
  return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

bool IsSameSeries(const SVector &a, const SVector &b) {
  if ((a.isSeries != 0) != (b.isSeries != 0) || a.size != b.size || a.startIndex != b.startIndex)
    return false;
  for (int i = std::max(a.startIndex, 0); i < a.size; ++i) {
    if (!IsSameNumber(a[i], b[i])) return false;
  }
  return true;
}

bool HaveSameElements(const SVector &a, const SVector &b) {
  return a.size == b.size && std::equal(a.data, a.data + a.size, b.data, IsSameNumber);
}

}  // namespace trovenu::fuzz
