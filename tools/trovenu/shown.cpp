#include "tools/trovenu/shown.h"

#include "tools/trovenu/date_text.h"
#include "tools/trovenu/table_output.h"

namespace trovenu::tool {

std::string ShownText(const Shown &shown) {
  if (!shown) return "no value";
  std::string text;
  AppendNumber(text, *shown);
  return text;
}

std::string BarText(const Bars &bars, int bar) {
  return DateText(bars[BarField::Date][bar]) + " (bar " + std::to_string(bar) + ")";
}

}  // namespace trovenu::tool
