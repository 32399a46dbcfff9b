#include "trovenu/support/table_check.h"

#include <algorithm>
#include <cstring>

#include "trovenu/platform/platform.h"
#include "trovenu/support/table_file.h"

namespace trovenu {

namespace {

/// The head of the table as it stands in the file, with its three numbers put right.
std::string MendedHead(const File &file, const TableFormat &format) {
  std::string head(format.HeadSize(), '\0');
  if (file.ReadAt(0, head.data(), head.size()) != head.size()) return {};
  format.PutSizes(&head);
  return head;
}

/// Fields whose places follow each other without a gap, under names that differ.
TableFormat Rebuilt(const TableFormat &damaged) {
  TableFormat format;
  for (const TableField &field : damaged.Fields()) {
    const int width = static_cast<int>(field.width);
    if (format.AddField(field.name, field.type, width)) continue;
    for (int i = 1; width > 0 && !format.AddField("FIELD" + std::to_string(i), field.type, width); ++i) {
      if (i > static_cast<int>(damaged.Fields().size())) break;
    }
  }
  return format;
}

/// The fields of a record one after the other, at most as many bytes as a record of `format` has.
std::string Repacked(const char *record, const TableFormat &damaged, const TableFormat &format) {
  std::string packed(1, *record);
  for (const TableField &field : damaged.Fields()) packed.append(record + field.offset, field.width);
  packed.resize(format.RecordSize(), ' ');
  return packed;
}

}  // namespace

TableReport CheckTable(const std::string &path) {
  TableReport report;
  TableFile table;
  File file;
  if (!table.Open(path) || !file.Open(path, File::Access::Read)) return report;
  report.isTable = true;
  report.fields = table.Format().Fields().size();
  report.recordSize = table.Format().RecordSize();
  report.sizesDiffer = !table.IsWritable();
  for (std::uint32_t i = 0; i < table.RecordCount(); ++i) {
    const char *record = table.Record(i);
    if (!IsGoodRecord(record)) {
      ++report.markFaults;
      continue;
    }
    ++report.records;
    if (*record == static_cast<char>(RecordMark::Deleted)) ++report.deleted;
  }
  char count[TableFormat::kCountSize] = {};
  file.ReadAt(TableFormat::kCountAt, count, sizeof count);
  report.counted = CountFrom(count);
  report.countDiffers = report.counted != table.RecordCount();
  const std::uint64_t end =
      table.Format().HeadSize() + std::uint64_t{table.RecordCount()} * report.recordSize;
  const std::uint64_t left = file.Size() > end ? file.Size() - end : 0;
  char mark = '\0';
  file.ReadAt(end, &mark, 1);
  report.noEndMark = mark != TableFormat::kEndMark;
  if (!report.noEndMark) {
    report.bytesBehindEnd = left - 1;
  } else if (left < report.recordSize) {
    report.unfinishedBytes = static_cast<std::size_t>(left);
  } else {
    report.bytesBehindEnd = left;
  }
  return report;
}

bool SaveReadableTable(const std::string &path, const std::string &newPath) {
  TableFile table;
  File file;
  if (!table.Open(path) || !file.Open(path, File::Access::Read)) return false;
  const bool rebuild = !table.IsWritable();
  TableFormat format = rebuild ? Rebuilt(table.Format()) : table.Format();
  std::string head = rebuild ? format.Head() : MendedHead(file, format);
  if (head.empty()) return false;

  std::uint32_t count = 0;
  for (std::uint32_t i = 0; i < table.RecordCount(); ++i) {
    if (table.Record(i) != nullptr) ++count;
  }
  head.replace(TableFormat::kCountAt, TableFormat::kCountSize, CountBytes(count));
  NewFile copy(newPath);
  bool good = copy.Write(head);
  for (std::uint32_t i = 0; i < table.RecordCount() && good; ++i) {
    const char *record = table.Record(i);
    if (record == nullptr) continue;
    std::string saved =
        rebuild ? Repacked(record, table.Format(), format) : std::string(record, format.RecordSize());
    if (!IsGoodRecord(record)) saved.front() = static_cast<char>(RecordMark::Deleted);
    good = copy.Write(saved);
  }
  return good && copy.Write({&TableFormat::kEndMark, 1}) && copy.Commit(Flush::ToDisk);
}

}  // namespace trovenu
