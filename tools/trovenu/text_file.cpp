#include "tools/trovenu/text_file.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>

#include "tools/trovenu/failure.h"
#include "tools/trovenu/path_text.h"

namespace trovenu::tool {

namespace {

struct CloseFile {
  void operator()(std::FILE *file) const { std::fclose(file); }
};

std::string ReadToEnd(std::FILE *file) {
  constexpr std::size_t kFirstBlock = 1 << 16;
  std::string text;
  std::size_t length = 0;
  for (;;) {
    if (length == text.size()) text.resize(text.empty() ? kFirstBlock : 2 * text.size());
    const std::size_t got = std::fread(text.data() + length, 1, text.size() - length, file);
    if (got == 0) break;
    length += got;
  }
  text.resize(length);
  return text;
}

}  // namespace

std::string ShownName(const std::string &path) { return path == kStandardInput ? "standard input" : path; }

std::string ReadWholeFile(const std::string &path) {
  std::unique_ptr<std::FILE, CloseFile> opened;
  std::FILE *file = stdin;
  if (path != kStandardInput) {
    opened.reset(std::fopen(path.c_str(), "rb"));
    file = opened.get();
  }
  std::string text;
  if (file != nullptr) {
    text = ReadToEnd(file);
    if (std::ferror(file) == 0) return text;
  }
  const int fault = errno;
  // What the C library says of a folder differs from system to system.
  std::error_code ignored;
  const bool isFolder = path != kStandardInput && std::filesystem::is_directory(PathOf(path), ignored);
  throw Failure(ShownName(path) + ": can't be read (" +
                std::generic_category().message(isFolder ? EISDIR : fault) + ")");
}

}  // namespace trovenu::tool
