#include "trovenu/platform/print_format.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <climits>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <string>

namespace trovenu {
namespace {

std::string Format(const char *format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  std::string text = FormatText(format, arguments);
  va_end(arguments);
  return text;
}

TEST(PrintFormat, TextAroundConversions) {
  EXPECT_EQ(Format(nullptr), "");
  EXPECT_EQ(Format("100%%"), "100%");
  EXPECT_EQ(Format("%04d.%02d.%02d ~ %s%c", 2024, 1, 9, "ab", '!'), "2024.01.09 ~ ab!");
}

TEST(PrintFormat, WhatIsNoConversionIsCopied) {
  EXPECT_EQ(Format("50%"), "50%");
  EXPECT_EQ(Format("%y %5.1"), "%y %5.1");
  EXPECT_EQ(Format("%-08ly|%d", 3), "%-08ly|3");
}

TEST(PrintFormat, IntegersLayOutAsPrintfDoes) {
  const char *const formats[] = {"%d",    "%5d",    "%-5d|", "%05d", "%+d",  "% d", "%.3d",  "%.0d",
                                 "%8.3d", "%08.3d", "%u",    "%x",   "%X",   "%#x", "%#o",   "%#X",
                                 "%o",    "%#08x",  "%hhd",  "%hd",  "%hhu", "%hu", "%-#6x|"};
  const int values[] = {0, 1, -1, 42, -12345, INT_MAX, INT_MIN};
  for (const char *format : formats) {
    for (int value : values) {
      char expected[64];
      std::snprintf(expected, sizeof(expected), format, value);
      EXPECT_EQ(Format(format, value), expected) << format << ' ' << value;
    }
  }
}

TEST(PrintFormat, LengthModifiersReadTheWholeArgument) {
  EXPECT_EQ(Format("%ld %d", LONG_MIN, 7), std::to_string(LONG_MIN) + " 7");
  EXPECT_EQ(Format("%lu %d", ULONG_MAX, 7), std::to_string(ULONG_MAX) + " 7");
  EXPECT_EQ(Format("%lld %d", LLONG_MIN, 7), "-9223372036854775808 7");
  EXPECT_EQ(Format("%I64u %d", ULLONG_MAX, 7), "18446744073709551615 7");
  EXPECT_EQ(Format("%I32d %d", 5, 7), "5 7");
  EXPECT_EQ(Format("%jd %d", INTMAX_MAX, 7), "9223372036854775807 7");
  EXPECT_EQ(Format("%zu %d", SIZE_MAX, 7), std::to_string(SIZE_MAX) + " 7");
  EXPECT_EQ(Format("%td %d", PTRDIFF_MIN, 7), std::to_string(PTRDIFF_MIN) + " 7");
  EXPECT_EQ(Format("%Lf %d", 1.5L, 7), "1.500000 7");
  EXPECT_EQ(Format("%lf %d", 1.5, 7), "1.500000 7");
}

TEST(PrintFormat, DoublesLayOutAsPrintfDoes) {
  const char *const formats[] = {"%f",    "%.0f",  "%.2f",  "%10.2f", "%-10.2f|", "%010.2f", "%+.1f",
                                 "% .1f", "%#.0f", "%g",    "%.3g",   "%#.3g",    "%.0g",    "%G",
                                 "%e",    "%.0e",  "%#.0e", "%.3E",   "%.20f",    "%.17g",   "%F"};
  const double values[] = {0.0, -0.0, 1.0,  0.5,  1.5,  2.5,      -2.675, 0.1,     99.995,  999999.5,
                           1e5, 1e6,  1e21, 1e-4, 1e-5, 123456.0, 1e100,  DBL_MAX, DBL_MIN, 5e-324};
  for (const char *format : formats) {
    for (double value : values) {
      char expected[512];
      std::snprintf(expected, sizeof(expected), format, value);
      EXPECT_EQ(Format(format, value), expected) << format << ' ' << value;
    }
  }
}

TEST(PrintFormat, GeneralFormKeepsItsZerosWhenAsked) {
  EXPECT_EQ(Format("%#g %#g %#g", 1.0, 999999.5, 1e-5), "1.00000 1.00000e+06 1.00000e-05");
}

TEST(PrintFormat, HexadecimalDoubles) {
  EXPECT_EQ(Format("%a %a %.1A %010a", 1.0, -1.5, 1.0, 1.0), "0x1p+0 -0x1.8p+0 0X1.0P+0 0x00001p+0");
}

TEST(PrintFormat, ExponentsHaveTwoDigitsOrMore) {
  EXPECT_EQ(Format("%g %g %g %E", 1e6, 1e-5, 1e100, 2.0), "1e+06 1e-05 1e+100 2.000000E+00");
}

TEST(PrintFormat, WhatIsNoNumberReadsAlikeEverywhere) {
  const double inf = std::numeric_limits<double>::infinity();
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(Format("%f %.2f %g %08.1f|%-6f|%G", nan, -nan, inf, -inf, inf, nan),
            "nan nan inf     -inf|inf   |NAN");
}

TEST(PrintFormat, Texts) {
  const char unfinished[] = {'a', 'b', 'c'};
  EXPECT_EQ(Format("[%5s][%-5s][%.2s][%.*s]", "ab", "ab", "abc", 3, unfinished), "[   ab][ab   ][ab][abc]");
  EXPECT_EQ(Format("[%3s]", static_cast<const char *>(nullptr)), "[   ]");
  EXPECT_EQ(Format("[%*d][%*d][%.*d][%.*f]", 4, 1, -4, 1, -1, 0, -5, 1.5), "[   1][1   ][0][1.500000]");
  EXPECT_EQ(Format("%ls%lc", L"가", static_cast<std::wint_t>(L'나')), "\xB0\xA1\xB3\xAA");
}

TEST(PrintFormat, HugeWidthsAndPrecisionsStayBounded) {
  EXPECT_EQ(Format("%999999999999d", 1).size(), static_cast<std::size_t>(kWidestField));
  EXPECT_EQ(Format("%*d", INT_MIN, 1).size(), static_cast<std::size_t>(kWidestField));
  EXPECT_EQ(Format("%.999999999f", 1.0).size(), 2U + kMostDecimals);
  EXPECT_EQ(Format("%.2000f", -DBL_MAX).size(), 311U + kMostDecimals);
}

TEST(PrintFormat, PercentNWritesNothing) {
  int written = 77;
  EXPECT_EQ(Format("ab%n%d", &written, 5), "ab5");
  EXPECT_EQ(written, 77);
}

TEST(PrintFormat, FixedText) {
  EXPECT_EQ(FixedText(1234.5, 2), "1234.50");
  EXPECT_EQ(FixedText(0.125, 2), "0.12");  // a tie goes to the even digit
  EXPECT_EQ(FixedText(0.375, 2), "0.38");
  EXPECT_EQ(FixedText(2.5, -3), "2");
  EXPECT_EQ(FixedText(1e22, 0), "10000000000000000000000");
}

TEST(PrintFormat, GeneralText) {
  EXPECT_EQ(GeneralText(1234567.0, 6), "1.23457e+06");
  EXPECT_EQ(GeneralText(100.0, 6), "100");
  EXPECT_EQ(GeneralText(0.00012, 0), "0.0001");
}

}  // namespace
}  // namespace trovenu
