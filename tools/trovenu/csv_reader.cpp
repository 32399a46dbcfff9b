#include "tools/trovenu/csv_reader.h"

#include <algorithm>

#include "tools/trovenu/failure.h"

namespace trovenu::tool {

namespace {

// The CR of a line that ends in CRLF counts as a blank.
bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r'; }

char FindSeparator(std::string_view text) {
  constexpr std::string_view kSeparators = ",;\t";
  std::size_t counts[kSeparators.size()] = {};
  bool quoted = false;
  for (const char c : text) {
    if (c == '"') quoted = !quoted;
    if (quoted) continue;
    if (c == '\n') break;
    const std::size_t kind = kSeparators.find(c);
    if (kind != kSeparators.npos) ++counts[kind];
  }
  std::size_t most = 0;
  for (std::size_t i = 1; i < kSeparators.size(); ++i) {
    if (counts[i] > counts[most]) most = i;
  }
  return kSeparators[most];
}

}  // namespace

CsvReader::CsvReader(const std::string &name, std::string_view text) : name_(name), text_(text) {
  for (; at_ < text_.size() && (text_[at_] == '\n' || IsBlank(text_[at_])); ++at_) {
    if (text_[at_] == '\n') ++line_;
  }
  separator_ = FindSeparator(text_.substr(at_));
}

bool CsvReader::NextRow(std::vector<std::string_view> &fields) {
  unquoted_.clear();
  while (at_ < text_.size()) {
    fields.clear();
    rowLine_ = line_;
    for (;;) {
      fields.push_back(ReadField());
      if (at_ == text_.size()) break;
      if (text_[at_++] == '\n') {
        ++line_;
        break;
      }
    }
    const auto holdsText = [](std::string_view field) { return !field.empty(); };
    if (std::any_of(fields.begin(), fields.end(), holdsText)) return true;
  }
  rowLine_ = line_;
  return false;
}

std::string_view CsvReader::ReadField() {
  SkipBlanks();
  if (at_ < text_.size() && text_[at_] == '"') return ReadQuoted();
  const std::size_t begin = at_;
  while (!AtFieldEnd()) ++at_;
  std::size_t end = at_;
  while (end > begin && IsBlank(text_[end - 1])) --end;
  return text_.substr(begin, end - begin);
}

std::string_view CsvReader::ReadQuoted() {
  const int firstLine = line_;
  const std::size_t begin = ++at_;
  bool doubled = false;
  for (;; ++at_) {
    if (at_ == text_.size()) throw FailureAt(name_, firstLine, "a double quote is opened and not closed");
    if (text_[at_] == '\n') ++line_;
    if (text_[at_] != '"') continue;
    if (at_ + 1 == text_.size() || text_[at_ + 1] != '"') break;
    doubled = true;
    ++at_;
  }
  std::string_view field = text_.substr(begin, at_ - begin);
  ++at_;
  SkipBlanks();
  if (!AtFieldEnd()) throw FailureAt(name_, line_, "expected a separator behind the closing double quote");
  if (!doubled) return field;
  std::string &plain = unquoted_.emplace_back();
  for (std::size_t i = 0; i < field.size(); ++i) {
    plain += field[i];
    if (field[i] == '"') ++i;
  }
  return plain;
}

bool CsvReader::AtFieldEnd() const {
  return at_ == text_.size() || text_[at_] == separator_ || text_[at_] == '\n';
}

void CsvReader::SkipBlanks() {
  while (!AtFieldEnd() && IsBlank(text_[at_])) ++at_;
}

}  // namespace trovenu::tool
