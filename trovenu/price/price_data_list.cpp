#include "trovenu/price/price_data_list.h"

#include <algorithm>
#include <limits>

#include "trovenu/support/archive.h"
#include "trovenu/support/growing_list.h"

namespace trovenu {
namespace {

constexpr const char *kCategory = "PriceDataList";
constexpr const char *kSizeKey = "size";

}  // namespace

SPriceDataList::SPriceDataList() : data(std::make_unique<SPriceData[]>(1)) {}

SPriceDataList::SPriceDataList(const SPriceDataList &other) : SPriceDataList() { *this = other; }

SPriceDataList &SPriceDataList::operator=(const SPriceDataList &other) {
  if (this == &other) return *this;
  Clear();
  for (int i = 0; i < other.count; ++i) {
    if (count < capacity) {
      Add();
      (*this)[i] = other[i];
    } else {
      Add(other[i]);
    }
  }
  return *this;
}

SPriceDataList::~SPriceDataList() = default;

int SPriceDataList::Add() {
  if (!GrowFullList(data, count, capacity, growStep)) return -1;
  SPriceData &added = data.get()[count];
  added.SetID(GetNextID());
  added.SetToDefault();
  added.ClearData();
  ++count;
  return added.GetID();
}

int SPriceDataList::Add(const SPriceData &symbol) {
  if (count >= capacity) {
    // The symbol may be one of this list, which is about to move.
    const SPriceData copy(symbol);  // NOLINT(performance-unnecessary-copy-initialization)
    return GrowFullList(data, count, capacity, growStep) ? Add(copy) : -1;
  }
  SPriceData &added = data.get()[count];
  added = symbol;
  added.SetID(GetNextID());
  ++count;
  return added.GetID();
}

void SPriceDataList::Delete(int index) {
  if (index >= 0 && index < capacity) DeleteFromList(data, count, index);
}

void SPriceDataList::Clear() {
  data[0].SetToDefault();
  data[0].ClearData();
  count = 0;
}

void SPriceDataList::SetMaxSize(long size) { GrowListTo(data, count, capacity, size); }

SPriceData &SPriceDataList::operator[](long index) {
  return index < 0 || index >= count ? fallback : data.get()[index];
}

const SPriceData &SPriceDataList::operator[](long index) const {
  return index < 0 || index >= count ? fallback : data.get()[index];
}

int SPriceDataList::GetNextID() const {
  if (count == 0) return 0;
  int largest = (*this)[0].GetID();
  for (int i = 1; i < count; ++i) largest = std::max(largest, (*this)[i].GetID());
  return largest == std::numeric_limits<int>::max() ? largest : largest + 1;
}

int SPriceDataList::GetSymbolNoFromID(int id) const {
  for (int i = 0; i < count; ++i) {
    if ((*this)[i].GetID() == id) return i;
  }
  return -1;
}

int SPriceDataList::GetSymbolIDFromNo(int no) const {
  return no < 0 || no >= count ? -1 : (*this)[no].GetID();
}

SPriceData *SPriceDataList::GetCurData(int id) {
  return &(*this)[GetSymbolNoFromID(id < 0 ? selectedId : id)];
}

SPriceData *SPriceDataList::GetCurSlectedData() { return &(*this)[GetSymbolNoFromID(GetCurSelecedID())]; }

int SPriceDataList::GetCurSelecedID() {
  if (GetSymbolNoFromID(selectedId) < 0) selectedId = (*this)[0].GetID();
  return selectedId;
}

void SPriceDataList::Load(CKqArchive &archive) { LoadSymbols(archive, &SPriceData::Load); }

void SPriceDataList::Store(CKqArchive &archive) const { StoreSymbols(archive, &SPriceData::Store); }

void SPriceDataList::LoadTheme(CKqArchive &archive) { LoadSymbols(archive, &SPriceData::LoadTheme); }

void SPriceDataList::StoreTheme(CKqArchive &archive) const { StoreSymbols(archive, &SPriceData::StoreTheme); }

void SPriceDataList::LoadSymbols(CKqArchive &archive, void (SPriceData::*load)(CKqArchive &, int)) {
  Clear();
  archive.SetCategory(kCategory);
  const int size = archive.GetInt(kSizeKey, 0);
  for (int i = 0; i < size; ++i) {
    Add();
    if (count == i) return;
    ((*this)[i].*load)(archive, i);
    if (i >= kTrustedSize && (*this)[i].GetID() == kNoId) {
      --count;
      return;
    }
  }
}

void SPriceDataList::StoreSymbols(CKqArchive &archive,
                                  void (SPriceData::*store)(CKqArchive &, int) const) const {
  archive.SetCategory(kCategory);
  archive.SetInt(kSizeKey, count, 0);
  for (int i = 0; i < count; ++i) ((*this)[i].*store)(archive, i);
}

}  // namespace trovenu
