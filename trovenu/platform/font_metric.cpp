#include "trovenu/platform/font_metric.h"

#include <algorithm>
#include <atomic>

namespace trovenu {
namespace {

constexpr int kDotsPerInch = 96;
constexpr int kTenthsPerInch = 720;
constexpr int kLargestSize = 40960;
constexpr int kRegularWeight = 400;
constexpr int kFixedPitchModern = 0x30;

std::atomic<FontMetricSource> fontMetricSource{nullptr};

}  // namespace

bool MeasureFont(const FontRequest &font, TEXTMETRIC &metric) {
  const FontMetricSource source = fontMetricSource.load();
  return source != nullptr ? source(font, metric) : MeasureFontOnDesktop(font, metric);
}

void SetFontMetricSource(FontMetricSource source) { fontMetricSource.store(source); }

bool EstimateFontMetric(const FontRequest &font, TEXTMETRIC &metric) {
  const int tenths = std::clamp(font.tenths, 1, kLargestSize);
  const int height = std::max((tenths * kDotsPerInch + kTenthsPerInch / 2) / kTenthsPerInch, 1);
  metric = {};
  metric.tmHeight = height;
  metric.tmDescent = height / 6;
  metric.tmAscent = height - metric.tmDescent;
  metric.tmAveCharWidth = std::max(height / 2, 1);
  metric.tmMaxCharWidth = height;
  metric.tmWeight = kRegularWeight;
  metric.tmDigitizedAspectX = kDotsPerInch;
  metric.tmDigitizedAspectY = kDotsPerInch;
  metric.tmFirstChar = ' ';
  metric.tmLastChar = 0xFE;
  metric.tmDefaultChar = ' ';
  metric.tmBreakChar = ' ';
  metric.tmPitchAndFamily = kFixedPitchModern;
  metric.tmCharSet = font.charSet;
  return true;
}

}  // namespace trovenu
