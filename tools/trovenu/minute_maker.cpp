#include "tools/trovenu/minute_maker.h"

#include <algorithm>
#include <cstdlib>

#include "tools/trovenu/date_text.h"

namespace trovenu::tool {

namespace {

using std::chrono::days;
using std::chrono::sys_days;
using std::chrono::year_month_day;

constexpr sys_days kFirstDay = std::chrono::year(2024) / 1 / 2;
constexpr int kFirstMinuteOfDay = 9 * 60;
constexpr int kMiddlePrice = 330 * MinuteMaker::kTicksPerPoint;
constexpr int kLowestPrice = MinuteMaker::kTicksPerPoint;
constexpr std::int64_t kFirstOpenInterest = 250'000;
constexpr std::int64_t kLowestOpenInterest = 50'000;
constexpr int kStepsPerBar = 12;
// The larger, the farther prices stray from the middle.
constexpr int kPull = 250'000;
constexpr int kWidestGap = 40;

int DateNumber(sys_days day) {
  const year_month_day date{day};
  return (static_cast<int>(date.year()) * 100 + static_cast<int>(static_cast<unsigned>(date.month()))) * 100 +
         static_cast<int>(static_cast<unsigned>(date.day()));
}

void AppendPrice(std::string &out, int ticks) {
  constexpr int kHundredthsPerTick = 100 / MinuteMaker::kTicksPerPoint;
  const int hundredths = ticks * kHundredthsPerTick;
  out += ',';
  out += std::to_string(hundredths / 100);
  out += '.';
  out += static_cast<char>('0' + hundredths / 10 % 10);
  out += static_cast<char>('0' + hundredths % 10);
}

}  // namespace

MinuteMaker::MinuteMaker(std::uint64_t seed)
    : state_(seed), day_(kFirstDay), price_(kMiddlePrice), openInterest_(kFirstOpenInterest) {}

MinuteMaker::Bar MinuteMaker::Next() {
  if (minute_ == kBarsPerSession) NextSession();
  const int minuteOfDay = kFirstMinuteOfDay + minute_;
  Bar bar{};
  bar.date = DateNumber(day_);
  bar.time = (minuteOfDay / 60 * 100 + minuteOfDay % 60) * 100;
  bar.open = bar.high = bar.low = price_ + Between(-1, 1);
  price_ = bar.open;
  for (int i = 0; i < kStepsPerBar; ++i) {
    price_ += Step();
    bar.high = std::max(bar.high, price_);
    bar.low = std::min(bar.low, price_);
  }
  bar.close = price_;
  bar.volume = NextVolume(bar.high - bar.low);
  bar.amount = (bar.high + bar.low + bar.close) * bar.volume / (3 * kTicksPerPoint);
  const int turned = static_cast<int>(bar.volume / 10);
  openInterest_ = std::max(kLowestOpenInterest, openInterest_ + Between(-turned, turned));
  bar.openInterest = openInterest_;
  ++minute_;
  return bar;
}

const char *MinuteMaker::Header() { return "date,time,open,high,low,close,volume,amount,openinterest\n"; }

void MinuteMaker::AppendLine(std::string &out, const Bar &bar) {
  DateTime dateTime{bar.date, bar.time};
  AppendDate(out, dateTime.Number(), false);
  out[out.rfind(' ')] = ',';
  for (const int price : {bar.open, bar.high, bar.low, bar.close}) AppendPrice(out, price);
  for (const std::int64_t number : {bar.volume, bar.amount, bar.openInterest}) {
    out += ',';
    out += std::to_string(number);
  }
  out += '\n';
}

// A number from 0 to n - 1 from a 64-bit counter whose bits are mixed.
int MinuteMaker::Below(int n) {
  state_ += 0x9E3779B97F4A7C15U;
  std::uint64_t mixed = state_;
  mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9U;
  mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBU;
  mixed ^= mixed >> 31;
  return static_cast<int>((mixed >> 33) % static_cast<std::uint64_t>(n));
}

int MinuteMaker::Step() {
  if (trendSteps_ == 0) {
    trend_ = Between(-1, 1);
    trendSteps_ = Between(30, 90) * kStepsPerBar;
  }
  --trendSteps_;
  int step = Between(-1, 1);
  if (Below(kStepsPerBar) == 0) step += trend_;
  const int stray = price_ - kMiddlePrice;
  if (Below(kPull) < std::abs(stray)) step += stray > 0 ? -1 : 1;
  return price_ + step < kLowestPrice ? 1 : step;
}

std::int64_t MinuteMaker::NextVolume(int range) {
  const int fromEdge = std::min(minute_, kBarsPerSession - 1 - minute_);
  const int usual = 200 + 9000 / (5 + fromEdge) + 20 * range;
  return static_cast<std::int64_t>(usual) * Between(50, 150) / 100;
}

void MinuteMaker::NextSession() {
  minute_ = 0;
  do {
    day_ += days(1);
  } while (std::chrono::weekday(day_).iso_encoding() > 5);
  price_ = std::max(kLowestPrice, price_ + Between(-kWidestGap, kWidestGap));
}

}  // namespace trovenu::tool
