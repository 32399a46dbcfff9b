#include "tests/tools/tool_runner.h"
#include "trovenu/platform/platform.h"

namespace trovenu::tests {

namespace {

class OutputFileTest : public ToolTest {
 protected:
  void SetUp() override {
    ToolTest::SetUp();
    if (IsSkipped()) return;
    File("good.csv", "date,close\n20240102,3\n");
    File("bad.csv", "date,close\n20240102,3\n20240103,x\n");
  }
};

TEST_F(OutputFileTest, WritesWhatStandardOutputWouldGet) {
  const ToolResult shown = Run({"eval", "--bars", "good.csv", "c"});
  const ToolResult written = Run({"eval", "--bars", "good.csv", "c", "--out", "out.txt"});
  EXPECT_EQ(written.exitCode, 0) << written.err;
  EXPECT_EQ(written.out, "");
  EXPECT_EQ(Content("out.txt"), shown.out);
  EXPECT_EQ(Files(), (std::vector<std::string>{"bad.csv", "good.csv", "out.txt"}));
}

TEST_F(OutputFileTest, ReplacesAnOlderFileEvenTheBarsThemselves) {
  File("out.csv", "a much longer file than the one that takes its place\n");
  EXPECT_EQ(Run({"eval", "--bars", "good.csv", "c", "--format", "csv", "--out", "out.csv"}).exitCode, 0);
  EXPECT_EQ(Content("out.csv"), "date,c\n2024-01-02,3\n");
  EXPECT_EQ(Run({"eval", "--bars", "good.csv", "c+1", "--format", "csv", "--out", "good.csv"}).exitCode, 0);
  EXPECT_EQ(Content("good.csv"), "date,c+1\n2024-01-02,4\n");
}

TEST_F(OutputFileTest, LeavesAnOlderFileAfterAFailure) {
  File("out.txt", "older");
  EXPECT_EQ(Run({"eval", "--bars", "bad.csv", "c", "--out", "out.txt"}).exitCode, 1);
  EXPECT_EQ(Run({"eval", "--bars", "good.csv", "c +", "--out", "out.txt"}).exitCode, 1);
  EXPECT_EQ(Run({"eval", "--bars", "good.csv", "v", "--out", "out.txt"}).exitCode, 1);
  EXPECT_EQ(Content("out.txt"), "older");
  EXPECT_EQ(Files(), (std::vector<std::string>{"bad.csv", "good.csv", "out.txt"}));
}

TEST_F(OutputFileTest, WritesThroughALink) {
  if (kPathSeparator != '/') GTEST_SKIP() << "the standard library makes no links there";
  File("real.txt", "older");
  std::filesystem::create_symlink("real.txt", Path("link.txt"));
  EXPECT_EQ(Run({"eval", "--bars", "good.csv", "c", "--out", "link.txt"}).exitCode, 0);
  EXPECT_TRUE(std::filesystem::is_symlink(Path("link.txt")));
  EXPECT_NE(Content("real.txt"), "older");
}

TEST_F(OutputFileTest, SaysWhyItCannotWrite) {
  const ToolResult folder = Run({"eval", "--bars", "good.csv", "c", "--out", "none/out.txt"});
  EXPECT_EQ(folder.exitCode, 1);
  EXPECT_EQ(folder.err, "trovenu: none/out.txt: can't be written (No such file or directory)\n");
  if (!std::filesystem::exists("/dev/full")) return;
  const ToolResult full = Run({"eval", "--bars", "good.csv", "c", "--out", "/dev/full"});
  EXPECT_EQ(full.exitCode, 1);
  EXPECT_EQ(full.err, "trovenu: /dev/full: can't be written (No space left on device)\n");
  EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
}

}  // namespace

}  // namespace trovenu::tests
