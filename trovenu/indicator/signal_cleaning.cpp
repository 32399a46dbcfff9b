#include <algorithm>
#include <cmath>

#include "trovenu/indicator/index.h"

namespace trovenu {
namespace {

// NaN is no signal.
bool IsSet(const SVector &signal, int bar) {
  const double value = signal[bar];
  return value != 0.0 && !std::isnan(value);
}

// Makes the entries and exits of one side alternate, beginning with an entry.
void Alternate(SVector &entry, SVector &exit) {
  int first = kNoValidBar;
  for (int i = std::max(entry.GetStartIndex(), 0); i < entry.GetSize() && first == kNoValidBar; ++i) {
    if (IsSet(entry, i)) first = i;
  }
  // An exit on the bar of the first entry goes too.
  for (int i = std::max(exit.GetStartIndex(), 0); i <= first && i < exit.GetSize(); ++i) exit[i] = 0.0;

  const int common = std::min(entry.GetSize(), exit.GetSize());
  bool open = true;
  for (int i = MoveIndex(first, 1); i < common; ++i) {
    if (open) {
      entry[i] = 0.0;
      if (IsSet(exit, i)) open = false;
    } else {
      if (IsSet(entry, i)) open = true;
      exit[i] = 0.0;
    }
  }
  // Required: behind the common length a set entry opens nothing.
  for (int i = common; i < entry.GetSize() && open; ++i) entry[i] = 0.0;
  for (int i = common; i < exit.GetSize(); ++i) {
    if (!open) {
      exit[i] = 0.0;
    } else if (IsSet(exit, i)) {
      open = false;
    }
  }
}

}  // namespace

void SIndex::PreProcess() {
  if (IndexType != kSystemIndex || BlPreProcess == 0) return;
  Alternate(ExpData[0], ExpData[1]);
  Alternate(ExpData[2], ExpData[3]);
}

}  // namespace trovenu
