#include "trovenu/support/table_format.h"

#include <algorithm>
#include <cstring>

#include "trovenu/platform/code_page_text.h"
#include "trovenu/support/table_names.h"

namespace trovenu {

namespace {

// Places in the first 32 bytes of the head.
constexpr std::size_t kVersionAt = 0;
constexpr std::size_t kDateAt = 1;
constexpr std::size_t kHeadSizeAt = 8;
constexpr std::size_t kRecordSizeAt = 10;
constexpr std::size_t kNotesAt = 20;
constexpr std::size_t kCodePageAt = 29;
constexpr std::size_t kBaseSize = 32;

constexpr char kVersion = 3;
constexpr char kKoreanCodePage = 0x79;
// Results that are alike make files that are alike: the date is always 1 January 2000.
constexpr char kDate[] = {100, 1, 1};
// Says that the spare bytes of the descriptors hold what is told below.
constexpr std::string_view kNotes = "Trovenu";

// Places in the 32 bytes that describe a column.
constexpr std::size_t kTypeAt = 11;
constexpr std::size_t kWidthAt = 16;
constexpr std::size_t kDecimalsAt = 17;
constexpr std::size_t kNoteAt = 18;
constexpr std::size_t kNameEndAt = 19;
constexpr std::size_t kDescriptorSize = 32;

constexpr char kFieldsEnd = '\r';
// A column that goes on with the field of the one before.
constexpr char kContinuation = '\xFF';
// Other programs read no wider ones.
constexpr std::size_t kWidestColumn = 254;

std::size_t Byte(std::string_view bytes, std::size_t at) { return static_cast<unsigned char>(bytes[at]); }

std::size_t Word(std::string_view bytes, std::size_t at) {
  return Byte(bytes, at) | Byte(bytes, at + 1) << 8;
}

void PutWord(std::string *bytes, std::size_t at, std::size_t value) {
  (*bytes)[at] = static_cast<char>(value & 0xFF);
  (*bytes)[at + 1] = static_cast<char>(value >> 8);
}

std::string_view UpToZero(std::string_view bytes) { return bytes.substr(0, bytes.find('\0')); }

std::size_t ColumnsOf(std::size_t width) { return (width + kWidestColumn - 1) / kWidestColumn; }

char TypeOf(char type) {
  const char upper = ToUpperAscii(type);
  return std::string_view("NFDL").find(upper) != std::string_view::npos ? upper : 'C';
}

std::string CutName(std::string_view name) {
  std::string cut(name);
  cut.resize(CutAtCharacter(cut.c_str(), TableFormat::kLongestName));
  return cut;
}

std::string Descriptor(std::string_view shortName, char type, std::size_t width) {
  std::string descriptor(kDescriptorSize, '\0');
  descriptor.replace(0, shortName.size(), shortName);
  descriptor[kTypeAt] = type;
  descriptor[kWidthAt] = static_cast<char>(width);
  return descriptor;
}

/// Writes the rest of a name into the spare bytes of its descriptor. False if there is no room for it.
bool NoteName(std::string *descriptor, std::string_view shortName, std::string_view name) {
  if (shortName == name) return true;
  const auto [own, whole] = std::mismatch(shortName.begin(), shortName.end(), name.begin(), name.end());
  const auto shared = static_cast<std::size_t>(own - shortName.begin());
  const std::string_view rest = name.substr(shared);
  static_assert(TableNames::kLongestRest == kDescriptorSize - kNameEndAt);
  if (shared == 0 || rest.size() > TableNames::kLongestRest) return false;
  (*descriptor)[kNoteAt] = static_cast<char>(shared);
  descriptor->replace(kNameEndAt, rest.size(), rest);
  return true;
}

}  // namespace

bool TableFormat::AddField(std::string_view name, char type, int width) {
  const std::string cut = CutName(name);
  if (cut.empty() || cut.front() == kFieldsEnd || width < 1 || FindField(cut.c_str()) >= 0) return false;
  const auto size = static_cast<std::size_t>(width);
  const std::size_t descriptors = descriptors_ + ColumnsOf(size);
  const std::size_t headSize = kBaseSize + kDescriptorSize * descriptors + 1;
  if (size > kLongestRecord - recordSize_ || headSize > kLongestHead) return false;
  fields_.push_back({cut, TypeOf(type), recordSize_, size});
  recordSize_ += size;
  fieldsSize_ = recordSize_;
  descriptors_ = descriptors;
  headSize_ = headSize;
  return true;
}

int TableFormat::FindField(const char *name) const {
  // Records are filled and read field behind field.
  if (name != nullptr && nextFound_ < fields_.size() &&
      std::strcmp(fields_[nextFound_].name.c_str(), name) == 0) {
    return static_cast<int>(nextFound_++);
  }
  std::string cut;
  if (name != nullptr && std::strlen(name) > kLongestName) {
    cut = CutName(name);
    name = cut.c_str();
  }
  for (std::size_t i = 0; i < fields_.size(); ++i) {
    const std::size_t at = (nextFound_ + i) % fields_.size();
    if (!EqualNoCase(fields_[at].name.c_str(), name)) continue;
    nextFound_ = at + 1;
    return static_cast<int>(at);
  }
  return -1;
}

/// Fields behind the end of a record are cut or dropped.
void TableFormat::SetRecordSize(std::size_t size) {
  recordSize_ = std::clamp<std::size_t>(size, 1, kLongestRecord);
  std::erase_if(fields_, [this](const TableField &field) { return field.offset >= recordSize_; });
  for (TableField &field : fields_) field.width = std::min(field.width, recordSize_ - field.offset);
}

std::string TableFormat::Head() {
  if (fields_.empty()) return {};
  // Names that fit stay as they are, whatever the longer ones shrink to.
  TableNames names;
  std::vector<std::string> shortNames;
  for (const TableField &field : fields_) shortNames.push_back(names.Take(field.name) ? field.name : "");
  for (std::size_t i = 0; i < fields_.size(); ++i) {
    if (shortNames[i].empty()) shortNames[i] = names.TakeShort(fields_[i].name);
  }
  std::string head(kBaseSize, '\0');
  for (std::size_t i = 0; i < fields_.size(); ++i) {
    const TableField &field = fields_[i];
    for (std::size_t k = 0; k < ColumnsOf(field.width); ++k) {
      const std::string name = k == 0 ? shortNames[i] : names.TakeContinuation(shortNames[i], k);
      std::string descriptor =
          Descriptor(name, field.type, std::min(field.width - k * kWidestColumn, kWidestColumn));
      if (k > 0) descriptor[kNoteAt] = kContinuation;
      if (name.empty() || (k == 0 && !NoteName(&descriptor, name, field.name))) return {};
      head += descriptor;
    }
  }
  head += kFieldsEnd;
  head[kVersionAt] = kVersion;
  head.replace(kDateAt, sizeof kDate, kDate, sizeof kDate);
  PutSizes(&head);
  head.replace(kNotesAt, kNotes.size(), kNotes);
  head[kCodePageAt] = kKoreanCodePage;
  return head;
}

void TableFormat::PutSizes(std::string *head) const {
  PutWord(head, kHeadSizeAt, headSize_);
  PutWord(head, kRecordSizeAt, recordSize_);
}

bool TableFormat::ReadHead(std::string_view bytes, Length length) {
  Clear();
  if (bytes.size() <= kBaseSize) return false;
  // Tables of later versions with the same layout have other bits set, those with memos among them.
  const std::size_t version = Byte(bytes, kVersionAt);
  if ((version & 7) != kVersion && (version < 0x30 || version > 0x32)) return false;
  const bool ownNotes = bytes.substr(kNotesAt, kNotes.size()) == kNotes;
  headSize_ = Word(bytes, kHeadSizeAt);
  std::size_t at = kBaseSize;
  const auto readFields = [&](std::size_t end) {
    for (at = kBaseSize; at + kDescriptorSize <= end && bytes[at] != kFieldsEnd; at += kDescriptorSize)
      ReadField(bytes.substr(at, kDescriptorSize), ownNotes);
    return at < bytes.size() && bytes[at] == kFieldsEnd;
  };
  // Our own heads end right behind the descriptors, whatever a damaged length says.
  const std::size_t told = std::min(bytes.size(), headSize_);
  const bool ended = readFields(ownNotes ? bytes.size() : told);
  if (ownNotes && !ended) {
    // It is the end of the fields that is damaged, and what was read reaches into the records.
    fields_.clear();
    recordSize_ = 1;
    readFields(told);
    sound_ = false;
  }
  if (ownNotes && ended) {
    sound_ = headSize_ == at + 1;
    headSize_ = at + 1;
  }
  fieldsSize_ = recordSize_;
  if (fields_.empty() || headSize_ <= kBaseSize || headSize_ > bytes.size()) {
    Clear();
    return false;
  }
  const std::size_t toldRecord = Word(bytes, kRecordSizeAt);
  sound_ = sound_ && toldRecord == fieldsSize_;
  SetRecordSize(length == Length::OfHead ? toldRecord : fieldsSize_);
  return true;
}

void TableFormat::ReadField(std::string_view descriptor, bool ownNotes) {
  std::size_t width = Byte(descriptor, kWidthAt);
  const char type = TypeOf(descriptor[kTypeAt]);
  // Other programs write the high byte of a wide text's width where a number has its decimals.
  if (!ownNotes && type == 'C') width |= Byte(descriptor, kDecimalsAt) << 8;
  const char note = ownNotes ? descriptor[kNoteAt] : '\0';
  if (note == kContinuation && !fields_.empty()) {
    fields_.back().width += width;
  } else {
    std::string name(UpToZero(descriptor.substr(0, kTypeAt)));
    if (note > 0 && static_cast<std::size_t>(note) <= name.size()) {
      name.resize(static_cast<std::size_t>(note));
      name += UpToZero(descriptor.substr(kNameEndAt));
    }
    fields_.push_back({CutName(name), type, recordSize_, width});
  }
  recordSize_ += width;
}

std::string TableFormat::BlankRecord() const { return std::string(recordSize_, ' '); }

std::string CountBytes(std::uint32_t count) {
  std::string bytes;
  for (std::size_t i = 0; i < TableFormat::kCountSize; ++i)
    bytes += static_cast<char>(count >> (8 * i) & 0xFF);
  return bytes;
}

std::uint32_t CountFrom(const char *bytes) {
  std::uint32_t count = 0;
  for (std::size_t i = 0; i < TableFormat::kCountSize; ++i) {
    count |= static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[i])) << (8 * i);
  }
  return count;
}

void PutFieldValue(char *record, const TableField &field, std::string_view value) {
  char *const to = record + field.offset;
  const std::size_t size =
      value.size() <= field.width ? value.size() : CutAtCharacter(value.data(), field.width);
  std::memset(to, ' ', field.width);
  if (size == 0) return;
  std::memcpy(to, value.data(), size);
  // Blanks at the end would be taken for filling.
  if (value[size - 1] == ' ' && size < field.width) to[size] = '\0';
}

std::string_view FieldValue(const char *record, const TableField &field) {
  std::string_view value(record + field.offset, field.width);
  if (const std::size_t zero = value.find('\0'); zero != value.npos) {
    value = value.substr(0, zero);
  } else {
    value = value.substr(0, value.find_last_not_of(' ') + 1);
  }
  if (field.type != 'C') value.remove_prefix(std::min(value.find_first_not_of(' '), value.size()));
  return value;
}

}  // namespace trovenu
