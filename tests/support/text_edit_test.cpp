#include "trovenu/support/text_edit.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "trovenu/support/korean.h"

namespace trovenu {
namespace {

TEST(TextEdit, DeleteString) {
  struct Case {
    const char *text, *what, *expected;
  };
  const Case cases[] = {{"abcabc", "b", "acac"},
                        {"abcabc", "abc", ""},
                        {"xabcx", "abc", "xx"},
                        {"aabb", "ab", "ab"},
                        {"aaa", "aa", "a"},
                        {"abc", "x", "abc"},
                        {"abc", "", "abc"},
                        {"abc", nullptr, "abc"},
                        {"", "a", ""},
                        {"시가종가시가"_kr, "시가"_kr, "종가"_kr},
                        {"\xB3\xB0\xA1\xB3", "\xB0\xA1", "\xB3\xB0\xA1\xB3"}};
  for (const Case &c : cases) {
    std::string text(c.text);
    EXPECT_STREQ(DeleteString(text.data(), c.what), c.expected) << c.text;
  }
}

TEST(TextEdit, CutStringUntilKeyTakesFieldAfterField) {
  char text[] = "avg2|(a+b)/2||b";
  char out[sizeof text];
  const char *const fields[] = {"avg2", "(a+b)/2", ""};
  for (const char *field : fields) {
    EXPECT_NE(CutStringUntilKey(text, out, "|"), 0);
    EXPECT_STREQ(out, field);
  }
  EXPECT_EQ(CutStringUntilKey(text, out, "|"), 0);  // the last field has no key behind it
  EXPECT_STREQ(out, "b");
  EXPECT_STREQ(text, "");
  EXPECT_EQ(CutStringUntilKey(text, out, "|"), 0);
  EXPECT_STREQ(out, "");
}

TEST(TextEdit, GetName) {
  struct Case {
    const char *text;
    const char *name;
  };
  const Case cases[] = {{"close", "close"},
                        {"ma(c,5)", "ma"},
                        {"a_1b+c", "a_1b"},
                        {"_a", ""},
                        {"1a", ""},
                        {"", ""},
                        {" a", ""},
                        {nullptr, ""},
                        {"종가(1)"_kr, "종가"_kr},
                        {"a종가1_2 x"_kr, "a종가1_2"_kr},
                        {"period1", "period1"}};
  for (const Case &c : cases) {
    char out[32];
    EXPECT_STREQ(GetName(c.text, out), c.name);
    EXPECT_EQ(NameLength(c.text), std::strlen(c.name));
  }
}

}  // namespace
}  // namespace trovenu
