#include "trovenu/support/number_text.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <climits>
#include <cmath>
#include <limits>
#include <string>

namespace trovenu {
namespace {

const double kNan = std::numeric_limits<double>::quiet_NaN();
const double kInf = std::numeric_limits<double>::infinity();

TEST(NumberText, AnsiStringToFloat) {
  const double none = -77.0;
  struct Case {
    const char *text;
    double expected;
  };
  const Case cases[] = {
      {"0", 0.0},
      {"12.5", 12.5},
      {"-12.5", -12.5},
      {"+3", 3.0},
      {".5", 0.5},
      {"5.", 5.0},
      {"1e3", 1000.0},
      {"1E-2", 0.01},
      {"2.5e+1", 25.0},
      {" \t\r\n7 \v\f", 7.0},
      {"007", 7.0},
      {"0.1", 0.1},
      {"9007199254740993", 9007199254740992.0},  // a tie goes to the even neighbour
      {"1.7976931348623157e308", DBL_MAX},
      {"4.9e-324", 4.9e-324},
      {"1e-999", 0.0},
      {"0.0000e999", 0.0},
      {"", none},
      {"  ", none},
      {"abc", none},
      {"1a", none},
      {"1 2", none},
      {"1,000", none},
      {"- 1", none},
      {"+-1", none},
      {"--1", none},
      {".", none},
      {"-", none},
      {"e5", none},
      {"1e", none},
      {"1e+", none},
      {"1.2.3", none},
      {"0x10", none},
      {"inf", none},
      {"-nan", none},
      {"1e999", none},
      {"-1e999999999999999999999", none},
  };
  for (const Case &c : cases) EXPECT_EQ(AnsiStringToFloat(c.text, none), c.expected) << '"' << c.text << '"';
  EXPECT_EQ(AnsiStringToFloat("x"), 0.0);
}

TEST(NumberText, AnsiStringToInt) {
  const long none = -77;
  struct Case {
    const char *text;
    long expected;
  };
  const Case cases[] = {
      {"14", 14},
      {" -3 ", -3},
      {"2.9", 2},
      {"-2.9", -2},
      {"1e3", 1000},
      {"0.5", 0},
      {"", none},
      {"x", none},
      {"12x", none},
      {"1e999", none},
      {"2147483647", INT_MAX},
      {"3000000000", INT_MAX},
      {"-1e300", INT_MIN},
  };
  for (const Case &c : cases) EXPECT_EQ(AnsiStringToInt(c.text, none), c.expected) << '"' << c.text << '"';
  EXPECT_EQ(AnsiStringToInt("x"), 0);
}

TEST(NumberText, ParseNumberStopsBehindTheNumber) {
  struct Case {
    const char *text;
    std::size_t length;
    double value;
  };
  const Case cases[] = {
      {"12abc", 2, 12.0},       {"1.5.5", 3, 1.5},  {"1e5x", 3, 1e5},   {"1ex", 1, 1.0},
      {"-2)", 2, -2.0},         {"abc", 0, -77.0},  {"", 0, -77.0},     {"-", 0, -77.0},
      {".e1", 0, -77.0},        {"+.25,", 4, 0.25}, {"1e400", 5, kInf}, {"-1e400", 6, -kInf},
      {"0.0001e-400", 11, 0.0}, {"1e-400", 6, 0.0},
  };
  for (const Case &c : cases) {
    double value = -77.0;
    EXPECT_EQ(ParseNumber(c.text, &value), c.length) << c.text;
    EXPECT_EQ(value, c.value) << c.text;
  }
  // The first digits alone do not tell large from small.
  double value = -77.0;
  ParseNumber("0." + std::string(400, '0') + "1e500", &value);
  EXPECT_EQ(value, 1e99);
  ParseNumber("0." + std::string(400, '0') + "1e50", &value);
  EXPECT_EQ(value, 0.0);
  ParseNumber(std::string(400, '9'), &value);
  EXPECT_EQ(value, kInf);
  ParseNumber(std::string(400, '9') + "e-100", &value);
  EXPECT_EQ(value, 1e300);
}

TEST(NumberText, EveryWrittenDoubleReadsBack) {
  for (double value : {0.1, 1.0 / 3.0, 123456.789, 1e23, DBL_MIN, 5e-324, -DBL_MAX}) {
    const SString text = FormatValue("%.17g", value);
    EXPECT_EQ(AnsiStringToFloat(text, kNan), value) << text;
  }
}

TEST(NumberText, FloatToStrF) {
  struct Case {
    double value;
    int decimals;
    const char *text;
  };
  const Case cases[] = {
      {1234567.891, 2, "1234567.89"},
      {0.0, 2, "0.00"},
      {-0.0, 2, "0.00"},
      {-0.004, 2, "0.00"},  // no sign where only zeros are left
      {-0.4, 0, "0"},
      {-0.006, 2, "-0.01"},
      {-1.5, 0, "-2"},
      {2.5, 0, "2"},
      {5.0, -1, "5"},
      {1e20, 1, "100000000000000000000.0"},
      {kNan, 2, "nan"},
      {-kInf, 2, "-inf"},
  };
  for (const Case &c : cases) {
    EXPECT_EQ(FloatToStrF(c.value, 10, c.decimals), c.text);
    EXPECT_EQ(FloatToStrF(c.value, 15, c.decimals), c.text);  // no padding
  }
}

TEST(NumberText, FormatValue) {
  EXPECT_EQ(FormatValue("%s(%d, %.1f) %g", "ma", 5, 0.25, 1e7), "ma(5, 0.2) 1e+07");
  EXPECT_EQ(FormatValue(nullptr), "");
}

TEST(NumberText, GetTickFullFormat) {
  struct Case {
    double value;
    double tick;
    const char *text;
  };
  const Case cases[] = {
      {1234567.0, 1.0, "1234567"},
      {1234.5, 5.0, "1234"},  // a tie goes to the even digit
      {1235.5, 5.0, "1236"},
      {251.35, 0.05, "251.35"},
      {251.3, 0.05, "251.30"},
      {99.5, 0.125, "99.500"},
      {1.5, 2.5, "1.5"},
      {1.1, 0.0001, "1.1000"},
      {1.0, 1e-8, "1.00000000"},
      {1.0, 1e-9, "1.00000000"},  // eight decimals at most
      {1.0, 1.0 / 3.0, "1.00000000"},
      {2.75, 0.0, "3"},
      {2.75, -0.01, "3"},
      {-0.3, 1.0, "0"},
      {-2.0, 1.0, "-2"},
      {5.0, kNan, "5"},
      {5.0, kInf, "5"},
      {kNan, 0.01, "nan"},
      {kInf, 0.01, "inf"},
  };
  for (const Case &c : cases) {
    char out[kPriceTextSize];
    EXPECT_EQ(GetTickFullFormat(out, c.value, c.tick), out);
    EXPECT_STREQ(out, c.text) << c.value << ' ' << c.tick;
  }
  EXPECT_EQ(GetTickFullFormat(nullptr, 1.0, 1.0), nullptr);
}

TEST(NumberText, TheLongestPriceFitsItsBuffer) {
  char out[kPriceTextSize];
  EXPECT_EQ(std::string(GetTickFullFormat(out, -DBL_MAX, 1e-8)).size(), kPriceTextSize - 1);
  EXPECT_LT(std::string(GetTickFullFormat(out, -999999999999999.0, 1e-8)).size(), 32U);
}

}  // namespace
}  // namespace trovenu
