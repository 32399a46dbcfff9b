// Runs every file of the corpus through its target: `replay CORPUS`, where CORPUS/NAME holds the files of the
// target NAME. Exit code 0 if all is well; 1 with a line on standard error if there is no file for a target.
// What a file finds ends the program, with the file's name on standard error.

#include <algorithm>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "fuzz/replay_targets.h"

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/common_interface_defs.h>
#endif

namespace {

std::string current;

void TellFile() { std::fprintf(stderr, "the input is %s\n", current.c_str()); }

std::vector<std::filesystem::path> FilesIn(const std::filesystem::path &folder) {
  std::vector<std::filesystem::path> files;
  std::error_code fault;
  for (const auto &entry : std::filesystem::directory_iterator(folder, fault)) {
    if (entry.is_regular_file()) files.push_back(entry.path());
  }
  std::ranges::sort(files);
  return files;
}

}  // namespace

int main(int argc, char **argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s CORPUS\n", argv[0]);
    return 2;
  }
  std::signal(SIGABRT, [](int) { TellFile(); });
#ifdef __SANITIZE_ADDRESS__
  __sanitizer_set_death_callback(TellFile);
#endif
  bool isWhole = true;
  for (const trovenu::fuzz::ReplayTarget &target : trovenu::fuzz::kReplayTargets) {
    const auto files = FilesIn(std::filesystem::path(argv[1]) / target.name);
    if (files.empty()) {
      std::fprintf(stderr, "no input for the target %s in %s\n", target.name, argv[1]);
      isWhole = false;
    }
    for (const auto &path : files) {
      current = path.string();
      std::ifstream file(path, std::ios::binary);
      const std::string bytes{std::istreambuf_iterator<char>(file), {}};
      target.run(reinterpret_cast<const std::uint8_t *>(bytes.data()), bytes.size());
    }
    std::printf("%s: %zu inputs\n", target.name, files.size());
  }
  return isWhole ? 0 : 1;
}
