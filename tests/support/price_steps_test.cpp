#include "trovenu/support/price_steps.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <limits>

namespace trovenu {
namespace {

const double kNan = std::numeric_limits<double>::quiet_NaN();
const double kInf = std::numeric_limits<double>::infinity();

TEST(PriceSteps, GetNewTickValue) {
  struct Case {
    double price;
    double expected;
  };
  const Case cases[] = {
      {0.0, 0.0},           {-5.0, 0.0},          {kNan, 0.0},          {kInf, 0.0},
      {0.001, 1.0},         {1.4, 1.0},           {1.5, 2.0},           {1999.4, 1999.0},
      {1999.9, 2000.0},     {2000.0, 2000.0},     {2002.4, 2000.0},     {2002.5, 2005.0},
      {4999.0, 5000.0},     {5000.0, 5000.0},     {5004.0, 5000.0},     {5005.0, 5010.0},
      {19994.0, 19990.0},   {20024.0, 20000.0},   {20025.0, 20050.0},   {49974.0, 49950.0},
      {50049.0, 50000.0},   {50050.0, 50100.0},   {199949.0, 199900.0}, {200249.0, 200000.0},
      {200250.0, 200500.0}, {499749.0, 499500.0}, {500499.0, 500000.0}, {500500.0, 501000.0},
      {1e9 + 1.0, 1e9}};
  for (const Case &c : cases) EXPECT_EQ(GetNewTickValue(c.price), c.expected) << c.price;
  EXPECT_GT(GetNewTickValue(DBL_MAX), 0.0);
}

TEST(PriceSteps, ConditionProove) {
  struct Case {
    double size;
    double expected;
  };
  const Case cases[] = {{0.0, 0.0},       {-1.0, 0.0},        {kNan, 0.0},        {kInf, 0.0},
                        {200.0, 200.0},   {1.0, 1.0},         {9.0, 9.0},         {12.0, 12.0},
                        {114.9, 110.0},   {115.0, 120.0},     {994.9, 990.0},     {995.0, 1000.0},
                        {107.5, 110.0},   {12345.0, 12000.0}, {0.0125, 0.013},    {0.01249, 0.012},
                        {0.3 - 0.2, 0.1}, {1.15, 1.2},        {0.00001, 0.00001}, {1e22, 1e22},
                        {5e-324, 5e-324}, {1.26e300, 1.3e300}};
  for (const Case &c : cases) EXPECT_EQ(conditionProove(c.size), c.expected) << c.size;
}

}  // namespace
}  // namespace trovenu
