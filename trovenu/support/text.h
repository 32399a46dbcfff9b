#pragma once

#include <string_view>

#include "trovenu/platform/export.h"
#include "trovenu/platform/string.h"

namespace trovenu {

/// The string of the library: a text in the Korean code page that can also be made from numbers.
///
/// It adds no data to `CString`. Its virtual table holds the six assignments of numbers in the order in which
/// they stand here, and nothing else, so a host may be built against it.
class TROVENU_API SString : public CString {
 public:
  SString() = default;
  SString(const SString &other) = default;
  SString(SString &&other) = default;
  SString(const CString &text);
  SString(CString &&text);
  /// A copy of the text; null counts as empty.
  SString(const char *text);
  SString(const unsigned char *text);
  /// The text in code-page bytes, '?' for a character that the code page lacks.
  SString(const wchar_t *text);
  explicit SString(std::string_view text);
  /// `n` copies of `c`.
  SString(char c, int n);
  /// The first `n` bytes of `s`, fewer if its final zero comes before.
  SString(const char *s, int n);

  /// The number as text, as the assignments below.
  SString(int value);
  SString(unsigned int value);
  SString(long value);
  SString(unsigned long value);
  SString(double value);

  /// Required: unsigned values print as signed ones of the same bits, an `unsigned int` as one of 32 bits.
  virtual SString &operator=(double value);  ///< As `dtos(value, 0)`.
  virtual SString &operator=(float value);
  virtual SString &operator=(unsigned long value);
  virtual SString &operator=(long value);
  virtual SString &operator=(unsigned int value);
  virtual SString &operator=(int value);

  SString &operator=(const SString &other) = default;
  SString &operator=(SString &&other) = default;
  SString &operator=(const CString &text);
  SString &operator=(CString &&text);
  SString &operator=(const char *text);

  /// Replace the text by the number with `digits` decimals, or, where `digits` is not above 0, with at most
  /// six significant digits as "%g" lays them out. Returns the object.
  SString &dtos(double value, int digits);
  /// Replace the text by the whole number, as "%ld". They return the object.
  SString &ltos(long value);
  SString &ultos(unsigned long value);

  /// The text with its final zero. Good until the object changes.
  const char *c_str() const { return GetString(); }

  /// Length in bytes.
  int Length() const { return GetLength(); }

  /// Removes characters 9 to 13 and 32 at both ends. Returns the object.
  SString &Trim();
};

}  // namespace trovenu
