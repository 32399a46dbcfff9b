#include "trovenu/support/table_cursor.h"

#include <cstddef>
#include <utility>

namespace trovenu {

bool TableCursor::Open(const std::string &path) {
  const bool opened = file_.Open(path);
  MoveFirst();
  return opened;
}

void TableCursor::Close() {
  file_.Close();
  MoveFirst();
}

void TableCursor::MoveFirst() {
  pending_ = Pending::Nothing;
  index_ = 0;
  SkipDamaged();
}

void TableCursor::MoveNext() {
  pending_ = Pending::Nothing;
  if (!AtEnd()) ++index_;
  SkipDamaged();
}

void TableCursor::SkipDamaged() {
  while (!AtEnd() && !IsGoodRecord(file_.Record(index_))) ++index_;
}

bool TableCursor::Deleted() const {
  const char *record = file_.Record(index_);
  return record != nullptr && *record == static_cast<char>(RecordMark::Deleted);
}

const char *TableCursor::Bytes() const { return IsWriting() ? record_.data() : file_.Record(index_); }

std::string_view TableCursor::Value(const char *field) const {
  const int at = file_.Format().FindField(field);
  const char *record = Bytes();
  if (at < 0 || record == nullptr) return {};
  return FieldValue(record, file_.Format().Fields()[static_cast<std::size_t>(at)]);
}

bool TableCursor::Find(const char *field, const char *value) {
  const int at = file_.Format().FindField(field);
  if (at < 0) return false;
  const TableField &found = file_.Format().Fields()[static_cast<std::size_t>(at)];
  const std::string_view wanted = value == nullptr ? std::string_view() : value;
  for (std::uint32_t i = 0; i < file_.RecordCount(); ++i) {
    const char *record = file_.Record(i);
    if (record == nullptr || *record != static_cast<char>(RecordMark::Present)) continue;
    if (FieldValue(record, found) != wanted) continue;
    pending_ = Pending::Nothing;
    index_ = i;
    return true;
  }
  return false;
}

bool TableCursor::BeginAppend() {
  if (!IsOpen()) return false;
  record_ = file_.Format().BlankRecord();
  pending_ = Pending::New;
  return true;
}

bool TableCursor::SetValue(const char *field, const char *value) {
  const int at = file_.Format().FindField(field);
  const char *record = Bytes();
  if (at < 0 || record == nullptr) return false;
  if (!IsWriting()) {
    record_.assign(record, file_.Format().RecordSize());
    pending_ = Pending::Changed;
  }
  const std::string_view text = value == nullptr ? std::string_view() : value;
  PutFieldValue(record_.data(), file_.Format().Fields()[static_cast<std::size_t>(at)], text);
  return true;
}

bool TableCursor::Write() {
  const Pending pending = pending_;
  pending_ = Pending::Nothing;
  if (pending == Pending::Changed) return file_.Replace(index_, record_);
  if (pending != Pending::New || !file_.Append(record_)) return false;
  index_ = file_.RecordCount() - 1;
  return true;
}

}  // namespace trovenu
