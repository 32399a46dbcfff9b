#include "trovenu/support/ini_mem_file.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/platform/temp_folder.h"

namespace trovenu::tests {

namespace {

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

}  // namespace

}  // namespace trovenu::tests
