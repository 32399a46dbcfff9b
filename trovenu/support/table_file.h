#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "trovenu/platform/export.h"
#include "trovenu/platform/platform.h"
#include "trovenu/support/table_format.h"

namespace trovenu {

/// A table file as records of bytes.
///
/// It shows the table as it was when it was opened, and what it has written itself since. Others may read and
/// write the same table meanwhile, in this process or another: a record is seen whole or not at all, whenever
/// a writer stops. This holds by three rules:
///
/// - A record is added behind the last one, with a new end mark, before it is counted in the head. It writes
/// over
///   nothing but the old end mark.
/// - The count in the head holds if the end mark stands where it says. Otherwise a writer is at work or was
///   stopped, and all records count that the file holds in full.
/// - Any other change makes a new file, which takes the place of the old one.
///
/// Writers wait for each other. A table whose head is damaged can be read, as far as that goes, but is not
/// written. Nothing throws; what can't be done gives false and leaves the table as it was.
class TROVENU_API TableFile {
 public:
  TableFile() = default;
  ~TableFile() { Close(); }
  TableFile(const TableFile &) = delete;
  TableFile &operator=(const TableFile &) = delete;

  /// Makes a table of the bytes of its head and of `count` records, in place of one that may be there.
  static bool Create(const std::string &path, std::string table, std::uint32_t count, Flush flush);

  bool Open(const std::string &path);
  /// Flushes and closes.
  void Close();
  /// Brings to the disk what has been written, unless `SkipFlush` was called.
  void FlushWritten();
  bool IsOpen() const { return file_.IsOpen(); }
  /// For tables that can be made again: what is written from here on does not wait for the disk.
  void SkipFlush() { flush_ = Flush::ToSystem; }

  /// False for a table whose head is damaged.
  bool IsWritable() const { return writable_; }

  const std::string &Path() const { return path_; }
  const TableFormat &Format() const { return format_; }
  std::uint32_t RecordCount() const { return count_; }

  /// The bytes of a record, until the next call; null for an index that is not there and where the file can't
  /// be read. Their first one is a `RecordMark`; where it is something else, the record is damaged.
  const char *Record(std::uint32_t index) const;

  /// Adds one record or several, byte behind byte, behind all others, also those that other writers have
  /// added meanwhile. They are then the last ones, and are counted all at once.
  bool Append(std::string records);
  /// Puts another record in the place of one.
  bool Replace(std::uint32_t index, std::string_view record);

 private:
  bool OpenFormat(const File &file);
  static std::uint32_t CountIn(const File &file, const TableFormat &format);
  bool LockForWriting();
  bool CopyReplaced(NewFile *copy, std::uint32_t index, std::string_view record) const;

  std::string path_;
  File file_;
  File writer_;
  bool writable_ = false;
  bool written_ = false;
  Flush flush_ = Flush::ToDisk;
  TableFormat format_;
  std::uint32_t count_ = 0;

  // The part of the file that was read last.
  mutable std::string window_;
  mutable std::uint64_t windowAt_ = 0;
};

/// True for a record with a good mark, be it deleted or not.
TROVENU_API bool IsGoodRecord(const char *record);

}  // namespace trovenu
