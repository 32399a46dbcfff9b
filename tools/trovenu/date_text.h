#pragma once

#include <string>
#include <string_view>

namespace trovenu::tool {

/// A calendar date and, where a text gives one, a time of day.
struct DateTime {
  static constexpr int kNoTime = -1;

  /// yyyymmdd.
  int date = 0;
  /// hhmmss, or `kNoTime`.
  int time = kNoTime;

  /// The library's date number: yyyymmdd, with a time yyyymmddhhmmss.
  double Number() const;
};

/// Reads a date with or without a time: 20240102, 2024-01-02, 2024/01/02, 2024.01.02, behind it "T" or blanks
/// and a time as `ReadTime` knows it; also 202401020901 and 20240102090100. False for anything else, dates
/// that are not in the calendar and years before 1000 included.
bool ReadDateTime(std::string_view text, DateTime &dateTime);

/// Reads a time of day: 09:01, 09:01:00, 0901, 090100, each also without its leading zero. False for anything
/// else.
bool ReadTime(std::string_view text, int &time);

/// Appends a date number as 2024-01-02, with a time as 2024-01-02 09:01, and 2024-01-02 09:01:30 if
/// `seconds`.
void AppendDate(std::string &out, double number, bool seconds);

/// A date number as `AppendDate` writes it, with seconds where it has some.
std::string DateText(double number);

/// True for a date number whose time has seconds.
bool HasSeconds(double number);

}  // namespace trovenu::tool
