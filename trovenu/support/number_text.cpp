#include "trovenu/support/number_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdarg>
#include <cstring>
#include <limits>
#include <string>

#include "trovenu/platform/code_page_text.h"
#include "trovenu/support/series.h"

namespace trovenu {

namespace {

constexpr std::string_view kBlanks = "\t\n\v\f\r ";
constexpr int kMostTickDecimals = 8;

std::string_view WithoutBlanks(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
  return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

/// True if the number in `text`, which lies outside the range of double, is too large rather than too small.
bool IsTooLarge(std::string_view text) {
  long long exponent = 0;
  const std::size_t e = text.find_first_of("eE");
  if (e != std::string_view::npos) {
    const bool negative = text[e + 1] == '-';
    for (const char c : text.substr(e + 1)) {
      if (IsDigitAscii(c)) exponent = std::min(exponent * 10 + (c - '0'), 1000000000LL);
    }
    if (negative) exponent = -exponent;
    text = text.substr(0, e);
  }
  // The power of ten of the first digit that counts.
  const auto first = static_cast<long long>(text.find_first_of("123456789"));
  const auto point = static_cast<long long>(std::min(text.find('.'), text.size()));
  return exponent + point - first > 0;
}

}  // namespace

std::size_t ParseNumber(std::string_view text, double *value) {
  const bool negative = !text.empty() && text[0] == '-';
  const std::size_t sign = negative || (!text.empty() && text[0] == '+') ? 1 : 0;
  const std::string_view digits = text.substr(sign);
  const bool startsWithDigit = !digits.empty() && IsDigitAscii(digits[0]);
  const bool startsWithPoint = digits.size() > 1 && digits[0] == '.' && IsDigitAscii(digits[1]);
  // The converter would also take words such as "inf".
  if (!startsWithDigit && !startsWithPoint) return 0;

  double magnitude = 0.0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), magnitude);
  const auto length = static_cast<std::size_t>(end - digits.data());
  if (error == std::errc::result_out_of_range) {
    magnitude = IsTooLarge(digits.substr(0, length)) ? std::numeric_limits<double>::infinity() : 0.0;
  }
  *value = negative ? -magnitude : magnitude;
  return sign + length;
}

double AnsiStringToFloat(const SString &text, double defaultValue) {
  const std::string_view number = WithoutBlanks(text.View());
  double value = 0.0;
  const bool whole = !number.empty() && ParseNumber(number, &value) == number.size();
  return whole && std::isfinite(value) ? value : defaultValue;
}

long AnsiStringToInt(const SString &text, long defaultValue) {
  const double none = std::numeric_limits<double>::quiet_NaN();
  const double value = AnsiStringToFloat(text, none);
  return std::isnan(value) ? defaultValue : TruncateToInt(value);
}

SString FloatToStrF(double value, int /*width*/, int decimals) {
  return SString(PlainFixedText(value, decimals));
}

SString FormatValue(const char *format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  SString text(FormatText(format, arguments));
  va_end(arguments);
  return text;
}

int DecimalsOfTick(double tick) {
  if (!(tick > 0.0) || !std::isfinite(tick)) return 0;
  for (int decimals = 0; decimals < kMostTickDecimals; ++decimals) {
    double written = 0.0;
    ParseNumber(FixedText(tick, decimals), &written);
    if (written == tick) return decimals;
  }
  return kMostTickDecimals;
}

char *GetTickFullFormat(char *out, double value, double tick) {
  if (out == nullptr) return out;
  const std::string text = PlainFixedText(value, DecimalsOfTick(tick));
  std::memcpy(out, text.c_str(), text.size() + 1);
  return out;
}

}  // namespace trovenu
