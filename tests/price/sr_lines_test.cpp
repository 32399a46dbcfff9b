#include "trovenu/price/sr_lines.h"

#include <gtest/gtest.h>

#include <climits>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "tests/price/stored_values.h"
#include "trovenu/support/index_paths.h"
#include "trovenu/support/ini_mem_file.h"
#include "trovenu/support/korean.h"

namespace trovenu {
namespace {

using tests::KeysOf;
using tests::Renumbered;
using tests::StoredBy;
using tests::ValuesOf;

constexpr const char *kOptionKeys = "ShowAlarmLine ShowAlarmDlg ShowTitle ShowValue LineStyle TextPos";

TEST(SRLines, StartsWithItsDefaults) {
  const SSRLines lines;
  EXPECT_EQ(lines.ShowAlarmLine, 1);
  EXPECT_EQ(lines.ShowAlarmDlg, 0);
  EXPECT_EQ(lines.ShowTitle, 0);
  EXPECT_EQ(lines.ShowValue, 0);
  EXPECT_EQ(lines.LineStyle, 0);
  EXPECT_EQ(lines.TextPos, 2);
  EXPECT_EQ(lines.close, 0.0);
  EXPECT_EQ(lines.previousClose, 0.0);
  for (int i = 0; i < 28; ++i) {
    EXPECT_EQ(lines.LineValue[i], 0.0);
    EXPECT_EQ(lines.ShowLine[i], 0);
    EXPECT_EQ(lines.LineThick[i], 1);
    EXPECT_EQ(lines.ShowAlert[i], 0);
    EXPECT_EQ(lines.LineColor[i], CThemeManager::GetColor(347 + i % 10));
  }
  EXPECT_EQ(lines.LineColor[0], lines.LineColor[10]);
}

SSRLines Changed() {
  CKqArchive archive = Renumbered(StoredBy(SSRLines(), 0));
  SSRLines lines;
  lines.Load(archive, 0);
  lines.SetClose(5.0);
  lines.SetClose(6.0);
  return lines;
}

TEST(SRLines, DefaultsLeaveValuesAndClearLeavesTheLook) {
  SSRLines lines = Changed();
  lines.SetToDefault();
  EXPECT_EQ(lines.LineValue[0], 1007.0);
  EXPECT_EQ(lines.ShowAlert[0], 1010);
  EXPECT_EQ(lines.close, 6.0);
  EXPECT_EQ(lines.previousClose, 5.0);
  EXPECT_EQ(lines.ShowLine[27], 0);
  EXPECT_EQ(lines.LineThick[27], 1);
  EXPECT_EQ(lines.TextPos, 2);

  lines = Changed();
  lines.Clear();
  for (const double value : lines.LineValue) EXPECT_EQ(value, 0.0);
  EXPECT_EQ(lines.close, 0.0);
  EXPECT_EQ(lines.previousClose, 0.0);
  EXPECT_EQ(lines.ShowLine[0], 1008);
  EXPECT_EQ(lines.ShowAlert[0], 1010);
  EXPECT_EQ(lines.TextPos, 1006);
}

TEST(SRLines, ValuesOutsideTheTableAreIgnored) {
  SSRLines lines;
  for (const int index : {-1, 28, INT_MIN, INT_MAX}) lines.SetValue(index, 1.0);
  for (const double value : lines.LineValue) EXPECT_EQ(value, 0.0);
  lines.SetValue(27, 1.0);
  EXPECT_EQ(lines.LineValue[27], 1.0);
}

// Required: the values of the lines are not compared.
TEST(SRLines, EqualityIgnoresTheValuesOfTheLines) {
  SSRLines levels;
  for (int i = 0; i < 28; ++i) levels.SetValue(i, 100.0 + i);
  EXPECT_TRUE(levels == SSRLines());
  EXPECT_FALSE(levels != SSRLines());

  const std::vector<std::function<void(SSRLines &)>> changes = {
      [](SSRLines &lines) { lines.ShowAlarmLine = 0; }, [](SSRLines &lines) { lines.ShowAlarmDlg = 1; },
      [](SSRLines &lines) { lines.ShowTitle = 1; },     [](SSRLines &lines) { lines.ShowValue = 1; },
      [](SSRLines &lines) { lines.LineStyle = 1; },     [](SSRLines &lines) { lines.TextPos = 0; },
      [](SSRLines &lines) { lines.close = 1.0; },       [](SSRLines &lines) { lines.previousClose = 1.0; },
      [](SSRLines &lines) { lines.ShowLine[0] = 1; },   [](SSRLines &lines) { lines.LineThick[27] = 2; },
      [](SSRLines &lines) { lines.ShowAlert[27] = 1; }, [](SSRLines &lines) { lines.LineColor[14] ^= 1U; },
  };
  for (std::size_t i = 0; i < changes.size(); ++i) {
    SSRLines lines;
    changes[i](lines);
    EXPECT_TRUE(lines != SSRLines()) << i;
    const SSRLines copy = lines;
    EXPECT_TRUE(copy == lines) << i;
  }
  EXPECT_EQ(SSRLines(levels).LineValue[27], 127.0);
}

TEST(SRLines, ArchiveHasEveryKeyInOrder) {
  std::string expected = kOptionKeys;
  for (int i = 0; i < 28; ++i) {
    for (const char *key : {"LineValue", "ShowLine", "LineThick", "ShowAlert", "LineColor"}) {
      expected += " " + std::to_string(i) + "." + key;
    }
  }
  EXPECT_EQ(KeysOf(StoredBy(SSRLines(), -1), "SSRLines"), expected);
  EXPECT_EQ(KeysOf(StoredBy(SSRLines(), 4), "SSRLines4"), expected);

  CKqArchive archive = Renumbered(StoredBy(SSRLines(), 4));
  SSRLines lines;
  lines.SetClose(9.0);
  lines.Load(archive, 4);
  EXPECT_EQ(StoredBy(lines, 4), ValuesOf(archive));
  EXPECT_EQ(lines.close, 9.0);
  EXPECT_EQ(lines.LineValue[1], 1012.0);

  CKqArchive empty;
  lines.Load(empty, 4);
  EXPECT_EQ(StoredBy(lines, 4), StoredBy(SSRLines(), 4));
}

TEST(SRLines, ThemeIsTheOptionsAlone) {
  CKqArchive theme;
  Changed().StoreTheme(theme, -1);
  EXPECT_EQ(KeysOf(ValuesOf(theme), "SSRLines"), kOptionKeys);
  EXPECT_EQ(ValuesOf(theme).size(), 6U);

  CKqArchive archive = Renumbered(StoredBy(SSRLines(), -1));
  SSRLines lines;
  lines.LoadTheme(archive, -1);
  EXPECT_EQ(lines.ShowAlarmLine, 1001);
  EXPECT_EQ(lines.TextPos, 1006);
  EXPECT_EQ(lines.LineValue[0], 0.0);
  EXPECT_EQ(lines.LineThick[0], 1);
}

// A folder of formula tables of its own.
class SRLinesSetting : public testing::Test {
 protected:
  void SetUp() override {
    before_ = getIndexDir();
    folder_ = std::filesystem::path(testing::TempDir()) / "trovenu_sr_lines";
    std::filesystem::remove_all(folder_);
    std::filesystem::create_directories(folder_);
    setIndexDir(folder_.string().c_str());
  }
  void TearDown() override {
    setIndexDir(before_.c_str());
    std::filesystem::remove_all(folder_);
  }
  std::string File() const { return (folder_ / "alarmset.ini").string(); }

 private:
  SString before_;
  std::filesystem::path folder_;
};

TEST_F(SRLinesSetting, HoldsTheLook) {
  const SSRLines saved = Changed();
  saved.SaveSetting();
  const CIniMemFile file(File().c_str());
  const char *const options = "알람설정"_kr;
  EXPECT_EQ(file.GetInt(options, "ShowAlarmLine", -1), 1001);
  EXPECT_EQ(file.GetInt(options, "ShowAlarmDlg", -1), 1002);
  EXPECT_EQ(file.GetInt(options, "ShowTitle", -1), 1003);
  EXPECT_EQ(file.GetInt(options, "ShowValue", -1), 1004);
  EXPECT_EQ(file.GetInt(options, "LineStyle", -1), 1005);
  EXPECT_EQ(file.GetInt(options, "TextPos", -1), 1006);
  for (int i = 0; i < 28; ++i) {
    const std::string section = std::to_string(i);
    EXPECT_EQ(file.GetInt(section.c_str(), "ShowLine", -1), 1008 + 5 * i);
    EXPECT_EQ(file.GetInt(section.c_str(), "LineThick", -1), 1009 + 5 * i);
    EXPECT_EQ(file.GetInt(section.c_str(), "LineColor", -1), 1011 + 5 * i);
    EXPECT_EQ(file.GetInt(section.c_str(), "LineValue", -1), -1);
    EXPECT_EQ(file.GetInt(section.c_str(), "ShowAlert", -1), -1);
  }

  SSRLines read;
  read.ReadSetting();
  EXPECT_EQ(read.ShowTitle, 1003);
  EXPECT_EQ(read.ShowValue, 1004);
  EXPECT_EQ(read.LineStyle, 1005);
  EXPECT_EQ(read.TextPos, 1006);
  for (int i = 0; i < 28; ++i) {
    EXPECT_EQ(read.ShowLine[i], saved.ShowLine[i]);
    EXPECT_EQ(read.LineThick[i], saved.LineThick[i]);
    EXPECT_EQ(read.LineColor[i], saved.LineColor[i]);
    EXPECT_EQ(read.LineValue[i], 0.0);
  }
}

// Required: ShowAlarmLine and ShowAlarmDlg are written by `SaveSetting` and never read back.
TEST_F(SRLinesSetting, ShowAlarmLineAndShowAlarmDlgAreNeverReadBack) {
  Changed().SaveSetting();
  SSRLines lines;
  lines.ShowAlarmLine = 7;
  lines.ShowAlarmDlg = 8;
  lines.ReadSetting();
  EXPECT_EQ(lines.ShowAlarmLine, 7);
  EXPECT_EQ(lines.ShowAlarmDlg, 8);
}

TEST_F(SRLinesSetting, WhatTheFileLacksStays) {
  SSRLines lines = Changed();
  lines.ReadSetting();
  EXPECT_TRUE(lines == Changed());
  EXPECT_FALSE(std::filesystem::exists(File()));

  {
    CIniMemFile file(File().c_str(), 1);
    file.WriteInt("3", "LineThick", 5, 1);
  }
  lines.ReadSetting();
  EXPECT_EQ(lines.LineThick[3], 5);
  lines.LineThick[3] = Changed().LineThick[3];
  EXPECT_TRUE(lines == Changed());
}

TEST_F(SRLinesSetting, DefaultsReplaceWhatWasSaved) {
  Changed().SaveSetting();
  SSRLines().SaveSetting();
  SSRLines lines = Changed();
  lines.ReadSetting();
  EXPECT_EQ(lines.TextPos, 2);
  EXPECT_EQ(lines.ShowLine[5], 0);
  EXPECT_EQ(lines.LineThick[27], 1);
}

}  // namespace
}  // namespace trovenu
