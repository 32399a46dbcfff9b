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

TEST(CodePage, BadUtf8BecomesQuestionMarks) {
  struct Case {
    std::string utf8;
    std::string expected;
    bool ok;
  };
  const Case cases[] = {{"", "", true},
                        {std::string("a\0b", 3), std::string("a\0b", 3), true},
                        {"똠방각하", "\x8C\x63\xB9\xE6\xB0\xA2\xC7\xCF", true},
                        {"a\U0001F600"
                         "b",
                         "a?b", false},
                        {"a\xFF"
                         "b",
                         "a?b", false},
                        {"\xEA\xB0", "?", false},
                        {"가\xEA", "\xB0\xA1?", false}};
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

}  // namespace
}  // namespace trovenu
