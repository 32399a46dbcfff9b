#pragma once

#include <cstddef>
#include <string_view>

#include "trovenu/platform/export.h"
#include "trovenu/platform/print_format.h"
#include "trovenu/support/text.h"

// Numbers in texts. Reading and writing round correctly and know no locale, so a number reads and prints
// alike on every platform.

namespace trovenu {

/// Reads the longest decimal number at the front of `text`: a sign, digits with a point among them, an
/// exponent, of which only one digit must be there. Returns the bytes read and stores the value; 0, with
/// nothing stored, if there is no number. A number too large for a double gives an infinity, one too small
/// gives 0.
TROVENU_API std::size_t ParseNumber(std::string_view text, double *value);

/// The number that `text` holds, with blanks, characters 9 to 13 and 32, around it if need be. `defaultValue`
/// if the text is anything else or its number is too large for a double.
TROVENU_API double AnsiStringToFloat(const SString &text, double defaultValue = 0.0);

/// As `AnsiStringToFloat`, without the fraction and limited to 32 bits.
TROVENU_API long AnsiStringToInt(const SString &text, long defaultValue = 0);

/// `value` in fixed notation with that many decimals, rounded as printf does, and without a sign where only
/// zeros are left. It is not filled up to `width`. Fewer than 0 decimals count as 0.
TROVENU_API SString FloatToStrF(double value, int width, int decimals);

/// The text that printf would write.
TROVENU_API SString FormatValue(const char *format, ...) TROVENU_PRINTF_LIKE(1, 2);

/// Bytes that hold any text of `GetTickFullFormat`. Those of prices below 1e15 fit 32.
inline constexpr std::size_t kPriceTextSize = 320;

/// Writes a price to `out` in fixed notation with as many decimals as `tick` needs to be written exactly, at
/// most 8, and returns `out`. A tick of 0 or below gives no decimals. A null `out` stays unwritten.
TROVENU_API char *GetTickFullFormat(char *out, double value, double tick);

/// Decimals of prices in steps of `tick`, as `GetTickFullFormat` shows them; 0 to 8.
TROVENU_API int DecimalsOfTick(double tick);

}  // namespace trovenu
