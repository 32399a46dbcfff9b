#include "trovenu/platform/theme.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <utility>

namespace trovenu {
namespace {

constexpr int kColors = CThemeManager::kLastColor - CThemeManager::kFirstColor + 1;

constexpr std::array<Color, kColors> kDefaultColors = {
    // 330: chart window
    Rgb(255, 255, 255), Rgb(102, 102, 102), Rgb(214, 215, 214), Rgb(51, 51, 51), Rgb(51, 51, 51),
    Rgb(229, 229, 229), Rgb(229, 229, 229), Rgb(192, 192, 192), Rgb(245, 246, 248), Rgb(153, 153, 153),
    Rgb(68, 68, 68),
    // 341, 342: nobody's
    Rgb(0, 0, 0), Rgb(0, 0, 0),
    // 343: rising, falling, above, below
    Rgb(222, 40, 40), Rgb(28, 86, 204), Rgb(222, 40, 40), Rgb(28, 86, 204),
    // 347: lines
    Rgb(232, 62, 88), Rgb(36, 107, 206), Rgb(240, 140, 0), Rgb(43, 158, 82), Rgb(142, 68, 173),
    Rgb(0, 150, 160), Rgb(160, 98, 40), Rgb(216, 27, 140), Rgb(94, 110, 130), Rgb(120, 144, 0),
    // 357: base lines
    Rgb(110, 110, 110),
    // 358: signals and stops
    Rgb(208, 0, 0), Rgb(0, 60, 190), Rgb(214, 112, 0), Rgb(0, 128, 96), Rgb(128, 0, 128), Rgb(0, 118, 140),
    Rgb(128, 96, 0), Rgb(90, 90, 200), Rgb(150, 60, 60), Rgb(196, 0, 112), Rgb(60, 130, 60),
    Rgb(230, 120, 0)};

template <std::size_t... kIndex>
constexpr std::array<std::atomic<Color>, kColors> MakeTable(std::index_sequence<kIndex...>) {
  return {kDefaultColors[kIndex]...};
}

constinit std::array<std::atomic<Color>, kColors> colors = MakeTable(std::make_index_sequence<kColors>());

// Position in the table, or -1.
int PositionOf(int index) {
  return index < CThemeManager::kFirstColor || index > CThemeManager::kLastColor
             ? -1
             : index - CThemeManager::kFirstColor;
}

}  // namespace

Color CThemeManager::GetColor(int index) {
  const int i = PositionOf(index);
  return i < 0 ? 0 : colors[static_cast<std::size_t>(i)].load(std::memory_order_relaxed);
}

void CThemeManager::SetColor(int index, Color color) {
  const int i = PositionOf(index);
  if (i >= 0) colors[static_cast<std::size_t>(i)].store(color, std::memory_order_relaxed);
}

void CThemeManager::ResetColors() {
  for (std::size_t i = 0; i < kDefaultColors.size(); ++i) {
    colors[i].store(kDefaultColors[i], std::memory_order_relaxed);
  }
}

}  // namespace trovenu
