#pragma once

#include "trovenu/platform/export.h"

namespace trovenu {

/// Ten values of the host that travel with an `SPriceData`. Nothing in the library reads them.
class TROVENU_API SBaseInfo {
 public:
  static constexpr int kSlots = 10;

  /// All slots hold -1.0.
  SBaseInfo() { Reset(); }
  SBaseInfo(const SBaseInfo &other) = default;
  SBaseInfo &operator=(const SBaseInfo &other) = default;
  virtual ~SBaseInfo();

  /// Sets all slots to -1.0.
  void Reset();

  double slots[kSlots];
};

}  // namespace trovenu
