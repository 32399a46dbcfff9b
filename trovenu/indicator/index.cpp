#include "trovenu/indicator/index.h"

#include <algorithm>

namespace trovenu {
namespace {

bool IsSlot(int slot) { return slot >= 0 && slot < kExpressions; }

}  // namespace

SIndex::SIndex(const char *name, int type) : SIndexProp(name, type) { SetDefaultValue(); }

void SIndex::SetDefaultValue() {
  SetToDefault();
  BlMinMaxChanged = 1;
  BlPreProcess = 1;
  FunctionList = nullptr;
  CandleList = nullptr;
  ShareIndex = -1;
  std::fill_n(CalcStart, kExpressions, -1);
  std::fill_n(CalcCount, kExpressions, -1);
  std::fill_n(reads_, kExpressions, kReadsUnknown);
}

void SIndex::AddData(int slot, double value) {
  if (IsSlot(slot)) ExpData[slot].Add(value);
}

void SIndex::UpdateData(int slot, double value) {
  if (IsSlot(slot)) ExpData[slot].Update(value, 0);
}

void SIndex::ClearData() {
  for (SVector &series : ExpData) series.ClearData();
  ExpDate.ClearData();
  ExtLabels.Clear();
  RealKeys.Clear();
}

void SIndex::SetExpName(int slot, const char *name) {
  if (IsSlot(slot)) ExpName[slot] = name;
}

void SIndex::SetExpression(int slot, const char *text) {
  if (IsSlot(slot)) Expression[slot] = text;
}

void SIndex::SetLineStyle(int slot, int type, unsigned long color, int width, int style) {
  if (!IsSlot(slot)) return;
  DisplayType[slot] = type;
  LineColor[slot] = static_cast<Color>(color);
  LineWidth[slot] = width;
  LineStyle[slot] = style;
}

void SIndex::SetLineCompStyle(int slot, unsigned long up, unsigned long down, const char *upValue,
                              const char *downValue, int method) {
  if (!IsSlot(slot)) return;
  LineUpColor[slot] = static_cast<Color>(up);
  LineDnColor[slot] = static_cast<Color>(down);
  LineUpValue[slot] = upValue;
  LineDnValue[slot] = downValue;
  LineCompMethod[slot] = method;
}

void SIndex::SetBaseLineValue(int slot, double value) {
  if (IsSlot(slot)) YValue[slot] = value;
}

void SIndex::SetBaseLineStyle(unsigned long color, int width, int style) {
  YValueColor = static_cast<Color>(color);
  YValueWidth = width;
  YValueStyle = style;
}

void SIndex::SetShape(int slot, int shape) {
  if (IsSlot(slot)) Shape[slot] = shape;
}

void SIndex::SetScale(int mode) { MinMaxY = mode >= 0 && mode <= 3 ? mode : 0; }

void SIndex::SetUseLog(int use) { LogY = use; }

void SIndex::SetUseInvert(int use) { InvertY = use; }

void SIndex::SetShareIndex(int index) { ShareIndex = index; }

void SIndex::SetUserID(int id) { UserID = id; }

void SIndex::SetMovable(int movable) { BlMovable = movable; }

void SIndex::SetDeletable(int deletable) { BlDeleble = deletable; }

}  // namespace trovenu
