#pragma once

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "trovenu/support/series.h"

namespace trovenu {

inline constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
inline constexpr double kInfinity = std::numeric_limits<double>::infinity();
inline constexpr int kLeastInt = std::numeric_limits<int>::min();
inline constexpr int kGreatestInt = std::numeric_limits<int>::max();

inline std::uint64_t Bits(double x) { return std::bit_cast<std::uint64_t>(x); }

/// Equal bits, or NaN both.
inline bool Same(double a, double b) { return Bits(a) == Bits(b) || (a != a && b != b); }

inline SVector Series(const std::vector<double> &values, int start = 0) {
  SVector series(static_cast<int>(values.size()));
  for (int i = 0; i < series.size; ++i) series[i] = values[static_cast<std::size_t>(i)];
  series.SetStartIndex(start);
  return series;
}

inline std::vector<double> Elements(const SVector &series) {
  return {series.data, series.data + series.size};
}

/// Size, start index, kind and the valid elements alike; those below the start index hold 0.0 in `got`.
inline void ExpectSeries(const SVector &got, const std::vector<double> &want, int start) {
  EXPECT_NE(got.isSeries, 0);
  EXPECT_EQ(got.startIndex, start);
  ASSERT_EQ(got.size, static_cast<int>(want.size()));
  for (int i = 0; i < got.size; ++i) {
    const double element = i < start ? 0.0 : want[static_cast<std::size_t>(i)];
    EXPECT_TRUE(Same(got.data[i], element)) << "[" << i << "] " << got.data[i] << " is not " << element;
  }
}

/// Two series of the same fields and the same bits in every element.
inline void ExpectSameSeries(const SVector &got, const SVector &want) {
  EXPECT_EQ(got.isSeries != 0, want.isSeries != 0);
  EXPECT_EQ(got.startIndex, want.startIndex);
  ASSERT_EQ(got.size, want.size);
  for (int i = 0; i < got.size; ++i) {
    ASSERT_TRUE(Same(got.data[i], want.data[i]))
        << "[" << i << "] " << got.data[i] << " is not " << want.data[i];
  }
}

/// What holds for every series at any time.
inline void ExpectSound(const SVector &series) {
  EXPECT_GE(series.capacity, 1);
  EXPECT_GE(series.size, 0);
  EXPECT_LE(series.size, series.capacity);
  EXPECT_NE(series.data, nullptr);
  EXPECT_EQ(series.reallocBuffer, series.data);
  EXPECT_TRUE(series.isSeries != 0 || series.size == 1);
}

/// Bars of a price that moves up to `step` a bar from 1000.
inline std::vector<double> RandomWalk(int bars, double step, unsigned seed = 1) {
  std::mt19937 random(seed);
  std::uniform_real_distribution<double> move(-step, step);
  std::vector<double> walk;
  double price = 1000.0;
  for (int i = 0; i < bars; ++i) walk.push_back(price += move(random));
  return walk;
}

/// Leaves blocks behind in the pool that are full of a number, so that whoever reads what it has not written
/// gets that number.
inline void SpoilPool(int elements) {
  std::vector<SVector> spoilt(4, SVector(elements));
  for (SVector &series : spoilt) series.InitValue(6.6e66);
}

/// Counts what series report while it lives, and keeps the last text.
class ErrorTrap {
 public:
  ErrorTrap() {
    count_ = 0;
    last_.clear();
    SVector::SetErrorHandler([](const char *text) {
      ++count_;
      last_ = text;
    });
  }
  ErrorTrap(const ErrorTrap &) = delete;
  ErrorTrap &operator=(const ErrorTrap &) = delete;
  ~ErrorTrap() { SVector::SetErrorHandler(nullptr); }
  int Count() const { return count_; }
  const std::string &Last() const { return last_; }

 private:
  static inline int count_ = 0;
  static inline std::string last_;
};

/// Runs `work` on a thread of its own, whose pool is empty.
template <class Work>
void OnFreshThread(Work work) {
  std::thread(std::move(work)).join();
}

}  // namespace trovenu
