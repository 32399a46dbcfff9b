#include "trovenu/platform/code_page_text.h"

#include <cstring>

namespace trovenu {

std::size_t FindText(std::string_view text, std::string_view what, std::size_t from) {
  if (from > text.size()) return std::string_view::npos;
  if (what.empty()) return from;
  while (from + what.size() <= text.size()) {
    if (text[from] == what[0] && text.compare(from, what.size(), what) == 0) return from;
    from += CharacterLength(text.substr(from));
  }
  return std::string_view::npos;
}

int CompareNoCase(const char *left, const char *right) {
  if (left == nullptr) left = "";
  if (right == nullptr) right = "";
  bool afterLead = false;
  for (;; ++left, ++right) {
    const char a = afterLead ? *left : ToLowerAscii(*left);
    const char b = afterLead ? *right : ToLowerAscii(*right);
    if (a != b) return static_cast<unsigned char>(a) < static_cast<unsigned char>(b) ? -1 : 1;
    if (a == '\0') return 0;
    afterLead = !afterLead && IsLeadByte(a);
  }
}

bool EqualNoCase(const char *left, const char *right) { return CompareNoCase(left, right) == 0; }

std::size_t CutAtCharacter(const char *text, std::size_t bytes) {
  if (text == nullptr) return 0;
  if (const void *end = std::memchr(text, '\0', bytes)) {
    return static_cast<std::size_t>(static_cast<const char *>(end) - text);
  }
  std::size_t length = 0;
  while (length < bytes) {
    const std::size_t step = IsLeadByte(text[length]) && IsTrailByte(text[length + 1]) ? 2 : 1;
    if (length + step > bytes) break;
    length += step;
  }
  return length;
}

}  // namespace trovenu
