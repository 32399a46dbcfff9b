#if defined(_WIN32)

#include <windows.h>

#include <climits>

#include "trovenu/platform/code_page.h"
#include "trovenu/platform/code_page_text.h"

namespace trovenu {

namespace {

constexpr UINT kCodePage = 949;
constexpr wchar_t kReplacement = 0xFFFD;

int Size(std::size_t size) { return size > INT_MAX ? INT_MAX : static_cast<int>(size); }

/// Empty if `flags` asks for good text alone and the text isn't, or if the text is.
std::wstring ToWide(UINT page, DWORD flags, std::string_view text) {
  if (text.empty()) return {};
  const int length = MultiByteToWideChar(page, flags, text.data(), Size(text.size()), nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(length), L'\0');
  if (length > 0) {
    MultiByteToWideChar(page, flags, text.data(), Size(text.size()), wide.data(), length);
  }
  return wide;
}

void SetOk(bool *ok, bool good) {
  if (ok != nullptr) *ok = good;
}

/// Code-page text to wide text one character at a time, for a text in which some are faulty.
std::wstring RepairCodePage(std::string_view text) {
  std::wstring wide;
  while (!text.empty()) {
    const std::size_t length = CharacterLength(text);
    const std::wstring character = ToWide(kCodePage, MB_ERR_INVALID_CHARS, text.substr(0, length));
    if (character.empty()) {
      wide += kReplacement;
    } else {
      wide += character;
    }
    text.remove_prefix(length);
  }
  return wide;
}

/// Each pair that stands for one character, which the code page lacks, as one.
std::wstring WithoutPairs(std::wstring_view text) {
  std::wstring single;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool isPair = i + 1 < text.size() && IS_SURROGATE_PAIR(text[i], text[i + 1]);
    single += isPair ? kReplacement : text[i];
    if (isPair) ++i;
  }
  return single;
}

}  // namespace

std::string CodePageFromWide(std::wstring_view wide, bool *ok) {
  SetOk(ok, true);
  if (wide.empty()) return {};
  const std::wstring text = WithoutPairs(wide);
  BOOL usedSubstitute = FALSE;
  const int length = WideCharToMultiByte(kCodePage, WC_NO_BEST_FIT_CHARS, text.data(), Size(text.size()),
                                         nullptr, 0, "?", nullptr);
  std::string out(static_cast<std::size_t>(length), '\0');
  WideCharToMultiByte(kCodePage, WC_NO_BEST_FIT_CHARS, text.data(), Size(text.size()), out.data(), length,
                      "?", &usedSubstitute);
  SetOk(ok, length > 0 && usedSubstitute == FALSE);
  return out;
}

std::string CodePageFromUtf8(std::string_view text, bool *ok) {
  // Faulty bytes come as U+FFFD, which the code page lacks.
  return CodePageFromWide(ToWide(CP_UTF8, 0, text), ok);
}

std::string Utf8FromCodePage(std::string_view text, bool *ok) {
  SetOk(ok, true);
  if (text.empty()) return {};
  std::wstring wide = ToWide(kCodePage, MB_ERR_INVALID_CHARS, text);
  if (wide.empty()) {
    wide = RepairCodePage(text);
    SetOk(ok, false);
  }
  const int length =
      WideCharToMultiByte(CP_UTF8, 0, wide.data(), Size(wide.size()), nullptr, 0, nullptr, nullptr);
  std::string out(static_cast<std::size_t>(length), '\0');
  WideCharToMultiByte(CP_UTF8, 0, wide.data(), Size(wide.size()), out.data(), length, nullptr, nullptr);
  return out;
}

}  // namespace trovenu

#endif
