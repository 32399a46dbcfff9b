#include "tests/tools/tool_runner.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <random>

#include "tests/tools/program.h"
#include "trovenu/platform/platform.h"

#ifndef TROVENU_TOOL
#define TROVENU_TOOL ""
#endif

namespace trovenu::tests {

namespace fs = std::filesystem;

namespace {

std::string ReadFile(const fs::path &path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

void WriteFile(const fs::path &path, std::string_view content) {
  std::ofstream(path, std::ios::binary) << content;
}

}  // namespace

void ToolTest::SetUp() {
  if (std::string_view(TROVENU_TOOL).empty()) GTEST_SKIP() << "built without the tool";
  std::random_device random;
  const std::string name = "trovenu-test-" + std::to_string(random()) + std::to_string(random());
  folder_ = fs::temp_directory_path() / name;
  streams_ = fs::temp_directory_path() / (name + "-streams");
  fs::create_directories(folder_);
  fs::create_directories(streams_);
}

void ToolTest::TearDown() {
  std::error_code ignored;
  if (!folder_.empty()) fs::remove_all(folder_, ignored);
  if (!streams_.empty()) fs::remove_all(streams_, ignored);
}

std::string ToolTest::File(const std::string &name, std::string_view content) const {
  WriteFile(folder_ / name, content);
  return Path(name);
}

std::string ToolTest::Content(const std::string &name) const { return ReadFile(folder_ / name); }

std::vector<std::string> ToolTest::Files() const {
  std::vector<std::string> names;
  for (const fs::directory_entry &entry : fs::directory_iterator(folder_)) {
    names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::string ToolTest::WithSlashes(std::string message) {
  std::replace(message.begin(), message.end(), kPathSeparator, '/');
  return message;
}

ToolResult ToolTest::Run(const std::vector<std::string> &arguments, std::string_view input) const {
  WriteFile(streams_ / "in", input);
  return Result(RunProgram(TROVENU_TOOL, arguments, folder_, streams_));
}

bool ToolTest::HasShell() { return kPathSeparator == '/'; }

ToolResult ToolTest::RunShell(const std::string &line) const {
  WriteFile(streams_ / "in", "");
  const std::string script = "trovenu() { '" TROVENU_TOOL "' \"$@\"; } && { " + line + "; } 2>&1";
  return Result(RunProgram("/bin/sh", {"-c", script}, TROVENU_SOURCE_DIR, streams_));
}

ToolResult ToolTest::Result(int exitCode) const {
  return {.exitCode = exitCode, .out = ReadFile(streams_ / "out"), .err = ReadFile(streams_ / "err")};
}

ToolResult ToolTest::Eval(std::string_view bars, const std::string &formula) const {
  return Run({"eval", "--bars", "-", "--format", "csv", "--formula", formula}, bars);
}

}  // namespace trovenu::tests
