#include "trovenu/support/ini_file.h"

#include <string_view>

#include "trovenu/support/ini_transfer.h"

namespace trovenu {

CIniFile::CIniFile() : text_(IniText::LetterCase::Ignored), changes_(IniText::LetterCase::Ignored) {}

CIniFile::CIniFile(const char *fileName) : CIniFile() { SetFileName(fileName); }

CIniFile::~CIniFile() { Save(); }

void CIniFile::SetFileName(const char *fileName) {
  Save();
  fileName_ = PathOf(fileName);
  text_.Parse({});
  changes_.Parse({});
  LoadIniText(fileName_, &text_);
}

int CIniFile::GetInt(const char *section, const char *key, int defaultValue) const {
  return text_.GetInt(ViewOf(section), ViewOf(key), defaultValue);
}

double CIniFile::GetDouble(const char *section, const char *key, double defaultValue) const {
  return text_.GetDouble(ViewOf(section), ViewOf(key), defaultValue);
}

SString CIniFile::GetString(const char *section, const char *key, const char *defaultValue) const {
  const auto value = text_.Find(ViewOf(section), ViewOf(key));
  return value ? SString(std::string_view(*value)) : SString(defaultValue);
}

void CIniFile::WriteInt(const char *section, const char *key, int value) {
  text_.SetInt(ViewOf(section), ViewOf(key), value);
  changes_.SetInt(ViewOf(section), ViewOf(key), value);
}

void CIniFile::WriteDouble(const char *section, const char *key, double value) {
  text_.SetDouble(ViewOf(section), ViewOf(key), value);
  changes_.SetDouble(ViewOf(section), ViewOf(key), value);
}

void CIniFile::WriteString(const char *section, const char *key, const char *value) {
  text_.Set(ViewOf(section), ViewOf(key), ViewOf(value));
  changes_.Set(ViewOf(section), ViewOf(key), ViewOf(value));
}

int CIniFile::Save() {
  if (changes_.IsEmpty()) return 1;
  if (!MergeIntoIniFile(fileName_, changes_, text_)) return 0;
  changes_.Parse({});
  return 1;
}

}  // namespace trovenu
