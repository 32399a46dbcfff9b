#include <gtest/gtest.h>

#include <map>
#include <sstream>
#include <string>

#include "tests/price/stored_values.h"
#include "trovenu/price/price_data_list.h"
#include "trovenu/support/ini_mem_file.h"
#include "trovenu/support/korean.h"

namespace trovenu {
namespace {

// The section of a text, the category of the archive, and each key with that of the member that it fills.
constexpr const char *kSymbolKeys =
    "0_설정|PriceData0|PriceID=ID|Code=SymbolCode\n"
    "0_설정|PriceProperty0|최대최소=MinMaxY|최대값=UserMax|최소값=UserMin|로그적용=LogY|거꾸로 보기=InvertY|"
    "선스타일=LineStyle|선굵기=LineThick|기준값0=ShowBaseLine0|기준값3=ShowBaseLine3|차트유형="
    "PriceChartType\n"
    "0_비율보기|PriceProperty0|저고=ShowLH|저종=ShowLC|고종=ShowHC\n"
    "0_알람|SSRLines0|알람명보기=ShowTitle|값보기=ShowValue|라인유형=LineStyle|화면 표시=ShowAlarmLine|"
    "표시위치=TextPos\n"_kr;
constexpr const char *kTypeKeys =
    "|PriceProperty0|상승색=#.WhiteLineColor|상승채우기=#.WhiteLineFill|하락색=#.BlackLineColor|"
    "하락채우기=#.BlackLineFill|매물대=#.VolumeAtPriceColor|수치표시=#.BlVolumeDisp|변수값1=#.Value1|"
    "변수값1=#.Value2\n"_kr;
constexpr const char *kLineKeys =
    "0_알람|SSRLines0|선색상#=#.LineColor|선보기#=#.ShowLine|선굵기#=#.LineThick"_kr;

std::string AllKeys() {
  std::string all = kSymbolKeys;
  const auto add = [&all](const std::string &text, int number) {
    for (const char c : text) all += c == '#' ? std::to_string(number) : std::string(1, c);
  };
  for (int type = 0; type < 18; ++type) add(std::string("0_") + PriceChartTypeName(type) + kTypeKeys, type);
  for (int i = 0; i < 28; ++i) add(std::string(kLineKeys) + (i < 24 ? "\n" : "|기준값#=#.LineValue\n"_kr), i);
  return all;
}

void ReadText(SPriceDataList &list, CIniMemFile &text) {
  CMemFile file;
  text.GetMemFile(&file);
  list.ReadSetting(&file);
}

// Required: Value1 and Value2 of a chart type share the key "변수값1"; Value2 is what is written.
TEST(SettingsText, EveryKeyHasItsTargetAndBothOptionsShareOne) {
  CIniMemFile text;
  std::map<std::string, std::string> expected;
  std::map<std::string, int> numbers;
  std::istringstream lines(AllKeys());
  for (std::string line, section, category, key; std::getline(lines, line);) {
    std::istringstream fields(line);
    std::getline(std::getline(fields, section, '|'), category, '|');
    for (std::string stored; std::getline(fields, key, '=') && std::getline(fields, stored, '|');) {
      const int next = 101 + static_cast<int>(numbers.size());
      const int number = numbers.try_emplace(section + key, next).first->second;
      text.WriteInt(section.c_str(), key.c_str(), number);
      expected[category + " " + stored] = std::to_string(number);
    }
  }
  text.WriteInt("0_알람"_kr, "기준값23"_kr, 99);
  expected["SSRLines0 23.LineValue"] = "0";
  SPriceDataList lists[2];
  ReadText(lists[0], text);
  lists[0][0].property->Value1[5] = "lost";
  CMemFile file;
  lists[0].SaveSetting(&file);
  lists[0][0].property->Value1[5] = lists[0][0].property->Value2[5];
  lists[1].ReadSetting(&file);
  for (const SPriceDataList &list : lists) {
    ASSERT_EQ(list.GetSize(), 1);
    std::size_t found = 0;
    for (const tests::StoredValue &value : tests::StoredBy(list[0], 0)) {
      const auto row = expected.find(value.category + " " + value.key);
      if (row == expected.end()) continue;
      ++found;
      EXPECT_EQ(value.value, row->second) << row->first;
    }
    EXPECT_EQ(found, expected.size());
  }
}

// Required: the values of user lines alone don't make a difference, and are then not taken.
TEST(SettingsText, UserValuesAloneAreNotTaken) {
  CIniMemFile text;
  text.WriteInt("-1", "COUNT", 2);
  for (const char *section : {"0_알람"_kr, "1_알람"_kr}) text.WriteInt(section, "기준값24"_kr, 300);
  text.WriteInt("1_알람"_kr, "선보기24"_kr, 1);
  SPriceDataList list;
  ReadText(list, text);
  EXPECT_EQ(list[0].lines->LineValue[24], 0.0);
  EXPECT_EQ(list[1].lines->LineValue[24], 300.0);
  EXPECT_EQ(list[1].GetID(), 1) << "the running number";
}

TEST(SettingsText, NothingToReadAndDamagedCountsAreHarmless) {
  SPriceDataList list;
  list.ReadSetting(static_cast<CMemFile *>(nullptr));
  list.SaveSetting(static_cast<CMemFile *>(nullptr));
  list.ReadSetting(static_cast<const char *>(nullptr));
  list.SaveSetting(static_cast<const char *>(nullptr));
  EXPECT_EQ(list.GetSize(), 1);
  for (const int count : {2147483647, -1}) {
    CIniMemFile text;
    text.WriteInt("-1", "COUNT", count);
    ReadText(list, text);
    EXPECT_EQ(list.GetSize(), count < 0 ? 0 : 256);
  }
}

}  // namespace
}  // namespace trovenu
