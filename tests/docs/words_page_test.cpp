#include <fstream>
#include <sstream>

#include "tests/tools/tool_runner.h"

namespace trovenu::tests {
namespace {

using WordsPage = ToolTest;

TEST_F(WordsPage, HoldsTheWordsOfTheEngine) {
  std::ifstream in(TROVENU_SOURCE_DIR "/docs/words.md", std::ios::binary);
  std::ostringstream page;
  page << in.rdbuf();
  const ToolResult words = Run({"words", "--format", "markdown"});
  ASSERT_EQ(words.exitCode, 0) << words.err;
  EXPECT_TRUE(page.str().ends_with("\n\n" + words.out))
      << "write docs/words.md anew: trovenu words --format markdown";
}

}  // namespace
}  // namespace trovenu::tests
