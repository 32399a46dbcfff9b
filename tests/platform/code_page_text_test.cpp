#include "trovenu/platform/code_page_text.h"

#include <gtest/gtest.h>

#include "trovenu/support/korean.h"

namespace trovenu {
namespace {

TEST(CodePageText, CompareNoCaseFoldsLettersOnly) {
  struct Case {
    const char *left;
    const char *right;
    int order;
  };
  const Case cases[] = {{"And", "aND", 0},
                        {"", nullptr, 0},
                        {nullptr, "a", -1},
                        {"abc", "ABD", -1},
                        {"ab", "ABC", -1},
                        {"[", "a", -1},
                        {"종가"_kr, "종가"_kr, 0},
                        {"z", "가"_kr, -1},
                        {"종가A"_kr, "종가a"_kr, 0},
                        {"\x81\x41", "\x81\x61", -1},
                        {"\x81\x41"
                         "A",
                         "\x81\x41"
                         "a",
                         0}};
  for (const Case &c : cases) {
    const int order = CompareNoCase(c.left, c.right);
    EXPECT_EQ((order > 0) - (order < 0), c.order) << (c.left ? c.left : "null");
    const int reverse = CompareNoCase(c.right, c.left);
    EXPECT_EQ((reverse > 0) - (reverse < 0), -c.order) << (c.left ? c.left : "null");
    EXPECT_EQ(EqualNoCase(c.left, c.right), c.order == 0);
  }
}

TEST(CodePageText, CutNeverSplitsACharacter) {
  struct Case {
    const char *text;
    std::size_t bytes;
    std::size_t expected;
  };
  const Case cases[] = {{nullptr, 5, 0},
                        {"", 5, 0},
                        {"abc", 2, 2},
                        {"abc", 9, 3},
                        {"종가"_kr, 4, 4},
                        {"종가"_kr, 3, 2},
                        {"종가"_kr, 1, 0},
                        {"a종가"_kr, 2, 1},
                        {"a종가"_kr, 3, 3},
                        {"가나다라마"_kr, 9, 8},
                        {"\x81\x41"
                         "b",
                         1, 0},
                        {"\x81\x41"
                         "b",
                         2, 2},
                        {"\xB0", 1, 1},
                        {"\xB0 x", 1, 1}};
  for (const Case &c : cases) {
    EXPECT_EQ(CutAtCharacter(c.text, c.bytes), c.expected) << (c.text ? c.text : "null") << ' ' << c.bytes;
  }
}

}  // namespace
}  // namespace trovenu
