#include "trovenu/platform/serial_archive.h"

namespace trovenu {

unsigned int CArchive::Read(void *buffer, unsigned int count) {
  return file_ != nullptr && IsLoading() ? file_->Read(buffer, count) : 0;
}

void CArchive::Write(const void *buffer, unsigned int count) {
  if (file_ != nullptr && IsStoring()) file_->Write(buffer, count);
}

void CArchive::WriteCount(std::uint32_t count) {
  unsigned char bytes[4];
  for (unsigned int i = 0; i < 4; ++i) bytes[i] = static_cast<unsigned char>(count >> (8 * i));
  Write(bytes, sizeof bytes);
}

bool CArchive::ReadCount(std::uint32_t *count) {
  unsigned char bytes[4] = {};
  *count = 0;
  if (Read(bytes, sizeof bytes) != sizeof bytes) return false;
  for (unsigned int i = 0; i < 4; ++i) *count |= static_cast<std::uint32_t>(bytes[i]) << (8 * i);
  return true;
}

std::uint64_t CArchive::Left() const {
  if (file_ == nullptr || !IsLoading() || file_->GetPosition() >= file_->GetLength()) return 0;
  return file_->GetLength() - file_->GetPosition();
}

}  // namespace trovenu
