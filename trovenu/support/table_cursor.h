#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "trovenu/support/table_file.h"

namespace trovenu {

/// A place in a table and a record that is being written. Damaged records are stepped over; deleted ones are
/// not.
class TableCursor {
 public:
  /// Opens a table and stands at its first record.
  bool Open(const std::string &path);
  void Close();
  bool IsOpen() const { return file_.IsOpen(); }
  TableFile &Table() { return file_; }
  const TableFile &Table() const { return file_; }

  /// Moving drops a record that has not been written.
  void MoveFirst();
  void MoveNext();
  bool AtEnd() const { return index_ >= file_.RecordCount(); }
  std::uint32_t Index() const { return index_; }
  bool Deleted() const;

  /// The value of a field of the record that is being written, or else of the one at the place. Empty at the
  /// end and for a field that is not there. Good until the next call.
  std::string_view Value(const char *field) const;
  /// The bytes of that record; null at the end.
  const char *Bytes() const;

  /// Moves to the first record, deleted ones left out, whose field has this value. False, with the place as
  /// it was, if there is none.
  bool Find(const char *field, const char *value);

  /// Starts a new, empty record.
  bool BeginAppend();
  /// Sets a field of the new record or, if none was started, of a copy of the one at the place.
  bool SetValue(const char *field, const char *value);
  /// Writes the record and stands at it.
  bool Write();
  bool IsWriting() const { return pending_ != Pending::Nothing; }

 private:
  enum class Pending { Nothing, New, Changed };

  void SkipDamaged();

  TableFile file_;
  std::uint32_t index_ = 0;
  Pending pending_ = Pending::Nothing;
  std::string record_;
};

}  // namespace trovenu
