#include "trovenu/price/price_data.h"

#include <algorithm>

#include "trovenu/price/price_columns.h"

namespace trovenu {
namespace {

// A scale mode of one symbol's prices; another symbol has the usual one again.
constexpr int kScaleOfSymbol = 2;
// The first of the theme's colours of lines; each overlay has one of them for all its lines.
constexpr int kFirstLineColor = 347;

template <class Owned>
void CopyOwned(std::unique_ptr<Owned> &target, const std::unique_ptr<Owned> &source, void (Owned::*reset)()) {
  if (source != nullptr) {
    if (target == nullptr) target = std::make_unique<Owned>();
    *target = *source;
  } else if (target != nullptr) {
    (target.get()->*reset)();
  }
}

bool IsCloseLine(const SPriceData &data) { return data.property->PriceChartType == kCloseLineChart; }

// Of equal values the low's, which tells -0.0 from 0.0.
double SmallerOf(double close, double low) { return close < low ? close : low; }

}  // namespace

SPriceData::SPriceData() : property(std::make_unique<SPriceProperty>()), lines(std::make_unique<SSRLines>()) {
  SetToDefault();
}

SPriceData::SPriceData(const SPriceData &other) : SPriceData() { *this = other; }

// NOLINTNEXTLINE(bugprone-unhandled-self-assignment): every member takes an assignment from itself.
SPriceData &SPriceData::operator=(const SPriceData &other) {
  CopyOwned(baseInfo, other.baseInfo, &SBaseInfo::Reset);
  CopyOwned(lines, other.lines, &SSRLines::Clear);
  dataFlag = other.dataFlag;
  hostMark = other.hostMark;
  ID = other.ID;
  SymbolName = other.SymbolName;
  SymbolCode = other.SymbolCode;
  symbolText = other.symbolText;
  RealSymbol = other.RealSymbol;
  ChartCycle = other.ChartCycle;
  ChartPeriod = other.ChartPeriod;
  SBaseData::operator=(other);
  std::ranges::copy(other.insertBuffer, insertBuffer);
  eventDate = other.eventDate;
  eventValue1 = other.eventValue1;
  eventValue2 = other.eventValue2;
  eventPosition = other.eventPosition;
  eventFlag = other.eventFlag;
  TickSize = other.TickSize;
  *property = *other.property;
  std::ranges::copy(other.overlays, overlays);
  showCandle = other.showCandle;
  MarketType = other.MarketType;
  std::ranges::copy(other.hostInts, hostInts);
  hostValue = other.hostValue;
  return *this;
}

SPriceData::~SPriceData() = default;

void SPriceData::SetToDefault() {
  dataFlag = 0;
  hostMark = 0;
  eventFlag = 0;
  showCandle = 1;
  std::ranges::fill(hostInts, 0);
  hostValue = 0.0;
  for (int i = 0; i < kOverlays; ++i) {
    std::ranges::fill(overlays[i].LineColor, CThemeManager::GetColor(kFirstLineColor + i));
  }
}

void SPriceData::ClearData() {
  SetToDefault();
  if (baseInfo != nullptr) baseInfo->Reset();
  ForEachBarSeries(*this, [](SVector &series) { series.ClearData(); });
  if (property->MinMaxY == kScaleOfSymbol) property->MinMaxY = 0;
  for (SIndex &overlay : overlays) {
    for (SVector &series : overlay.ExpData) series.ClearData();
  }
  ClearTempData();
}

void SPriceData::ClearTempData() {
  for (SVector &buffer : insertBuffer) buffer.ClearData();
  eventDate.ClearData();
  eventValue1.ClearData();
  eventValue2.ClearData();
  eventPosition.ClearData();
}

void SPriceData::SetBaseInfoValue(int index, double value) {
  if (index < 0 || index >= SBaseInfo::kSlots) return;
  if (baseInfo == nullptr) baseInfo = std::make_unique<SBaseInfo>();
  baseInfo->slots[index] = value;
}

void SPriceData::SetSRLineValue(int index, double value) {
  if (index < 0 || index >= SSRLines::kLines) return;
  if (lines == nullptr) lines = std::make_unique<SSRLines>();
  lines->SetValue(index, value);
}

void SPriceData::CompressData(int /*count*/) {}

void SPriceData::InitTemp() {
  ForEachBarSeries(*this, [](SVector &series) { series.InitTemp(); });
}

void SPriceData::SetDrawRange(int first, int last) {
  ForEachBarSeries(*this, [=](SVector &series) { series.SetDrawRange(first, last); });
}

void SPriceData::SetMinMaxChanged(int flag) {
  ForEachBarSeries(*this, [=](SVector &series) { series.minMaxChanged = flag; });
}

void SPriceData::GetMax(int first, int last) {
  ForEachBarSeries(*this, [=](const SVector &series) { series.GetMax(first, last, 0); });
}

void SPriceData::GetMin(int first, int last) {
  ForEachBarSeries(*this, [=](const SVector &series) { series.GetMin(first, last, 0); });
}

double SPriceData::GetPriceMax(int first, int last) const {
  const double highest = close.GetMax(first, last, 0);
  return IsCloseLine(*this) ? highest : std::max(highest, high.GetMax(first, last, 0));
}

double SPriceData::GetPriceMin(int first, int last) const {
  const double lowest = close.GetMin(first, last, 0);
  return IsCloseLine(*this) ? lowest : SmallerOf(lowest, low.GetMin(first, last, 0));
}

double SPriceData::GetPriceMax() const {
  const double highest = close.GetMax();
  return IsCloseLine(*this) ? highest : std::max(highest, high.GetMax());
}

double SPriceData::GetPriceMin() const {
  const double lowest = close.GetMin();
  return IsCloseLine(*this) ? lowest : SmallerOf(lowest, low.GetMin());
}

double SPriceData::GetPriceMaxTemp(int first, int last) const {
  return std::max(close.GetMaxTemp(first, last), high.GetMaxTemp(first, last));
}

double SPriceData::GetPriceMinTemp(int first, int last) const {
  return SmallerOf(close.GetMinTemp(first, last), low.GetMinTemp(first, last));
}

}  // namespace trovenu
