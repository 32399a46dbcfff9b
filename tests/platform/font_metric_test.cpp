#include "trovenu/platform/font_metric.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>

namespace trovenu {
namespace {

FontRequest asked;

bool Measure(const FontRequest &font, TEXTMETRIC &metric) {
  asked = font;
  metric.tmHeight = 77;
  return true;
}

TEST(FontMetric, EstimatesAScreenOf96DotsAnInch) {
  TEXTMETRIC metric;
  EXPECT_TRUE(EstimateFontMetric({"", 90, kHangulCharSet}, metric));
  EXPECT_EQ(metric.tmHeight, 12);  // 9 points of 1/72 inch
  EXPECT_EQ(metric.tmAscent + metric.tmDescent, 12);
  EXPECT_EQ(metric.tmAveCharWidth, 6);
  EXPECT_EQ(metric.tmMaxCharWidth, 12);
  EXPECT_EQ(metric.tmCharSet, 129);
}

TEST(FontMetric, AnySizeGivesAFont) {
  for (const int tenths : {INT_MIN, -1, 0, 1, INT_MAX}) {
    TEXTMETRIC metric;
    EXPECT_TRUE(EstimateFontMetric({nullptr, tenths, 0}, metric));
    EXPECT_GE(metric.tmHeight, 1) << tenths;
    EXPECT_GE(metric.tmAveCharWidth, 1) << tenths;
  }
}

TEST(FontMetric, HostReplacesTheSource) {
  TEXTMETRIC metric;
  SetFontMetricSource(Measure);
  EXPECT_TRUE(MeasureFont({"face", 105, 1}, metric));
  SetFontMetricSource(nullptr);
  EXPECT_EQ(metric.tmHeight, 77);
  EXPECT_EQ(std::string(asked.face), "face");
  EXPECT_EQ(asked.tenths, 105);
  EXPECT_EQ(asked.charSet, 1);
}

}  // namespace
}  // namespace trovenu
