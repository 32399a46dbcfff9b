#include <algorithm>
#include <iterator>

#include "trovenu/price/sr_lines.h"
#include "trovenu/support/korean.h"

namespace trovenu {
namespace {

constexpr const char *kLineNames[] = {
    "전일 시가"_kr,     "전일 고가"_kr,     "전일 저가"_kr,     "전일 종가"_kr,     "당일 시가"_kr,
    "당일 고가"_kr,     "당일 저가"_kr,     "당일 시고저/3"_kr, "상한가"_kr,        "하한가"_kr,
    "금주 시가"_kr,     "금주 고가"_kr,     "금주 저가"_kr,     "금월 시가"_kr,     "금월 고가"_kr,
    "금월 저가"_kr,     "피봇기준선"_kr,    "피봇1차저항선"_kr, "피봇2차저항선"_kr, "피봇1차지지선"_kr,
    "피봇2차지지선"_kr, "디마크기준선"_kr,  "디마크고가"_kr,    "디마크저가"_kr,    "사용자지정값1"_kr,
    "사용자지정값2"_kr, "사용자지정값3"_kr, "사용자지정값4"_kr,
};
static_assert(std::size(kLineNames) == SSRLines::kLines);

constexpr const char *kUpward = "상향돌파"_kr;
constexpr const char *kDownward = "하향돌파"_kr;

SSRLines::Crossing CrossingOf(double level, double before, double now) {
  if (level > before && level <= now) return SSRLines::kCrossedUpward;
  if (level < before && level >= now) return SSRLines::kCrossedDownward;
  return SSRLines::kNotCrossed;
}

}  // namespace

const char *SSRLines::LineName(int index) { return index < 0 || index >= kLines ? "" : kLineNames[index]; }

void SSRLines::Calc() {
  std::ranges::fill(ShowAlert, kNotCrossed);
  if (close == 0.0 || previousClose == 0.0) return;
  for (int i = 0; i < kLines; ++i) {
    if (ShowLine[i] != 0) ShowAlert[i] = CrossingOf(LineValue[i], previousClose, close);
  }
}

CString SSRLines::GetAlertMessage(int index) const {
  if (index < 0 || index >= kLines || ShowAlarmDlg == 0 || ShowLine[index] == 0) return {};
  if (ShowAlert[index] == kCrossedUpward) return CString(kLineNames[index]) + " " + kUpward;
  if (ShowAlert[index] == kCrossedDownward) return CString(kLineNames[index]) + " " + kDownward;
  return {};
}

}  // namespace trovenu
