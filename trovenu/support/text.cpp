#include "trovenu/support/text.h"

#include <cstdint>
#include <string>
#include <utility>

#include "trovenu/platform/code_page.h"
#include "trovenu/platform/print_format.h"

namespace trovenu {

namespace {

constexpr int kSignificantDigits = 6;

}  // namespace

SString::SString(const CString &text) : CString(text) {}
SString::SString(CString &&text) : CString(std::move(text)) {}
SString::SString(const char *text) : CString(text) {}
SString::SString(const unsigned char *text) : CString(reinterpret_cast<const char *>(text)) {}
SString::SString(const wchar_t *text) : CString(CodePageFromWide(text == nullptr ? L"" : text, nullptr)) {}
SString::SString(std::string_view text) : CString(text) {}
SString::SString(char c, int n) : CString(c, n) {}
SString::SString(const char *s, int n) : CString(s, n) {}

SString::SString(int value) { ltos(value); }
SString::SString(unsigned int value) { ltos(static_cast<std::int32_t>(value)); }
SString::SString(long value) { ltos(value); }
SString::SString(unsigned long value) { ultos(value); }
SString::SString(double value) { dtos(value, 0); }

SString &SString::operator=(double value) { return dtos(value, 0); }
SString &SString::operator=(float value) { return dtos(static_cast<double>(value), 0); }
SString &SString::operator=(unsigned long value) { return ultos(value); }
SString &SString::operator=(long value) { return ltos(value); }
SString &SString::operator=(unsigned int value) { return ltos(static_cast<std::int32_t>(value)); }
SString &SString::operator=(int value) { return ltos(value); }

SString &SString::operator=(const CString &text) {
  CString::operator=(text);
  return *this;
}

SString &SString::operator=(CString &&text) {
  CString::operator=(std::move(text));
  return *this;
}

SString &SString::operator=(const char *text) {
  CString::operator=(text);
  return *this;
}

SString &SString::dtos(double value, int digits) {
  // "%g" shows significant digits, so a tiny value never turns into a bare zero.
  return *this = CString(digits > 0 ? FixedText(value, digits) : GeneralText(value, kSignificantDigits));
}

SString &SString::ltos(long value) { return *this = CString(std::to_string(value)); }

SString &SString::ultos(unsigned long value) { return ltos(static_cast<long>(value)); }

SString &SString::Trim() {
  TrimRight();
  TrimLeft();
  return *this;
}

}  // namespace trovenu
