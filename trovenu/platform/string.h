#pragma once

#include <compare>
#include <concepts>
#include <cstddef>
#include <string>
#include <string_view>

#include "trovenu/platform/export.h"
#include "trovenu/platform/print_format.h"

namespace trovenu {

/// The ordinary 8-bit string of the platform: a text in the Korean code page, copied by value.
///
/// Positions and lengths count bytes. An argument out of range is taken as the nearest good one, and a null
/// text counts as an empty one. Searching, replacing and changing the case go by whole characters, so that
/// the second byte of a character is never taken for a letter; letters are those of ASCII.
class TROVENU_API CString {
 public:
  CString() = default;
  /// A copy of a text up to its final zero.
  CString(const char *text);
  /// At most `length` bytes of `text`, fewer if its final zero comes before.
  CString(const char *text, int length);
  /// `count` copies of `c`.
  CString(char c, int count);
  /// A copy of all bytes.
  explicit CString(std::string_view text);

  CString &operator=(const char *text);
  CString &operator=(char c);

  CString &operator+=(const CString &other);
  CString &operator+=(const char *text);
  CString &operator+=(char c);

  /// The text with its final zero. Good until the object changes.
  const char *GetString() const { return text_.c_str(); }
  operator const char *() const { return text_.c_str(); }
  std::string_view View() const { return text_; }

  int GetLength() const;
  bool IsEmpty() const { return text_.empty(); }
  void Empty() { text_.clear(); }

  /// The byte at `index`; 0 outside the text.
  char GetAt(int index) const;
  /// Writes the byte at `index`; nothing outside the text.
  void SetAt(int index, char c);
  /// As `GetAt`.
  template <std::integral Index>
  char operator[](Index index) const {
    return index >= 0 && static_cast<std::size_t>(index) < text_.size()
               ? text_[static_cast<std::size_t>(index)]
               : '\0';
  }

  CString Left(int count) const;
  CString Right(int count) const;
  CString Mid(int first) const;
  CString Mid(int first, int count) const;

  /// Position of the first match at or after `start`, or -1.
  int Find(const char *what, int start = 0) const;
  int Find(char what, int start = 0) const;
  /// Position of the last match, or -1.
  int ReverseFind(char what) const;

  /// Replaces every match and returns their number. An empty `what` matches nothing.
  int Replace(const char *what, const char *with);
  int Replace(char what, char with);
  /// Removes every `what` and returns their number.
  int Remove(char what);
  /// Puts text before the byte at `index` and returns the new length.
  int Insert(int index, const char *text);
  /// Removes `count` bytes from `index` on and returns the new length.
  int Delete(int index, int count = 1);

  CString &MakeUpper();
  CString &MakeLower();
  /// Remove blanks, tabulators and line ends, characters 9 to 13 and 32, at one end.
  CString &TrimLeft();
  CString &TrimRight();

  /// Replaces the text by what printf would write.
  void Format(const char *format, ...) TROVENU_PRINTF_LIKE(2, 3);

  /// Below, equal to or above 0, comparing bytes as unsigned values.
  int Compare(const char *other) const;
  int CompareNoCase(const char *other) const;

  /// The text as a buffer to write to, with room for `length` bytes and a final zero, until `ReleaseBuffer`.
  char *GetBuffer(int length = 0);
  /// Ends writing to the buffer: the text has `length` bytes, or as many as stand before the final zero if
  /// `length` is -1.
  void ReleaseBuffer(int length = -1);

 private:
  std::string text_;
};

TROVENU_API CString operator+(const CString &left, const CString &right);
TROVENU_API CString operator+(const CString &left, const char *right);
TROVENU_API CString operator+(const char *left, const CString &right);
TROVENU_API CString operator+(const CString &left, char right);
TROVENU_API CString operator+(char left, const CString &right);

inline bool operator==(const CString &left, const CString &right) { return left.View() == right.View(); }
inline bool operator==(const CString &left, const char *right) { return left.Compare(right) == 0; }
inline std::strong_ordering operator<=>(const CString &left, const CString &right) {
  return left.View().compare(right.View()) <=> 0;
}
inline std::strong_ordering operator<=>(const CString &left, const char *right) {
  return left.Compare(right) <=> 0;
}

}  // namespace trovenu
