#include "trovenu/platform/print_format.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
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

// Halves and their neighbours, where a product with a power of ten may round the other way.
TEST(PrintFormat, FixedTextRoundsAsPrintfDoes) {
  for (const double half :
       {0.5, 0.125, 1.005, -2.675, 98.125, 0.00005, 123456.785, 999999999.5, 99999.99995}) {
    for (const double value : {std::nextafter(half, -1e9), half, std::nextafter(half, 1e9), -0.0 * half}) {
      for (int decimals = 0; decimals < 6; ++decimals) {
        char expected[64];
        std::snprintf(expected, sizeof(expected), "%.*f", decimals, value);
        EXPECT_EQ(FixedText(value, decimals), expected) << decimals;
      }
    }
  }
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

}  // namespace
}  // namespace trovenu
