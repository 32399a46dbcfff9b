#include "trovenu/support/number_text.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <climits>
#include <limits>
#include <string>

namespace trovenu {
namespace {

const double kNan = std::numeric_limits<double>::quiet_NaN();
const double kInf = std::numeric_limits<double>::infinity();

TEST(NumberText, AnsiStringToFloatTakesWholeNumbersOnly) {
  const struct {
    const char *text;
    double expected;
  } cases[] = {{"-12.5", -12.5},
               {"+3", 3.0},
               {".5", 0.5},
               {"5.", 5.0},
               {"1E-2", 0.01},
               {"007", 7.0},
               {" \t\r\n7 \v\f", 7.0},
               {"9007199254740993", 9007199254740992.0},
               {"4.9e-324", 4.9e-324},
               {"1e-999", 0.0},
               {"0.0000e999", 0.0}};
  for (const auto &c : cases) EXPECT_EQ(AnsiStringToFloat(c.text, kNan), c.expected) << c.text;
  for (const char *none :
       {"",  "  ", "abc", "1a",  "1 2",   "1,000", "- 1", "+-1",  "--1",   ".",
        "-", "e5", "1e",  "1e+", "1.2.3", "0x10",  "inf", "-nan", "1e999", "-1e999999999999999999999"}) {
    EXPECT_EQ(AnsiStringToFloat(none, -77), -77) << none;
    EXPECT_EQ(AnsiStringToInt(none, -77), -77) << none;
  }
  EXPECT_EQ(AnsiStringToInt("-2.9", 7), -2);
  EXPECT_EQ(AnsiStringToInt("3000000000", 7), INT_MAX);
  EXPECT_EQ(AnsiStringToInt("-1e300", 7), INT_MIN);
}

TEST(NumberText, ParseNumberStopsBehindTheNumber) {
  struct Case {
    const char *text;
    std::size_t length;
    double value;
  };
  const Case cases[] = {{"12abc", 2, 12.0},       {"1.5.5", 3, 1.5},  {"1e5x", 3, 1e5},
                        {"1ex", 1, 1.0},          {"-2)", 2, -2.0},   {"abc", 0, -77.0},
                        {"", 0, -77.0},           {"-", 0, -77.0},    {".e1", 0, -77.0},
                        {"+.25,", 4, 0.25},       {"1e400", 5, kInf}, {"-1e400", 6, -kInf},
                        {"0.0001e-400", 11, 0.0}, {"1e-400", 6, 0.0}};
  for (const Case &c : cases) {
    double value = -77.0;
    EXPECT_EQ(ParseNumber(c.text, &value), c.length) << c.text;
    EXPECT_EQ(value, c.value) << c.text;
  }
}

TEST(NumberText, FixedDecimals) {
  const struct {
    double value;
    int decimals;
    const char *text;
  } cases[] = {{1234567.891, 2, "1234567.89"},
               {-0.0, 2, "0.00"},
               {-0.004, 2, "0.00"},
               {-0.4, 0, "0"},
               {-0.006, 2, "-0.01"},
               {-1.5, 0, "-2"},
               {2.5, 0, "2"},
               {5.0, -1, "5"},
               {kNan, 2, "nan"},
               {-kInf, 2, "-inf"}};
  for (const auto &c : cases) EXPECT_EQ(FloatToStrF(c.value, 15, c.decimals), c.text);
}

TEST(NumberText, PricesHaveTheDecimalsOfTheirTick) {
  const struct {
    double value, tick;
    const char *text;
  } cases[] = {{1234.5, 5.0, "1234"},
               {1235.5, 5.0, "1236"},
               {251.3, 0.05, "251.30"},
               {99.5, 0.125, "99.500"},
               {1.5, 2.5, "1.5"},
               {1.0, 1e-9, "1.00000000"},
               {1.0, 1.0 / 3.0, "1.00000000"},
               {2.75, 0.0, "3"},
               {2.75, -0.01, "3"},
               {-0.3, 1.0, "0"},
               {5.0, kNan, "5"},
               {5.0, kInf, "5"},
               {kNan, 0.01, "nan"}};
  for (const auto &c : cases) {
    char out[kPriceTextSize];
    EXPECT_STREQ(GetTickFullFormat(out, c.value, c.tick), c.text) << c.value << ' ' << c.tick;
  }
}

}  // namespace
}  // namespace trovenu
