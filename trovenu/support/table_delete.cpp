#include "trovenu/support/table_delete.h"

#include "trovenu/support/table_cursor.h"
#include "trovenu/support/table_format.h"

namespace trovenu {

int DeleteRecords(const std::string &path, const char *field, const char *value) {
  TableCursor cursor;
  if (!cursor.Open(path)) return 0;
  int deleted = 0;
  while (cursor.Find(field, value)) {
    std::string record(cursor.Bytes(), cursor.Table().Format().RecordSize());
    record.front() = static_cast<char>(RecordMark::Deleted);
    if (!cursor.Table().Replace(cursor.Index(), record)) break;
    ++deleted;
  }
  return deleted;
}

}  // namespace trovenu
