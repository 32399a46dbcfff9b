#include "trovenu/price/price_data.h"
#include "trovenu/support/archive.h"
#include "trovenu/support/field_table.h"

namespace trovenu {
namespace {

constexpr const char *kCategory = "PriceData";

constexpr Field<SPriceData> kFields[] = {
    {"ID", &SPriceData::ID},
    {"MarketType", &SPriceData::MarketType},
    {"SymbolName", &SPriceData::SymbolName},
    {"SymbolCode", &SPriceData::SymbolCode},
    {"RealSymbol", &SPriceData::RealSymbol},
    {"ChartCycle", &SPriceData::ChartCycle},
    {"ChartPeriod", &SPriceData::ChartPeriod},
    {"TickSize", &SPriceData::TickSize},
};

void LoadSymbol(CKqArchive &archive, int index, SPriceData &data) {
  archive.SetCategory(CategoryName(kCategory, index).c_str());
  LoadFields(archive, kFields, data, SPriceData());
}

void StoreSymbol(CKqArchive &archive, int index, const SPriceData &data) {
  archive.SetCategory(CategoryName(kCategory, index).c_str());
  StoreFields(archive, kFields, data, SPriceData());
}

}  // namespace

void SPriceData::Load(CKqArchive &archive, int index) {
  LoadSymbol(archive, index, *this);
  if (lines == nullptr) lines = std::make_unique<SSRLines>();
  lines->Load(archive, index);
  property->Load(archive, index);
}

void SPriceData::Store(CKqArchive &archive, int index) const {
  StoreSymbol(archive, index, *this);
  if (lines != nullptr) lines->Store(archive, index);
  property->Store(archive, index);
}

void SPriceData::LoadTheme(CKqArchive &archive, int index) {
  LoadSymbol(archive, index, *this);
  property->Load(archive, index);
}

void SPriceData::StoreTheme(CKqArchive &archive, int index) const {
  StoreSymbol(archive, index, *this);
  property->Store(archive, index);
}

}  // namespace trovenu
