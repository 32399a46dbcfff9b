#include "trovenu/indicator/user_index_list.h"

#include <algorithm>
#include <cstddef>
#include <limits>

#include "trovenu/indicator/index.h"

namespace trovenu {

bool SUserIndexList::HasId(std::ptrdiff_t at, int userId) const {
  const SIndex *index = GetAt(at);
  return index != nullptr && index->UserID == userId;
}

int SUserIndexList::Find(int userId) const {
  for (std::ptrdiff_t i = 0; i < GetSize(); ++i) {
    if (HasId(i, userId)) return static_cast<int>(i);
  }
  return -1;
}

int SUserIndexList::Find(const SIndex *index) const {
  for (std::ptrdiff_t i = 0; i < GetSize(); ++i) {
    if (GetAt(i) == index) return static_cast<int>(i);
  }
  return -1;
}

int SUserIndexList::GetNextID() const {
  int greatest = -1;
  for (std::ptrdiff_t i = 0; i < GetSize(); ++i) {
    if (GetAt(i) != nullptr) greatest = std::max(greatest, GetAt(i)->UserID);
  }
  return std::min(greatest, std::numeric_limits<int>::max() - 1) + 1;
}

void SUserIndexList::RemoveIndex(int userId) {
  for (std::ptrdiff_t i = GetUpperBound(); i >= 0; --i) {
    if (HasId(i, userId)) RemoveAt(i);
  }
}

SIndex *SUserIndexList::GetIndex(int userId) const {
  for (std::ptrdiff_t i = GetUpperBound(); i >= 0; --i) {
    if (HasId(i, userId)) return GetAt(i);
  }
  return nullptr;
}

}  // namespace trovenu
