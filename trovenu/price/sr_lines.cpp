#include "trovenu/price/sr_lines.h"

#include <algorithm>
#include <span>
#include <string>

#include "trovenu/support/archive.h"
#include "trovenu/support/field_table.h"
#include "trovenu/support/index_paths.h"
#include "trovenu/support/ini_mem_file.h"
#include "trovenu/support/ini_section.h"
#include "trovenu/support/korean.h"

namespace trovenu {
namespace {

constexpr const char *kCategory = "SSRLines";
constexpr const char *kSettingFile = "alarmset.ini";
constexpr const char *kSettingSection = "알람설정"_kr;

// Every line has one of these colours in turn.
constexpr int kFirstLineColor = 347;
constexpr int kLineColors = 10;

// The first two are not read back from the settings file.
constexpr std::size_t kWrittenOnly = 2;
constexpr Field<SSRLines> kOptions[] = {
    {"ShowAlarmLine", &SSRLines::ShowAlarmLine, 1}, {"ShowAlarmDlg", &SSRLines::ShowAlarmDlg, 0},
    {"ShowTitle", &SSRLines::ShowTitle, 0},         {"ShowValue", &SSRLines::ShowValue, 0},
    {"LineStyle", &SSRLines::LineStyle, 0},         {"TextPos", &SSRLines::TextPos, 2},
};

constexpr NumberElementField<SSRLines, SSRLines::kLines> kLineFields[] = {
    {"LineValue", &SSRLines::LineValue, false}, {"ShowLine", &SSRLines::ShowLine},
    {"LineThick", &SSRLines::LineThick},        {"ShowAlert", &SSRLines::ShowAlert},
    {"LineColor", &SSRLines::LineColor},
};

// What the settings file has of each line.
constexpr NumberElementField<SSRLines, SSRLines::kLines> kSettingFields[] = {
    {"ShowLine", &SSRLines::ShowLine},
    {"LineColor", &SSRLines::LineColor},
    {"LineThick", &SSRLines::LineThick},
};

std::string SettingPath() { return std::string(getIndexDir()) + kSettingFile; }

}  // namespace

SSRLines::SSRLines() {
  SetToDefault();
  Clear();
}

SSRLines::~SSRLines() = default;

void SSRLines::SetToDefault() {
  SetFieldsToDefault(kOptions, *this);
  std::ranges::fill(ShowLine, 0);
  std::ranges::fill(LineThick, 1);
  for (int i = 0; i < kLines; ++i) LineColor[i] = CThemeManager::GetColor(i % kLineColors + kFirstLineColor);
}

void SSRLines::Clear() {
  close = 0.0;
  previousClose = 0.0;
  std::ranges::fill(LineValue, 0.0);
}

void SSRLines::SetValue(int index, double value) {
  if (index >= 0 && index < kLines) LineValue[index] = value;
}

void SSRLines::SetClose(double price) {
  previousClose = close;
  close = price;
}

bool operator==(const SSRLines &a, const SSRLines &b) {
  return EqualFields(kOptions, a, b) && a.close == b.close && a.previousClose == b.previousClose &&
         EqualElements(kLineFields, a, b);
}

void SSRLines::ReadSetting() {
  CIniMemFile file;
  file.LoadIniFile(SettingPath().c_str(), 1);
  IniSection options(file, kSettingSection);
  LoadFields(options, std::span(kOptions).subspan(kWrittenOnly), *this, *this);
  for (int i = 0; i < kLines; ++i) {
    const std::string name = std::to_string(i);
    IniSection section(file, name.c_str());
    for (const auto &field : kSettingFields) LoadElement(section, field.key, field, i, *this, *this);
  }
}

void SSRLines::SaveSetting() const {
  const SSRLines defaults;
  CIniMemFile file(SettingPath().c_str(), 1);
  IniSection options(file, kSettingSection);
  StoreFields(options, kOptions, *this, defaults);
  for (int i = 0; i < kLines; ++i) {
    const std::string name = std::to_string(i);
    IniSection section(file, name.c_str());
    for (const auto &field : kSettingFields) StoreElement(section, field.key, field, i, *this, defaults);
  }
}

void SSRLines::Load(CKqArchive &archive, int index) {
  LoadTheme(archive, index);
  LoadElements(archive, kLineFields, *this, SSRLines());
}

void SSRLines::Store(CKqArchive &archive, int index) const {
  StoreTheme(archive, index);
  StoreElements(archive, kLineFields, *this, SSRLines());
}

void SSRLines::LoadTheme(CKqArchive &archive, int index) {
  archive.SetCategory(CategoryName(kCategory, index).c_str());
  LoadFields(archive, kOptions, *this, SSRLines());
}

void SSRLines::StoreTheme(CKqArchive &archive, int index) const {
  archive.SetCategory(CategoryName(kCategory, index).c_str());
  StoreFields(archive, kOptions, *this, SSRLines());
}

}  // namespace trovenu
