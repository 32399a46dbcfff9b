#include "trovenu/platform/code_page.h"

#include <gtest/gtest.h>

#include <string>

#include "trovenu/platform/code_page_text.h"
#include "trovenu/support/korean.h"

namespace trovenu {
namespace {

TEST(CodePage, EveryTwoByteCharacterComesBack) {
  int characters = 0;
  for (int lead = 0x81; lead <= 0xFE; ++lead) {
    for (int trail = 0; trail < 256; ++trail) {
      if (!IsTrailByte(static_cast<char>(trail))) continue;
      const std::string character = {static_cast<char>(lead), static_cast<char>(trail)};
      bool ok = false;
      const std::string utf8 = Utf8FromCodePage(character, &ok);
      if (!ok) {
        EXPECT_EQ(utf8, "\uFFFD") << lead << ' ' << trail;
        continue;
      }
      EXPECT_EQ(CodePageFromUtf8(utf8, &ok), character) << lead << ' ' << trail;
      EXPECT_TRUE(ok) << lead << ' ' << trail;
      ++characters;
    }
  }
  // 2,350 and 8,822 syllables, 4,888 ideographs and 988 signs. Some platforms add a few of their own.
  EXPECT_GE(characters, 17048);
}

TEST(CodePage, EverySyllableOfUnicodeHasItsBytes) {
  std::string utf8;
  for (unsigned c = 0xAC00; c <= 0xD7A3; ++c) {
    utf8 += static_cast<char>(0xE0U | c >> 12);
    utf8 += static_cast<char>(0x80U | (c >> 6 & 0x3FU));
    utf8 += static_cast<char>(0x80U | (c & 0x3FU));
  }
  bool ok = false;
  const std::string bytes = CodePageFromUtf8(utf8, &ok);
  EXPECT_TRUE(ok);
  EXPECT_EQ(bytes.size(), 2U * 11172U);
  EXPECT_EQ(Utf8FromCodePage(bytes, &ok), utf8);
  EXPECT_TRUE(ok);
}

TEST(CodePage, AgreesWithLiterals) {
  const std::string syllables = CodePageFromUtf8("가나다끝힝×÷≤≥▒▦ abc", nullptr);
  EXPECT_EQ(syllables, "가나다끝힝×÷≤≥▒▦ abc"_kr);
}

TEST(CodePage, BadUtf8BecomesQuestionMarks) {
  struct Case {
    std::string utf8;
    std::string expected;
    bool ok;
  };
  const Case cases[] = {
      {"", "", true},
      {std::string("a\0b", 3), std::string("a\0b", 3), true},
      {"똠방각하", "\x8C\x63\xB9\xE6\xB0\xA2\xC7\xCF", true},  // the first syllable is in the extension alone
      {"a\U0001F600"
       "b",
       "a?b", false},
      {"a\xFF"
       "b",
       "a?b", false},
      {"\xEA\xB0", "?", false},
      {"가\xEA", "\xB0\xA1?", false},
  };
  for (const Case &c : cases) {
    bool ok = !c.ok;
    EXPECT_EQ(CodePageFromUtf8(c.utf8, &ok), c.expected) << c.utf8;
    EXPECT_EQ(ok, c.ok) << c.utf8;
  }
}

TEST(CodePage, BadBytesBecomeReplacementCharacters) {
  struct Case {
    std::string bytes;
    std::string expected;
    bool ok;
  };
  const Case cases[] = {
      {"", "", true},
      {"\xB0\xA1", "가", true},
      {"\xB0", "\uFFFD", false},
      {"\xB0 \xB0\xA1", "\uFFFD 가", false},
      // A faulty pair goes as one: its second byte must not be taken for the first of the next.
      {"\x81\x30\xB0\xA1", "\uFFFD0가", false},
      {"\xFE\xFE\xB0\xA1", "\uFFFD가", false},
  };
  for (const Case &c : cases) {
#if defined(_WIN32)
    if (c.bytes[0] == '\xFE') continue;  // holds the user's own characters there
#endif
    bool ok = !c.ok;
    EXPECT_EQ(Utf8FromCodePage(c.bytes, &ok), c.expected) << c.expected;
    EXPECT_EQ(ok, c.ok) << c.expected;
  }
}

TEST(CodePage, LongTextPassesWhole) {
  std::string utf8;
  std::string bytes;
  for (int i = 0; i < 10000; ++i) {
    utf8 += "x가";
    bytes += "x가"_kr;
  }
  EXPECT_EQ(CodePageFromUtf8(utf8, nullptr), bytes);
  EXPECT_EQ(Utf8FromCodePage(bytes, nullptr), utf8);
}

TEST(CodePage, WideText) {
  bool ok = false;
  EXPECT_EQ(CodePageFromWide(L"a종가", &ok), "a종가"_kr);
  EXPECT_TRUE(ok);
  EXPECT_EQ(CodePageFromWide(L"a\u1234b", &ok), "a?b");
  EXPECT_FALSE(ok);
}

}  // namespace
}  // namespace trovenu
