#include "trovenu/price/price_property.h"

#include <algorithm>
#include <iterator>
#include <span>

#include "trovenu/support/archive.h"
#include "trovenu/support/field_table.h"
#include "trovenu/support/korean.h"
#include "trovenu/support/price_steps.h"

namespace trovenu {
namespace {

// What the settings of a chart type offer.
enum Offers : unsigned {
  kWhiteColor = 1,
  kBlackColor = 2,
  kFills = 4,
  kVolumeAtPrice = 8,
  kVolumeDisp = 16,
  kOption1 = 32,
  kOption2 = 64,
  kColors = kWhiteColor | kBlackColor,
};

struct Look {
  // Indexes of the theme; 0 is black.
  int white = 343;
  int black = 344;
  int whiteFill = 1;
  int blackFill = 1;
  // Index of the theme, or 0 for `volumeAtPriceColor`.
  int volumeAtPrice = 0;
  Color volumeAtPriceColor = Rgb(0xCC, 0xFF, 0x99);
};

constexpr Look kUsualLook;
constexpr Look kOneColor = {.white = 357, .black = 357};
constexpr Look kHollow = {.whiteFill = 0};
constexpr Look kVolumeAsRising = {.volumeAtPrice = 343};
constexpr Look kNoLook = {.white = 0, .black = 0, .whiteFill = 0, .blackFill = 0, .volumeAtPriceColor = 0};

struct Option {
  const char *name;
  const char *value;
};

struct ChartTypeRow {
  const char *name;
  Option option1;
  Option option2;
  unsigned offers;
  Look look = kUsualLook;
};

constexpr Option kVolumes = {"매물대 수"_kr, "10"};
constexpr Option kNameless = {"", "0"};
constexpr Option kBlank = {" ", "0"};

constexpr ChartTypeRow kChartTypes[] = {
    {"봉차트"_kr, kVolumes, kBlank, kColors | kFills | kOption1},
    {"바차트(시고저종)"_kr, kVolumes, kBlank, kColors | kOption1},
    {"바차트(고저종)"_kr, kVolumes, kBlank, kColors | kOption1},
    {"종가선차트"_kr, kVolumes, kBlank, kWhiteColor | kOption1},
    {"매물대차트"_kr, kVolumes, kBlank, kColors | kFills | kVolumeAtPrice | kVolumeDisp | kOption1},
    {"P&F차트"_kr, {"칸전환"_kr, "3"}, kNameless, kColors | kOption1 | kOption2},
    {"삼선전환도"_kr, {"칸전환"_kr, "3"}, kNameless, kColors | kFills | kOption1},
    {"Swing차트"_kr, {"최소반전폭"_kr, "3"}, kNameless, kColors | kOption1},
    {"Kagi차트"_kr, {"최소반전폭"_kr, "3"}, kNameless, kColors | kOption1},
    {"Renko차트"_kr, {"최소변화폭"_kr, "3"}, kNameless, kColors | kFills | kOption1},
    {"역시계곡선"_kr, {"이동평균"_kr, "25"}, kNameless, kOption1, kOneColor},
    {"CandleVolume차트"_kr, kNameless, kNameless, kColors | kFills},
    {"EquiVolume차트"_kr, kNameless, kNameless, kColors | kFills, kHollow},
    {"Flow차트"_kr, kVolumes, kNameless, kWhiteColor | kOption1},
    {"분산형차트"_kr, kNameless, kNameless, kColors},
    {"그물망차트"_kr, {"시작값"_kr, "10"}, {"", "10"}, kColors | kFills | kOption1 | kOption2},
    {"ZigZag차트"_kr,
     {"전환비율"_kr, "5"},
     kNameless,
     kColors | kFills | kVolumeAtPrice | kOption1,
     kVolumeAsRising},
    {"마켓프로파일"_kr, {"분간격"_kr, "30"}, kNameless, kOption1, kNoLook},
};
static_assert(std::size(kChartTypes) == kPriceChartTypes);

// In the order of the archive. The first four make the style, the first eleven are the user's settings.
using Property = SPriceProperty;
constexpr std::size_t kStyleTables = 4;
constexpr std::size_t kSettingTables = 11;
constexpr ElementField<SPriceProperty, kPriceChartTypes> kTables[] = {
    {"WhiteLineColor", &Property::WhiteLineColor},
    {"WhiteLineFill", &Property::WhiteLineFill},
    {"BlackLineColor", &Property::BlackLineColor},
    {"BlackLineFill", &Property::BlackLineFill},
    {"VolumeAtPriceColor", &Property::VolumeAtPriceColor},
    {"Name1", &Property::Name1},
    {"Value1", &Property::Value1},
    {"Name2", &Property::Name2},
    {"Value2", &Property::Value2},
    {"Default1", &Property::Default1},
    {"Default2", &Property::Default2},
    {"BlWhiteLineColor", &Property::BlWhiteLineColor},
    {"BlWhiteLineFill", &Property::BlWhiteLineFill},
    {"BlBlackLineColor", &Property::BlBlackLineColor},
    {"BlBlackLineFill", &Property::BlBlackLineFill},
    {"BlVolumeAtPrice", &Property::BlVolumeAtPrice},
    {"BlVolumeDisp", &Property::BlVolumeDisp},
    {"BlName1", &Property::BlName1},
    {"BlValue1", &Property::BlValue1},
    {"BlName2", &Property::BlName2},
    {"BlValue2", &Property::BlValue2},
};

constexpr Field<SPriceProperty> kScale128[] = {{"BlUse128Scale", &Property::Use128Scale, 0}};

constexpr Field<SPriceProperty> kFields[] = {
    {"MinMaxY", &Property::MinMaxY, 0},
    {"UserMin", &Property::UserMin, 0.0},
    {"UserMax", &Property::UserMax, 0.0},
    {"LogY", &Property::LogY, 0},
    {"InvertY", &Property::InvertY, 0},
    {"ShowLH", &Property::ShowLH, 0},
    {"ShowLC", &Property::ShowLC, 1},
    {"ShowHC", &Property::ShowHC, 1},
    {"PriceChartType", &Property::PriceChartType, kCandleChart},
    {"LineStyle", &Property::LineStyle, 0},
    {"LineThick", &Property::LineThick, 1},
    {"LineCompare", &Property::LineCompare, 0},
};

constexpr ElementField<SPriceProperty, 4> kBaseLines = {"ShowBaseLine", &Property::ShowBaseLine};

Color ThemeColorOr(int index, Color color) { return index == 0 ? color : CThemeManager::GetColor(index); }

// A share of a reference price as a valid price step.
double StepOf(double price, double share) { return GetNewTickValue(price * share); }

constexpr double kPointAndFigureShare = 0.02;
constexpr double kReversalShare = 0.05;
constexpr double kRenkoShare = 0.04;

// The options that are a step of the price.
void SetSteps(SString (&first)[kPriceChartTypes], SString (&second)[kPriceChartTypes], double price) {
  second[kPointAndFigureChart] = StepOf(price, kPointAndFigureShare);
  first[kSwingChart] = StepOf(price, kReversalShare);
  first[kKagiChart] = StepOf(price, kReversalShare);
  first[kRenkoChart] = StepOf(price, kRenkoShare);
}

constexpr const char *kCategory = "PriceProperty";

}  // namespace

const char *PriceChartTypeName(int type) {
  return type < 0 || type >= kPriceChartTypes ? "" : kChartTypes[type].name;
}

SPriceProperty::SPriceProperty() {
  initFlag = 1;
  SetToDefault();
  initFlag = 0;
}

SPriceProperty::SPriceProperty(const SPriceProperty &other) : SPriceProperty() { *this = other; }

// NOLINTNEXTLINE(bugprone-unhandled-self-assignment): every member takes an assignment from itself.
SPriceProperty &SPriceProperty::operator=(const SPriceProperty &other) {
  Use128Scale = other.Use128Scale;
  initFlag = other.initFlag;
  std::ranges::fill(ShowBaseLine, 0);
  CopyElements(std::span(kTables).first(kSettingTables), *this, other);
  std::ranges::copy(other.BlVolumeDisp, BlVolumeDisp);
  CopyFields(kFields, *this, other);
  return *this;
}

void SPriceProperty::SetToDefault() {
  SetFieldsToDefault(kScale128, *this);
  std::ranges::fill(ShowBaseLine, 0);
  for (int type = 0; type < kPriceChartTypes; ++type) {
    const ChartTypeRow &row = kChartTypes[type];
    WhiteLineColor[type] = ThemeColorOr(row.look.white, 0);
    WhiteLineFill[type] = row.look.whiteFill;
    BlackLineColor[type] = ThemeColorOr(row.look.black, 0);
    BlackLineFill[type] = row.look.blackFill;
    VolumeAtPriceColor[type] = ThemeColorOr(row.look.volumeAtPrice, row.look.volumeAtPriceColor);
    Name1[type] = row.option1.name;
    Value1[type] = Default1[type] = row.option1.value;
    Name2[type] = row.option2.name;
    Value2[type] = Default2[type] = row.option2.value;
    const auto offers = [&row](Offers item) { return (row.offers & item) != 0 ? 1 : 0; };
    BlWhiteLineColor[type] = offers(kWhiteColor);
    BlWhiteLineFill[type] = BlBlackLineFill[type] = offers(kFills);
    BlBlackLineColor[type] = offers(kBlackColor);
    BlVolumeAtPrice[type] = offers(kVolumeAtPrice);
    BlVolumeDisp[type] = offers(kVolumeDisp);
    BlName1[type] = BlValue1[type] = offers(kOption1);
    BlName2[type] = BlValue2[type] = offers(kOption2);
  }
  SetFieldsToDefault(kFields, *this);
}

int SPriceProperty::CompStyle(const SPriceProperty &other) const {
  return EqualElements(std::span(kTables).first(kStyleTables), *this, other) ? 1 : 0;
}

void SPriceProperty::AssignStyle(const SPriceProperty &other) {
  CopyElements(std::span(kTables).first(kStyleTables), *this, other);
}

void SPriceProperty::SetValue(double price) { SetSteps(Value1, Value2, price); }

void SPriceProperty::SetDefaultOptionValue(double price) {
  for (int type = kVolumeAtPriceChart; type <= kCounterClockChart; ++type) {
    Default1[type] = kChartTypes[type].option1.value;
    Default2[type] = kChartTypes[type].option2.value;
  }
  Default1[kNetChart] = kChartTypes[kNetChart].option1.value;
  Default2[kNetChart] = kChartTypes[kNetChart].option2.value;
  Default1[kMarketProfileChart] = kChartTypes[kMarketProfileChart].option1.value;
  SetSteps(Default1, Default2, price);
}

void SPriceProperty::Load(CKqArchive &archive, int index) {
  const SPriceProperty defaults;
  archive.SetCategory(CategoryName(kCategory, index).c_str());
  LoadFields(archive, kScale128, *this, defaults);
  for (int i = 0; i < kBaseLines.kElements; ++i) {
    LoadElement(archive, NumberedKey(kBaseLines.key, i).c_str(), kBaseLines, i, *this, defaults);
  }
  LoadElements(archive, kTables, *this, defaults);
  LoadFields(archive, kFields, *this, defaults);
}

void SPriceProperty::Store(CKqArchive &archive, int index) const {
  const SPriceProperty defaults;
  archive.SetCategory(CategoryName(kCategory, index).c_str());
  StoreFields(archive, kScale128, *this, defaults);
  for (int i = 0; i < kBaseLines.kElements; ++i) {
    StoreElement(archive, NumberedKey(kBaseLines.key, i).c_str(), kBaseLines, i, *this, defaults);
  }
  StoreElements(archive, kTables, *this, defaults);
  StoreFields(archive, kFields, *this, defaults);
}

}  // namespace trovenu
