#include "trovenu/indicator/index_list.h"

#include <cstddef>

#include "trovenu/support/growing_list.h"

namespace trovenu {
namespace {

constexpr int kRoom = 20;
constexpr int kRoomAfterClear = 200;

}  // namespace

SIndexList::SIndexList() { Reset(kRoom); }

SIndexList::SIndexList(const SIndexList &other) : SIndex(other) {
  Reset(kRoom);
  *this = other;
}

SIndexList &SIndexList::operator=(const SIndexList &other) {
  if (this == &other) return *this;
  Clear();
  for (int i = 0; i < other.Size; ++i) Add(other.Data[static_cast<std::size_t>(i)]);
  return *this;
}

SIndexList::~SIndexList() = default;

void SIndexList::Reset(int room) {
  Data.reset();
  Size = 0;
  MaxSize = 0;
  GrowBy = room;
  GrowListTo(Data, Size, MaxSize, room);
}

void SIndexList::Add(const SIndex &index) {
  // An element of the list itself would move with it.
  const SIndex copy(index);  // NOLINT(performance-unnecessary-copy-initialization)
  if (!GrowFullList(Data, Size, MaxSize, GrowBy)) return;
  Data[static_cast<std::size_t>(Size++)] = copy;
}

void SIndexList::Delete(int i) { DeleteFromList(Data, Size, i); }

void SIndexList::Clear() { Reset(kRoomAfterClear); }

void SIndexList::SetMaxSize(long n) { GrowListTo(Data, Size, MaxSize, n); }

SIndex &SIndexList::operator[](long i) {
  if (i < 0 || i >= Size) return *this;
  return Data[static_cast<std::size_t>(i)];
}

const SIndex &SIndexList::operator[](long i) const {
  if (i < 0 || i >= Size) return *this;
  return Data[static_cast<std::size_t>(i)];
}

}  // namespace trovenu
