#include "trovenu/platform/platform.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "tests/platform/temp_folder.h"
#include "tests/platform/write_faults.h"

namespace trovenu::tests {

namespace {

namespace fs = std::filesystem;

TEST(FolderTest, FileExistKnowsFilesFromFolders) {
  const TempFolder folder;
  const std::string path = folder.Path("table.dbf");
  EXPECT_EQ(FileExist(path.c_str()), 0);
  folder.Put("table.dbf", "x");
  EXPECT_NE(FileExist(path.c_str()), 0);
  EXPECT_EQ(FileExist(folder.Path().c_str()), 0);
  EXPECT_EQ(FileExist(""), 0);
  EXPECT_EQ(FileExist(nullptr), 0);
}

TEST(NewFileTest, ReplacesAFileInOneStep) {
  const TempFolder folder;
  const std::string path = folder.Put("a.txt", "old and longer");
  NewFile file(path);
  EXPECT_TRUE(file.Write("new"));
  EXPECT_TRUE(file.Write(" one"));
  EXPECT_EQ(folder.Content("a.txt"), "old and longer");
  EXPECT_TRUE(file.Commit(Flush::ToSystem));
  EXPECT_EQ(folder.Content("a.txt"), "new one");
  EXPECT_FALSE(file.Write("more"));
  EXPECT_FALSE(file.Commit(Flush::ToSystem));
  EXPECT_EQ(FilesIn(folder.Path()), (std::vector<std::string>{"a.txt"}));
}

TEST(NewFileTest, LeavesNothingWithoutCommit) {
  const TempFolder folder;
  {
    NewFile file(folder.Path("a.txt"));
    EXPECT_TRUE(file.Write("x"));
    EXPECT_EQ(FilesIn(folder.Path()), (std::vector<std::string>{"a.txt.new"}));
  }
  EXPECT_TRUE(FilesIn(folder.Path()).empty());
}

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

// A file for a parent refuses new files whoever asks, also where the permissions of a folder bind nobody.
TEST(NewFileTest, FailsWhereNoFileCanBeMade) {
  const TempFolder folder;
  folder.Put("file", "");
  fs::create_directory(folder.Path("sub"));
  for (const std::string &path : {folder.Path("file/a.txt"), folder.Path("none/a.txt"), folder.Path("sub"),
                                  std::string("/dev/null"), std::string()}) {
    EXPECT_FALSE(WriteFileBytes(path, "x", Flush::ToDisk)) << path;
  }
  EXPECT_TRUE(fs::is_character_file("/dev/null"));
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

TEST(FileTest, ReadsAndWritesByPosition) {
  const TempFolder folder;
  const std::string path = folder.Put("a", "0123456789");
  File file;
  EXPECT_FALSE(file.Open(folder.Path("none"), File::Access::ReadAndWrite));
  EXPECT_FALSE(file.Open(folder.Path(), File::Access::Read));
  EXPECT_EQ(file.Size(), 0u);
  ASSERT_TRUE(file.Open(path, File::Access::ReadAndWrite));
  char bytes[8] = {};
  EXPECT_EQ(file.ReadAt(7, bytes, 8), 3u);
  EXPECT_EQ(std::string_view(bytes, 3), "789");
  EXPECT_EQ(file.ReadAt(11, bytes, 8), 0u);
  EXPECT_TRUE(file.WriteAt(9, "ab", 2));
  EXPECT_EQ(file.Size(), 11u);
  EXPECT_TRUE(file.Resize(4));
  File moved = std::move(file);
  EXPECT_TRUE(moved.FlushToDisk());
  moved.Close();
  EXPECT_EQ(folder.Content("a"), "0123");
}

TEST(FileTest, TellsWhetherItWasReplaced) {
  const TempFolder folder;
  const std::string path = folder.Put("a", "old");
  File file;
  ASSERT_TRUE(file.Open(path, File::Access::Read));
  EXPECT_TRUE(file.IsAt(path));
  EXPECT_TRUE(WriteFileBytes(path, "new", Flush::ToSystem));
  EXPECT_FALSE(file.IsAt(path));
  char bytes[3] = {};
  EXPECT_EQ(file.ReadAt(0, bytes, 3), 3u);
  EXPECT_EQ(std::string_view(bytes, 3), "old");
}

TEST(FolderTest, MakesListsAndRemoves) {
  const TempFolder folder;
  const std::string sub = folder.Path("sub");
  EXPECT_TRUE(MakeFolder(sub));
  EXPECT_TRUE(MakeFolder(sub));
  EXPECT_TRUE(MakeFolder(folder.Path("sub/deeper")));
  EXPECT_FALSE(MakeFolder(folder.Path("none/deeper")));
  folder.Put("sub/b", "");
  folder.Put("sub/a", "");
  EXPECT_FALSE(MakeFolder(folder.Path("sub/a")));
  EXPECT_EQ(FilesIn(sub), (std::vector<std::string>{"a", "b"}));
  EXPECT_EQ(FilesIn(sub + kPathSeparator), (std::vector<std::string>{"a", "b"}));
  EXPECT_TRUE(RemoveFile(folder.Path("sub/a")));
  EXPECT_FALSE(RemoveFile(folder.Path("sub/a")));
  EXPECT_EQ(FilesIn(sub), (std::vector<std::string>{"b"}));
  EXPECT_TRUE(FilesIn(folder.Path("none")).empty());
}

TEST(ReadFileTest, ReadsAllBytesOrLeavesTheContent) {
  const TempFolder folder;
  std::string all(200'000, '\0');
  for (std::size_t i = 0; i < all.size(); ++i) all[i] = static_cast<char>(i * 7);
  std::string content = "before";
  EXPECT_FALSE(ReadFileBytes(folder.Path("none"), &content));
  EXPECT_FALSE(ReadFileBytes(folder.Path(), &content));
  EXPECT_EQ(content, "before");
  EXPECT_TRUE(ReadFileBytes(folder.Put("a", all), &content));
  EXPECT_EQ(content, all);
  EXPECT_TRUE(ReadFileBytes(folder.Put("empty", ""), &content));
  EXPECT_EQ(content, "");
}

}  // namespace

}  // namespace trovenu::tests
