#pragma once

#include <filesystem>
#include <random>
#include <string>
#include <system_error>

#include "tools/trovenu/failure.h"
#include "tools/trovenu/path_text.h"
#include "trovenu/platform/platform.h"

namespace trovenu::tool {

/// A folder of its own below another one, gone with all that is in it when the object goes.
class WorkFolder {
 public:
  /// Throws `Failure` if `parent` takes no folder.
  explicit WorkFolder(const std::filesystem::path &parent) {
    std::random_device random;
    path_ = parent / ("new-" + std::to_string(random()) + std::to_string(random()));
    if (!MakeFolder(TextOf(path_))) throw Failure(TextOf(parent) + ": can't be written");
  }
  ~WorkFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  WorkFolder(const WorkFolder &) = delete;
  WorkFolder &operator=(const WorkFolder &) = delete;

  const std::filesystem::path &Path() const { return path_; }

 private:
  std::filesystem::path path_;
};

}  // namespace trovenu::tool
