#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace trovenu::tests {

/// What a run of the tool left.
struct ToolResult {
  int exitCode = -1;
  std::string out;
  std::string err;
};

/// Runs the command-line tool as a process, in a folder of its own. Skips where the build has no tool.
class ToolTest : public testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  /// Writes a file into the folder and gives its path.
  std::string File(const std::string &name, std::string_view content) const;
  std::string Path(const std::string &name) const { return (folder_ / name).string(); }
  std::string Content(const std::string &name) const;
  /// Names of the files in the folder, in order.
  std::vector<std::string> Files() const;

  /// A message with every separator of folders as "/".
  static std::string WithSlashes(std::string message);

  /// Runs `trovenu` with these arguments and `input` on standard input.
  ToolResult Run(const std::vector<std::string> &arguments, std::string_view input = "") const;

  /// False where there is no shell of POSIX; a test that uses `RunShell` is then skipped.
  static bool HasShell();
  /// Runs a line of shell as in the project's top folder, with the tool as `trovenu`. `out` holds both
  /// streams.
  ToolResult RunShell(const std::string &line) const;

  /// Runs `trovenu eval --format csv` on these bars, given on standard input.
  ToolResult Eval(std::string_view bars, const std::string &formula) const;

 private:
  ToolResult Result(int exitCode) const;

  std::filesystem::path folder_;
  std::filesystem::path streams_;
};

}  // namespace trovenu::tests
