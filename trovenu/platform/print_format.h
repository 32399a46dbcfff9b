#pragma once

#include <cstdarg>
#include <span>
#include <string>

#include "trovenu/platform/export.h"

// Numbers and texts in the layouts that printf has, but alike on every platform: values are rounded
// correctly, the decimal point is a point in every locale, exponents have two digits or as many as they need,
// and what is no number reads "nan", "inf" or "-inf".

/// Lets the compiler check the arguments of a function with a printf format against it.
#if defined(__MINGW32__)
#define TROVENU_PRINTF_LIKE(layout, first) __attribute__((format(gnu_printf, layout, first)))
#elif defined(__GNUC__)
#define TROVENU_PRINTF_LIKE(layout, first) __attribute__((format(printf, layout, first)))
#else
#define TROVENU_PRINTF_LIKE(layout, first)
#endif

namespace trovenu {

/// No double needs more decimals to be written exactly, and no field is wider than `kWidestField`; larger
/// numbers in a format or an argument count as these.
inline constexpr int kMostDecimals = 1074;
inline constexpr int kWidestField = 4095;

/// `value` with that many decimals, as "%.*f". Fewer than 0 decimals count as 0.
TROVENU_API std::string FixedText(double value, int decimals);

/// The same without the sign of a zero.
std::string PlainFixedText(double value, int decimals);

/// That text as far as it fits into `out`. Behind it `out` stays as it was.
void PutPlainFixed(std::span<char> out, double value, int decimals);

/// `value` with at most that many significant digits, as "%.*g". Fewer than 1 digit counts as 1.
TROVENU_API std::string GeneralText(double value, int digits);

/// The text that printf would write. All standard conversions and length modifiers are known, besides "I32"
/// and "I64"; "%n" writes nothing anywhere, a null text counts as empty, and what is no conversion is copied.
/// A null format gives an empty text.
TROVENU_API std::string FormatText(const char *format, std::va_list arguments);

}  // namespace trovenu
