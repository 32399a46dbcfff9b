#include "trovenu/support/archive.h"

#include <string_view>

#include "trovenu/platform/platform.h"
#include "trovenu/support/ini_transfer.h"

namespace trovenu {

int CKqArchive::GetInt(const char *key, int defaultValue) const {
  return text_.GetInt(category_, ViewOf(key), defaultValue);
}

double CKqArchive::GetDbl(const char *key, double defaultValue) const {
  return text_.GetDouble(category_, ViewOf(key), defaultValue);
}

SString CKqArchive::GetStr(const char *key, const char *defaultValue) const {
  const auto value = text_.Find(category_, ViewOf(key));
  return value ? SString(std::string_view(*value)) : SString(defaultValue);
}

void CKqArchive::SetInt(const char *key, int value, int) { text_.SetInt(category_, ViewOf(key), value); }

void CKqArchive::SetDbl(const char *key, double value, double) {
  text_.SetDouble(category_, ViewOf(key), value);
}

void CKqArchive::SetStr(const char *key, const char *value, const char *) {
  text_.Set(category_, ViewOf(key), ViewOf(value));
}

void CKqArchive::Clear() { text_.Parse({}); }

int CKqArchive::Save(const char *fileName) const {
  return WriteFileBytes(PathOf(fileName), text_.Text(), Flush::ToDisk) ? 1 : 0;
}

int CKqArchive::Save(CMemFile *file) const { return SaveIniText(text_, file) ? 1 : 0; }

int CKqArchive::Load(const char *fileName) { return LoadIniText(PathOf(fileName), &text_) ? 1 : 0; }

int CKqArchive::Load(CMemFile *file) { return LoadIniText(file, &text_) ? 1 : 0; }

}  // namespace trovenu
