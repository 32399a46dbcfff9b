#include "trovenu/support/table_file.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <new>
#include <utility>

namespace trovenu {

namespace {

constexpr std::size_t kWindow = 1 << 18;
constexpr std::uint32_t kMostRecords = std::numeric_limits<std::uint32_t>::max() - 1;
// Records that are looked at to tell which of two lengths is that of a record.
constexpr std::uint32_t kSample = 1000;

std::uint64_t OffsetOf(const TableFormat &format, std::uint32_t index) {
  return format.HeadSize() + std::uint64_t{index} * format.RecordSize();
}

char ByteAt(const File &file, std::uint64_t offset) {
  char byte = '\0';
  file.ReadAt(offset, &byte, 1);
  return byte;
}

bool IsMark(char byte) {
  return byte == static_cast<char>(RecordMark::Present) || byte == static_cast<char>(RecordMark::Deleted);
}

std::uint32_t CountInHead(const File &file) {
  char bytes[TableFormat::kCountSize] = {};
  file.ReadAt(TableFormat::kCountAt, bytes, sizeof bytes);
  return CountFrom(bytes);
}

/// How well a length of records agrees with the file, from 0 to 2: by the share of marks at the begin of
/// records, and by the end mark.
double AgreementOf(const File &file, const TableFormat &format) {
  const std::uint64_t size = file.Size();
  std::uint32_t all = 0;
  std::uint32_t good = 0;
  while (all < kSample && OffsetOf(format, all + 1) <= size) {
    if (IsMark(ByteAt(file, OffsetOf(format, all)))) ++good;
    ++all;
  }
  const double marks = all == 0 ? 0.0 : static_cast<double>(good) / all;
  const bool ends = ByteAt(file, OffsetOf(format, CountInHead(file))) == TableFormat::kEndMark;
  return marks + (ends ? 1.0 : 0.0);
}

}  // namespace

bool IsGoodRecord(const char *record) { return record != nullptr && IsMark(*record); }

bool TableFile::Create(const std::string &path, std::string table, std::uint32_t count, Flush flush) {
  if (table.empty()) return false;
  table.replace(TableFormat::kCountAt, TableFormat::kCountSize, CountBytes(count));
  table += TableFormat::kEndMark;
  return WriteFileBytes(path, table, flush);
}

bool TableFile::Open(const std::string &path) {
  Close();
  if (!file_.Open(path, File::Access::Read)) return false;
  path_ = path;
  if (!OpenFormat(file_)) {
    Close();
    return false;
  }
  count_ = CountIn(file_, format_);
  return true;
}

void TableFile::FlushWritten() {
  if (written_ && flush_ == Flush::ToDisk) writer_.FlushToDisk();
  written_ = false;
}

void TableFile::Close() {
  FlushWritten();
  writable_ = false;
  writer_.Close();
  file_.Close();
  format_.Clear();
  count_ = 0;
  window_.clear();
}

bool TableFile::OpenFormat(const File &file) {
  const auto most = static_cast<std::size_t>(std::min<std::uint64_t>(file.Size(), TableFormat::kLongestHead));
  const auto bytes = std::make_unique_for_overwrite<char[]>(most);
  const std::string_view head(bytes.get(), file.ReadAt(0, bytes.get(), most));
  if (!format_.ReadHead(head)) return false;
  writable_ = format_.IsSound();
  if (format_.FieldsSize() == format_.RecordSize()) return true;
  // One of the two lengths is damaged. The right one leads from mark to mark.
  TableFormat other;
  other.ReadHead(head, TableFormat::Length::OfFields);
  if (AgreementOf(file, other) > AgreementOf(file, format_)) format_ = other;
  return true;
}

std::uint32_t TableFile::CountIn(const File &file, const TableFormat &format) {
  const std::uint32_t counted = CountInHead(file);
  if (counted <= kMostRecords && ByteAt(file, OffsetOf(format, counted)) == TableFormat::kEndMark)
    return counted;
  const std::uint64_t size = file.Size();
  if (size < format.HeadSize()) return 0;
  const std::uint64_t held = (size - format.HeadSize()) / format.RecordSize();
  auto count = static_cast<std::uint32_t>(std::min<std::uint64_t>(held, kMostRecords));
  // A power failure may leave room for records that have never reached the disk.
  std::string record(format.RecordSize(), '\0');
  while (count > 0 && ByteAt(file, OffsetOf(format, count - 1)) == '\0') {
    file.ReadAt(OffsetOf(format, count - 1), record.data(), record.size());
    if (record.find_first_not_of('\0') != record.npos) break;
    --count;
  }
  return count;
}

const char *TableFile::Record(std::uint32_t index) const {
  if (index >= count_) return nullptr;
  const std::uint64_t at = OffsetOf(format_, index);
  const std::size_t size = format_.RecordSize();
  if (at < windowAt_ || at + size > windowAt_ + window_.size()) {
    const std::uint64_t behind = OffsetOf(format_, count_);
    windowAt_ = at;
    window_.resize(static_cast<std::size_t>(std::min<std::uint64_t>(behind - at, std::max(kWindow, size))));
    window_.resize(file_.ReadAt(at, window_.data(), window_.size()));
    if (window_.size() < size) return nullptr;
  }
  return window_.data() + (at - windowAt_);
}

/// Takes the lock of the file that bears the name now, which need not be the one that was opened.
bool TableFile::LockForWriting() {
  for (;;) {
    if (!writer_.IsOpen() && !writer_.Open(path_, File::Access::ReadAndWrite)) return false;
    if (!writer_.Lock()) return false;
    if (writer_.IsAt(path_)) break;
    FlushWritten();
    writer_.Close();
  }
  // What is to be written was laid out for the fields of the file that was opened.
  if (file_.IsAt(path_)) return true;
  const TableFormat before = format_;
  if (!OpenFormat(writer_)) format_.Clear();
  const bool same = std::equal(before.Fields().begin(), before.Fields().end(), format_.Fields().begin(),
                               format_.Fields().end(),
                               [](const TableField &a, const TableField &b) {
                                 return a.name == b.name && a.offset == b.offset && a.width == b.width;
                               }) &&
                    before.RecordSize() == format_.RecordSize() && before.HeadSize() == format_.HeadSize();
  format_ = before;
  File now;
  if (!same || !now.Open(path_, File::Access::Read)) {
    writer_.Unlock();
    return false;
  }
  file_ = std::move(now);
  count_ = CountIn(file_, format_);
  window_.clear();
  return true;
}

bool TableFile::Append(std::string records) {
  const std::size_t added = records.size() / format_.RecordSize();
  if (!writable_ || added == 0 || added * format_.RecordSize() != records.size() || added > kMostRecords)
    return false;
  if (!LockForWriting()) return false;
  const std::uint32_t count = CountIn(writer_, format_);
  const std::uint64_t at = OffsetOf(format_, count);
  records += TableFormat::kEndMark;
  const auto behind = count + static_cast<std::uint32_t>(added);
  const std::string counted = CountBytes(behind);
  const bool done = count <= kMostRecords - added && writer_.WriteAt(at, records.data(), records.size()) &&
                    writer_.WriteAt(TableFormat::kCountAt, counted.data(), counted.size());
  if (done) {
    written_ = true;
    count_ = behind;
  } else {
    const std::string before = CountBytes(count);
    writer_.WriteAt(TableFormat::kCountAt, before.data(), before.size());
    writer_.WriteAt(at, &TableFormat::kEndMark, 1);
    writer_.Resize(at + 1);
  }
  // Others may have written where the window ends.
  window_.clear();
  writer_.Unlock();
  return done;
}

bool TableFile::CopyReplaced(NewFile *copy, std::uint32_t index, std::string_view record) const {
  const std::uint64_t at = OffsetOf(format_, index);
  const std::uint64_t size = writer_.Size();
  std::string piece;
  for (std::uint64_t done = 0; done < size;) {
    if (done == at) {
      if (!copy->Write(record)) return false;
      done += record.size();
      continue;
    }
    const std::uint64_t end = done < at ? at : size;
    piece.resize(static_cast<std::size_t>(std::min<std::uint64_t>(end - done, kWindow)));
    if (writer_.ReadAt(done, piece.data(), piece.size()) != piece.size() || !copy->Write(piece)) return false;
    done += piece.size();
  }
  return true;
}

bool TableFile::Replace(std::uint32_t index, std::string_view record) {
  if (!writable_ || record.size() != format_.RecordSize() || !LockForWriting()) return false;
  bool done = index < CountIn(writer_, format_);
  if (done) {
    NewFile copy(path_);
    done = CopyReplaced(&copy, index, record) && copy.Commit(flush_);
  }
  writer_.Unlock();
  writer_.Close();
  if (!done) return false;
  written_ = false;
  // The record is replaced, also where the new file can't be opened: this object is closed then.
  Open(std::string(path_));
  return true;
}

}  // namespace trovenu
