#include <algorithm>

#include "tests/tools/tool_runner.h"
#include "trovenu/platform/version.h"

namespace trovenu::tests {

namespace {

class MainTest : public ToolTest {};

TEST_F(MainTest, TellsBadUsageInOneLine) {
  const std::vector<std::vector<std::string>> kCases = {
      {},
      {"nothing"},
      {"eval"},
      {"eval", "--bars", "x.csv"},
      {"eval", "--formula", "c"},
      {"eval", "--bars", "x.csv", "--formula", "c", "--format", "xml"},
      {"eval", "--bars", "x.csv", "--formula", "c", "--unknown"},
      {"check"},
      {"check", "c", "d"},
      {"words", "eval"},
      {"bars", "--count", "1", "--seed", "-1"},
  };
  for (const std::vector<std::string> &arguments : kCases) {
    std::string shown;
    for (const std::string &argument : arguments) shown += argument + " ";
    SCOPED_TRACE(shown);
    const ToolResult result = Run(arguments);
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_TRUE(result.err.starts_with("trovenu: ") && result.err.ends_with("--help)\n")) << result.err;
    EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
  }
}

TEST_F(MainTest, HelpsOnStandardOutput) {
  for (const char *command : {"eval", "check", "words", "bars"}) {
    const ToolResult result = Run({command, "--help"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_NE(result.out.find("Usage: trovenu " + std::string(command)), std::string::npos) << result.out;
    EXPECT_NE(Run({"--help"}).out.find("\n  " + std::string(command) + " "), std::string::npos);
  }
  EXPECT_EQ(Run({"--version"}).out, std::string(Version()) + "\n");
}

}  // namespace

}  // namespace trovenu::tests
