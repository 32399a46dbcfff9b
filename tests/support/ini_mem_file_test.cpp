#include "trovenu/support/ini_mem_file.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/platform/temp_folder.h"
#include "trovenu/support/korean.h"

namespace trovenu::tests {

namespace {

TEST(IniMemFileTest, GoesThroughAFileInMemory) {
  CIniMemFile ini;
  ini.WriteInt("-1", "COUNT", 2);
  ini.WriteInt("0_설정"_kr, "최대최소"_kr, 1, 0);
  ini.WriteDouble("0_설정"_kr, "최대값"_kr, 0.1, 0);
  ini.WriteString("0_설정"_kr, "Code", "005930", "");
  CMemFile file(
      "a longer text that was there before, and goes away as a whole; more of it, and yet more of it");
  EXPECT_NE(ini.GetMemFile(&file), 0);
  EXPECT_EQ(file.GetPosition(), 0u);
  file.SeekToEnd();
  CIniMemFile loaded;
  EXPECT_NE(loaded.LoadIniFile(&file, 1), 0);
  EXPECT_EQ(loaded.GetInt("-1", "COUNT", 1), 2);
  EXPECT_EQ(loaded.GetInt("0_설정"_kr, "최대최소"_kr, 7), 1);
  EXPECT_EQ(loaded.GetDouble("0_설정"_kr, "최대값"_kr, 7), 0.1);
  EXPECT_EQ(loaded.GetString("0_설정"_kr, "Code", ""), "005930");
  EXPECT_EQ(loaded.GetInt("1_설정"_kr, "최대최소"_kr, 7), 7);
  EXPECT_EQ(loaded.GetMemFile(nullptr), 0);
}

TEST(IniMemFileTest, ValueThatEqualsItsDefaultIsStoredToo) {
  CIniMemFile ini;
  ini.WriteInt("s", "i", 5, 0);
  ini.WriteInt("s", "i", 0, 0);
  ini.WriteDouble("s", "d", 0, 0);
  ini.WriteString("s", "t", "", "");
  EXPECT_EQ(ini.GetInt("s", "i", 9), 0);
  EXPECT_EQ(ini.GetDouble("s", "d", 9), 0);
  EXPECT_EQ(ini.GetString("s", "t", "x"), "");
}

TEST(IniMemFileTest, WritesBackOnlyWhereAsked) {
  const TempFolder folder;
  const std::string path = folder.Put("alarmset.ini", "; mine\n[s]\na=1\n");
  {
    CIniMemFile reader(path.c_str());
    EXPECT_EQ(reader.GetInt("s", "a", 0), 1);
    reader.WriteInt("s", "a", 2);
    CIniMemFile loader;
    EXPECT_NE(loader.LoadIniFile(path.c_str(), 1), 0);
    loader.WriteInt("s", "a", 3);
  }
  EXPECT_EQ(folder.Content("alarmset.ini"), "; mine\n[s]\na=1\n");
  {
    CIniMemFile writer(path.c_str(), 1);
    writer.WriteInt("s", "a", 4, 0);
    EXPECT_EQ(folder.Content("alarmset.ini"), "; mine\n[s]\na=1\n");
    folder.Put("alarmset.ini", "; mine\n[s]\na=1\nothers=1\n");
  }
  EXPECT_EQ(folder.Content("alarmset.ini"), "; mine\n[s]\na=4\nothers=1\n");
  { CIniMemFile idle(folder.Path("none.ini").c_str(), 1); }
  EXPECT_FALSE(std::filesystem::exists(folder.Path("none.ini")));
}

TEST(IniMemFileTest, SaveIniFileKeepsWhatOnlyTheFileHas) {
  const TempFolder folder;
  const std::string path = folder.Path("look.ini");
  CIniMemFile ini;
  ini.WriteInt("-1", "COUNT", 1);
  EXPECT_NE(ini.SaveIniFile(path.c_str()), 0);
  CIniMemFile loaded(path.c_str());
  EXPECT_EQ(loaded.GetInt("-1", "COUNT", 7), 1);
  folder.Put("look.ini", "; by hand\n[-1]\nunknown=5\nCOUNT = 9\n");
  EXPECT_NE(ini.SaveIniFile(path.c_str()), 0);
  EXPECT_EQ(folder.Content("look.ini"), "; by hand\n[-1]\nunknown=5\nCOUNT = 1\n");
  EXPECT_EQ(ini.SaveIniFile(folder.Path("none/look.ini").c_str()), 0);
}

TEST(IniMemFileTest, MissingFilesLeaveTheContent) {
  const TempFolder folder;
  CIniMemFile ini(folder.Path("none.ini").c_str());
  ini.WriteInt("s", "a", 1);
  EXPECT_EQ(ini.LoadIniFile(folder.Path("none.ini").c_str(), 1), 0);
  EXPECT_EQ(ini.LoadIniFile(static_cast<CMemFile *>(nullptr), 1), 0);
  EXPECT_EQ(ini.GetInt("s", "a", 0), 1);
}

}  // namespace

}  // namespace trovenu::tests
