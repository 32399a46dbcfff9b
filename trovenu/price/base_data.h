#pragma once

#include "trovenu/platform/export.h"
#include "trovenu/support/series.h"

namespace trovenu {

/// The eight bar series of one symbol. They are parallel: position i is the same bar in each, 0 the oldest.
class TROVENU_API SBaseData {
 public:
  SBaseData() = default;
  SBaseData(const SBaseData &other) = default;
  SBaseData &operator=(const SBaseData &other) = default;
  virtual ~SBaseData();

  SVector close;
  SVector open;
  SVector low;
  SVector high;
  SVector volume;
  /// Date numbers: yyyymmdd, or yyyymmddhhmmss for a bar within a day.
  SVector date;
  SVector openInterest;
  /// Traded value.
  SVector amount;
};

}  // namespace trovenu
