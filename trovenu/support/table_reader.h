#pragma once

#include <memory>
#include <string>

#include "trovenu/platform/export.h"
#include "trovenu/support/text.h"

namespace trovenu {

class TableCursor;

/// The reading side of table files, which writes too. It shows the records of two tables as one: those of the
/// first, as it may be shipped with the system, and then those of the second, the user's. Writes reach the
/// second table, or the first if no second one is named.
///
/// Deleted records are shown, and callers step over them. Values and names of fields are those of `DB`.
/// Functions that return an int give nonzero if they have done what they say, and otherwise 0, with the files
/// as they were.
class TROVENU_API DDB {
 public:
  /// Opens the tables that are there and stands at the first record. `extensionOrName` is the path of the
  /// second table; a bare word that names no file is the extension of the first table instead, which then is
  /// put behind `path` if there is no file `path`. `mode` changes nothing.
  DDB(const char *path, const char *extensionOrName, int mode);
  /// Brings to the disk what has been written.
  ~DDB();
  DDB(const DDB &) = delete;
  DDB &operator=(const DDB &) = delete;

  /// Stores the extension, which changes nothing: paths are whole.
  void SetExtension(const SString &extension) { Extension = extension; }

  /// \name Reading
  /// @{
  void MoveFirst();
  void MoveNext();
  /// Nonzero behind the last record, and at once in an empty table.
  int Eof() const;
  /// Nonzero if the record at the place has a deletion mark.
  int Deleted() const;
  /// The value of a field at the place, without the blanks that fill it; empty behind the last record and if
  /// there is no such field.
  SString GetStr(const char *field) const;
  /// Moves to the first record, deleted ones left out, whose field has exactly this value; the first table
  /// goes before the second. 0, with the place as it was, if there is none.
  int FindFirst(const char *field, const char *value);
  /// @}

  /// \name Writing
  /// A record of the first table is not changed where writes reach the second. The change then goes to the
  /// record of the second table that the last `FindFirst` would find there, or to a new copy of the record if
  /// there is none.
  /// @{
  /// Starts a new record with all fields empty. The text changes nothing. 0 if there is no table to write to.
  int Append(const char *name);
  /// Sets a field of the new record or, if none was started, of the one at the place. A value wider than the
  /// field is cut at a whole character. 0 if there is no such field.
  int InsField(const char *field, const char *value);
  /// Writes the record to the disk, and stands at it.
  int WriteRecord();
  /// @}

  /// \name What the tables are like now, for reading alone
  /// @{
  int Mode = 1;
  int RecordNo = 0;      ///< Place, from 0, in both tables together.
  int RecordCount = 0;   ///< Of both tables.
  SString FileName;      ///< Path of the first table.
  SString UserFileName;  ///< Path of the second table; empty if there is none.
  SString Extension;
  int CurrentTable = 0;  ///< 0 or 1.
                         /// @}

 private:
  TableCursor &Current() const { return *cursors_[CurrentTable]; }
  int WriteTable() const { return UserFileName.IsEmpty() ? 0 : 1; }
  void EnterSecondAtEnd();
  bool TurnToWriteTable();
  void Show();

  std::unique_ptr<TableCursor> cursors_[2];
  std::string foundField_;
  std::string foundValue_;
};

}  // namespace trovenu
