#include "trovenu/support/table_writer.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>

#include "trovenu/support/table_cursor.h"

namespace trovenu {

namespace {

std::string PathOf(const char *path) { return path == nullptr ? "" : path; }

SString ExtensionOf(const std::string &path) {
  const std::size_t name = path.find_last_of("/\\") + 1;
  const std::size_t point = path.rfind('.');
  return point == path.npos || point < name ? SString() : SString(path.c_str() + point + 1);
}

}  // namespace

DB::DB() : cursor_(std::make_unique<TableCursor>()), created_(std::make_unique<TableFormat>()) {}

DB::DB(const char *fileName, int mode) : DB() {
  Mode = mode;
  FileName = fileName;
  Extension = ExtensionOf(PathOf(fileName));
  cursor_->Open(PathOf(fileName));
  StepOverDeleted();
  Show();
}

DB::~DB() = default;

int DB::CreateDB(const char *fileName) {
  cursor_->Close();
  created_->Clear();
  stage_ = Stage::Fields;
  FileName = fileName;
  Extension = ExtensionOf(PathOf(fileName));
  Show();
  if (FileName.IsEmpty()) return 0;
  State = Creating;
  return 1;
}

void DB::ClearField() {
  if (State == Creating && stage_ == Stage::Fields) created_->Clear();
}

int DB::InsertField(const char *name, char type, int width) {
  if (State != Creating || stage_ != Stage::Fields || name == nullptr) return 0;
  return created_->AddField(name, type, width) ? 1 : 0;
}

int DB::WriteHead() {
  if (State != Creating || stage_ != Stage::Fields || created_->Fields().empty()) return 0;
  stage_ = Stage::Head;
  return 1;
}

int DB::WriteField() {
  if (State != Creating || stage_ != Stage::Head) return 0;
  stage_ = Stage::Described;
  return 1;
}

int DB::WriteEof() {
  if (State != Creating || stage_ != Stage::Described) return 0;
  State = Closed;
  const std::string path = FileName.c_str();
  if (!TableFile::Create(path, created_->Head(), 0, skipFlush_ ? Flush::ToSystem : Flush::ToDisk)) return 0;
  // The table is made, also where it can't be opened: this object is closed then.
  cursor_->Open(path);
  Show();
  return 1;
}

void DB::SkipFlush() {
  skipFlush_ = true;
  cursor_->Table().SkipFlush();
}

int DB::Append(const char *) {
  const bool done = cursor_->BeginAppend();
  Show();
  if (done) WriteState = NewRecord;
  return done ? 1 : 0;
}

int DB::InsField(const char *field, const char *value) {
  if (!cursor_->SetValue(field, value)) return 0;
  if (WriteState == NotWriting) WriteState = ChangedRecord;
  return 1;
}

int DB::WriteRecord() {
  const bool done = cursor_->Write();
  Show();
  return done ? 1 : 0;
}

void DB::MoveFirst(int) {
  cursor_->MoveFirst();
  StepOverDeleted();
  Show();
}

void DB::MoveNext(int) {
  cursor_->MoveNext();
  StepOverDeleted();
  Show();
}

void DB::StepOverDeleted() {
  while (cursor_->Deleted()) cursor_->MoveNext();
}

int DB::Eof() const { return cursor_->AtEnd() ? 1 : 0; }

SString DB::GetStr(const char *field) const { return SString(cursor_->Value(field)); }

int DB::FindFirst(const char *field, const char *value) {
  if (!cursor_->Find(field, value)) return 0;
  Show();
  return 1;
}

void DB::Show() {
  const TableFile &table = cursor_->Table();
  State = cursor_->IsOpen() ? Open : Closed;
  RecordNo = static_cast<int>(cursor_->Index());
  RecordCount = static_cast<int>(table.RecordCount());
  RecordSize = cursor_->IsOpen() ? static_cast<int>(table.Format().RecordSize()) : 0;
  HeadSize = static_cast<int>(table.Format().HeadSize());
  FieldCount = static_cast<int>(table.Format().Fields().size());
  const char *record = cursor_->AtEnd() ? nullptr : table.Record(cursor_->Index());
  ReadState = record != nullptr ? 1 : 0;
  WriteState = NotWriting;
  if (record != nullptr) std::memcpy(Record, record, std::min(sizeof Record, table.Format().RecordSize()));
}

}  // namespace trovenu
