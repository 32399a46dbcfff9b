#include "trovenu/platform/print_format.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <cwchar>
#include <iterator>
#include <string_view>

#include "trovenu/platform/code_page.h"
#include "trovenu/platform/code_page_text.h"

namespace trovenu {

namespace {

// The largest double has 309 digits before its point.
constexpr int kRoom = 320 + kMostDecimals;
constexpr int kUsualPrecision = 6;

enum class Length { kInt, kChar, kShort, kLong, kLongLong, kSize, kLongDouble };

/// One conversion: what stands between "%" and its letter.
struct Field {
  bool left = false;
  bool plus = false;
  bool space = false;
  bool zero = false;
  bool alternate = false;
  int width = 0;
  int precision = -1;
  Length length = Length::kInt;
};

/// A copy that functions can consume one after the other.
class Arguments {
 public:
  explicit Arguments(std::va_list list) { va_copy(list_, list); }
  ~Arguments() { va_end(list_); }
  Arguments(const Arguments &) = delete;
  Arguments &operator=(const Arguments &) = delete;

  template <class Value>
  Value Next() {
    return va_arg(list_, Value);
  }

  std::intmax_t NextSigned(Length length) {
    switch (length) {
      case Length::kChar:
        return static_cast<signed char>(Next<int>());
      case Length::kShort:
        return static_cast<short>(Next<int>());
      case Length::kLong:
        return Next<long>();
      case Length::kLongLong:
        return Next<long long>();
      case Length::kSize:
        return Next<std::ptrdiff_t>();
      default:
        return Next<int>();
    }
  }

  std::uintmax_t NextUnsigned(Length length) {
    switch (length) {
      case Length::kChar:
        return static_cast<unsigned char>(Next<int>());
      case Length::kShort:
        return static_cast<unsigned short>(Next<int>());
      case Length::kLong:
        return Next<unsigned long>();
      case Length::kLongLong:
        return Next<unsigned long long>();
      case Length::kSize:
        return Next<std::size_t>();
      default:
        return Next<unsigned>();
    }
  }

 private:
  std::va_list list_;
};

/// Steps over `start` if `format` begins with it.
bool Take(const char *&format, const char *start) {
  if (*format != *start) return false;
  const std::size_t length = std::strlen(start);
  if (std::strncmp(format, start, length) != 0) return false;
  format += length;
  return true;
}

int TakeNumber(const char *&format, int most) {
  int number = 0;
  for (; IsDigitAscii(*format); ++format) number = std::min(number * 10 + (*format - '0'), most);
  return number;
}

void TakeFlags(const char *&format, Field &field) {
  for (;; ++format) {
    switch (*format) {
      case '-':
        field.left = true;
        break;
      case '+':
        field.plus = true;
        break;
      case ' ':
        field.space = true;
        break;
      case '0':
        field.zero = true;
        break;
      case '#':
        field.alternate = true;
        break;
      default:
        return;
    }
  }
}

void TakeWidthAndPrecision(const char *&format, Arguments &arguments, Field &field) {
  if (Take(format, "*")) {
    const int width = arguments.Next<int>();
    field.left = field.left || width < 0;
    field.width = width < -kWidestField ? kWidestField : std::min(std::abs(width), kWidestField);
  } else {
    field.width = TakeNumber(format, kWidestField);
  }
  if (!Take(format, ".")) return;
  field.precision =
      Take(format, "*") ? std::min(arguments.Next<int>(), kWidestField) : TakeNumber(format, kWidestField);
}

void TakeLength(const char *&format, Field &field) {
  struct Modifier {
    const char *text;
    Length length;
  };
  // A modifier that begins with a shorter one stands before it.
  static constexpr Modifier kModifiers[] = {
      {"hh", Length::kChar},      {"h", Length::kShort},      {"ll", Length::kLongLong}, {"l", Length::kLong},
      {"I64", Length::kLongLong}, {"I32", Length::kInt},      {"j", Length::kLongLong},  {"z", Length::kSize},
      {"t", Length::kSize},       {"L", Length::kLongDouble},
  };
  for (const Modifier &modifier : kModifiers) {
    if (!Take(format, modifier.text)) continue;
    field.length = modifier.length;
    return;
  }
}

/// Adds `sign` or prefix and `body`, filled to the field's width.
void AddFilled(std::string &out, const Field &field, std::string_view sign, std::string_view body,
               bool mayFillWithZeros) {
  const std::size_t length = sign.size() + body.size();
  const auto width = static_cast<std::size_t>(field.width);
  const std::size_t fill = width > length ? width - length : 0;
  const bool zeros = field.zero && !field.left && mayFillWithZeros;
  if (!field.left && !zeros) out.append(fill, ' ');
  out += sign;
  if (zeros) out.append(fill, '0');
  out += body;
  if (field.left) out.append(fill, ' ');
}

std::string_view SignOf(const Field &field, bool negative) {
  if (negative) return "-";
  if (field.plus) return "+";
  return field.space ? " " : "";
}

void MakeUpper(std::string &text) {
  for (char &c : text) c = ToUpperAscii(c);
}

void AddInteger(std::string &out, const Field &field, std::string_view sign, std::uintmax_t value,
                char conversion) {
  const int base = conversion == 'o' ? 8 : conversion == 'x' || conversion == 'X' ? 16 : 10;
  char digits[32];
  const auto result = std::to_chars(digits, digits + sizeof(digits), value, base);
  std::string body(digits, value == 0 && field.precision == 0 ? digits : result.ptr);
  if (field.precision > static_cast<int>(body.size())) {
    body.insert(0, static_cast<std::size_t>(field.precision) - body.size(), '0');
  }
  if (field.alternate && base == 8 && body.substr(0, 1) != "0") body.insert(0, 1, '0');
  std::string prefix(sign);
  if (field.alternate && base == 16 && value != 0) prefix += "0x";
  if (conversion == 'X') {
    MakeUpper(body);
    MakeUpper(prefix);
  }
  AddFilled(out, field, prefix, body, field.precision < 0);
}

/// Numbers with so few decimals, and below 2^52 so that they have binary places, fit 64 bits in units of
/// their last decimal and with all these places; their texts fit `kShortText` bytes.
constexpr int kShortDecimals = 3;
constexpr double kShortEnd = 4503599627370496.0;
constexpr std::size_t kShortText = 24;

bool IsShort(double value, int decimals) {
  return decimals >= 0 && decimals <= kShortDecimals && std::fabs(value) < kShortEnd;
}

/// Such a number in these units, rounded to the nearest one and from the middle to the even one.
std::uint64_t UnitsOf(double magnitude, int decimals) {
  static constexpr std::uint64_t kPowers[kShortDecimals + 1] = {1, 10, 100, 1000};
  constexpr int kMantissaBits = 52;
  constexpr std::uint64_t kLeadingBit = std::uint64_t{1} << kMantissaBits;
  const auto bits = std::bit_cast<std::uint64_t>(magnitude);
  const int places = 1075 - static_cast<int>(bits >> kMantissaBits);
  // Less than half a unit.
  if (places > 63) return 0;
  const std::uint64_t scaled = (bits % kLeadingBit + kLeadingBit) * kPowers[decimals];
  const std::uint64_t belowHalf = (std::uint64_t{1} << (places - 1)) - 1;
  return (scaled + belowHalf + (scaled >> places) % 2) >> places;
}

/// Writes such a number, without the sign of a zero, and returns its end.
char *PutShort(char *out, double value, int decimals) {
  std::uint64_t units = UnitsOf(std::fabs(value), decimals);
  if (value < 0.0 && units > 0) *out++ = '-';
  std::uint64_t whole = units;
  for (int i = 0; i < decimals; ++i) whole /= 10;
  out = std::to_chars(out, out + kShortText, whole).ptr;
  if (decimals == 0) return out;
  *out++ = '.';
  for (int i = decimals; i > 0; units /= 10) out[--i] = static_cast<char>('0' + units % 10);
  return out + decimals;
}

std::string NumberText(double magnitude, std::chars_format form, int precision) {
  char text[kRoom];
  precision = std::clamp(precision, 0, kMostDecimals);
  return std::string(text, std::to_chars(text, text + kRoom, magnitude, form, precision).ptr);
}

/// "%#g": the digits of "%g" with the zeros at the end that it drops.
std::string GeneralWithZeros(double magnitude, int digits) {
  std::string scientific = NumberText(magnitude, std::chars_format::scientific, digits - 1);
  int exponent = 0;
  const char *text = scientific.c_str() + scientific.find('e') + 1;
  std::from_chars(*text == '+' ? text + 1 : text, scientific.c_str() + scientific.size(), exponent);
  if (exponent < -4 || exponent >= digits) return scientific;
  return PlainFixedText(magnitude, digits - 1 - exponent);
}

/// The digits of a number at or above 0 without its sign and prefix.
std::string Digits(double magnitude, const Field &field, char kind) {
  const int precision = field.precision < 0 ? kUsualPrecision : std::min(field.precision, kMostDecimals);
  std::string body;
  if (kind == 'f') {
    body = PlainFixedText(magnitude, precision);
  } else if (kind == 'e') {
    body = NumberText(magnitude, std::chars_format::scientific, precision);
  } else if (kind == 'g' && field.alternate) {
    body = GeneralWithZeros(magnitude, std::max(precision, 1));
  } else if (kind == 'g') {
    body = NumberText(magnitude, std::chars_format::general, precision);
  } else if (field.precision >= 0) {
    body = NumberText(magnitude, std::chars_format::hex, precision);
  } else {
    char text[kRoom];
    body.assign(text, std::to_chars(text, text + kRoom, magnitude, std::chars_format::hex).ptr);
  }
  if (field.alternate && body.find('.') == std::string::npos) {
    body.insert(std::min(body.find(kind == 'a' ? 'p' : 'e'), body.size()), 1, '.');
  }
  return body;
}

void AddDouble(std::string &out, const Field &field, double value, char conversion) {
  const char kind = ToLowerAscii(conversion);
  const bool finite = std::isfinite(value);
  const bool negative = std::signbit(value) && !std::isnan(value);
  std::string sign(SignOf(field, negative));
  std::string body;
  if (finite) {
    if (kind == 'a') sign += "0x";
    body = Digits(std::fabs(value), field, kind);
  } else {
    body = std::isnan(value) ? "nan" : "inf";
  }
  if (kind != conversion) {
    MakeUpper(sign);
    MakeUpper(body);
  }
  AddFilled(out, field, sign, body, finite);
}

void AddNarrowText(std::string &out, const Field &field, const char *text) {
  if (text == nullptr) text = "";
  std::size_t length = 0;
  // The text need not end with a zero where the precision ends it.
  if (field.precision < 0) {
    length = std::strlen(text);
  } else {
    while (length < static_cast<std::size_t>(field.precision) && text[length] != '\0') ++length;
  }
  AddFilled(out, field, "", std::string_view(text, length), false);
}

void AddText(std::string &out, const Field &field, Arguments &arguments) {
  if (field.length != Length::kLong) {
    AddNarrowText(out, field, arguments.Next<const char *>());
    return;
  }
  const auto *wide = arguments.Next<const wchar_t *>();
  AddNarrowText(out, field, CodePageFromWide(wide == nullptr ? L"" : wide, nullptr).c_str());
}

void AddCharacter(std::string &out, const Field &field, Arguments &arguments) {
  if (field.length != Length::kLong) {
    const char character = static_cast<char>(arguments.Next<int>());
    AddFilled(out, field, "", std::string_view(&character, 1), false);
    return;
  }
  // Where wint_t is a short type it arrives as an int.
  const auto character = static_cast<wchar_t>(arguments.Next<decltype(+std::wint_t{})>());
  AddFilled(out, field, "", CodePageFromWide(std::wstring_view(&character, 1), nullptr), false);
}

/// Adds one argument. False if `conversion` is no conversion.
bool AddConversion(std::string &out, const Field &field, char conversion, Arguments &arguments) {
  switch (conversion) {
    case 'd':
    case 'i': {
      const std::intmax_t value = arguments.NextSigned(field.length);
      const auto bits = static_cast<std::uintmax_t>(value);
      AddInteger(out, field, SignOf(field, value < 0), value < 0 ? 0 - bits : bits, conversion);
      return true;
    }
    case 'u':
    case 'o':
    case 'x':
    case 'X':
      AddInteger(out, field, "", arguments.NextUnsigned(field.length), conversion);
      return true;
    case 'p': {
      Field pointer = field;
      pointer.alternate = true;
      AddInteger(out, pointer, "", reinterpret_cast<std::uintptr_t>(arguments.Next<void *>()), 'x');
      return true;
    }
    case 'f':
    case 'F':
    case 'e':
    case 'E':
    case 'g':
    case 'G':
    case 'a':
    case 'A': {
      const bool isLong = field.length == Length::kLongDouble;
      const double value =
          isLong ? static_cast<double>(arguments.Next<long double>()) : arguments.Next<double>();
      AddDouble(out, field, value, conversion);
      return true;
    }
    case 'c':
      AddCharacter(out, field, arguments);
      return true;
    case 's':
      AddText(out, field, arguments);
      return true;
    case 'n':
      arguments.Next<void *>();
      return true;
    case '%':
      out += '%';
      return true;
    default:
      return false;
  }
}

}  // namespace

std::string FixedText(double value, int decimals) {
  std::string out;
  Field field;
  field.precision = std::max(decimals, 0);
  AddDouble(out, field, value, 'f');
  return out;
}

std::string PlainFixedText(double value, int decimals) {
  decimals = std::max(decimals, 0);
  if (IsShort(value, decimals)) {
    char text[kShortText];
    return std::string(text, PutShort(text, value, decimals));
  }
  std::string text = NumberText(std::fabs(value), std::chars_format::fixed, decimals);
  if (value < 0.0 && std::ranges::any_of(text, [](char c) { return c > '0'; })) text.insert(0, 1, '-');
  return text;
}

void PutPlainFixed(std::span<char> out, double value, int decimals) {
  if (IsShort(value, decimals) && out.size() >= kShortText) {
    PutShort(out.data(), value, decimals);
  } else {
    PlainFixedText(value, decimals).copy(out.data(), out.size());
  }
}

std::string GeneralText(double value, int digits) {
  std::string out;
  Field field;
  field.precision = std::max(digits, 1);
  AddDouble(out, field, value, 'g');
  return out;
}

std::string FormatText(const char *format, std::va_list list) {
  std::string out;
  if (format == nullptr) return out;
  Arguments arguments(list);
  while (*format != '\0') {
    const char *start = format;
    if (*format++ != '%') {
      out += *start;
      continue;
    }
    Field field;
    TakeFlags(format, field);
    TakeWidthAndPrecision(format, arguments, field);
    TakeLength(format, field);
    if (*format == '\0' || !AddConversion(out, field, *format, arguments)) {
      out.append(start, format);
      continue;
    }
    ++format;
  }
  return out;
}

}  // namespace trovenu
