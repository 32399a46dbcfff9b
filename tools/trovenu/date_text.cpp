#include "tools/trovenu/date_text.h"

#include <chrono>
#include <cstdint>

#include "tools/trovenu/terminal_text.h"

namespace trovenu::tool {

namespace {

constexpr double kLargestPlainDate = 1e8;
constexpr std::int64_t kTimeDigits = 1'000'000;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Takes the digits at the front of a text.
std::string_view TakeDigits(std::string_view &text) {
  std::size_t n = 0;
  while (n < text.size() && IsDigit(text[n])) ++n;
  const std::string_view digits = text.substr(0, n);
  text.remove_prefix(n);
  return digits;
}

int ToInt(std::string_view digits) {
  int value = 0;
  for (const char c : digits) value = value * 10 + (c - '0');
  return value;
}

bool MakeDate(int year, int month, int day, int &date) {
  using namespace std::chrono;
  const year_month_day calendar{std::chrono::year(year), std::chrono::month(static_cast<unsigned>(month)),
                                std::chrono::day(static_cast<unsigned>(day))};
  if (year < 1000 || !calendar.ok()) return false;
  date = (year * 100 + month) * 100 + day;
  return true;
}

bool MakeTime(int hour, int minute, int second, int &time) {
  if (hour > 23 || minute > 59 || second > 59) return false;
  time = (hour * 100 + minute) * 100 + second;
  return true;
}

// Month and day behind "2024", each led by the same separator.
bool ReadMonthAndDay(std::string_view &rest, int year, int &date) {
  const char separator = rest.front();
  rest.remove_prefix(1);
  const std::string_view month = TakeDigits(rest);
  if (month.empty() || month.size() > 2 || rest.empty() || rest.front() != separator) return false;
  rest.remove_prefix(1);
  const std::string_view day = TakeDigits(rest);
  return !day.empty() && day.size() <= 2 && MakeDate(year, ToInt(month), ToInt(day), date);
}

void AppendTwoDigits(std::string &out, std::int64_t value) {
  out += static_cast<char>('0' + value / 10 % 10);
  out += static_cast<char>('0' + value % 10);
}

}  // namespace

double DateTime::Number() const {
  if (time == kNoTime) return date;
  return static_cast<double>(date * kTimeDigits + time);
}

bool ReadDateTime(std::string_view text, DateTime &dateTime) {
  dateTime = {};
  const std::string_view digits = TakeDigits(text);
  const bool withTime = digits.size() == 12 || digits.size() == 14;
  if (digits.size() == 8 || withTime) {
    const int month = ToInt(digits.substr(4, 2));
    if (!MakeDate(ToInt(digits.substr(0, 4)), month, ToInt(digits.substr(6, 2)), dateTime.date)) return false;
    if (withTime) return text.empty() && ReadTime(digits.substr(8), dateTime.time);
  } else if (digits.size() == 4 && !text.empty() && std::string_view("-/.").find(text.front()) != text.npos) {
    if (!ReadMonthAndDay(text, ToInt(digits), dateTime.date)) return false;
  } else {
    return false;
  }
  if (text.empty()) return true;
  if (text.front() != 'T' && text.front() != 't' && text.front() != ' ') return false;
  return ReadTime(TrimBlanks(text.substr(1)), dateTime.time);
}

bool ReadTime(std::string_view text, int &time) {
  std::string_view first = TakeDigits(text);
  if (text.empty()) {
    if (first.size() < 3 || first.size() > 6) return false;
    int seconds = 0;
    if (first.size() >= 5) {
      seconds = ToInt(first.substr(first.size() - 2));
      first.remove_suffix(2);
    }
    const int hhmm = ToInt(first);
    return MakeTime(hhmm / 100, hhmm % 100, seconds, time);
  }
  if (first.empty() || first.size() > 2 || text.front() != ':') return false;
  text.remove_prefix(1);
  const std::string_view minutes = TakeDigits(text);
  std::string_view seconds = "00";
  if (!text.empty()) {
    if (text.front() != ':') return false;
    text.remove_prefix(1);
    seconds = TakeDigits(text);
  }
  if (minutes.size() != 2 || seconds.size() != 2 || !text.empty()) return false;
  return MakeTime(ToInt(first), ToInt(minutes), ToInt(seconds), time);
}

void AppendDate(std::string &out, double number, bool seconds) {
  const bool withTime = number > kLargestPlainDate;
  const auto whole = static_cast<std::int64_t>(number);
  const std::int64_t date = withTime ? whole / kTimeDigits : whole;
  AppendTwoDigits(out, date / 1'000'000);
  AppendTwoDigits(out, date / 10'000);
  out += '-';
  AppendTwoDigits(out, date / 100);
  out += '-';
  AppendTwoDigits(out, date);
  if (!withTime) return;
  out += ' ';
  AppendTwoDigits(out, whole / 10'000);
  out += ':';
  AppendTwoDigits(out, whole / 100);
  if (!seconds) return;
  out += ':';
  AppendTwoDigits(out, whole);
}

std::string DateText(double number) {
  std::string text;
  AppendDate(text, number, HasSeconds(number));
  return text;
}

bool HasSeconds(double number) {
  return number > kLargestPlainDate && static_cast<std::int64_t>(number) % 100 != 0;
}

}  // namespace trovenu::tool
