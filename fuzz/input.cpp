#include "fuzz/input.h"

#include <algorithm>
#include <bit>
#include <cstdio>
#include <iterator>
#include <limits>

namespace trovenu::fuzz {

std::string Input::Text() {
  const std::size_t end = std::min(rest_.find('\0'), rest_.size());
  std::string text(rest_.substr(0, end));
  rest_.remove_prefix(std::min(end + 1, rest_.size()));
  return text;
}

std::string Input::Rest() {
  std::string text(rest_);
  rest_ = {};
  return text;
}

Input Input::Part(int size) {
  const Input part(rest_.substr(0, static_cast<std::size_t>(size)));
  rest_.remove_prefix(part.rest_.size());
  return part;
}

unsigned char Input::Byte() {
  if (rest_.empty()) return 0;
  const auto byte = static_cast<unsigned char>(rest_.front());
  rest_.remove_prefix(1);
  return byte;
}

int Input::Below(int n) {
  unsigned value = Byte();
  if (n > 256) value = value << 8 | Byte();
  if (n > 65536) value = value << 8 | Byte();
  return static_cast<int>(value % static_cast<unsigned>(n));
}

double Input::Number() {
  constexpr double kEdges[] = {0.0,
                               -0.0,
                               0.1,
                               1e-300,
                               5e-324,
                               1e8,
                               2147483647.0,
                               -2147483648.0,
                               1e19,
                               1e300,
                               -1e300,
                               std::numeric_limits<double>::infinity(),
                               -std::numeric_limits<double>::infinity(),
                               std::numeric_limits<double>::quiet_NaN(),
                               20240102.0,
                               20240102093000.0};
  const int kind = Byte();
  if (kind < 128) return kind - 8;
  if (kind < 200) return Below(65536) / 20.0;
  if (kind < 240) return (Below(65536) - 32768) / 1000.0;
  if (kind < 252) return kEdges[Byte() % std::size(kEdges)];
  std::uint64_t bits = 0;
  for (int i = 0; i < 8; ++i) bits = bits << 8 | Byte();
  return std::bit_cast<double>(bits);
}

std::string Input::NumberText() {
  if (Below(16) == 15) return Text();
  char text[40];
  std::snprintf(text, sizeof text, "%.17g", Number());
  return text;
}

}  // namespace trovenu::fuzz
