#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "trovenu/platform/export.h"

namespace trovenu {

/// One field of a table.
struct TableField {
  std::string name;
  char type = 'C';         ///< 'C' text, 'N' and 'F' numbers, 'D' a date, 'L' a truth value; all kept as text
  std::size_t offset = 0;  ///< Bytes before it in a record; the deletion mark is byte 0.
  std::size_t width = 0;   ///< Bytes.
};

/// The first byte of a record.
enum class RecordMark : char { Present = ' ', Deleted = '*' };

/// The fields of a table file, and how head and records are laid out in bytes: those of an ordinary dBASE III
/// table, so that other programs open it. docs/formats.md describes each byte.
///
/// Names have up to 20 bytes, of which longer ones are cut; they are compared without regard to the case of
/// letters.
class TROVENU_API TableFormat {
 public:
  static constexpr std::size_t kLongestName = 20;
  static constexpr std::size_t kLongestRecord = 65535;
  /// No head is longer.
  static constexpr std::size_t kLongestHead = 65535;
  /// Stands behind the last record.
  static constexpr char kEndMark = '\x1A';
  /// Where the number of records stands in the head, in `kCountSize` bytes.
  static constexpr std::size_t kCountAt = 4;
  static constexpr std::size_t kCountSize = 4;

  void Clear() { *this = TableFormat(); }

  /// Adds a field behind the others. A type that is none of those of `TableField`, in either case, counts as
  /// text. False, with nothing added, for an empty name, one that is there already or begins with a carriage
  /// return, a width below 1, and where the record or the head would get too long.
  bool AddField(std::string_view name, char type, int width);

  const std::vector<TableField> &Fields() const { return fields_; }
  /// Index of a field; -1 if there is none of this name. Quick where fields are asked for in their order.
  int FindField(const char *name) const;

  std::size_t HeadSize() const { return headSize_; }
  std::size_t RecordSize() const { return recordSize_; }
  /// Bytes of a record as the fields have them. They differ from `RecordSize` in a damaged head.
  std::size_t FieldsSize() const { return fieldsSize_; }
  /// False if the lengths in the head that was read disagree with the fields.
  bool IsSound() const { return sound_; }
  /// The head of a table with no records. Empty if there is no field or the names can't be told apart.
  std::string Head();
  /// Writes the lengths of head and record into the first bytes of a head.
  void PutSizes(std::string *head) const;
  /// Which of the two lengths of a record counts, where they differ in a damaged head.
  enum class Length { OfHead, OfFields };

  /// Takes the fields from the first bytes of a table file. False, and no fields, if they are no such table.
  bool ReadHead(std::string_view bytes, Length length = Length::OfHead);

  /// An empty record.
  std::string BlankRecord() const;

 private:
  void SetRecordSize(std::size_t size);
  void ReadField(std::string_view descriptor, bool ownNotes);

  std::vector<TableField> fields_;
  std::size_t headSize_ = 0;
  std::size_t recordSize_ = 1;
  std::size_t fieldsSize_ = 1;
  std::size_t descriptors_ = 0;
  bool sound_ = true;
  mutable std::size_t nextFound_ = 0;
};

/// The four bytes of a number of records, and the number in them.
std::string CountBytes(std::uint32_t count);
std::uint32_t CountFrom(const char *bytes);

/// Writes a value to its place in a record. One that is wider than the field is cut at a whole character. A
/// zero byte ends a value when it is read.
TROVENU_API void PutFieldValue(char *record, const TableField &field, std::string_view value);

/// The value in a record, as long as the record stays. Blanks that only fill the field are no part of it.
TROVENU_API std::string_view FieldValue(const char *record, const TableField &field);

}  // namespace trovenu
