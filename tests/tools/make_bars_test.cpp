#include <algorithm>
#include <fstream>
#include <iterator>

#include "tests/tools/tool_runner.h"

namespace trovenu::tests {

namespace {

class MakeBarsTest : public ToolTest {};

TEST_F(MakeBarsTest, ReproducesTheMinutesFileByteForByte) {
  std::ifstream file(TROVENU_DATA_DIR "/minutes.csv", std::ios::binary);
  const std::string expected{std::istreambuf_iterator<char>(file), {}};
  ASSERT_FALSE(expected.empty());
  const ToolResult result = Run({"bars", "--minutes", "--out", "minutes.csv"});
  EXPECT_EQ(result.exitCode, 0) << result.err;
  EXPECT_TRUE(Content("minutes.csv") == expected);
}

TEST_F(MakeBarsTest, MakesAsManyBarsAsAsked) {
  const ToolResult one = Run({"bars", "--count", "392", "--seed", "7"});
  EXPECT_EQ(one.out, Run({"bars", "--count", "392", "--seed", "7"}).out);
  EXPECT_NE(one.out, Run({"bars", "--count", "392", "--seed", "8"}).out);
  EXPECT_EQ(std::count(one.out.begin(), one.out.end(), '\n'), 393);
  EXPECT_NE(one.out.find("\n2024-01-02,15:30,"), std::string::npos);
  EXPECT_NE(one.out.find("\n2024-01-03,09:00,"), std::string::npos);
}

TEST_F(MakeBarsTest, MakesBarsThatCanBeRead) {
  // Five sessions and a part of the sixth: over a weekend, prices on the grid and in order within each bar.
  File("bars.csv", Run({"bars", "--count", "2000"}).out);
  const ToolResult result =
      Run({"eval", "--bars", "bars.csv", "--last", "1", "--format", "csv",
           "sum(h<o || h<c || l>o || l>c || l<=0 || v<=0 || amount<=0 || oi<=0, 2000)", "c(1999)", "d"});
  EXPECT_EQ(result.exitCode, 0) << result.err;
  EXPECT_NE(result.out.find("\n2024-01-09 09:44,0,329.85,20240109\n"), std::string::npos) << result.out;
}

TEST_F(MakeBarsTest, WantsOneAmount) {
  for (const std::vector<std::string> &arguments :
       std::vector<std::vector<std::string>>{{"bars"},
                                             {"bars", "--minutes", "--count", "5"},
                                             {"bars", "--count", "0"},
                                             {"bars", "--count", "x"}}) {
    const ToolResult result = Run(arguments);
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
  }
}

}  // namespace

}  // namespace trovenu::tests
