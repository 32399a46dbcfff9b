#include "trovenu/support/text_edit.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "trovenu/platform/code_page_text.h"

namespace trovenu {

namespace {

std::string_view ViewOf(const char *text) { return text == nullptr ? std::string_view() : text; }

template <class Condition>
char *DeleteBytes(char *s, Condition condition) {
  if (s != nullptr) *std::remove_if(s, s + std::strlen(s), condition) = '\0';
  return s;
}

void Write(std::string_view text, char *out) {
  if (out == nullptr) return;
  text.copy(out, text.size());
  out[text.size()] = '\0';
}

}  // namespace

char *DeleteAllSpace(char *s) {
  return DeleteBytes(s, [](char c) { return c == ' '; });
}

char *DeleteEscapeCharacter(char *s) {
  return DeleteBytes(s, [](char c) { return c >= 9 && c <= 13; });
}

char *DeleteString(char *s, const char *what) {
  const std::string_view removed = ViewOf(what);
  if (s == nullptr || removed.empty()) return s;
  const std::string_view text = s;
  char *end = s;
  std::size_t rest = 0;
  while (rest < text.size()) {
    const std::size_t at = std::min(FindText(text, removed, rest), text.size());
    std::memmove(end, s + rest, at - rest);
    end += at - rest;
    rest = at + removed.size();
  }
  *end = '\0';
  return s;
}

char *FindString(char *s, const char *what) {
  if (s == nullptr) return nullptr;
  const std::size_t at = FindText(s, ViewOf(what));
  return at == std::string_view::npos ? nullptr : s + at;
}

int CutStringUntilKey(char *s, char *out, const char *key) {
  const std::string_view text = ViewOf(s);
  const std::string_view mark = ViewOf(key);
  const std::size_t at = mark.empty() ? std::string_view::npos : FindText(text, mark);
  const bool found = at != std::string_view::npos;
  const std::size_t length = found ? at : text.size();
  Write(text.substr(0, length), out);
  if (s == nullptr) return 0;
  const char *rest = s + length + (found ? mark.size() : 0);
  std::memmove(s, rest, std::strlen(rest) + 1);
  return found ? 1 : 0;
}

std::size_t NameLength(const char *s) {
  if (s == nullptr || !(IsLetterAscii(*s) || isHangul(*s))) return 0;
  std::size_t length = 1;
  while (IsLetterAscii(s[length]) || isHangul(s[length]) || IsDigitAscii(s[length]) || s[length] == '_')
    ++length;
  return length;
}

char *GetName(const char *s, char *out) {
  Write(ViewOf(s).substr(0, NameLength(s)), out);
  return out;
}

}  // namespace trovenu
