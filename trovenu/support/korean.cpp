#include "trovenu/support/korean.h"

#include <iterator>

namespace trovenu {

namespace {

constexpr int kTrailBytes = 94;

consteval bool SyllablesAscend() {
  for (int i = 1; i < kKoreanSyllableCount; ++i) {
    if (kKoreanSyllables[i] <= kKoreanSyllables[i - 1]) return false;
  }
  return true;
}

static_assert(std::size(kKoreanSyllables) == kKoreanSyllableCount + 1);
static_assert(kKoreanSyllableCount == (0xC8 - 0xB0 + 1) * kTrailBytes);
static_assert(SyllablesAscend());

}  // namespace

}  // namespace trovenu
