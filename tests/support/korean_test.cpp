#include "trovenu/support/korean.h"

#include <gtest/gtest.h>

#include <string_view>

namespace trovenu {
namespace {

TEST(KoreanLiteral, HoldsCodePageBytes) {
  // The corners of the table, the two sides of a row border, and every symbol.
  EXPECT_STREQ("가"_kr, "\xB0\xA1");
  EXPECT_STREQ("쉼"_kr, "\xBD\xB0");
  EXPECT_STREQ("끝"_kr, "\xB3\xA1");
  EXPECT_STREQ("끙"_kr, "\xB2\xFE");
  EXPECT_STREQ("힝"_kr, "\xC8\xFE");
  EXPECT_STREQ("종가"_kr, "\xC1\xBE\xB0\xA1");
  EXPECT_STREQ("×÷≤≥▒▦"_kr, "\xA1\xBF\xA1\xC0\xA1\xC2\xA1\xC3\xA2\xC6\xA2\xCB");
}

TEST(KoreanLiteral, LeavesAsciiAlone) {
  EXPECT_STREQ(""_kr, "");
  EXPECT_STREQ("ma(종가, 5)\n"_kr, "ma(\xC1\xBE\xB0\xA1, 5)\n");
}

TEST(KoreanLiteral, ServesConstantTables) {
  struct Word {
    const char *text;
    int code;
  };
  static constexpr Word kWords[] = {{"종가"_kr, 1}, {"close", 1}, {"시가"_kr, 2}};
  static_assert(std::string_view(kWords[0].text).size() == 4);
  static_assert(std::string_view(kWords[0].text) != std::string_view(kWords[2].text));
  EXPECT_STREQ(kWords[2].text, "\xBD\xC3\xB0\xA1");
}

}  // namespace
}  // namespace trovenu
