#include "trovenu/platform/font_metric.h"

namespace trovenu {

bool MeasureFontOnDesktop(const FontRequest &font, TEXTMETRIC &metric) {
  return EstimateFontMetric(font, metric);
}

}  // namespace trovenu
