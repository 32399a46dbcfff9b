#include "trovenu/platform/theme.h"

#include <gtest/gtest.h>

#include <climits>
#include <set>

namespace trovenu {
namespace {

TEST(Theme, ColorsAreInTheLowestByteRed) { EXPECT_EQ(Rgb(0x11, 0x22, 0x33), 0x332211U); }

TEST(Theme, LinesOfOneChartCanBeToldApart) {
  std::set<Color> lines;
  for (int index = 347; index <= 356; ++index) lines.insert(CThemeManager::GetColor(index));
  EXPECT_EQ(lines.size(), 10U);
  EXPECT_NE(CThemeManager::GetColor(343), CThemeManager::GetColor(344));
  EXPECT_NE(CThemeManager::GetColor(330), CThemeManager::GetColor(340));
}

TEST(Theme, HostReplacesAndRestoresColors) {
  const Color first = CThemeManager::GetColor(330);
  const Color last = CThemeManager::GetColor(369);
  CThemeManager::SetColor(330, 0x123456);
  CThemeManager::SetColor(369, 0xFFFFFFFF);
  EXPECT_EQ(CThemeManager::GetColor(330), 0x123456U);
  EXPECT_EQ(CThemeManager::GetColor(369), 0xFFFFFFFFU);
  CThemeManager::ResetColors();
  EXPECT_EQ(CThemeManager::GetColor(330), first);
  EXPECT_EQ(CThemeManager::GetColor(369), last);
}

TEST(Theme, IndexesOutsideTheTableAreBlackAndStaySo) {
  for (const int index : {329, 370, -1, INT_MIN, INT_MAX}) {
    CThemeManager::SetColor(index, 7);
    EXPECT_EQ(CThemeManager::GetColor(index), 0U) << index;
  }
}

}  // namespace
}  // namespace trovenu
