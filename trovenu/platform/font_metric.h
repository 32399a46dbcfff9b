#pragma once

/// \file
/// The measures of a font, which a host needs to lay out labels.

#include <cstdint>

#include "trovenu/platform/export.h"

namespace trovenu {

/// Measures of a font in pixels. Members and layout are those of the record of the same name that Windows
/// fills, so that no client of the library has to include the headers of that system.
struct TEXTMETRIC {
  std::int32_t tmHeight = 0;
  std::int32_t tmAscent = 0;
  std::int32_t tmDescent = 0;
  std::int32_t tmInternalLeading = 0;
  std::int32_t tmExternalLeading = 0;
  std::int32_t tmAveCharWidth = 0;
  std::int32_t tmMaxCharWidth = 0;
  std::int32_t tmWeight = 0;
  std::int32_t tmOverhang = 0;
  std::int32_t tmDigitizedAspectX = 0;
  std::int32_t tmDigitizedAspectY = 0;
  std::uint8_t tmFirstChar = 0;
  std::uint8_t tmLastChar = 0;
  std::uint8_t tmDefaultChar = 0;
  std::uint8_t tmBreakChar = 0;
  std::uint8_t tmItalic = 0;
  std::uint8_t tmUnderlined = 0;
  std::uint8_t tmStruckOut = 0;
  std::uint8_t tmPitchAndFamily = 0;
  std::uint8_t tmCharSet = 0;
};

/// The character set of Korean fonts.
inline constexpr std::uint8_t kHangulCharSet = 129;

/// A font as a host names it. `tenths` is its size in tenths of a point.
struct FontRequest {
  const char *face;
  int tenths;
  std::uint8_t charSet;
};

/// Measures a font. Gives false and leaves the metric alone if there is nothing to measure it on.
using FontMetricSource = bool (*)(const FontRequest &font, TEXTMETRIC &metric);

/// Measures a font by the source of `SetFontMetricSource`, else by the platform: on the desktop's device
/// context under Windows, which fails without a desktop, and by `EstimateFontMetric` where the platform has
/// no such thing.
TROVENU_API bool MeasureFont(const FontRequest &font, TEXTMETRIC &metric);

/// Replaces the platform's measuring for the whole program; null restores it. A host without the desktop of
/// Windows gives its own measures here.
TROVENU_API void SetFontMetricSource(FontMetricSource source);

/// What a fixed-width Korean font of that size measures on a screen of 96 dots an inch: syllables as wide as
/// they are high, letters half of that. Sizes below a pixel count as one, sizes above 4,096 points as that.
/// Always true.
TROVENU_API bool EstimateFontMetric(const FontRequest &font, TEXTMETRIC &metric);

/// The platform's own measuring.
bool MeasureFontOnDesktop(const FontRequest &font, TEXTMETRIC &metric);

}  // namespace trovenu
