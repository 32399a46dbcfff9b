#include "trovenu/price/chart_pane.h"

#include <algorithm>

#include "trovenu/support/archive.h"
#include "trovenu/support/field_table.h"

namespace trovenu {
namespace {

constexpr const char *kCategory = "Chart";

constexpr Field<SChartProp> kFields[] = {
    {"ChartID", &SChartProp::ChartID, 0},
    {"WidthRatio", &SChartProp::WidthRatio, 1.0},
    {"HeightRatio", &SChartProp::HeightRatio, 1.0},
    {"LeftLabelIndex", &SChartProp::LeftLabelIndex, 0},
    {"RightLabelIndex", &SChartProp::RightLabelIndex, 0},
    {"ChartName", &SChartProp::ChartName, ""},
    {"BlDeleble", &SChartProp::BlDeleble, 1},
    {"BlShowUnit", &SChartProp::BlShowUnit, 0},
    {"BlShow", &SChartProp::BlShow, 1},
};

}  // namespace

SChartItem::~SChartItem() = default;

SChartProp::SChartProp() { SetFieldsToDefault(kFields, *this); }

SChartProp::~SChartProp() {
  const int count = std::min(itemCount, kItems);
  for (int i = 0; i < count; ++i) delete items[i];
}

void SChartProp::Load(CKqArchive &archive, int index) {
  archive.SetCategory(CategoryName(kCategory, index).c_str());
  LoadFields(archive, kFields, *this, SChartProp());
}

void SChartProp::Store(CKqArchive &archive, int index) const {
  archive.SetCategory(CategoryName(kCategory, index).c_str());
  StoreFields(archive, kFields, *this, SChartProp());
}

}  // namespace trovenu
