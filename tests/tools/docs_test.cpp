#include <fstream>
#include <iterator>

#include "tests/tools/tool_runner.h"

namespace trovenu::tests {

namespace {

class DocsTest : public ToolTest, public testing::WithParamInterface<const char *> {};

// Runs the lines behind "$ " in the console blocks of the page and puts in what they print.
TEST_P(DocsTest, PageShowsWhatTheToolPrints) {
  if (!HasShell()) GTEST_SKIP() << "needs a shell of POSIX";
  std::ifstream page(std::string(TROVENU_SOURCE_DIR "/docs/") + GetParam() + ".md");
  std::string shown;
  std::string printed;
  int examples = 0;
  bool inBlock = false;
  for (std::string line; std::getline(page, line);) {
    if (line.starts_with("```")) {
      inBlock = line == "```console";
      continue;
    }
    if (!inBlock) continue;
    shown += line + "\n";
    if (!line.starts_with("$ ")) continue;
    printed += line + "\n" + RunShell(line.substr(2)).out;
    ++examples;
  }
  EXPECT_GE(examples, 8);
  EXPECT_EQ(shown, printed);
}

INSTANTIATE_TEST_SUITE_P(Pages, DocsTest, testing::Values("command_line", "backtest"),
                         [](const auto &page) { return std::string(page.param); });

}  // namespace

}  // namespace trovenu::tests
