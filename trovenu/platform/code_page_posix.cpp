#if !defined(_WIN32)

#include <iconv.h>

#include <cstdint>

#include "trovenu/platform/code_page.h"
#include "trovenu/platform/code_page_text.h"

namespace trovenu {

namespace {

constexpr char kUtf8[] = "UTF-8";
constexpr char kCodePage[] = "CP949";
constexpr char kWide[] = "WCHAR_T";

class Converter {
 public:
  Converter(const char *to, const char *from) : handle_(iconv_open(to, from)) {}
  ~Converter() {
    if (IsOpen()) iconv_close(handle_);
  }
  Converter(const Converter &) = delete;
  Converter &operator=(const Converter &) = delete;

  bool IsOpen() const { return reinterpret_cast<std::intptr_t>(handle_) != -1; }

  /// Adds the converted `character` to `out`. False, with nothing added, if it can't be converted.
  bool Add(std::string_view character, std::string &out) {
    char *in = const_cast<char *>(character.data());
    std::size_t inLeft = character.size();
    char bytes[16];
    char *end = bytes;
    std::size_t room = sizeof(bytes);
    const std::size_t result = iconv(handle_, &in, &inLeft, &end, &room);
    if (result == static_cast<std::size_t>(-1) || end == bytes) {
      iconv(handle_, nullptr, nullptr, nullptr, nullptr);
      return false;
    }
    out.append(bytes, end);
    return true;
  }

 private:
  iconv_t handle_;
};

/// Length in bytes of the first character of a text, faulty ones included; 1 up to the length of the text.
using LengthOf = std::size_t (*)(std::string_view text);

std::size_t Utf8Length(std::string_view text) {
  std::size_t length = 1;
  while (length < text.size() && (static_cast<unsigned char>(text[length]) & 0xC0U) == 0x80U) ++length;
  return length;
}

std::size_t WideLength(std::string_view) { return sizeof(wchar_t); }

// One character at a time: after a fault in a longer text converters disagree on how much they have consumed.
std::string Convert(const char *to, const char *from, std::string_view text, LengthOf lengthOf,
                    const char *substitute, bool *ok) {
  bool good = true;
  std::string out;
  Converter converter(to, from);
  while (!text.empty()) {
    const std::size_t length = lengthOf(text);
    if (length == 1 && static_cast<unsigned char>(text[0]) < 0x80) {
      out += text[0];
    } else if (!converter.IsOpen() || !converter.Add(text.substr(0, length), out)) {
      out += substitute;
      good = false;
    }
    text.remove_prefix(length);
  }
  if (ok != nullptr) *ok = good;
  return out;
}

}  // namespace

std::string CodePageFromUtf8(std::string_view text, bool *ok) {
  return Convert(kCodePage, kUtf8, text, Utf8Length, "?", ok);
}

std::string Utf8FromCodePage(std::string_view text, bool *ok) {
  return Convert(kUtf8, kCodePage, text, CharacterLength, "\xEF\xBF\xBD", ok);
}

std::string CodePageFromWide(std::wstring_view text, bool *ok) {
  const std::string_view bytes(reinterpret_cast<const char *>(text.data()), text.size() * sizeof(wchar_t));
  return Convert(kCodePage, kWide, bytes, WideLength, "?", ok);
}

}  // namespace trovenu

#endif
