#include <string>

#include "trovenu/platform/mem_file.h"
#include "trovenu/price/price_data_list.h"
#include "trovenu/support/field_table.h"
#include "trovenu/support/ini_mem_file.h"
#include "trovenu/support/ini_section.h"
#include "trovenu/support/korean.h"

namespace trovenu {
namespace {

using Section = IniSection<CIniMemFile>;
using Property = SPriceProperty;

constexpr const char *kCountSection = "-1";
constexpr const char *kCountKey = "COUNT";
constexpr int kDefaultCount = 1;

constexpr const char *kSymbolSection = "설정"_kr;
constexpr const char *kRatioSection = "비율보기"_kr;
constexpr const char *kAlarmSection = "알람"_kr;

constexpr const char *kIdKey = "PriceID";
constexpr Field<SPriceData> kSymbolFields[] = {
    {kIdKey, &SPriceData::ID},
    {"Code", &SPriceData::SymbolCode},
};

constexpr Field<SPriceProperty> kAxisFields[] = {
    {"최대최소"_kr, &Property::MinMaxY},    {"최대값"_kr, &Property::UserMax},
    {"최소값"_kr, &Property::UserMin},      {"로그적용"_kr, &Property::LogY},
    {"거꾸로 보기"_kr, &Property::InvertY}, {"선스타일"_kr, &Property::LineStyle},
    {"선굵기"_kr, &Property::LineThick},
};
constexpr ElementField<SPriceProperty, 4> kBaseLines = {"기준값"_kr, &Property::ShowBaseLine};
constexpr Field<SPriceProperty> kTypeField[] = {{"차트유형"_kr, &Property::PriceChartType}};

constexpr Field<SPriceProperty> kRatioFields[] = {
    {"저고"_kr, &Property::ShowLH},
    {"저종"_kr, &Property::ShowLC},
    {"고종"_kr, &Property::ShowHC},
};

constexpr ElementField<SPriceProperty, kPriceChartTypes> kChartTypeFields[] = {
    {"상승색"_kr, &Property::WhiteLineColor},
    {"상승채우기"_kr, &Property::WhiteLineFill},
    {"하락색"_kr, &Property::BlackLineColor},
    {"하락채우기"_kr, &Property::BlackLineFill},
    {"매물대"_kr, &Property::VolumeAtPriceColor},
    {"수치표시"_kr, &Property::BlVolumeDisp},
    {"변수값1"_kr, &Property::Value1},
    // Required: the second option has the key of the first.
    {"변수값1"_kr, &Property::Value2},
};

constexpr Field<SSRLines> kAlarmFields[] = {
    {"알람명보기"_kr, &SSRLines::ShowTitle}, {"값보기"_kr, &SSRLines::ShowValue},
    {"라인유형"_kr, &SSRLines::LineStyle},   {"화면 표시"_kr, &SSRLines::ShowAlarmLine},
    {"표시위치"_kr, &SSRLines::TextPos},
};
constexpr NumberElementField<SSRLines, SSRLines::kLines> kLineFields[] = {
    {"선색상"_kr, &SSRLines::LineColor},
    {"선보기"_kr, &SSRLines::ShowLine},
    {"선굵기"_kr, &SSRLines::LineThick},
};
constexpr NumberElementField<SSRLines, SSRLines::kLines> kUserLine = {"기준값"_kr, &SSRLines::LineValue};

// The text is walked in one way for reading and for writing.
struct ReadingWay {
  template <class Fields, class Owner>
  static void Transfer(Section section, const Fields &fields, Owner &object, const Owner &defaults) {
    LoadFields(section, fields, object, defaults);
  }
  template <class Element, class Owner>
  static void Transfer(Section section, const std::string &key, const Element &field, int i, Owner &object,
                       const Owner &defaults) {
    LoadElement(section, key.c_str(), field, i, object, defaults);
  }
};

struct WritingWay {
  template <class Fields, class Owner>
  static void Transfer(Section section, const Fields &fields, const Owner &object, const Owner &defaults) {
    StoreFields(section, fields, object, defaults);
  }
  template <class Element, class Owner>
  static void Transfer(Section section, const std::string &key, const Element &field, int i,
                       const Owner &object, const Owner &defaults) {
    StoreElement(section, key.c_str(), field, i, object, defaults);
  }
};

std::string SectionName(int symbol, const char *word) { return std::to_string(symbol) + "_" + word; }

template <class Way, class Symbol>
void TransferSymbol(CIniMemFile &file, int number, Symbol &symbol) {
  auto &property = *symbol.property;
  SPriceData symbolDefaults;
  symbolDefaults.SetID(number);
  SPriceProperty defaults;
  defaults.UserMax = property.UserMax;
  defaults.UserMin = property.UserMin;

  const std::string settings = SectionName(number, kSymbolSection);
  const Section section(file, settings.c_str());
  Way::Transfer(section, kSymbolFields, symbol, symbolDefaults);
  Way::Transfer(section, kAxisFields, property, defaults);
  for (int i = 0; i < kBaseLines.kElements; ++i) {
    Way::Transfer(section, NumberedKey(kBaseLines.key, i), kBaseLines, i, property, defaults);
  }
  Way::Transfer(section, kTypeField, property, defaults);

  const std::string ratios = SectionName(number, kRatioSection);
  Way::Transfer(Section(file, ratios.c_str()), kRatioFields, property, defaults);

  for (int type = 0; type < kPriceChartTypes; ++type) {
    const std::string name = SectionName(number, PriceChartTypeName(type));
    const Section chartType(file, name.c_str());
    for (const auto &field : kChartTypeFields) {
      Way::Transfer(chartType, field.key, field, type, property, defaults);
    }
  }
}

template <class Way, class Lines>
void TransferLines(CIniMemFile &file, int number, Lines &lines) {
  const SSRLines defaults;
  const std::string name = SectionName(number, kAlarmSection);
  const Section section(file, name.c_str());
  Way::Transfer(section, kAlarmFields, lines, defaults);
  for (int i = 0; i < SSRLines::kLines; ++i) {
    for (const auto &field : kLineFields) {
      Way::Transfer(section, NumberedKey(field.key, i), field, i, lines, defaults);
    }
  }
  for (int i = SSRLines::kFirstUserLine; i < SSRLines::kLines; ++i) {
    Way::Transfer(section, NumberedKey(kUserLine.key, i), kUserLine, i, lines, defaults);
  }
}

}  // namespace

void SPriceDataList::ReadSetting(CMemFile *file) {
  CIniMemFile text;
  text.LoadIniFile(file, 1);
  _ReadSetting(&text);
}

void SPriceDataList::ReadSetting(const char *path) {
  CIniMemFile text(path);
  _ReadSetting(&text);
}

void SPriceDataList::SaveSetting(CMemFile *file) const {
  CIniMemFile text;
  _SaveSetting(&text);
  text.GetMemFile(file);
}

void SPriceDataList::SaveSetting(const char *path) const {
  CIniMemFile text;
  _SaveSetting(&text);
  text.SaveIniFile(path);
}

void SPriceDataList::_ReadSetting(CIniMemFile *file) {
  Clear();
  const int symbols = file->GetInt(kCountSection, kCountKey, kDefaultCount);
  for (int i = 0; i < symbols; ++i) {
    if (i >= kTrustedSize && file->GetInt(SectionName(i, kSymbolSection).c_str(), kIdKey, kNoId) == kNoId) {
      return;
    }
    Add();
    if (count == i) return;
    SPriceData &symbol = (*this)[i];
    TransferSymbol<ReadingWay>(*file, i, symbol);

    SSRLines lines;
    TransferLines<ReadingWay>(*file, i, lines);
    // Required: the values of user lines alone don't make a difference, and are then not taken.
    if (lines == SSRLines()) continue;
    if (symbol.lines == nullptr) symbol.lines = std::make_unique<SSRLines>();
    *symbol.lines = lines;
  }
}

void SPriceDataList::_SaveSetting(CIniMemFile *file) const {
  file->WriteInt(kCountSection, kCountKey, count, kDefaultCount);
  for (int i = 0; i < count; ++i) {
    const SPriceData &symbol = (*this)[i];
    TransferSymbol<WritingWay>(*file, i, symbol);
    if (symbol.lines != nullptr) TransferLines<WritingWay>(*file, i, *symbol.lines);
  }
}

}  // namespace trovenu
