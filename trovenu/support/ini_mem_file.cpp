#include "trovenu/support/ini_mem_file.h"

#include <string_view>

#include "trovenu/support/ini_transfer.h"

namespace trovenu {

CIniMemFile::CIniMemFile() : text_(IniText::LetterCase::Ignored), changes_(IniText::LetterCase::Ignored) {}

CIniMemFile::CIniMemFile(const char *fileName, int writeBack) : CIniMemFile() {
  if (writeBack != 0) writeBackTo_ = PathOf(fileName);
  LoadIniText(PathOf(fileName), &text_);
}

CIniMemFile::~CIniMemFile() {
  if (!writeBackTo_.empty() && !changes_.IsEmpty()) MergeIntoIniFile(writeBackTo_, changes_, text_);
}

int CIniMemFile::GetInt(const char *section, const char *key, int defaultValue) const {
  return text_.GetInt(ViewOf(section), ViewOf(key), defaultValue);
}

double CIniMemFile::GetDouble(const char *section, const char *key, double defaultValue) const {
  return text_.GetDouble(ViewOf(section), ViewOf(key), defaultValue);
}

SString CIniMemFile::GetString(const char *section, const char *key, const char *defaultValue) const {
  const auto value = text_.Find(ViewOf(section), ViewOf(key));
  return value ? SString(std::string_view(*value)) : SString(defaultValue);
}

void CIniMemFile::WriteInt(const char *section, const char *key, int value) {
  text_.SetInt(ViewOf(section), ViewOf(key), value);
  changes_.SetInt(ViewOf(section), ViewOf(key), value);
}

void CIniMemFile::WriteInt(const char *section, const char *key, int value, int) {
  WriteInt(section, key, value);
}

void CIniMemFile::WriteDouble(const char *section, const char *key, double value, double) {
  text_.SetDouble(ViewOf(section), ViewOf(key), value);
  changes_.SetDouble(ViewOf(section), ViewOf(key), value);
}

void CIniMemFile::WriteString(const char *section, const char *key, const char *value, const char *) {
  text_.Set(ViewOf(section), ViewOf(key), ViewOf(value));
  changes_.Set(ViewOf(section), ViewOf(key), ViewOf(value));
}

int CIniMemFile::LoadIniFile(CMemFile *file, int) {
  if (!LoadIniText(file, &text_)) return 0;
  changes_.Parse({});
  return 1;
}

int CIniMemFile::LoadIniFile(const char *fileName, int) {
  if (!LoadIniText(PathOf(fileName), &text_)) return 0;
  changes_.Parse({});
  return 1;
}

int CIniMemFile::SaveIniFile(const char *fileName) const {
  return MergeIntoIniFile(PathOf(fileName), text_, text_) ? 1 : 0;
}

int CIniMemFile::GetMemFile(CMemFile *file) const { return SaveIniText(text_, file) ? 1 : 0; }

}  // namespace trovenu
