#include "trovenu/price/price_columns.h"

namespace trovenu {
namespace {

// The field code of each insert buffer.
constexpr int kInsertOrder[SPriceData::kFieldCodes] = {
    SPriceData::kClose,     SPriceData::kOpen,        SPriceData::kLow,          SPriceData::kHigh,
    SPriceData::kVolume,    SPriceData::kDate,        SPriceData::kOpenInterest, SPriceData::kAmount,
    SPriceData::kEventDate, SPriceData::kEventValue1, SPriceData::kEventValue2,
};

constexpr bool IsOwnInverse() {
  for (int i = 0; i < SPriceData::kFieldCodes; ++i) {
    if (kInsertOrder[kInsertOrder[i]] != i) return false;
  }
  return true;
}
static_assert(IsOwnInverse(), "the table gives the buffer of a code as well");

bool IsField(int code, int fields) { return code >= 0 && code < fields; }

// Position of the bar `back` places before the newest, or -1.
int PositionFromNewest(const SVector &series, int back) {
  return back < 0 || back >= series.GetSize() ? -1 : series.GetSize() - 1 - back;
}

}  // namespace

void SPriceData::AddData(int code, double value) {
  if (!IsField(code, kFieldCodes)) return;
  (this->*kPriceSeries[code]).Add(value);
  if (code == kClose) dataFlag = 1;
  if (code >= kEventDate) eventFlag = 1;
}

void SPriceData::InsertData(int code, double value) {
  if (!IsField(code, kFieldCodes)) return;
  insertBuffer[kInsertOrder[code]].Add(value);
  if (code == kClose) dataFlag = 1;
  if (code >= kEventDate) eventFlag = 1;
}

void SPriceData::InsertDataEnd() {
  eventFlag = 1;
  for (int i = 0; i < kFieldCodes; ++i) (this->*kPriceSeries[kInsertOrder[i]]).Insert(insertBuffer[i]);
  for (SVector &buffer : insertBuffer) buffer.ClearData();
}

void SPriceData::UpdateData(int code, double value, int back) {
  if (!IsField(code, kBarFields)) return;
  SVector &series = this->*kPriceSeries[code];
  const int position = PositionFromNewest(series, back);
  if (position >= 0) series[position] = value;
}

double SPriceData::GetData(int code, int back) const {
  if (!IsField(code, kBarFields)) return 0.0;
  const SVector &series = this->*kPriceSeries[code];
  return series[PositionFromNewest(series, back)];
}

void SPriceData::CalcCorrectedPrice(int /*unused1*/, int /*unused2*/) {
  eventPosition.ClearData();
  int position = 0;
  for (int i = 0; i < eventDate.GetSize(); ++i) {
    // Required: an event without a bar hands its negative result to the next search.
    position = date.FindPos(eventDate[i], position);
    eventPosition.Add(position < 0 ? -1.0 : position);
  }
}

}  // namespace trovenu
