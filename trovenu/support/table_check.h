#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "trovenu/platform/export.h"

namespace trovenu {

/// What a look at every part of a table file has found.
struct TableReport {
  bool isTable = false;  ///< False, and all else 0, if the file can't be read or its head is no table's.
  std::size_t fields = 0;
  std::size_t recordSize = 0;  ///< Bytes, the deletion mark among them.
  std::uint32_t records = 0;   ///< Records that can be read, the deleted ones among them.
  std::uint32_t deleted = 0;

  /// \name Faults, 0 or false in a whole table
  /// @{
  bool sizesDiffer = false;          ///< The fields make other lengths of head or record than the head tells.
  std::uint32_t markFaults = 0;      ///< Records whose deletion mark is neither there nor absent.
  bool countDiffers = false;         ///< The head counts other than `records` and `markFaults` together.
  std::uint32_t counted = 0;         ///< What the head counts.
  std::size_t unfinishedBytes = 0;   ///< Bytes that are there of a record behind the last one.
  bool noEndMark = false;            ///< Nothing shows where the records end.
  std::uint64_t bytesBehindEnd = 0;  ///< Bytes that follow the end mark.
  /// @}

  bool IsWhole() const {
    return isTable && !sizesDiffer && markFaults == 0 && !countDiffers && unfinishedBytes == 0 &&
           !noEndMark && bytesBehindEnd == 0;
  }
};

/// Looks at a table. Values are not looked at: any bytes make a value.
TROVENU_API TableReport CheckTable(const std::string &path);

/// Writes a new table with all that can be read of one, deleted records among it, to another file. Records
/// whose deletion mark is damaged become deleted ones. False, with nothing written, if there is nothing to be
/// read or the file can't be written.
TROVENU_API bool SaveReadableTable(const std::string &path, const std::string &newPath);

}  // namespace trovenu
