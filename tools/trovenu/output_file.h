#pragma once

#include <cstdio>
#include <string>
#include <string_view>

namespace trovenu::tool {

/// Where a command writes its result: standard output, or a file that appears whole or not at all. The text
/// goes to a new file beside the named one, which `Commit` renames over it; without `Commit` the named file
/// stays as it was. Something other than a plain file, such as a device, is written directly.
class OutputFile {
 public:
  /// An empty path stands for standard output. Throws `Failure` if the file can't be made.
  explicit OutputFile(const std::string &path);
  ~OutputFile();
  OutputFile(const OutputFile &) = delete;
  OutputFile &operator=(const OutputFile &) = delete;

  void Write(std::string_view text);
  /// Puts the file in place. Throws `Failure` if anything could not be written.
  void Commit();

 private:
  [[noreturn]] void Fail();

  std::string shown_;
  std::string target_;
  std::string beside_;
  std::FILE *file_;
};

}  // namespace trovenu::tool
