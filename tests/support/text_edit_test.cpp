#include "trovenu/support/text_edit.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "trovenu/support/korean.h"

namespace trovenu {
namespace {

/// A writable copy of a text, no larger than the text, so that a write behind it is seen.
class Buffer {
 public:
  explicit Buffer(const std::string &text) : bytes_(new char[text.size() + 1]) {
    std::memcpy(bytes_, text.c_str(), text.size() + 1);
  }
  ~Buffer() { delete[] bytes_; }
  Buffer(const Buffer &) = delete;
  Buffer &operator=(const Buffer &) = delete;
  operator char *() { return bytes_; }

 private:
  char *bytes_;
};

TEST(TextEdit, DeleteAllSpace) {
  Buffer text(" a  b\tc ");
  char *start = text;
  EXPECT_EQ(DeleteAllSpace(text), start);
  EXPECT_STREQ(text, "ab\tc");
  EXPECT_EQ(DeleteAllSpace(nullptr), nullptr);
}

TEST(TextEdit, DeleteEscapeCharacter) {
  Buffer text("\ta\n b\r\v\f\x08\x0E종"_kr);
  char *start = text;
  EXPECT_EQ(DeleteEscapeCharacter(text), start);
  EXPECT_STREQ(text, "a b\x08\x0E\xC1\xBE");
  EXPECT_EQ(DeleteEscapeCharacter(nullptr), nullptr);
}

TEST(TextEdit, DeleteString) {
  struct Case {
    const char *text;
    const char *what;
    const char *expected;
  };
  const Case cases[] = {
      {"abcabc", "b", "acac"},
      {"abcabc", "abc", ""},
      {"xabcx", "abc", "xx"},
      {"aabb", "ab", "ab"},  // what comes together stays
      {"aaa", "aa", "a"},
      {"abc", "x", "abc"},
      {"abc", "", "abc"},
      {"abc", nullptr, "abc"},
      {"", "a", ""},
      {"시가종가시가"_kr, "시가"_kr, "종가"_kr},
      {"\xB3\xB0\xA1\xB3", "\xB0\xA1", "\xB3\xB0\xA1\xB3"},  // across two characters
  };
  for (const Case &c : cases) {
    Buffer text(c.text);
    char *start = text;
    EXPECT_EQ(DeleteString(text, c.what), start);
    EXPECT_STREQ(text, c.expected) << c.text;
  }
  EXPECT_EQ(DeleteString(nullptr, "a"), nullptr);
}

TEST(TextEdit, FindString) {
  Buffer text("a(b)종가"_kr);
  char *start = text;
  EXPECT_EQ(FindString(text, "("), start + 1);
  EXPECT_EQ(FindString(text, "종가"_kr), start + 4);
  EXPECT_EQ(FindString(text, "x"), nullptr);
  EXPECT_EQ(FindString(text, ""), start);
  EXPECT_EQ(FindString(text, nullptr), start);
  EXPECT_EQ(FindString(nullptr, "x"), nullptr);
}

TEST(TextEdit, CutStringUntilKeyTakesFieldAfterField) {
  Buffer text("avg2|(a+b)/2||b");
  Buffer out("avg2|(a+b)/2||b");
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

TEST(TextEdit, CutStringUntilKeyWithOddArguments) {
  Buffer text("a::b");
  Buffer out("a::b");
  EXPECT_NE(CutStringUntilKey(text, nullptr, "::"), 0);
  EXPECT_STREQ(text, "b");
  EXPECT_EQ(CutStringUntilKey(text, out, ""), 0);
  EXPECT_STREQ(out, "b");
  EXPECT_EQ(CutStringUntilKey(nullptr, out, "|"), 0);
  EXPECT_STREQ(out, "");
}

TEST(TextEdit, GetName) {
  struct Case {
    const char *text;
    const char *name;
  };
  const Case cases[] = {
      {"close", "close"},
      {"ma(c,5)", "ma"},
      {"a_1b+c", "a_1b"},
      {"_a", ""},
      {"1a", ""},
      {"", ""},
      {" a", ""},
      {nullptr, ""},
      {"종가(1)"_kr, "종가"_kr},
      {"a종가1_2 x"_kr, "a종가1_2"_kr},
      {"period1", "period1"},
  };
  for (const Case &c : cases) {
    Buffer out(std::string(c.name));
    out[0] = '?';
    char *start = out;
    EXPECT_EQ(GetName(c.text, out), start);
    EXPECT_STREQ(out, c.name);
    EXPECT_EQ(NameLength(c.text), std::strlen(c.name));
  }
  EXPECT_EQ(GetName("abc", nullptr), nullptr);
}

}  // namespace
}  // namespace trovenu
