#include "trovenu/platform/string.h"

#include <algorithm>
#include <cstdarg>
#include <cstring>
#include <utility>

#include "trovenu/platform/code_page_text.h"

namespace trovenu {

namespace {

constexpr std::string_view kBlanks = "\t\n\v\f\r ";

std::string_view ViewOf(const char *text) { return text == nullptr ? std::string_view() : text; }

std::size_t AtLeastZero(int number) { return number > 0 ? static_cast<std::size_t>(number) : 0; }

int PositionOf(std::size_t position) {
  return position == std::string_view::npos ? -1 : static_cast<int>(position);
}

/// Calls `change` for each character of one byte. It returns what stands there from now on.
template <class Change>
void ChangeSingleBytes(std::string &text, Change change) {
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t length = CharacterLength(std::string_view(text).substr(i));
    if (length == 1) text[i] = change(text[i]);
    i += length;
  }
}

int ReplaceText(std::string &text, std::string_view what, std::string_view with) {
  if (what.empty()) return 0;
  int count = 0;
  std::string out;
  std::size_t rest = 0;
  for (std::size_t at = FindText(text, what); at != std::string::npos; at = FindText(text, what, rest)) {
    out.append(text, rest, at - rest);
    out += with;
    rest = at + what.size();
    ++count;
  }
  if (count == 0) return 0;
  out.append(text, rest, std::string::npos);
  text = std::move(out);
  return count;
}

}  // namespace

CString::CString(const char *text) : text_(ViewOf(text)) {}

CString::CString(const char *text, int length) {
  if (text == nullptr || length <= 0) return;
  const void *end = std::memchr(text, '\0', static_cast<std::size_t>(length));
  text_.assign(text, end == nullptr ? text + length : static_cast<const char *>(end));
}

CString::CString(char c, int count) : text_(AtLeastZero(count), c) {}

CString::CString(std::string_view text) : text_(text) {}

CString &CString::operator=(const char *text) {
  // By way of a copy, since the text may be a part of this one.
  text_ = std::string(ViewOf(text));
  return *this;
}

CString &CString::operator=(char c) {
  text_.assign(1, c);
  return *this;
}

CString &CString::operator+=(const CString &other) {
  text_ += other.text_;
  return *this;
}

CString &CString::operator+=(const char *text) {
  text_ += ViewOf(text);
  return *this;
}

CString &CString::operator+=(char c) {
  text_ += c;
  return *this;
}

int CString::GetLength() const { return static_cast<int>(text_.size()); }

char CString::GetAt(int index) const { return (*this)[index]; }

void CString::SetAt(int index, char c) {
  if (index >= 0 && index < GetLength()) text_[static_cast<std::size_t>(index)] = c;
}

CString CString::Left(int count) const { return CString(View().substr(0, AtLeastZero(count))); }

CString CString::Right(int count) const {
  return CString(View().substr(text_.size() - std::min(AtLeastZero(count), text_.size())));
}

CString CString::Mid(int first) const {
  return CString(View().substr(std::min(AtLeastZero(first), text_.size())));
}

CString CString::Mid(int first, int count) const {
  return CString(View().substr(std::min(AtLeastZero(first), text_.size()), AtLeastZero(count)));
}

int CString::Find(const char *what, int start) const {
  return PositionOf(FindText(text_, ViewOf(what), AtLeastZero(start)));
}

int CString::Find(char what, int start) const {
  return PositionOf(FindText(text_, std::string_view(&what, 1), AtLeastZero(start)));
}

int CString::ReverseFind(char what) const {
  int last = -1;
  for (int at = Find(what); at >= 0; at = Find(what, at + 1)) last = at;
  return last;
}

int CString::Replace(const char *what, const char *with) {
  return ReplaceText(text_, ViewOf(what), ViewOf(with));
}

int CString::Replace(char what, char with) {
  return ReplaceText(text_, std::string_view(&what, 1), std::string_view(&with, 1));
}

int CString::Remove(char what) { return ReplaceText(text_, std::string_view(&what, 1), ""); }

int CString::Insert(int index, const char *text) {
  text_.insert(std::min(AtLeastZero(index), text_.size()), std::string(ViewOf(text)));
  return GetLength();
}

int CString::Delete(int index, int count) {
  if (index < 0) index = 0;
  if (index < GetLength()) text_.erase(static_cast<std::size_t>(index), AtLeastZero(count));
  return GetLength();
}

CString &CString::MakeUpper() {
  ChangeSingleBytes(text_, ToUpperAscii);
  return *this;
}

CString &CString::MakeLower() {
  ChangeSingleBytes(text_, ToLowerAscii);
  return *this;
}

CString &CString::TrimLeft() {
  text_.erase(0, std::min(text_.find_first_not_of(kBlanks), text_.size()));
  return *this;
}

CString &CString::TrimRight() {
  text_.erase(text_.find_last_not_of(kBlanks) + 1);
  return *this;
}

void CString::Format(const char *format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  text_ = FormatText(format, arguments);
  va_end(arguments);
}

int CString::Compare(const char *other) const {
  const int order = text_.compare(ViewOf(other));
  return (order > 0) - (order < 0);
}

int CString::CompareNoCase(const char *other) const { return trovenu::CompareNoCase(text_.c_str(), other); }

char *CString::GetBuffer(int length) {
  text_.resize(std::max(text_.size(), AtLeastZero(length)));
  return text_.data();
}

void CString::ReleaseBuffer(int length) {
  text_.resize(length < 0 ? std::strlen(text_.c_str()) : std::min(AtLeastZero(length), text_.size()));
}

CString operator+(const CString &left, const CString &right) { return CString(left) += right; }
CString operator+(const CString &left, const char *right) { return CString(left) += right; }
CString operator+(const char *left, const CString &right) { return CString(left) += right; }
CString operator+(const CString &left, char right) { return CString(left) += right; }
CString operator+(char left, const CString &right) { return CString(left, 1) += right; }

}  // namespace trovenu
