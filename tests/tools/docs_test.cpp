#include <fstream>
#include <iterator>

#include "tests/tools/tool_runner.h"

namespace trovenu::tests {

namespace {

class DocsTest : public ToolTest {};

// Runs the lines behind "$ " in the console blocks of the page and puts in what they print.
TEST_F(DocsTest, CommandLinePageShowsWhatTheToolPrints) {
  std::ifstream page(TROVENU_SOURCE_DIR "/docs/command_line.md");
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
  EXPECT_GT(examples, 10);
  EXPECT_EQ(shown, printed);
}

}  // namespace

}  // namespace trovenu::tests
