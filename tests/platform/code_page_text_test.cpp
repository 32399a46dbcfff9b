#include "trovenu/platform/code_page_text.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "trovenu/support/korean.h"

namespace trovenu {
namespace {

TEST(CodePageText, HangulBytesRunFrom161To254) {
  for (int byte = 0; byte < 256; ++byte) {
    EXPECT_EQ(isHangul(static_cast<char>(byte)), byte >= 161 && byte <= 254) << byte;
  }
}

TEST(CodePageText, LettersAndDigitsAreAsciiAlone) {
  const std::string letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
  for (int byte = 1; byte < 256; ++byte) {
    const char c = static_cast<char>(byte);
    EXPECT_EQ(IsLetterAscii(c), letters.find(c) != std::string::npos) << byte;
    EXPECT_EQ(IsDigitAscii(c), std::strchr("0123456789", c) != nullptr) << byte;
    if (byte >= 128) {
      EXPECT_EQ(ToLowerAscii(c), c) << byte;
      EXPECT_EQ(ToUpperAscii(c), c) << byte;
    }
  }
  EXPECT_EQ(ToLowerAscii('Z'), 'z');
  EXPECT_EQ(ToLowerAscii('['), '[');
  EXPECT_EQ(ToUpperAscii('a'), 'A');
}

TEST(CodePageText, CompareNoCaseFoldsLettersOnly) {
  struct Case {
    const char *left;
    const char *right;
    int order;
  };
  const Case cases[] = {
      {"And", "aND", 0},
      {"", nullptr, 0},
      {nullptr, "a", -1},
      {"abc", "ABD", -1},
      {"ab", "ABC", -1},
      {"[", "a", -1},  // '[' lies between the two alphabets
      {"종가"_kr, "종가"_kr, 0},
      {"z", "가"_kr, -1},
      {"종가A"_kr, "종가a"_kr, 0},
      // Two characters of the extension whose second bytes are a letter and its capital.
      {"\x81\x41", "\x81\x61", -1},
      {"\x81\x41"
       "A",
       "\x81\x41"
       "a",
       0},
  };
  for (const Case &c : cases) {
    const int order = CompareNoCase(c.left, c.right);
    EXPECT_EQ((order > 0) - (order < 0), c.order) << (c.left ? c.left : "null");
    const int reverse = CompareNoCase(c.right, c.left);
    EXPECT_EQ((reverse > 0) - (reverse < 0), -c.order) << (c.left ? c.left : "null");
    EXPECT_EQ(EqualNoCase(c.left, c.right), c.order == 0);
  }
}

TEST(CodePageText, FindMatchesWholeCharacters) {
  struct Case {
    const char *text;
    const char *what;
    std::size_t from;
    std::size_t expected;
  };
  const Case cases[] = {
      {"abcabc", "ca", 0, 2},
      {"abcabc", "bc", 2, 4},
      {"abc", "abcd", 0, std::string::npos},
      {"abc", "", 1, 1},
      {"abc", "", 4, std::string::npos},
      {"", "", 0, 0},
      {"시가종가"_kr, "종가"_kr, 0, 4},
      // The bytes B0 A1 stand across the border of the two characters.
      {"\xB3\xB0\xA1\xB3", "\xB0\xA1", 0, std::string::npos},
      {"\x81\x41"
       "A",
       "A", 0, 2},
  };
  for (const Case &c : cases)
    EXPECT_EQ(FindText(c.text, c.what, c.from), c.expected) << c.text << ' ' << c.what;
}

TEST(CodePageText, CutNeverSplitsACharacter) {
  struct Case {
    const char *text;
    std::size_t bytes;
    std::size_t expected;
  };
  const Case cases[] = {
      {nullptr, 5, 0},
      {"", 5, 0},
      {"abc", 2, 2},
      {"abc", 9, 3},
      {"종가"_kr, 4, 4},
      {"종가"_kr, 3, 2},
      {"종가"_kr, 1, 0},
      {"a종가"_kr, 2, 1},
      {"a종가"_kr, 3, 3},
      // Every byte of a run is in the lead range, so only counting from the front finds the boundary.
      {"가나다라마"_kr, 9, 8},
      // A letter as second byte.
      {"\x81\x41"
       "b",
       1, 0},
      {"\x81\x41"
       "b",
       2, 2},
      // A lead byte without its second byte stands alone.
      {"\xB0", 1, 1},
      {"\xB0 x", 1, 1},
  };
  for (const Case &c : cases) {
    EXPECT_EQ(CutAtCharacter(c.text, c.bytes), c.expected) << (c.text ? c.text : "null") << ' ' << c.bytes;
  }
}

}  // namespace
}  // namespace trovenu
