#pragma once

#include <array>
#include <cstddef>

#include "trovenu/platform/code_page_text.h"
#include "trovenu/support/korean_syllables.h"

namespace trovenu {

/// One character outside the syllables that texts of the library use, with its two code-page bytes.
struct KoreanSymbol {
  char16_t character;
  unsigned char lead;
  unsigned char trail;
};

/// Every such character. A text that needs another one gets a line here.
inline constexpr KoreanSymbol kKoreanSymbols[] = {
    {u'×', 0xA1, 0xBF}, {u'÷', 0xA1, 0xC0}, {u'≤', 0xA1, 0xC2},
    {u'≥', 0xA1, 0xC3}, {u'▒', 0xA2, 0xC6}, {u'▦', 0xA2, 0xCB},
};

/// Never defined: calling it makes a literal that the code page can't hold a compile error that names the
/// fault.
void LiteralHasCharacterOutsideTheKoreanTables();

/// A literal as the compiler holds it: UTF-8 with its final zero.
template <std::size_t kSize>
struct Utf8Literal {
  char bytes[kSize];

  // Implicit, since a literal operator takes its text so.
  consteval Utf8Literal(const char (&text)[kSize]) {
    for (std::size_t i = 0; i < kSize; ++i) bytes[i] = text[i];
  }
};

/// Turns the UTF-8 `text` with its final zero, `size` bytes in all, into code-page bytes at `out`, the final
/// zero included, and returns their number. A null `out` only counts.
constexpr std::size_t EncodeKorean(const char *text, std::size_t size, char *out) {
  std::size_t length = 0;
  const auto put = [&](unsigned byte) {
    if (out != nullptr) out[length] = static_cast<char>(static_cast<unsigned char>(byte));
    ++length;
  };
  const auto byteAt = [&](std::size_t i) { return i < size ? static_cast<unsigned char>(text[i]) : 0U; };
  const auto continuation = [&](std::size_t i) {
    if ((byteAt(i) & 0xC0U) != 0x80U) LiteralHasCharacterOutsideTheKoreanTables();
    return byteAt(i) & 0x3FU;
  };

  for (std::size_t i = 0; i < size;) {
    const unsigned first = byteAt(i);
    if (first < 0x80U) {
      put(first);
      i += 1;
      continue;
    }
    unsigned character = 0;
    if ((first & 0xE0U) == 0xC0U) {
      character = (first & 0x1FU) << 6 | continuation(i + 1);
      i += 2;
    } else if ((first & 0xF0U) == 0xE0U) {
      character = (first & 0x0FU) << 12 | continuation(i + 1) << 6 | continuation(i + 2);
      i += 3;
    } else {
      LiteralHasCharacterOutsideTheKoreanTables();
    }

    int low = 0;
    int high = kKoreanSyllableCount;
    while (low < high) {
      const int middle = (low + high) / 2;
      if (kKoreanSyllables[middle] < character) {
        low = middle + 1;
      } else {
        high = middle;
      }
    }
    if (low < kKoreanSyllableCount && kKoreanSyllables[low] == character) {
      put(0xB0U + static_cast<unsigned>(low) / 94);
      put(0xA1U + static_cast<unsigned>(low) % 94);
      continue;
    }
    bool found = false;
    for (const KoreanSymbol &symbol : kKoreanSymbols) {
      if (symbol.character != character) continue;
      put(symbol.lead);
      put(symbol.trail);
      found = true;
    }
    if (!found) LiteralHasCharacterOutsideTheKoreanTables();
  }
  return length;
}

/// The code-page bytes of a literal. One object for each distinct literal in the program.
template <Utf8Literal kLiteral>
struct KoreanLiteral {
  static constexpr std::size_t kSize = EncodeKorean(kLiteral.bytes, sizeof(kLiteral.bytes), nullptr);
  static constexpr std::array<char, kSize> kBytes = [] {
    std::array<char, kSize> bytes{};
    EncodeKorean(kLiteral.bytes, sizeof(kLiteral.bytes), bytes.data());
    return bytes;
  }();
};

/// `"종가"_kr`: the text in code-page bytes, made at compile time, with static storage and a final zero.
/// ASCII stays as it is. A character outside the tables doesn't compile.
template <Utf8Literal kLiteral>
consteval const char *operator""_kr() {
  return KoreanLiteral<kLiteral>::kBytes.data();
}

}  // namespace trovenu
