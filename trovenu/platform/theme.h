#pragma once

/// \file
/// The colours of the theme, from which everything that has a look takes its defaults.

#include <cstdint>

#include "trovenu/platform/export.h"

namespace trovenu {

/// A colour as 0x00BBGGRR: red in the lowest byte.
using Color = std::uint32_t;

/// The colour of its parts, each 0 to 255.
constexpr Color Rgb(unsigned red, unsigned green, unsigned blue) {
  return static_cast<Color>(red | green << 8 | blue << 16);
}

/// The table of theme colours, one for the whole program. Objects look a colour up when they are set to their
/// defaults; a later change of the table leaves them alone. Any thread may read and write at any time.
///
/// Indexes 330 to 340 belong to the chart window, 343 to 369 to prices, lines and stops:
///
/// | index | colour of |
/// |---|---|
/// | 330, 331, 332 | background, cross line, border and grid |
/// | 333, 334 | labels, base font |
/// | 335, 336, 337 | horizontal grid, vertical grid, line between days |
/// | 338, 339, 340 | background, line and font of the axes |
/// | 343, 344 | rising and falling prices |
/// | 345, 346 | line above and below the value that it is compared with |
/// | 347 to 356 | lines, one after the other |
/// | 357 | base lines, counter-clock chart |
/// | 358 | buy signals, profit target |
/// | 359 | sell signals, minimum variation stop |
/// | 360 to 364, 366, 368 | spare signals and stops |
/// | 365, 367, 369 | day trading stop, money management stop, risk trailing stops |
class TROVENU_API CThemeManager {
 public:
  static constexpr int kFirstColor = 330;
  static constexpr int kLastColor = 369;

  /// The colour of that index; 0 (black) for an index outside the table.
  static Color GetColor(int index);
  /// Replaces one colour; an index outside the table is ignored.
  static void SetColor(int index, Color color);
  /// Restores the library's own table.
  static void ResetColors();
};

}  // namespace trovenu
