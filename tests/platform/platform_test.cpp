#include "trovenu/platform/platform.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "tests/platform/temp_folder.h"
#include "tests/platform/write_faults.h"

namespace trovenu::tests {

namespace {

namespace fs = std::filesystem;

TEST(NewFileTest, UsesALeftoverAgainButNoneThatIsBeingWritten) {
  const TempFolder folder;
  const std::string path = folder.Path("a.txt");
  folder.Put("a.txt.new", "left by a process that was stopped");
  NewFile first(path);
  NewFile second(path);
  EXPECT_TRUE(first.Write("1"));
  EXPECT_TRUE(second.Write("2"));
  EXPECT_TRUE(first.Commit(Flush::ToDisk));
  EXPECT_EQ(folder.Content("a.txt"), "1");
  EXPECT_TRUE(second.Commit(Flush::ToDisk));
  EXPECT_EQ(folder.Content("a.txt"), "2");
  EXPECT_EQ(FilesIn(folder.Path()), (std::vector<std::string>{"a.txt"}));
}

#if defined(_WIN32)
TEST(NewFileTest, AReplacementThatStoppedHalfWayLeavesTheOldFile) {
  const TempFolder folder;
  folder.Put("a.txt.replaced", "older");
  folder.Put("a.txt.replaced1", "old");
  std::string content;
  EXPECT_TRUE(ReadFileBytes(folder.Path("a.txt"), &content));
  EXPECT_EQ(content, "old");
  EXPECT_FALSE(ReadFileBytes(folder.Path("b.txt"), &content));
}
#else
TEST(NewFileTest, FollowsLinksAndKeepsPermissions) {
  const TempFolder folder;
  const std::string path = folder.Put("real.txt", "old");
  fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write);
  fs::create_symlink("real.txt", folder.Path("link.txt"));
  EXPECT_TRUE(WriteFileBytes(folder.Path("link.txt"), "new", Flush::ToSystem));
  EXPECT_TRUE(fs::is_symlink(folder.Path("link.txt")));
  EXPECT_EQ(folder.Content("real.txt"), "new");
  EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}
#endif

// A file for a parent refuses new files whoever asks, also where the permissions of a folder bind nobody.
TEST(NewFileTest, FailsWhereNoFileCanBeMade) {
  const TempFolder folder;
  folder.Put("file", "");
  fs::create_directory(folder.Path("sub"));
  for (const std::string &path :
       {folder.Path("file/a.txt"), folder.Path("none/a.txt"), folder.Path("sub"), std::string()}) {
    EXPECT_FALSE(WriteFileBytes(path, "x", Flush::ToDisk)) << path;
  }
  EXPECT_FALSE(FileExist(".new"));
}

TEST(NewFileTest, StoppedAnywhereLeavesTheOldFileOrTheNewOne) {
  if (!CanStopWrites()) GTEST_SKIP() << "writes can't be stopped here";
  const TempFolder folder;
  const std::string path = folder.Path("a.txt");
  bool sawOld = false;
  bool sawNew = false;
  for (std::size_t stopAt = 0;; ++stopAt) {
    ASSERT_LT(stopAt, 100u);
    for (const std::size_t bytes : {0u, 3u}) {
      folder.Put("a.txt", "old");
      const Interrupted run =
          StopAtWrite(stopAt, bytes, [&] { WriteFileBytes(path, "new one", Flush::ToDisk); });
      const std::string content = folder.Content("a.txt");
      EXPECT_TRUE(content == "old" || content == "new one") << stopAt << ": " << content;
      sawOld = sawOld || content == "old";
      sawNew = sawNew || content == "new one";
      if (run.finished) {
        EXPECT_EQ(content, "new one");
        // Cut, write, flush, rename, flush of the folder.
        EXPECT_EQ(run.writes, 5u);
        EXPECT_TRUE(sawOld && sawNew);
        EXPECT_EQ(FilesIn(folder.Path()), (std::vector<std::string>{"a.txt"}));
        return;
      }
    }
  }
}

TEST(NewFileTest, AFullDiskLeavesTheOldFileAndNothingElse) {
  if (!CanStopWrites()) GTEST_SKIP() << "no limit can be set here";
  const TempFolder folder;
  const std::string path = folder.Put("a.txt", "old");
  EXPECT_TRUE(RunOnFullDisk(1000, [&] {
    if (WriteFileBytes(path, std::string(1001, 'x'), Flush::ToDisk)) std::abort();
  }));
  EXPECT_EQ(folder.Content("a.txt"), "old");
  EXPECT_EQ(FilesIn(folder.Path()), (std::vector<std::string>{"a.txt"}));
}

}  // namespace

}  // namespace trovenu::tests
