#include "trovenu/support/table_reader.h"

#include "trovenu/platform/platform.h"
#include "trovenu/support/table_cursor.h"

namespace trovenu {

namespace {

constexpr int kFirst = 0;
constexpr int kSecond = 1;

/// True for a word, with or without a point before it, that is no path of a file.
bool IsExtension(const std::string &word) {
  return !word.empty() && word.find_first_of("/\\:") == word.npos && word.rfind('.') + 1 <= 1 &&
         !FileExist(word.c_str());
}

}  // namespace

DDB::DDB(const char *path, const char *extensionOrName, int mode) : Mode(mode), FileName(path) {
  for (auto &cursor : cursors_) cursor = std::make_unique<TableCursor>();
  const std::string second = extensionOrName == nullptr ? "" : extensionOrName;
  if (!IsExtension(second)) {
    UserFileName = second.c_str();
  } else if (!FileExist(FileName)) {
    FileName += (second.front() == '.' ? second : '.' + second).c_str();
  }
  cursors_[kFirst]->Open(FileName.c_str());
  if (!UserFileName.IsEmpty()) cursors_[kSecond]->Open(UserFileName.c_str());
  MoveFirst();
}

DDB::~DDB() = default;

void DDB::MoveFirst() {
  for (auto &cursor : cursors_) cursor->MoveFirst();
  CurrentTable = kFirst;
  EnterSecondAtEnd();
  Show();
}

void DDB::MoveNext() {
  Current().MoveNext();
  EnterSecondAtEnd();
  Show();
}

void DDB::EnterSecondAtEnd() {
  if (CurrentTable != kFirst || !Current().AtEnd()) return;
  CurrentTable = kSecond;
  Current().MoveFirst();
}

int DDB::Eof() const { return Current().AtEnd() ? 1 : 0; }

int DDB::Deleted() const { return Current().Deleted() ? 1 : 0; }

SString DDB::GetStr(const char *field) const { return SString(Current().Value(field)); }

int DDB::FindFirst(const char *field, const char *value) {
  for (const int table : {kFirst, kSecond}) {
    if (!cursors_[table]->Find(field, value)) continue;
    CurrentTable = table;
    foundField_ = field == nullptr ? "" : field;
    foundValue_ = value == nullptr ? "" : value;
    Show();
    return 1;
  }
  return 0;
}

int DDB::Append(const char *) {
  if (!cursors_[WriteTable()]->BeginAppend()) return 0;
  CurrentTable = WriteTable();
  return 1;
}

int DDB::InsField(const char *field, const char *value) {
  if (!Current().IsWriting() && !TurnToWriteTable()) return 0;
  return Current().SetValue(field, value) ? 1 : 0;
}

/// Before a record is changed: stands at the record of the write table that the change is for.
bool DDB::TurnToWriteTable() {
  if (Current().AtEnd() || CurrentTable == WriteTable()) return !Current().AtEnd();
  const TableCursor &source = Current();
  TableCursor &target = *cursors_[kSecond];
  const bool found = !foundField_.empty() && source.Value(foundField_.c_str()) == foundValue_ &&
                     target.Find(foundField_.c_str(), foundValue_.c_str());
  if (!found) {
    if (!target.BeginAppend()) return false;
    for (const TableField &field : target.Table().Format().Fields()) {
      target.SetValue(field.name.c_str(), std::string(source.Value(field.name.c_str())).c_str());
    }
  }
  CurrentTable = kSecond;
  return true;
}

int DDB::WriteRecord() {
  const bool done = Current().Write();
  if (done) Current().Table().FlushWritten();
  Show();
  return done ? 1 : 0;
}

void DDB::Show() {
  const std::uint32_t before = CurrentTable == kFirst ? 0 : cursors_[kFirst]->Table().RecordCount();
  RecordNo = static_cast<int>(before + Current().Index());
  RecordCount =
      static_cast<int>(cursors_[kFirst]->Table().RecordCount() + cursors_[kSecond]->Table().RecordCount());
}

}  // namespace trovenu
