#include "trovenu/support/ini_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>

#include "trovenu/platform/platform.h"
#include "trovenu/platform/string.h"
#include "trovenu/support/ini_notation.h"
#include "trovenu/support/number_text.h"

namespace trovenu {

namespace {

bool EndsLine(std::string_view text) { return !text.empty() && text.back() == '\n'; }

std::string_view WithoutLineEnd(std::string_view line) {
  if (EndsLine(line)) line.remove_suffix(1);
  if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
  return line;
}

/// Text that people write line by line keeps its own line ends.
std::string LineEndOf(std::string_view text) {
  const std::size_t end = text.find('\n');
  if (end == text.npos) return kLineEnd;
  return end > 0 && text[end - 1] == '\r' ? "\r\n" : "\n";
}

std::optional<double> NumberIn(const std::optional<std::string> &value) {
  if (!value) return {};
  const std::string_view text = *value;
  double number = 0.0;
  if (const std::size_t size = ParseNumber(text, &number); size > 0 && size == text.size()) {
    if (std::isinf(number)) return {};
    return number;
  }
  if (text == "nan" || text == "-nan") return std::numeric_limits<double>::quiet_NaN();
  if (text == "inf") return std::numeric_limits<double>::infinity();
  if (text == "-inf") return -std::numeric_limits<double>::infinity();
  return {};
}

}  // namespace

void IniText::Parse(std::string_view text) {
  sections_.clear();
  sectionIndexes_.clear();
  places_.clear();
  mark_ = text.starts_with(kByteOrderMark) ? kByteOrderMark : "";
  text.remove_prefix(mark_.size());
  lineEnd_ = LineEndOf(text);
  sections_.emplace_back();
  sectionIndexes_.emplace("", 0);
  places_.reserve(static_cast<std::size_t>(std::count(text.begin(), text.end(), '=')));
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    const std::string_view line = text.substr(0, end == text.npos ? end : end + 1);
    AddLine(line);
    text.remove_prefix(line.size());
  }
}

void IniText::AddLine(std::string_view text) {
  const std::string_view line = WithoutLineEnd(text);
  if (const auto name = ReadIniSection(line)) return AddSection(*name, std::string(text));
  Section &section = sections_.back();
  section.lines.push_back({std::string(text), false, 0, 0});
  const auto parts = ReadIniKey(line);
  if (!parts) return;
  Line &added = section.lines.back();
  added.isKey = true;
  added.valueAt = parts->valueAt;
  added.valueSize = parts->valueSize;
  section.behindKeys = section.lines.size();
  places_.try_emplace(PlaceName(section.name, parts->key),
                      Place{sections_.size() - 1, section.lines.size() - 1});
}

void IniText::AddSection(std::string_view name, std::string head) {
  sectionIndexes_.try_emplace(Folded(name), sections_.size());
  Section &section = sections_.emplace_back();
  section.name = name;
  section.lines.push_back({std::move(head), false, 0, 0});
  section.behindKeys = 1;
}

std::string IniText::Text() const {
  std::string text = mark_;
  for (const Section &section : sections_) {
    for (const Line &line : section.lines) text += line.text;
  }
  return text;
}

std::string IniText::Line::Value() const {
  return ReadIniValue(std::string_view(text).substr(valueAt, valueSize));
}

const IniText::Line *IniText::LineOf(std::string_view section, std::string_view key) const {
  const auto place = places_.find(PlaceName(section, key));
  if (place == places_.end()) return nullptr;
  return &sections_[place->second.section].lines[place->second.line];
}

std::optional<std::string> IniText::Find(std::string_view section, std::string_view key) const {
  const Line *line = LineOf(section, key);
  return line == nullptr ? std::nullopt : std::optional(line->Value());
}

void IniText::Set(std::string_view section, std::string_view key, std::string_view value) {
  const auto place = places_.find(PlaceName(section, key));
  if (place != places_.end()) {
    Line &line = sections_[place->second.section].lines[place->second.line];
    if (line.Value() == value) return;
    const std::string written = IniValue(value);
    line.text.replace(line.valueAt, line.valueSize, written);
    line.valueSize = written.size();
    return;
  }
  auto index = sectionIndexes_.find(Folded(section));
  if (index == sectionIndexes_.end()) {
    EndLastLine();
    const bool first = sections_.size() == 1 && sections_.front().lines.empty();
    if (!first) sections_.back().lines.push_back({lineEnd_, false, 0, 0});
    AddSection(section, IniSectionHead(section) + lineEnd_);
    index = sectionIndexes_.find(Folded(section));
  }
  AddKey(sections_[index->second], index->second, key, value);
}

void IniText::AddKey(Section &section, std::size_t sectionIndex, std::string_view key,
                     std::string_view value) {
  if (&section == &sections_.back()) EndLastLine();
  Line line;
  line.isKey = true;
  line.text = IniKey(key) + '=';
  line.valueAt = line.text.size();
  const std::string written = IniValue(value);
  line.valueSize = written.size();
  line.text += written + lineEnd_;
  places_.emplace(PlaceName(section.name, key), Place{sectionIndex, section.behindKeys});
  section.lines.insert(section.lines.begin() + static_cast<std::ptrdiff_t>(section.behindKeys),
                       std::move(line));
  ++section.behindKeys;
}

/// The last line of a file may lack its end.
void IniText::EndLastLine() {
  if (sections_.back().lines.empty()) return;
  std::string &last = sections_.back().lines.back().text;
  if (!EndsLine(last)) last += lineEnd_;
}

int IniText::GetInt(std::string_view section, std::string_view key, int defaultValue) const {
  const auto number = NumberIn(Find(section, key));
  if (!number || std::isnan(*number)) return defaultValue;
  if (*number <= std::numeric_limits<int>::min()) return std::numeric_limits<int>::min();
  if (*number >= std::numeric_limits<int>::max()) return std::numeric_limits<int>::max();
  return static_cast<int>(*number);
}

double IniText::GetDouble(std::string_view section, std::string_view key, double defaultValue) const {
  return NumberIn(Find(section, key)).value_or(defaultValue);
}

void IniText::SetInt(std::string_view section, std::string_view key, int value) {
  Set(section, key, std::to_string(value));
}

void IniText::SetDouble(std::string_view section, std::string_view key, double value) {
  char digits[64];
  const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
  Set(section, key, std::string_view(digits, static_cast<std::size_t>(end - digits)));
}

void IniText::Merge(const IniText &other) {
  for (const Section &section : other.sections_) {
    for (const Line &line : section.lines) {
      if (!line.isKey) continue;
      const std::string key = ReadIniKey(line.text)->key;
      // Of keys that stand twice the first counts.
      if (other.LineOf(section.name, key) == &line) Set(section.name, key, line.Value());
    }
  }
}

std::string IniText::Folded(std::string_view name) const {
  if (letterCase_ == LetterCase::Matters) return std::string(name);
  CString folded(name);
  folded.MakeLower();
  return std::string(folded.View());
}

std::string IniText::PlaceName(std::string_view section, std::string_view key) const {
  return Folded(section) + '\0' + Folded(key);
}

}  // namespace trovenu
