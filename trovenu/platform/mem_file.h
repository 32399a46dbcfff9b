#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "trovenu/platform/export.h"

namespace trovenu {

/// A file in memory: bytes with a position at which the next read or write begins.
///
/// Positions and lengths count bytes. A position behind the end is allowed; a write there fills the gap with
/// zeros. What needs more memory than there is changes nothing.
class TROVENU_API CMemFile {
 public:
  /// What an offset of `Seek` counts from.
  enum SeekPosition { begin = 0, current = 1, end = 2 };

  CMemFile() = default;
  /// A file with this content, at position 0.
  explicit CMemFile(std::string_view content) : content_(content) {}

  /// Reads up to `count` bytes and moves behind them. Returns their number, fewer at the end.
  unsigned int Read(void *buffer, unsigned int count);
  /// Writes over what stands at the position, lengthening the file where needed, and moves behind it.
  void Write(const void *buffer, unsigned int count);

  /// Moves to an offset from the begin, the position or the end, and returns the new position. An offset
  /// before the begin moves to the begin.
  std::uint64_t Seek(std::int64_t offset, unsigned int from);
  void SeekToBegin() { position_ = 0; }
  std::uint64_t SeekToEnd();
  std::uint64_t GetPosition() const { return position_; }

  std::uint64_t GetLength() const { return content_.size(); }
  /// Cuts the file or fills it up with zeros; the position stays, but not behind the end.
  void SetLength(std::uint64_t length);

  /// Drops the content.
  void Close();
  /// Nothing to do: a file in memory has no other place to go to.
  void Flush() {}

  /// The whole content, wherever the position is. Good until the object changes.
  std::string_view View() const { return content_; }

 private:
  bool Resize(std::uint64_t length);

  std::string content_;
  std::uint64_t position_ = 0;
};

}  // namespace trovenu
