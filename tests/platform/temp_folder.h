#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>

namespace trovenu::tests {

/// A folder of its own for one test, gone afterwards.
class TempFolder {
 public:
  /// `InMemory`, where the system has it, for tests that write thousands of files.
  enum class Place { OnDisk, InMemory };

  explicit TempFolder(Place place = Place::OnDisk) {
    const std::filesystem::path memory = "/dev/shm";
    const bool inMemory = place == Place::InMemory && std::filesystem::is_directory(memory);
    std::random_device random;
    path_ = (inMemory ? memory : std::filesystem::temp_directory_path()) /
            ("trovenu-test-" + std::to_string(random()) + std::to_string(random()));
    std::filesystem::create_directories(path_);
  }
  ~TempFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TempFolder(const TempFolder &) = delete;
  TempFolder &operator=(const TempFolder &) = delete;

  std::string Path() const { return path_.string(); }
  std::string Path(const std::string &name) const { return (path_ / name).string(); }
  std::string Content(const std::string &name) const {
    std::ifstream file(path_ / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  std::string Put(const std::string &name, std::string_view content) const {
    std::ofstream(path_ / name, std::ios::binary) << content;
    return Path(name);
  }

 private:
  std::filesystem::path path_;
};

}  // namespace trovenu::tests
