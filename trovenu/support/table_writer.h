#pragma once

#include <memory>

#include "trovenu/platform/export.h"
#include "trovenu/support/text.h"

namespace trovenu {

class TableCursor;
class TableFormat;

/// The writing side of a table file, which reads too.
///
/// A new table is made by `CreateDB`, `ClearField`, `InsertField` for each field, `WriteHead`, `WriteField`
/// and `WriteEof`, in this order; the file appears with the last call, whole, in place of one that may be
/// there. A record is added by `Append`, `InsField` for each field and `WriteRecord`, which writes it at
/// once.
///
/// Values pass as text. Names of fields have up to 20 bytes and are compared without regard to the case of
/// letters. Deleted and damaged records are stepped over. Functions that return an int give nonzero if they
/// have done what they say, and otherwise 0, with the file as it was. Null counts as an empty text.
class TROVENU_API DB {
 public:
  /// Values of `State`.
  enum TableState { Closed = 0, Open = 1, Creating = 2 };
  /// Values of `WriteState`.
  enum RecordState { NotWriting = 0, NewRecord = 1, ChangedRecord = 2 };

  DB();
  /// Opens a table and stands at its first record. `mode` changes nothing. A file that is no table, and one
  /// that is not there, counts as an empty table that can't be written.
  explicit DB(const char *fileName, int mode = 1);
  /// Brings to the disk what has been written. A table that `WriteEof` has not finished is dropped.
  ~DB();
  DB(const DB &) = delete;
  DB &operator=(const DB &) = delete;

  /// \name Making a table
  /// @{
  int CreateDB(const char *fileName);
  void ClearField();
  /// `type` is 'c' for text; numbers 'n' and 'f', dates 'd' and truth values 'l' are text too, and mean
  /// something to other programs alone. 0 for a name that is empty, there already or begins with a carriage
  /// return, for a width below 1, and where a record would have more than 65,535 bytes.
  int InsertField(const char *name, char type, int width);
  int WriteHead();
  int WriteField();
  /// Makes the file and opens it. A file that is made but can't be opened gives nonzero too, with `State`
  /// `Closed`.
  int WriteEof();
  /// @}

  /// For tables that can be made again: what is written from here on does not wait for the disk. The file is
  /// still whole after an interruption of the process.
  void SkipFlush();

  /// \name Writing a record
  /// @{
  /// Starts a new record with all fields empty. The text changes nothing.
  int Append(const char *name);
  /// Sets a field of the new record or, if none was started, of the one at the place. A value wider than the
  /// field is cut at a whole character. 0 if there is no such field.
  int InsField(const char *field, const char *value);
  /// Adds the new record to the table, or puts the changed one in its place, and stands at it.
  int WriteRecord();
  /// @}

  /// \name Reading
  /// The int arguments change nothing.
  /// @{
  void MoveFirst(int mode = 1);
  void MoveNext(int mode = 1);
  /// Nonzero behind the last record, and at once in an empty table.
  int Eof() const;
  /// The value of a field at the place, without the blanks that fill it; empty behind the last record and if
  /// there is no such field.
  SString GetStr(const char *field) const;
  /// Moves to the first record whose field has exactly this value. 0, with the place as it was, if there is
  /// none.
  int FindFirst(const char *field, const char *value);
  /// @}

  /// \name What the table is like now, for reading alone
  /// @{
  int Mode = 1;
  int State = Closed;
  SString FileName;
  SString Extension;  ///< Behind the last point of the name.
  int RecordNo = 0;   ///< Place, from 0.
  int RecordCount = 0;
  int RecordSize = 0;  ///< Bytes, the deletion mark among them.
  int HeadSize = 0;    ///< Bytes.
  int FieldCount = 0;
  char Record[4096] = {};  ///< The first bytes of the record at the place, all of it if it is not longer.
  int ReadState = 0;       ///< Nonzero if there is a record at the place.
  int WriteState = NotWriting;
  /// @}

 private:
  enum class Stage { Fields, Head, Described };

  void StepOverDeleted();
  void Show();

  std::unique_ptr<TableCursor> cursor_;
  std::unique_ptr<TableFormat> created_;
  Stage stage_ = Stage::Fields;
  bool skipFlush_ = false;
};

}  // namespace trovenu
