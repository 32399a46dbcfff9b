#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace trovenu::tool {

/// Makes up one-minute bars of an index future, the same ones for the same seed on every platform: all
/// arithmetic is on integers.
///
/// Sessions run from 9:00 to 15:30 with a bar on each minute, both ends included, Monday to Friday from
/// 2024-01-02 on. Prices are whole ticks of 0.05 around 330 and wander in short trends; volume is largest at
/// both ends of a session.
class MinuteMaker {
 public:
  static constexpr int kBarsPerSession = 391;
  static constexpr int kTicksPerPoint = 20;

  struct Bar {
    /// yyyymmdd and hhmmss.
    int date;
    int time;
    /// Prices in ticks.
    int open, high, low, close;
    std::int64_t volume, amount, openInterest;
  };

  explicit MinuteMaker(std::uint64_t seed);

  /// The next bar in time.
  Bar Next();

  /// The header of the text form, and one bar as a line of it.
  static const char *Header();
  static void AppendLine(std::string &out, const Bar &bar);

 private:
  int Below(int n);
  int Between(int least, int most) { return least + Below(most - least + 1); }
  int Step();
  std::int64_t NextVolume(int range);
  void NextSession();

  std::uint64_t state_;
  std::chrono::sys_days day_;
  int minute_ = 0;
  int price_;
  int trend_ = 0;
  int trendSteps_ = 0;
  std::int64_t openInterest_;
};

}  // namespace trovenu::tool
