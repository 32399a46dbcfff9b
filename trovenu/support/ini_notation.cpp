#include "trovenu/support/ini_notation.h"

#include <algorithm>

namespace trovenu {

namespace {

constexpr std::string_view kHexDigits = "0123456789ABCDEF";

constexpr bool IsBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

// A tabulator within a text does no harm.
constexpr bool IsControl(char c) { return (c >= '\0' && c < ' ' && c != '\t') || c == '\x7F'; }

std::size_t SkipBlanks(std::string_view text, std::size_t at) {
  while (at < text.size() && IsBlank(text[at])) ++at;
  return at;
}

std::size_t EndWithoutBlanks(std::string_view text, std::size_t begin, std::size_t end) {
  while (end > begin && IsBlank(text[end - 1])) --end;
  return end;
}

std::string_view Trimmed(std::string_view text) {
  const std::size_t begin = SkipBlanks(text, 0);
  return text.substr(begin, EndWithoutBlanks(text, begin, text.size()) - begin);
}

bool IsQuoted(std::string_view text) { return text.size() >= 2 && text.front() == '"' && text.back() == '"'; }

/// True for a text that reads back as it is without quotes, as far as blanks and control characters go.
bool IsPlain(std::string_view text) {
  if (!text.empty() && (IsBlank(text.front()) || IsBlank(text.back()))) return false;
  return std::none_of(text.begin(), text.end(), IsControl);
}

std::string Quoted(std::string_view text, std::string_view alsoEscaped) {
  std::string quoted = "\"";
  for (const char c : text) {
    if (c == '%' || IsControl(c) || alsoEscaped.find(c) != alsoEscaped.npos) {
      const auto byte = static_cast<unsigned char>(c);
      quoted += '%';
      quoted += kHexDigits[byte >> 4];
      quoted += kHexDigits[byte & 0xF];
    } else {
      quoted += c;
    }
  }
  return quoted + '"';
}

std::size_t HexValue(char c) {
  if (c >= 'a' && c <= 'f') c = static_cast<char>(c - 'a' + 'A');
  return kHexDigits.find(c);
}

/// The text that stands between quotes as `text`.
std::string Unescaped(std::string_view text) {
  std::string plain;
  plain.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '%' && i + 2 < text.size() && HexValue(text[i + 1]) != kHexDigits.npos &&
        HexValue(text[i + 2]) != kHexDigits.npos) {
      plain += static_cast<char>(HexValue(text[i + 1]) * 16 + HexValue(text[i + 2]));
      i += 2;
    } else {
      plain += text[i];
    }
  }
  return plain;
}

/// Behind the quoted name that begins at `at`, if `closing` follows it but for blanks; else 0.
std::size_t EndOfQuotedName(std::string_view line, std::size_t at, char closing) {
  if (at >= line.size() || line[at] != '"') return 0;
  const std::size_t quote = line.find('"', at + 1);
  if (quote == line.npos) return 0;
  const std::size_t next = SkipBlanks(line, quote + 1);
  return next < line.size() && line[next] == closing ? quote + 1 : 0;
}

}  // namespace

std::optional<IniKeyLine> ReadIniKey(std::string_view line) {
  const std::size_t begin = SkipBlanks(line, 0);
  if (begin == line.size() || line[begin] == ';' || line[begin] == '#' || line[begin] == '[') return {};
  const std::size_t quotedEnd = EndOfQuotedName(line, begin, '=');
  const std::size_t equals = line.find('=', quotedEnd > 0 ? quotedEnd : begin);
  if (equals == line.npos) return {};
  IniKeyLine parts;
  parts.key = quotedEnd > 0 ? Unescaped(line.substr(begin + 1, quotedEnd - begin - 2))
                            : std::string(Trimmed(line.substr(begin, equals - begin)));
  parts.valueAt = SkipBlanks(line, equals + 1);
  parts.valueSize = EndWithoutBlanks(line, parts.valueAt, line.size()) - parts.valueAt;
  return parts;
}

std::string ReadIniValue(std::string_view written) {
  return IsQuoted(written) ? Unescaped(written.substr(1, written.size() - 2)) : std::string(written);
}

std::optional<std::string> ReadIniSection(std::string_view line) {
  const std::size_t begin = SkipBlanks(line, 0);
  if (begin == line.size() || line[begin] != '[') return {};
  const std::size_t name = SkipBlanks(line, begin + 1);
  const std::size_t quotedEnd = EndOfQuotedName(line, name, ']');
  if (quotedEnd > 0) return Unescaped(line.substr(name + 1, quotedEnd - name - 2));
  return std::string(Trimmed(line.substr(name, line.find(']', name) - name)));
}

std::string IniSectionHead(std::string_view name) {
  const bool plain = IsPlain(name) && !name.starts_with('"') && name.find(']') == name.npos;
  return '[' + (plain ? std::string(name) : Quoted(name, "\"")) + ']';
}

// A key may be the first line of its text.
std::string IniKey(std::string_view key) {
  const bool plain = IsPlain(key) && key.find('=') == key.npos && !key.starts_with(kByteOrderMark) &&
                     (key.empty() || std::string_view("[;#\"").find(key.front()) == key.npos);
  return plain ? std::string(key) : Quoted(key, "\"");
}

std::string IniValue(std::string_view value) {
  return IsPlain(value) && !IsQuoted(value) ? std::string(value) : Quoted(value, "");
}

}  // namespace trovenu
