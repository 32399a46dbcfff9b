#include "trovenu/support/ini_file.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>

#include "tests/platform/temp_folder.h"
#include "tests/platform/write_faults.h"
#include "tests/support/awkward_texts.h"
#include "tests/support/damage.h"

namespace trovenu::tests {

namespace {

constexpr const char *kSection = "SimulationConfigure";

TEST(IniFileTest, AbsentFilesAndKeysGiveDefaults) {
  const TempFolder folder;
  const std::string path = folder.Path("a.ini");
  {
    const CIniFile ini(path.c_str());
    EXPECT_EQ(ini.GetInt(kSection, "Position", 2), 2);
    EXPECT_EQ(ini.GetDouble(kSection, "Slippage", 0.5), 0.5);
    EXPECT_EQ(ini.GetString(kSection, "AlarmFileName", "x.wav"), "x.wav");
    EXPECT_EQ(ini.GetString(nullptr, nullptr, nullptr), "");
  }
  // Reading makes no file.
  EXPECT_EQ(folder.Content("a.ini"), "");
}

TEST(IniFileTest, WritesWhenItGoes) {
  const TempFolder folder;
  const std::string path = folder.Path("a.ini");
  {
    CIniFile ini(path.c_str());
    ini.WriteInt(kSection, "Position", INT_MIN);
    ini.WriteDouble(kSection, "Slippage", 0.1);
    ini.WriteString(kSection, "AlarmFileName", "C:\\new folder\\a.wav");
    EXPECT_EQ(ini.GetInt(kSection, "position", 0), INT_MIN);
    EXPECT_EQ(CIniFile(path.c_str()).GetInt(kSection, "Position", 7), 7);
  }
  const CIniFile ini(path.c_str());
  EXPECT_EQ(ini.GetInt("simulationconfigure", "POSITION", 7), INT_MIN);
  EXPECT_EQ(ini.GetDouble(kSection, "Slippage", 7), 0.1);
  EXPECT_EQ(ini.GetString(kSection, "AlarmFileName", ""), "C:\\new folder\\a.wav");
}

TEST(IniFileTest, KeepsWhatPeopleWrote) {
  const TempFolder folder;
  const std::string path =
      folder.Put("a.ini", "; my settings\n\n[SimulationConfigure]\nmine = 1\nPosition = 2\n");
  {
    CIniFile ini(path.c_str());
    ini.WriteInt(kSection, "Position", 3);
    ini.WriteInt(kSection, "OrderType", 1);
  }
  EXPECT_EQ(folder.Content("a.ini"),
            "; my settings\n\n[SimulationConfigure]\nmine = 1\nPosition = 3\nOrderType=1\n");
}

TEST(IniFileTest, KeepsWhatOthersWroteMeanwhile) {
  const TempFolder folder;
  const std::string path = folder.Put("a.ini", "[s]\na=1\nb=1\n");
  {
    CIniFile first(path.c_str());
    CIniFile second(path.c_str());
    first.WriteInt("s", "a", 2);
    second.WriteInt("s", "b", 2);
    folder.Put("a.ini", "[s]\n; by hand\na=1\nb=1\nc=1\n");
  }
  EXPECT_EQ(folder.Content("a.ini"), "[s]\n; by hand\na=2\nb=2\nc=1\n");
}

TEST(IniFileTest, SetFileNameGoesOverToAnotherFile) {
  const TempFolder folder;
  const std::string one = folder.Path("one.ini");
  const std::string two = folder.Put("two.ini", "[s]\nb=5\n");
  {
    CIniFile ini;
    ini.SetFileName(one.c_str());
    ini.WriteInt("s", "a", 1);
    ini.SetFileName(two.c_str());
    EXPECT_EQ(ini.GetInt("s", "a", 0), 0);
    EXPECT_EQ(ini.GetInt("s", "b", 0), 5);
    EXPECT_EQ(CIniFile(one.c_str()).GetInt("s", "a", 0), 1);
    ini.WriteInt("s", "a", 2);
  }
  EXPECT_EQ(folder.Content("two.ini"), "[s]\nb=5\na=2\n");
}

TEST(IniFileTest, TellsThatAFileCannotBeWritten) {
  const TempFolder folder;
  folder.Put("file", "");
  CIniFile ini(folder.Path("file/a.ini").c_str());
  EXPECT_NE(ini.Save(), 0);
  ini.WriteInt("s", "a", 1);
  EXPECT_EQ(ini.Save(), 0);
  EXPECT_EQ(ini.GetInt("s", "a", 0), 1);
  ini.SetFileName(nullptr);
  ini.WriteInt("s", "a", 1);
  EXPECT_EQ(ini.Save(), 0);
}

TEST(IniFileTest, AnyTextComesBack) {
  const TempFolder folder;
  const std::string path = folder.Path("a.ini");
  const std::vector<std::string> texts = AwkwardTexts();
  {
    CIniFile ini(path.c_str());
    for (const std::string &text : texts) ini.WriteString("s", ("k" + text).c_str(), text.c_str());
  }
  const CIniFile ini(path.c_str());
  for (const std::string &text : texts) {
    EXPECT_EQ(ini.GetString("s", ("k" + text).c_str(), "absent"), text.c_str());
  }
}

TEST(IniFileTest, StoppedWriteLeavesTheOldFileOrTheNewOne) {
  if (!CanStopWrites()) GTEST_SKIP() << "writes can't be stopped here";
  const TempFolder folder;
  const std::string before = "; mine\n[s]\na=1\nb=1\n";
  const std::string after = "; mine\n[s]\na=2\nb=2\n";
  const std::string path = folder.Path("a.ini");
  bool finished = false;
  for (std::size_t stopAt = 0; !finished; ++stopAt) {
    ASSERT_LT(stopAt, 100u);
    folder.Put("a.ini", before);
    const auto write = [&] {
      CIniFile ini(path.c_str());
      ini.WriteInt("s", "a", 2);
      ini.WriteInt("s", "b", 2);
    };
    finished = StopAtWrite(stopAt, 9, write).finished;
    EXPECT_TRUE(folder.Content("a.ini") == before || folder.Content("a.ini") == after) << stopAt;
  }
  EXPECT_EQ(folder.Content("a.ini"), after);
}

TEST(IniFileTest, TwoProcessesLoseNothing) {
  if (!CanStopWrites()) GTEST_SKIP() << "no processes here";
  const TempFolder folder;
  const std::string path = folder.Put("a.ini", "[s]\n");
  constexpr int kKeys = 100;
  const auto writeKeys = [&](const std::string &name) {
    for (int i = 0; i < kKeys; ++i) {
      CIniFile ini(path.c_str());
      ini.WriteInt("s", (name + std::to_string(i)).c_str(), i);
      if (ini.Save() == 0) return false;
    }
    return true;
  };
  const int other = StartProcess([&] { return writeKeys("other"); });
  EXPECT_TRUE(writeKeys("own"));
  EXPECT_TRUE(WaitFor(other));
  const CIniFile ini(path.c_str());
  for (int i = 0; i < kKeys; ++i) {
    EXPECT_EQ(ini.GetInt("s", ("own" + std::to_string(i)).c_str(), -1), i);
    EXPECT_EQ(ini.GetInt("s", ("other" + std::to_string(i)).c_str(), -1), i);
  }
}

TEST(IniFileTest, DamagedFilesAreReadAndWritten) {
  const TempFolder folder(TempFolder::Place::InMemory);
  std::string good =
      "; settings\r\n[SimulationConfigure]\r\nPosition=1\r\n\"a=b\" = \" x%0Ay "
      "\"\r\n\r\n[\"]\"]\r\nz=1e5\r\n";
  Damage damage;
  for (int i = 0; i < 2000; ++i) {
    const std::string path = folder.Put("a.ini", damage.Of(good));
    CIniFile ini(path.c_str());
    for (const char *section : {"", "SimulationConfigure", "]"}) {
      for (const char *key : {"Position", "a=b", "z"}) {
        ini.GetInt(section, key, 0);
        ini.GetDouble(section, key, 0);
        ini.GetString(section, key, "");
      }
    }
    ini.WriteInt("SimulationConfigure", "Position", i);
    ASSERT_NE(ini.Save(), 0);
    EXPECT_EQ(CIniFile(path.c_str()).GetInt("SimulationConfigure", "Position", -1), i);
  }
}

}  // namespace

}  // namespace trovenu::tests
