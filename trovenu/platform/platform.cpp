#include "trovenu/platform/platform.h"

#include <algorithm>
#include <limits>
#include <new>
#include <stdexcept>
#include <utility>

namespace trovenu {

File::File(File &&other) noexcept : handle_(std::exchange(other.handle_, kNoHandle)) {}

File &File::operator=(File &&other) noexcept {
  if (this != &other) {
    Close();
    handle_ = std::exchange(other.handle_, kNoHandle);
  }
  return *this;
}

bool NewFile::Write(std::string_view bytes) {
  good_ = good_ && file_.WriteAt(size_, bytes.data(), bytes.size());
  size_ += bytes.size();
  return good_;
}

bool ReadFileBytes(const std::string &path, std::string *content) {
  File file;
  if (!file.Open(path, File::Access::Read)) return false;
  // One byte more than expected shows a file that has grown since.
  constexpr std::size_t kBlock = 1 << 16;
  std::string bytes;
  try {
    const std::uint64_t size = file.Size();
    if (size > std::numeric_limits<std::size_t>::max() / 2) return false;
    bytes.resize(static_cast<std::size_t>(size) + 1);
    std::size_t length = 0;
    for (;;) {
      const std::size_t got = file.ReadAt(length, bytes.data() + length, bytes.size() - length);
      length += got;
      if (length < bytes.size()) break;
      bytes.resize(bytes.size() + std::max(bytes.size() / 2, kBlock));
    }
    bytes.resize(length);
    if (length < size && length < file.Size()) return false;
  } catch (const std::bad_alloc &) {
    return false;
  } catch (const std::length_error &) {
    return false;
  }
  *content = std::move(bytes);
  return true;
}

bool WriteFileBytes(const std::string &path, std::string_view content, Flush flush) {
  NewFile file(path);
  return file.Write(content) && file.Commit(flush);
}

}  // namespace trovenu
