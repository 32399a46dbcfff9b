#include "trovenu/support/ini_file.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/platform/temp_folder.h"
#include "tests/platform/write_faults.h"
#include "tests/support/damage.h"

namespace trovenu::tests {

namespace {

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
