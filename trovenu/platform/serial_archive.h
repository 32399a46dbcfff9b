#pragma once

#include <cstddef>
#include <cstdint>

#include "trovenu/platform/export.h"
#include "trovenu/platform/mem_file.h"

namespace trovenu {

/// A stream of values to or from a file in memory, for `Serialize` of the array classes. It has one direction
/// for its life. Numbers are stored with the low byte first.
class TROVENU_API CArchive {
 public:
  enum Mode { store = 0, load = 1 };

  /// Goes on at the position of `file`, which must outlive the archive. A null file stores nothing and loads
  /// nothing.
  CArchive(CMemFile *file, Mode mode) : file_(file), mode_(mode) {}

  bool IsStoring() const { return mode_ == store; }
  bool IsLoading() const { return mode_ == load; }

  /// Reads up to `count` bytes of an archive that loads and returns their number.
  unsigned int Read(void *buffer, unsigned int count);
  /// Writes to an archive that stores.
  void Write(const void *buffer, unsigned int count);

  /// A 32-bit number. Loading gives false, and 0, where the archive ends before it.
  void WriteCount(std::uint32_t count);
  bool ReadCount(std::uint32_t *count);

  /// Bytes that are left to load.
  std::uint64_t Left() const;

 private:
  CMemFile *file_;
  Mode mode_;
};

}  // namespace trovenu
