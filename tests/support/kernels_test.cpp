#include "trovenu/support/kernels/kernels.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numeric>
#include <string_view>
#include <vector>

#include "tests/support/series_tools.h"

namespace trovenu {
namespace {

using Values = std::vector<double>;

struct Windowed {
  const char *name;
  void (*run)(const Kernels &, const Values &x, const Values &y, int from, int n, Values &out);
};

template <WindowKernel Kernels::*kKernel>
void Run(const Kernels &kernels, const Values &x, const Values &, int from, int n, Values &out) {
  (kernels.*kKernel)(x.data(), from, static_cast<int>(x.size()), n, out.data());
}

constexpr Windowed kWindowed[] = {
    {"sum", Run<&Kernels::sum>},
    {"mean", Run<&Kernels::mean>},
    {"weighted mean", Run<&Kernels::weightedMean>},
    {"highest", Run<&Kernels::highest>},
    {"lowest", Run<&Kernels::lowest>},
    {"deviation", Run<&Kernels::deviation>},
    {"slope", Run<&Kernels::lineSlope>},
    {"fit", Run<&Kernels::lineFit>},
    {"value",
     [](const Kernels &kernels, const Values &x, const Values &, int from, int n, Values &out) {
       kernels.lineValue(x.data(), from, static_cast<int>(x.size()), n, 0.5 * n - 2.5, out.data());
     }},
    {"correlation",
     [](const Kernels &kernels, const Values &x, const Values &y, int from, int n, Values &out) {
       kernels.correlation(x.data(), y.data(), from, static_cast<int>(x.size()), n, out.data());
     }},
};

// Takes the build for as long as it lives, then the one that was in use before.
class Using {
 public:
  explicit Using(Instructions instructions) : available(UseInstructions(instructions)) {}
  Using(const Using &) = delete;
  Using &operator=(const Using &) = delete;
  ~Using() { UseInstructions(before_); }
  const bool available;

 private:
  const Instructions before_ = InstructionsInUse();
};

std::vector<int> Periods() {
  std::vector<int> periods(80);
  std::iota(periods.begin(), periods.end(), 1);
  periods.insert(periods.end(), {100, 127, 200, 333, 512, 513, 700});
  return periods;
}

Values Windows(const Windowed &w, const Values &x, const Values &y, int from, int n) {
  Values out(x.size());
  w.run(ActiveKernels(), x, y, from, n, out);
  return out;
}

// With a stretch of equal elements, halves that repeat exactly, zeros of both signs, and what is no number.
Values Awkward(unsigned seed) {
  Values x = RandomWalk(720, 3.0, seed);
  for (std::size_t i = 0; i < 150; ++i) x[i] = std::round(x[i]);
  std::fill(x.begin() + 200, x.begin() + 290, 0.1);
  for (std::size_t i = 300; i < 320; ++i) x[i] = i % 3 == 0 ? -0.0 : 0.0;
  x[400] = kNaN;
  x[460] = kInfinity;
  x[500] = -kInfinity;
  x[501] = kNaN;
  return x;
}

TEST(Kernels, GiveTheSameBitsInBothBuildsFromEveryBarOn) {
  const Values x = Awkward(1);
  const Values y = Awkward(2);
  const Using wide(Instructions::Avx2);
  if (!wide.available) GTEST_SKIP() << "no second build";
  for (const Windowed &w : kWindowed) {
    for (const int n : Periods()) {
      const Values whole = Windows(w, x, y, n - 1, n);
      const Using baseline(Instructions::Baseline);
      // A window that begins at bar 0, 1 and so on; then only the last ones.
      for (int first = 0; first + n <= 720; first += first < 9 ? 1 : first + n < 710 ? 37 : 1) {
        const Values part = Windows(w, x, y, first + n - 1, n);
        for (std::size_t i = static_cast<std::size_t>(first + n - 1); i < x.size(); ++i) {
          ASSERT_TRUE(Same(part[i], whole[i])) << w.name << " n " << n << " from " << first << " bar " << i
                                               << ": " << part[i] << ", " << whole[i];
        }
      }
    }
  }
}

// What runs from its first bar on: both builds alike, and no value depends on newer bars.
TEST(Kernels, WalkAlikeInBothBuildsHoweverManyBarsFollow) {
  const Values x = RandomWalk(300, 3.0, 4);
  Values high = x;
  Values low = x;
  const Values spread = RandomWalk(300, 2.0, 5);
  for (std::size_t i = 0; i < x.size(); ++i) {
    high[i] += std::fabs(spread[i] - 1000.0);
    low[i] -= std::fabs(spread[i] - 1001.0);
  }
  const auto run = [&](Instructions instructions, int what, int to) {
    const Using build(instructions);
    const Kernels &kernels = ActiveKernels();
    Values out(x.size(), -1.0);
    const int n = 1 + what / 4;
    out[5] = x[5] + 0.5;
    if (what % 4 == 0) kernels.exponential(x.data(), 5, to, 2.0 / (n + 1), out.data());
    if (what % 4 == 1) kernels.relativeStrength(x.data(), 5 + n, to, n, out.data());
    if (what % 4 == 2) {
      const ParabolicStart start{n % 2 == 0, 990.0, 1010.0, 0.02, 0.001 * n, 0.2};
      kernels.parabolic(high.data(), low.data(), start, 3, to, out.data());
    }
    if (what % 4 == 3) {
      Values price(x.size());
      kernels.typicalPrice(high.data(), low.data(), x.data(), 1, to, price.data());
      if (to <= n) return out;
      kernels.mean(price.data(), n, to, n, out.data());
      kernels.channelIndex(price.data(), n, to, n, out.data());
    }
    return out;
  };
  for (int what = 0; what < 4 * 25; ++what) {
    const Values whole = run(Instructions::Baseline, what, 300);
    for (int to = 30 + what; to < 300; to += to < 150 + what ? 1 : 41) {
      const Values part = run(Instructions::Avx2, what, to);
      for (std::size_t i = 0; i < static_cast<std::size_t>(to); ++i) {
        ASSERT_TRUE(Same(part[i], whole[i])) << what << " to " << to << " bar " << i;
      }
    }
  }
}

// Long walks are put together from pieces that begin with a guess, which is wrong for ever after where prices
// stand still.
TEST(Kernels, ParabolicWalksLikeASingleWalk) {
  Values high = RandomWalk(12000, 3.0, 6);
  Values low = RandomWalk(12000, 3.0, 7);
  for (std::size_t i = 0; i < high.size(); ++i) low[i] = high[i] - std::fabs(low[i] - 1000.0) / 50.0;
  // A zero extreme in the state that the last piece hands over becomes the stop.
  for (std::size_t i = 11990; i < 11997; ++i) high[i] = low[i] = 0.0;
  high[11998] = 5000.0;
  for (const int run : {0, 1, 2, 3}) {
    const bool rising = run % 2 != 0;
    for (std::size_t i = 5000; i < 8500 && run >= 2; ++i) high[i] = low[i] = i < 6500 ? 900.0 : 0.0;
    Values want(high.size());
    double stop = 990.0;
    double extreme = 1010.0;
    double acceleration = 0.02;
    bool up = rising;
    for (std::size_t i = 1; i < want.size(); ++i) {
      const double towards = up ? high[i] : low[i];
      const double against = up ? low[i] : high[i];
      stop = (extreme - stop) * acceleration + stop;
      if (up ? against < stop : against > stop) {
        want[i] = stop = extreme;
        extreme = against;
        acceleration = 0.02;
        up = !up;
        continue;
      }
      want[i] = stop;
      if (up ? towards > extreme : towards < extreme) {
        extreme = towards;
        acceleration = std::min(acceleration + 0.02, 0.2);
      }
    }
    for (const Instructions build : {Instructions::Baseline, Instructions::Avx2}) {
      const Using use(build);
      Values got(want.size());
      ActiveKernels().parabolic(high.data(), low.data(), {rising, 990.0, 1010.0, 0.02, 0.02, 0.2}, 1, 12000,
                                got.data());
      for (std::size_t i = 1; i < want.size(); ++i) ASSERT_TRUE(Same(got[i], want[i])) << "bar " << i;
    }
  }
}

TEST(Kernels, KeepWhatIsNoNumberWithinItsWindows) {
  const Values awkward = Awkward(1);
  Values x = awkward;
  for (double &value : x) value = std::isfinite(value) ? value : 1000.0;
  const Values y = RandomWalk(720, 3.0, 3);
  for (const Windowed &w : kWindowed) {
    for (const int n : {1, 2, 3, 4, 5, 7, 8, 14, 20, 31, 33, 35, 36, 50}) {
      const Values want = Windows(w, x, y, n - 1, n);
      const Values got = Windows(w, awkward, y, n - 1, n);
      for (int i = n - 1; i < 720; ++i) {
        const auto at = awkward.begin() + i;
        if (std::any_of(at - n + 1, at + 1, [](double v) { return !std::isfinite(v); })) continue;
        ASSERT_TRUE(Same(got[static_cast<std::size_t>(i)], want[static_cast<std::size_t>(i)]))
            << w.name << " n " << n << " bar " << i;
      }
    }
  }
}

// What a window comes to by the textbook, in long double.
struct Textbook {
  Textbook(const double *x, const double *y, int n) {
    for (int k = 0; k < n; ++k) {
      sum += x[k];
      weighted += (k + 1.0L) * x[k] / (n * (n + 1.0L) / 2);
      ySum += y[k];
    }
    const long double mean = sum / n;
    long double squares = 0, ySquares = 0, products = 0, lagSquares = 0, lagProducts = 0;
    for (int k = 0; k < n; ++k) {
      const long double d = x[k] - mean, e = y[k] - ySum / n, lag = k - (n - 1) / 2.0L;
      squares += d * d;
      ySquares += e * e;
      products += d * e;
      lagSquares += lag * lag;
      lagProducts += lag * d;
    }
    deviation = std::sqrt(squares / n);
    correlation = products / std::sqrt(squares * ySquares);
    slope = lagProducts / lagSquares;
    fit = lagProducts * lagProducts / (lagSquares * squares);
    value = mean + slope * (0.5L * n - 2.5L);
  }
  long double sum = 0, weighted = 0, ySum = 0, deviation, correlation, slope, fit, value;
};

TEST(Kernels, GiveWhatTheTextbookGives) {
  const Values x = RandomWalk(1500, 3.0, 8);
  const Values y = RandomWalk(1500, 3.0, 9);
  for (const int n : {3, 4, 5, 8, 14, 20, 35, 36, 37, 60, 100, 333, 1024}) {
    const auto windows = [&, n](const char *name) {
      const auto row = std::find_if(std::begin(kWindowed), std::end(kWindowed),
                                    [name](const Windowed &w) { return std::string_view(w.name) == name; });
      return Windows(*row, x, y, n - 1, n);
    };
    const Values correlations = windows("correlation"), slopes = windows("slope"), fits = windows("fit");
    const Values values = windows("value");
    for (std::size_t i = static_cast<std::size_t>(n - 1); i < x.size(); ++i) {
      const std::size_t first = i + 1 - static_cast<std::size_t>(n);
      const Textbook want(x.data() + first, y.data() + first, n);
      ASSERT_NEAR(correlations[i], static_cast<double>(want.correlation), 1e-9) << "n " << n << " bar " << i;
      ASSERT_NEAR(slopes[i], static_cast<double>(want.slope), 1e-11) << "n " << n << " bar " << i;
      ASSERT_NEAR(fits[i], static_cast<double>(want.fit), 1e-9) << "n " << n << " bar " << i;
      ASSERT_NEAR(values[i], static_cast<double>(want.value), 1e-9) << "n " << n << " bar " << i;
    }
  }
}

TEST(Kernels, TellWindowsThatDoNotVary) {
  const Values y = RandomWalk(400, 3.0, 9);
  Values x = RandomWalk(400, 3.0, 8);
  std::fill(x.begin() + 100, x.begin() + 300, 0.1);
  for (const int n : {2, 3, 20, 35, 36, 100}) {
    Values fits(x.size()), correlations(x.size()), reversed(x.size());
    ActiveKernels().lineFit(x.data(), n - 1, 400, n, fits.data());
    ActiveKernels().correlation(x.data(), y.data(), n - 1, 400, n, correlations.data());
    ActiveKernels().correlation(y.data(), x.data(), n - 1, 400, n, reversed.data());
    for (std::size_t i = static_cast<std::size_t>(n - 1); i < x.size(); ++i) {
      const bool isFlat = i >= static_cast<std::size_t>(99 + n) && i < 300;
      ASSERT_EQ(fits[i] == kNoFit, isFlat) << "n " << n << " bar " << i;
      ASSERT_EQ(correlations[i] == 0.0, isFlat) << "n " << n << " bar " << i;
      ASSERT_EQ(reversed[i] == 0.0, isFlat) << "n " << n << " bar " << i;
    }
  }
}

// The walk once held an element of 1e15; what is measured is relative to a calculation in long double.
TEST(Kernels, ForgetASpikeThatHasPassed) {
  Values x = RandomWalk(30000, 3.0);
  x[10000] = 1e15;
  for (const int n : {14, 20, 35, 36, 103, 200, 1001}) {
    const Values sums = Windows(kWindowed[0], x, x, n - 1, n);
    const Values means = Windows(kWindowed[1], x, x, n - 1, n);
    const Values weighted = Windows(kWindowed[2], x, x, n - 1, n);
    const Values deviations = Windows(kWindowed[5], x, x, n - 1, n);
    for (std::size_t i = static_cast<std::size_t>(n - 1); i < x.size(); ++i) {
      const double *const window = x.data() + i + 1 - static_cast<std::size_t>(n);
      const Textbook want(window, window, n);
      const long double mean = want.sum / n;
      ASSERT_LE(std::fabs(sums[i] - want.sum), 1e-14L * std::fabs(want.sum)) << "n " << n << " bar " << i;
      ASSERT_LE(std::fabs(means[i] - mean), 1e-14L * std::fabs(mean)) << "n " << n << " bar " << i;
      ASSERT_LE(std::fabs(weighted[i] - want.weighted), 1e-14L * std::fabs(want.weighted))
          << "n " << n << " bar " << i;
      ASSERT_LE(std::fabs(deviations[i] - want.deviation), 1e-13L * want.deviation)
          << "n " << n << " bar " << i;
    }
  }
}

}  // namespace
}  // namespace trovenu
