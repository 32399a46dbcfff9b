#include "trovenu/indicator/index_property.h"

#include <span>
#include <type_traits>
#include <variant>

#include "trovenu/platform/code_page_text.h"
#include "trovenu/support/archive.h"
#include "trovenu/support/field_table.h"

namespace trovenu {
namespace {

using P = SIndexProp;

enum class Reset { No, Yes };

// A field with its default, and whether `SetToDefault` sets it.
struct PropertyField : Field<P> {
  Reset reset = Reset::Yes;
};

// An array with the default of its elements. The colour of each element lies `step` behind that of the one
// before in the theme.
template <int kCount>
struct PropertyArray : ElementField<P, kCount> {
  FieldDefault value = "";
  int step = 0;
};

// In the order of the archive, where the arrays come between `kFields` and `kLastFields`.
constexpr PropertyField kFields[] = {
    {{"ChartPeriod", &P::ChartPeriod, 2}},
    {{"ChartCycle", &P::ChartCycle, 1.0}},
    {{"UserID", &P::UserID, -1}, Reset::No},
    {{"SymbolID", &P::SymbolID, 0}},
    {{"ShareIndex", &P::ShareIndex, -1}, Reset::No},
    {{"BlMovable", &P::BlMovable, 1}, Reset::No},
    {{"BlDeleble", &P::BlDeleble, 1}, Reset::No},
    {{"BlPopupDlg", &P::BlPopupDlg, 1}, Reset::No},
    {{"ChartNo", &P::ChartNo, -1}},
    {{"IndexName", &P::IndexName, ""}, Reset::No},
    {{"YValueColor", &P::YValueColor, ThemeColor{357}}},
    {{"YValueStyle", &P::YValueStyle, 0}},
    {{"YValueWidth", &P::YValueWidth, 1}},
    {{"MinMaxY", &P::MinMaxY, 0}},
    {{"UserMax", &P::UserMax, 0.0}},
    {{"UserMin", &P::UserMin, 0.0}},
    {{"InvertY", &P::InvertY, 0}},
    {{"LogY", &P::LogY, 0}},
    {{"IndexType", &P::IndexType, kIndicatorIndex}, Reset::No},
    {{"YScaleType", &P::YScaleType, 0}},
    {{"YAxisCount", &P::YAxisCount, 0}},
    {{"YAxisUnitSize", &P::YAxisUnitSize, 1}},
    {{"YAxisUnitText", &P::YAxisUnitText, ""}},
    {{"YAxisPrecision", &P::YAxisPrecision, 0}},
    {{"YAxisUseComma", &P::YAxisUseComma, 1}},
    {{"BlShow", &P::BlShow, 1}},
    {{"BlShowLegend", &P::BlShowLegend, 1}},
    {{"RealUpdateType", &P::RealUpdateType, 0}},
    {{"ExtID", &P::ExtID, -1}},
};

constexpr PropertyArray<kVariables> kVariableArrays[] = {{{"VarValue", &P::VarValue}}};

constexpr PropertyArray<kExpressions> kLineArrays[] = {
    {{"BlShowLine", &P::BlShowLine}, 1},
    {{"Shape", &P::Shape}, 0},
    {{"DisplayType", &P::DisplayType}, 0},
    {{"LineColor", &P::LineColor}, ThemeColor{347}, 1},
    {{"LineStyle", &P::LineStyle}, 0},
    {{"LineWidth", &P::LineWidth}, 1},
    {{"LineUpColor", &P::LineUpColor}, ThemeColor{345}},
    {{"LineDnColor", &P::LineDnColor}, ThemeColor{346}},
    {{"LineUpValue", &P::LineUpValue}},
    {{"LineDnValue", &P::LineDnValue}},
    {{"LineCompMethod", &P::LineCompMethod}, 0},
    {{"YValue", &P::YValue}},
};

constexpr PropertyField kLastFields[] = {
    {{"ExtData", &P::ExtData, ""}},
    {{"DRAWLV", &P::DRAWLV, 0}},
};

// What comes from the formula table and is in no archive.
constexpr PropertyArray<kVariables> kFormulaVariables[] = {
    {{"VarName", &P::VarName}},
    {{"VarStart", &P::VarStart}},
    {{"VarEnd", &P::VarEnd}},
    {{"VarIncrement", &P::VarIncrement}},
};
constexpr PropertyArray<kExpressions> kFormulaLines[] = {
    {{"ExpName", &P::ExpName}},
    {{"Expression", &P::Expression}},
};
constexpr PropertyField kFormulaFields[] = {
    {{"Description", &P::Description, ""}},
    {{"Password", &P::Password, ""}},
};

// Lines of a trading system and of a pattern pair.
constexpr int kBuyColor = 358;
constexpr int kSellColor = 359;
constexpr int kSignalColors[] = {kBuyColor, kSellColor, kSellColor, kBuyColor};
constexpr Color kBullFill = 0xFFCCFF;
constexpr Color kBearFill = 0xFFECCC;

void ResetFields(std::span<const PropertyField> fields, P &object) {
  for (const PropertyField &field : fields) {
    if (field.reset == Reset::Yes) SetFieldsToDefault(std::span(&field, 1), object);
  }
}

template <int kCount>
void ResetArray(const PropertyArray<kCount> &field, P &object) {
  const auto set = [&](auto member, auto value) {
    using Value = std::remove_reference_t<decltype((object.*member)[0])>;
    using Default = decltype(value);
    for (int i = 0; i < kCount; ++i) {
      Value &element = (object.*member)[i];
      if constexpr (std::is_same_v<Default, ThemeColor>) {
        if constexpr (std::is_same_v<Value, Color>) {
          element = CThemeManager::GetColor(value.index + i * field.step);
        }
      } else if constexpr (std::is_same_v<Default, const char *> == std::is_same_v<Value, SString>) {
        element = static_cast<Value>(value);
      }
    }
  };
  std::visit(set, field.member, field.value);
}

template <class Arrays>
void ResetArrays(const Arrays &arrays, P &object) {
  for (const auto &field : arrays) ResetArray(field, object);
}

constexpr const char *kCategory = "Index";

}  // namespace

SIndexProp::SIndexProp() { SetToDefault(); }

SIndexProp::SIndexProp(const char *name, int type) : IndexName(name), IndexType(type) { SetToDefault(); }

void SIndexProp::SetToDefault() {
  PriceDataList = nullptr;
  ResetFields(kFields, *this);
  ResetArrays(kVariableArrays, *this);
  ResetArrays(kLineArrays, *this);
  ResetFields(kLastFields, *this);
  ResetArrays(kFormulaVariables, *this);
  ResetArrays(kFormulaLines, *this);
  ResetFields(kFormulaFields, *this);
  if (IndexType == kSystemIndex) {
    int line = 0;
    for (const int color : kSignalColors) LineColor[line++] = CThemeManager::GetColor(color);
  } else if (IndexType == kPatternIndex) {
    LineColor[0] = kBullFill;
    LineColor[1] = kBearFill;
  }
}

void SIndexProp::Load(CKqArchive &archive, int index) {
  const SIndexProp defaults;
  archive.SetCategory(CategoryName(kCategory, index).c_str());
  LoadFields(archive, kFields, *this, defaults);
  LoadElements(archive, kVariableArrays, *this, defaults);
  LoadElements(archive, kLineArrays, *this, defaults);
  LoadFields(archive, kLastFields, *this, defaults);
}

void SIndexProp::Store(CKqArchive &archive, int index) const {
  const SIndexProp defaults;
  archive.SetCategory(CategoryName(kCategory, index).c_str());
  StoreFields(archive, kFields, *this, defaults);
  StoreElements(archive, kVariableArrays, *this, defaults);
  StoreElements(archive, kLineArrays, *this, defaults);
  StoreFields(archive, kLastFields, *this, defaults);
}

int SIndexProp::FindRealKey(const char *key) const {
  for (long i = 0; i < RealKeys.GetSize(); ++i) {
    if (EqualNoCase(RealKeys[i].c_str(), key)) return static_cast<int>(i);
  }
  return -1;
}

}  // namespace trovenu
