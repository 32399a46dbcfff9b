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

int CompareNoCase(const char *left, const char *right) {
  if (left == nullptr) left = "";
  if (right == nullptr) right = "";
  bool afterLead = false;
  for (;; ++left, ++right) {
    const char a = afterLead ? *left : ToLowerAscii(*left);
    const char b = afterLead ? *right : ToLowerAscii(*right);
    if (a != b) return static_cast<unsigned char>(a) < static_cast<unsigned char>(b) ? -1 : 1;
    if (a == '\0') return 0;
    afterLead = !afterLead && IsLeadByte(a);
  }
}

bool EqualNoCase(const char *left, const char *right) { return CompareNoCase(left, right) == 0; }

std::size_t CutAtCharacter(const char *text, std::size_t bytes) {
  if (text == nullptr) return 0;
  std::size_t length = 0;
  while (length < bytes && text[length] != '\0') {
    const std::size_t step = IsLeadByte(text[length]) && IsTrailByte(text[length + 1]) ? 2 : 1;
    if (length + step > bytes) break;
    length += step;
  }
  return length;
}

}  // namespace trovenu
