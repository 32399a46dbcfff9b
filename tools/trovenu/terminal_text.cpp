#include "tools/trovenu/terminal_text.h"

#include <algorithm>
#include <iterator>

#include "trovenu/platform/code_page.h"

namespace trovenu::tool {

namespace {

struct CharacterRange {
  char32_t first;
  char32_t last;
};

// Characters that take two columns, in ascending order.
constexpr CharacterRange kWide[] = {
    {0x1100, 0x115F}, {0x2E80, 0x303E}, {0x3041, 0x33FF},   {0x3400, 0x4DBF},   {0x4E00, 0x9FFF},
    {0xA000, 0xA4CF}, {0xA960, 0xA97F}, {0xAC00, 0xD7A3},   {0xF900, 0xFAFF},   {0xFE30, 0xFE6F},
    {0xFF00, 0xFF60}, {0xFFE0, 0xFFE6}, {0x1F300, 0x1F64F}, {0x1F900, 0x1F9FF}, {0x20000, 0x3FFFD},
};

// Characters that take none, in ascending order.
constexpr CharacterRange kJoining[] = {
    {0x0300, 0x036F}, {0x1160, 0x11FF}, {0x200B, 0x200F},
    {0x20D0, 0x20FF}, {0xFE00, 0xFE0F}, {0xFEFF, 0xFEFF},
};

template <std::size_t N>
bool Contains(const CharacterRange (&ranges)[N], char32_t character) {
  const auto *range = std::lower_bound(std::begin(ranges), std::end(ranges), character,
                                       [](const CharacterRange &r, char32_t c) { return r.last < c; });
  return range != std::end(ranges) && range->first <= character;
}

constexpr char32_t kMalformed = 0xFFFFFFFF;

// Reads the character at `at` and moves behind it; `kMalformed`, and one byte on, if none is well-formed
// there.
char32_t NextCharacter(std::string_view text, std::size_t &at) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char lead = byte(at++);
  if (lead < 0x80) return lead;
  const std::size_t more = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
  if (lead < 0xC2 || lead > 0xF4 || at + more > text.size()) return kMalformed;
  char32_t character = lead & (0x3FU >> more);
  for (std::size_t i = 0; i < more; ++i) {
    if ((byte(at + i) & 0xC0) != 0x80) return kMalformed;
    character = (character << 6) | (byte(at + i) & 0x3FU);
  }
  constexpr char32_t kLeast[] = {0, 0x80, 0x800, 0x10000};
  const bool surrogate = character >= 0xD800 && character <= 0xDFFF;
  if (character < kLeast[more] || character > 0x10FFFF || surrogate) return kMalformed;
  at += more;
  return character;
}

std::size_t WidthOf(char32_t character) {
  if (character < 0x300) return 1;
  if (Contains(kJoining, character)) return 0;
  return Contains(kWide, character) ? 2 : 1;
}

bool IsBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

}  // namespace

bool IsUtf8(std::string_view text) {
  for (std::size_t at = 0; at < text.size();) {
    if (NextCharacter(text, at) == kMalformed) return false;
  }
  return true;
}

std::string ToUtf8(std::string_view text) {
  if (IsUtf8(text)) return std::string(text);
  bool ok = true;
  std::string converted = Utf8FromCodePage(text, &ok);
  if (ok) return converted;
  std::string ascii(text);
  std::replace_if(
      ascii.begin(), ascii.end(), [](char c) { return static_cast<unsigned char>(c) >= 0x80; }, '?');
  return ascii;
}

std::size_t DisplayWidth(std::string_view utf8) {
  std::size_t width = 0;
  for (std::size_t at = 0; at < utf8.size();) width += WidthOf(NextCharacter(utf8, at));
  return width;
}

std::string Quoted(std::string_view text) {
  constexpr std::size_t kMost = 40;
  const std::string utf8 = ToUtf8(text);
  std::string shown = "\"";
  std::size_t width = 0;
  for (std::size_t at = 0; at < utf8.size();) {
    const std::size_t begin = at;
    const char32_t character = NextCharacter(utf8, at);
    width += WidthOf(character);
    if (width > kMost) return shown + "...\"";
    if (character < 0x20 || character == 0x7F) {
      shown += '?';
    } else {
      shown.append(utf8, begin, at - begin);
    }
  }
  return shown + '"';
}

std::string OneLine(std::string_view text) {
  std::string line;
  for (const char c : TrimBlanks(text)) {
    if (!IsBlank(c)) {
      line += c;
    } else if (line.back() != ' ') {
      line += ' ';
    }
  }
  return line;
}

std::string_view TrimBlanks(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

}  // namespace trovenu::tool
