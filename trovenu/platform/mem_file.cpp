#include "trovenu/platform/mem_file.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <stdexcept>

namespace trovenu {

unsigned int CMemFile::Read(void *buffer, unsigned int count) {
  if (buffer == nullptr || position_ >= content_.size()) return 0;
  const auto at = static_cast<std::size_t>(position_);
  const std::size_t got = std::min<std::size_t>(count, content_.size() - at);
  std::memcpy(buffer, content_.data() + at, got);
  position_ += got;
  return static_cast<unsigned int>(got);
}

void CMemFile::Write(const void *buffer, unsigned int count) {
  if (buffer == nullptr || count == 0) return;
  const std::uint64_t behind = position_ + count;
  if (behind < position_ || (behind > content_.size() && !Resize(behind))) return;
  std::memcpy(content_.data() + position_, buffer, count);
  position_ = behind;
}

std::uint64_t CMemFile::Seek(std::int64_t offset, unsigned int from) {
  const std::uint64_t start = from == begin ? 0 : from == current ? position_ : GetLength();
  const auto distance = static_cast<std::uint64_t>(offset);
  if (offset >= 0) {
    position_ = start + distance < start ? UINT64_MAX : start + distance;
  } else {
    position_ = start > 0 - distance ? start + distance : 0;
  }
  return position_;
}

std::uint64_t CMemFile::SeekToEnd() { return position_ = GetLength(); }

void CMemFile::SetLength(std::uint64_t length) {
  if (Resize(length)) position_ = std::min(position_, length);
}

void CMemFile::Close() {
  content_.clear();
  position_ = 0;
}

bool CMemFile::Resize(std::uint64_t length) {
  if (length > content_.max_size()) return false;
  try {
    content_.resize(static_cast<std::size_t>(length), '\0');
  } catch (const std::bad_alloc &) {
    return false;
  } catch (const std::length_error &) {
    return false;
  }
  return true;
}

}  // namespace trovenu
