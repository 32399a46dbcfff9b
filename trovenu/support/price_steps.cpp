#include "trovenu/support/price_steps.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>

namespace trovenu {

namespace {

struct PriceStep {
  double below;
  double step;
};

// The price steps of the exchange.
constexpr PriceStep kPriceSteps[] = {
    {2000.0, 1.0},
    {5000.0, 5.0},
    {20000.0, 10.0},
    {50000.0, 50.0},
    {200000.0, 100.0},
    {500000.0, 500.0},
    {std::numeric_limits<double>::infinity(), 1000.0},
};

bool IsUsable(double value) { return value > 0.0 && std::isfinite(value); }

}  // namespace

double GetNewTickValue(double price) {
  if (!IsUsable(price)) return 0.0;
  const PriceStep *row = kPriceSteps;
  while (price >= row->below) ++row;
  return std::max(std::round(price / row->step), 1.0) * row->step;
}

double conditionProove(double size) {
  if (!IsUsable(size)) return 0.0;
  // The digits are those that the number prints with: 1.15 goes to 1.2, though the double lies a little
  // below.
  char text[32];
  const char *end = std::to_chars(text, text + sizeof(text), size, std::chars_format::scientific).ptr;
  const char *exponent = std::find<const char *>(text, end, 'e');
  const auto digit = [&](int place) { return text + place < exponent ? text[place] - '0' : 0; };
  const int digits = digit(0) * 10 + digit(2) + (digit(3) >= 5 ? 1 : 0);

  int power = 0;
  std::from_chars(exponent[1] == '+' ? exponent + 2 : exponent + 1, end, power);
  const std::string number = std::to_string(digits) + 'e' + std::to_string(power - 1);
  double rounded = size;
  std::from_chars(number.data(), number.data() + number.size(), rounded);
  return rounded;
}

}  // namespace trovenu
