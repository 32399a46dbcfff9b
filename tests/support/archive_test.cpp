#include "trovenu/support/archive.h"

#include <gtest/gtest.h>

#include <bit>
#include <climits>
#include <cmath>
#include <cstdint>
#include <limits>

#include "tests/platform/temp_folder.h"
#include "tests/platform/write_faults.h"
#include "tests/support/awkward_texts.h"
#include "tests/support/damage.h"

namespace trovenu::tests {

namespace {

/// The archive as another run of the program reads it.
CKqArchive Reloaded(const CKqArchive &archive) {
  CMemFile file;
  EXPECT_NE(archive.Save(&file), 0);
  EXPECT_EQ(file.GetPosition(), 0u);
  CKqArchive loaded;
  EXPECT_NE(loaded.Load(&file), 0);
  return loaded;
}

TEST(ArchiveTest, ValueThatEqualsItsDefaultIsStoredToo) {
  CKqArchive archive;
  archive.SetInt("i", 5, 0);
  archive.SetDbl("d", 5, 0);
  archive.SetStr("s", "old", "");
  archive.SetInt("i", 0, 0);
  archive.SetDbl("d", 0, 0);
  archive.SetStr("s", "", "");
  EXPECT_EQ(archive.GetInt("i", 0), 0);
  EXPECT_EQ(archive.GetInt("i", 9), 0);
  EXPECT_EQ(archive.GetDbl("d", 9), 0);
  EXPECT_EQ(archive.GetStr("s", "x"), "");
}

TEST(ArchiveTest, NumbersComeBackBitForBit) {
  const double most = std::numeric_limits<double>::max();
  for (const double number : {0.1, 1.0 / 3, 1e-300, -0.0, 5e-324, most, -HUGE_VAL, 20240102093000.0}) {
    CKqArchive archive;
    archive.SetDbl("d", number, 0);
    archive.SetInt("i", INT_MIN, 0);
    archive = Reloaded(archive);
    EXPECT_EQ(std::bit_cast<std::uint64_t>(archive.GetDbl("d", 77)), std::bit_cast<std::uint64_t>(number));
    EXPECT_EQ(archive.GetInt("i", 77), INT_MIN);
  }
}

TEST(ArchiveTest, AnyTextComesBack) {
  const std::vector<std::string> texts = AwkwardTexts();
  CKqArchive archive;
  for (const std::string &text : texts) {
    archive.SetCategory(text.c_str());
    for (const std::string &key : texts) archive.SetStr(key.c_str(), (key + text).c_str(), "");
  }
  archive = Reloaded(archive);
  for (const std::string &text : texts) {
    archive.SetCategory(text.c_str());
    for (const std::string &key : texts)
      ASSERT_EQ(archive.GetStr(key.c_str(), "absent"), (key + text).c_str());
  }
}

TEST(ArchiveTest, StoppedSaveLeavesTheOldArchiveOrTheNewOne) {
  if (!CanStopWrites()) GTEST_SKIP() << "writes can't be stopped here";
  const TempFolder folder;
  const std::string path = folder.Path("chart.arc");
  CKqArchive older;
  for (int i = 0; i < 50; ++i) older.SetInt(std::to_string(i).c_str(), 1, 0);
  CKqArchive newer = older;
  for (int i = 0; i < 50; ++i) newer.SetInt(std::to_string(i).c_str(), 2, 0);
  bool finished = false;
  for (std::size_t stopAt = 0; !finished; ++stopAt) {
    ASSERT_LT(stopAt, 100u);
    ASSERT_NE(older.Save(path.c_str()), 0);
    finished = StopAtWrite(stopAt, 100, [&] { newer.Save(path.c_str()); }).finished;
    CKqArchive found;
    ASSERT_NE(found.Load(path.c_str()), 0);
    const int first = found.GetInt("0", 0);
    EXPECT_TRUE(first == 1 || first == 2);
    for (int i = 0; i < 50; ++i) EXPECT_EQ(found.GetInt(std::to_string(i).c_str(), 0), first) << stopAt;
  }
}

TEST(ArchiveTest, DamagedArchivesAreReadAsFarAsTheyGo) {
  CKqArchive archive;
  const std::vector<std::string> texts = AwkwardTexts();
  for (const char *category : {"Index0", "Chart"}) {
    archive.SetCategory(category);
    for (std::size_t i = 0; i < texts.size(); ++i) archive.SetStr(texts[i].c_str(), texts[i].c_str(), "");
  }
  CMemFile good;
  ASSERT_NE(archive.Save(&good), 0);
  Damage damage;
  std::size_t read = 0;
  for (int i = 0; i < 3000; ++i) {
    CMemFile bad(damage.Of(good.View()));
    CKqArchive loaded;
    ASSERT_NE(loaded.Load(&bad), 0);
    for (const char *category : {"Index0", "Chart"}) {
      loaded.SetCategory(category);
      for (const std::string &text : texts) {
        if (loaded.GetStr(text.c_str(), "absent") == text.c_str()) ++read;
        loaded.GetInt(text.c_str(), 0);
        loaded.GetDbl(text.c_str(), 0);
      }
    }
    // What was damaged is still a good archive of something.
    loaded.SetCategory("");
    loaded.SetInt("new", i, 0);
    ASSERT_EQ(Reloaded(loaded).GetInt("new", -1), i);
  }
  EXPECT_GT(read, 3000 * texts.size());
}

}  // namespace

}  // namespace trovenu::tests
