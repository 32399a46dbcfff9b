#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "tests/price/stored_values.h"
#include "trovenu/price/price_data_list.h"
#include "trovenu/support/ini_mem_file.h"
#include "trovenu/support/korean.h"

namespace trovenu {
namespace {

using tests::StoredBy;
using tests::StoredValue;

// Writes every key of symbol 0 with a number of its own and gives what is read, without the keys that no
// symbol takes.
struct Row {
  const char *section;
  const char *key;
};

constexpr Row kSingleKeys[] = {
    {"0_설정"_kr, "PriceID"},        {"0_설정"_kr, "Code"},        {"0_설정"_kr, "최대최소"_kr},
    {"0_설정"_kr, "최대값"_kr},      {"0_설정"_kr, "최소값"_kr},   {"0_설정"_kr, "로그적용"_kr},
    {"0_설정"_kr, "거꾸로 보기"_kr}, {"0_설정"_kr, "선스타일"_kr}, {"0_설정"_kr, "선굵기"_kr},
    {"0_설정"_kr, "기준값0"_kr},     {"0_설정"_kr, "기준값1"_kr},  {"0_설정"_kr, "기준값2"_kr},
    {"0_설정"_kr, "기준값3"_kr},     {"0_설정"_kr, "차트유형"_kr}, {"0_비율보기"_kr, "저고"_kr},
    {"0_비율보기"_kr, "저종"_kr},    {"0_비율보기"_kr, "고종"_kr}, {"0_알람"_kr, "알람명보기"_kr},
    {"0_알람"_kr, "값보기"_kr},      {"0_알람"_kr, "라인유형"_kr}, {"0_알람"_kr, "화면 표시"_kr},
    {"0_알람"_kr, "표시위치"_kr},
};

constexpr const char *kTypeKeys[] = {"상승색"_kr, "상승채우기"_kr, "하락색"_kr, "하락채우기"_kr,
                                     "매물대"_kr, "수치표시"_kr,   "변수값1"_kr};

std::string TypeSection(int type) { return std::string("0_") + PriceChartTypeName(type); }

void ReadText(SPriceDataList &list, CIniMemFile &text) {
  CMemFile file;
  text.GetMemFile(&file);
  list.ReadSetting(&file);
}

// Single keys 1 to 22, keys of chart type t from 100 t + 100 on, line i 3000 + 10 i, user values 4000 + i.
void WriteEverything(CIniMemFile &text) {
  int number = 0;
  for (const Row &row : kSingleKeys) text.WriteInt(row.section, row.key, ++number);
  for (int type = 0; type < 18; ++type) {
    number = 100 * type + 99;
    for (const char *key : kTypeKeys) text.WriteInt(TypeSection(type).c_str(), key, ++number);
  }
  for (int i = 0; i < 28; ++i) {
    const std::string line = std::to_string(i);
    text.WriteInt("0_알람"_kr, ("선색상"_kr + line).c_str(), 3000 + 10 * i);
    text.WriteInt("0_알람"_kr, ("선보기"_kr + line).c_str(), 3001 + 10 * i);
    text.WriteInt("0_알람"_kr, ("선굵기"_kr + line).c_str(), 3002 + 10 * i);
    text.WriteInt("0_알람"_kr, ("기준값"_kr + line).c_str(), 4000 + i);
  }
}

void ExpectEverything(const SPriceData &symbol) {
  const SPriceProperty &property = *symbol.property;
  EXPECT_EQ(symbol.ID, 1);
  EXPECT_TRUE(symbol.SymbolCode == "2");
  EXPECT_EQ(property.MinMaxY, 3);
  EXPECT_EQ(property.UserMax, 4.0);
  EXPECT_EQ(property.UserMin, 5.0);
  EXPECT_EQ(property.LogY, 6);
  EXPECT_EQ(property.InvertY, 7);
  EXPECT_EQ(property.LineStyle, 8);
  EXPECT_EQ(property.LineThick, 9);
  for (int i = 0; i < 4; ++i) EXPECT_EQ(property.ShowBaseLine[i], 10 + i);
  EXPECT_EQ(property.PriceChartType, 14);
  EXPECT_EQ(property.ShowLH, 15);
  EXPECT_EQ(property.ShowLC, 16);
  EXPECT_EQ(property.ShowHC, 17);
  for (int type = 0; type < 18; ++type) {
    const int first = 100 * type + 100;
    EXPECT_EQ(property.WhiteLineColor[type], static_cast<Color>(first));
    EXPECT_EQ(property.WhiteLineFill[type], first + 1);
    EXPECT_EQ(property.BlackLineColor[type], static_cast<Color>(first + 2));
    EXPECT_EQ(property.BlackLineFill[type], first + 3);
    EXPECT_EQ(property.VolumeAtPriceColor[type], static_cast<Color>(first + 4));
    EXPECT_EQ(property.BlVolumeDisp[type], first + 5);
    EXPECT_TRUE(property.Value1[type] == SString(first + 6));
    EXPECT_TRUE(property.Value2[type] == SString(first + 6));
  }
  const SSRLines &lines = *symbol.lines;
  EXPECT_EQ(lines.ShowTitle, 18);
  EXPECT_EQ(lines.ShowValue, 19);
  EXPECT_EQ(lines.LineStyle, 20);
  EXPECT_EQ(lines.ShowAlarmLine, 21);
  EXPECT_EQ(lines.TextPos, 22);
  for (int i = 0; i < 28; ++i) {
    EXPECT_EQ(lines.LineColor[i], static_cast<Color>(3000 + 10 * i));
    EXPECT_EQ(lines.ShowLine[i], 3001 + 10 * i);
    EXPECT_EQ(lines.LineThick[i], 3002 + 10 * i);
    EXPECT_EQ(lines.LineValue[i], i < 24 ? 0.0 : 4000.0 + i) << "only the user values are in the text";
  }
}

TEST(SettingsText, EveryKeyHasItsTarget) {
  CIniMemFile text;
  WriteEverything(text);
  SPriceDataList list;
  ReadText(list, text);
  ASSERT_EQ(list.GetSize(), 1);
  ExpectEverything(list[0]);

  // What is saved reads the same, and has every key.
  CMemFile file;
  list.SaveSetting(&file);
  SPriceDataList again;
  again.ReadSetting(&file);
  ASSERT_EQ(again.GetSize(), 1);
  ExpectEverything(again[0]);
  CIniMemFile saved;
  saved.LoadIniFile(&file, 1);
  EXPECT_EQ(saved.GetInt("-1", "COUNT", -1), 1);
  for (const Row &row : kSingleKeys) EXPECT_NE(saved.GetInt(row.section, row.key, -1), -1) << row.key;
  EXPECT_EQ(saved.GetInt("0_알람"_kr, "기준값23"_kr, -1), -1);
  EXPECT_EQ(saved.GetInt("0_알람"_kr, "기준값24"_kr, -1), 4024);
}

TEST(SettingsText, MissingKeysGiveTheDefaults) {
  SPriceDataList list;
  list.Add();
  list[0].SymbolCode = "old";
  list[0].property->LogY = 1;
  list[0].property->Value1[5] = "8";
  list[0].property->UserMax = 55.0;
  list[0].lines->ShowLine[2] = 1;
  CIniMemFile text;
  ReadText(list, text);
  ASSERT_EQ(list.GetSize(), 1) << "the number of symbols is 1 by default";
  EXPECT_EQ(list[0].GetID(), 0);
  EXPECT_EQ(list[0].SymbolCode.Length(), 0);
  EXPECT_EQ(list[0].property->UserMax, 55.0) << "the only ones that stay";
  EXPECT_EQ(list[0].lines->ShowLine[2], 1) << "lines that are all defaults are not taken";
  list[0].property->UserMax = 0.0;
  EXPECT_EQ(StoredBy(*list[0].property, 0), StoredBy(SPriceProperty(), 0));
}

TEST(SettingsText, IdsComeFromTheText) {
  CIniMemFile text;
  text.WriteInt("-1", "COUNT", 3);
  text.WriteInt("0_설정"_kr, "PriceID", 7);
  text.WriteInt("2_설정"_kr, "PriceID", 5);
  text.WriteString("1_설정"_kr, "Code", "005930", "");
  SPriceDataList list;
  ReadText(list, text);
  ASSERT_EQ(list.GetSize(), 3);
  EXPECT_EQ(list[0].GetID(), 7);
  EXPECT_EQ(list[1].GetID(), 1) << "the running number";
  EXPECT_EQ(list[2].GetID(), 5);
  EXPECT_TRUE(list[1].SymbolCode == "005930");
}

// Required: Value1 and Value2 of a chart type share the key "변수값1".
TEST(SettingsText, BothOptionsShareOneKey) {
  SPriceDataList list;
  list.Add();
  list[0].property->Value1[5] = "4";
  list[0].property->Value2[5] = "200";
  CMemFile file;
  list.SaveSetting(&file);
  SPriceDataList read;
  read.ReadSetting(&file);
  EXPECT_TRUE(read[0].property->Value1[5] == "200");
  EXPECT_TRUE(read[0].property->Value2[5] == "200");
  EXPECT_TRUE(read[0].property->Value1[0] == "0") << "the default of the second option";
}

// Required: the values of user lines alone don't make a difference, and are then not taken.
TEST(SettingsText, UserValuesAloneAreNotTaken) {
  CIniMemFile text;
  text.WriteInt("-1", "COUNT", 2);
  text.WriteInt("0_알람"_kr, "기준값24"_kr, 300);
  text.WriteInt("1_알람"_kr, "기준값24"_kr, 300);
  text.WriteInt("1_알람"_kr, "선보기24"_kr, 1);
  SPriceDataList list;
  ReadText(list, text);
  EXPECT_EQ(list[0].lines->LineValue[24], 0.0);
  EXPECT_EQ(list[1].lines->LineValue[24], 300.0);
  EXPECT_EQ(list[1].lines->ShowLine[24], 1);
}

TEST(SettingsText, LinesAreTakenWhole) {
  SPriceDataList list;
  list.Add();
  list[0].lines->ShowAlarmDlg = 1;
  list[0].SetSRLineValue(3, 50.0);
  CIniMemFile text;
  text.WriteInt("0_알람"_kr, "선보기3"_kr, 1);
  ReadText(list, text);
  EXPECT_EQ(list[0].lines->ShowLine[3], 1);
  EXPECT_EQ(list[0].lines->ShowAlarmDlg, 0);
  EXPECT_EQ(list[0].lines->LineValue[3], 0.0);

  list.data[0].lines = nullptr;
  ReadText(list, text);
  ASSERT_NE(list[0].lines, nullptr);
  EXPECT_EQ(list[0].lines->ShowLine[3], 1);

  list[0].lines = nullptr;
  CMemFile file;
  list.SaveSetting(&file);
  EXPECT_EQ(file.View().find("0_알람"_kr), std::string_view::npos);
}

TEST(SettingsText, GoesToAFileAndBack) {
  const std::filesystem::path path = std::filesystem::path(testing::TempDir()) / "trovenu_settings.ini";
  std::filesystem::remove(path);
  SPriceDataList list;
  list.ReadSetting(path.string().c_str());
  EXPECT_EQ(list.GetSize(), 1) << "a file that is not there is an empty text";
  list.Add();
  list[1].property->PriceChartType = kKagiChart;
  list.SaveSetting(path.string().c_str());
  SPriceDataList read;
  read.ReadSetting(path.string().c_str());
  EXPECT_EQ(read.GetSize(), 2);
  EXPECT_EQ(read[1].property->PriceChartType, kKagiChart);
  std::filesystem::remove(path);
}

TEST(SettingsText, NothingToReadOrWriteIsHarmless) {
  SPriceDataList list;
  list.ReadSetting(static_cast<CMemFile *>(nullptr));
  EXPECT_EQ(list.GetSize(), 1);
  list.SaveSetting(static_cast<CMemFile *>(nullptr));
  list.ReadSetting(static_cast<const char *>(nullptr));
  EXPECT_EQ(list.GetSize(), 1);
  list.SaveSetting(static_cast<const char *>(nullptr));

  CIniMemFile text;
  text.WriteInt("-1", "COUNT", 2147483647);
  ReadText(list, text);
  EXPECT_EQ(list.GetSize(), 256);
  text.WriteInt("-1", "COUNT", -1);
  ReadText(list, text);
  EXPECT_EQ(list.GetSize(), 0);
}

}  // namespace
}  // namespace trovenu
