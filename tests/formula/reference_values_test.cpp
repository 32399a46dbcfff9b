// Functions against the same calculation done the slow and obvious way, in extended precision, on the shipped
// bars.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <string>
#include <vector>

#include "tests/formula/bars.h"

namespace trovenu::tests {
namespace {

using Real = long double;
using Reals = std::vector<Real>;

Reals Elements(const SVector &series) {
  Reals elements;
  for (int i = 0; i < series.GetSize(); ++i) elements.push_back(series[i]);
  return elements;
}

std::size_t At(int i) { return static_cast<std::size_t>(i); }

// The n elements that end at bar i.
Reals Window(const Reals &x, int i, int n) { return Reals(x.begin() + i - n + 1, x.begin() + i + 1); }

Real Sum(const Reals &x) {
  Real sum = 0;
  for (const Real element : x) sum += element;
  return sum;
}

Real Mean(const Reals &x) { return Sum(x) / static_cast<Real>(x.size()); }

// The sum of the products of the deviations from the means.
Real Deviations(const Reals &x, const Reals &y) {
  Real sum = 0;
  for (std::size_t i = 0; i < x.size(); ++i) sum += (x[i] - Mean(x)) * (y[i] - Mean(y));
  return sum;
}

// 0, 1, 2 and so on, as many as `x` has elements.
Reals Axis(const Reals &x) {
  Reals axis;
  for (std::size_t i = 0; i < x.size(); ++i) axis.push_back(static_cast<Real>(i));
  return axis;
}

Real Slope(const Reals &x) { return Deviations(Axis(x), x) / Deviations(Axis(x), Axis(x)); }

Real WeightedMean(const Reals &x) {
  Real sum = 0;
  Real weights = 0;
  for (std::size_t i = 0; i < x.size(); ++i) {
    sum += static_cast<Real>(i + 1) * x[i];
    weights += static_cast<Real>(i + 1);
  }
  return sum / weights;
}

class ReferenceValues : public testing::Test {
 protected:
  // The formula starts at `start` and has there and later the values that `expected` gives, to 1e-10 of them.
  void Expect(const char *formula, int start, const std::function<Real(int)> &expected) {
    const SVector result = Evaluate(bars, formula);
    ASSERT_EQ(result.GetSize(), 252) << formula;
    ASSERT_EQ(result.GetStartIndex(), start) << formula;
    for (int i = start; i < result.GetSize(); ++i) {
      const Real value = expected(i);
      ASSERT_LE(std::fabs(result[i] - value), 1e-10L * std::fabs(value)) << formula << " at bar " << i;
    }
  }

  // A window of the close over 20 bars.
  void ExpectWindow(const char *formula, Real (*expected)(const Reals &)) {
    Expect(formula, 19, [&](int i) { return expected(Window(c, i, 20)); });
  }

  Bars bars = DailyBars();
  const Reals c = Elements(bars.close);
  const Reals o = Elements(bars.open);
  const Reals h = Elements(bars.high);
  const Reals l = Elements(bars.low);
  const Reals v = Elements(bars.volume);
};

TEST_F(ReferenceValues, WindowsOfTheClose) {
  ExpectWindow("sum(c,20)", Sum);
  ExpectWindow("avg(c,20)", Mean);
  ExpectWindow("wavg(c,20)", WeightedMean);
  ExpectWindow("gavg(c,20)", [](const Reals &x) {
    Real product = 1;
    for (const Real element : x) product *= element;
    return std::pow(product, 1 / static_cast<Real>(x.size()));
  });
  ExpectWindow("havg(c,20)", [](const Reals &x) {
    Real sum = 0;
    for (const Real element : x) sum += 1 / element;
    return static_cast<Real>(x.size()) / sum;
  });
  ExpectWindow("stdev(c,20)",
               [](const Reals &x) { return std::sqrt(Deviations(x, x) / static_cast<Real>(x.size())); });
  ExpectWindow("LinearRegressionSlope(c,20)", Slope);
  ExpectWindow("LinearRegressionValue(c,20,0)", [](const Reals &x) { return Mean(x) + Slope(x) * 9.5L; });
  ExpectWindow("LinearRegressionValue(c,20,-5)", [](const Reals &x) { return Mean(x) + Slope(x) * 14.5L; });
  ExpectWindow("RSquared(c,20)", [](const Reals &x) {
    return Slope(x) * Slope(x) * Deviations(Axis(x), Axis(x)) / Deviations(x, x);
  });
}

TEST_F(ReferenceValues, TriangularAverages) {
  const auto mean = [&](int i, int inner, int outer) {
    Real sum = 0;
    for (int j = i; j > i - outer; --j) sum += Mean(Window(c, j, inner));
    return sum / outer;
  };
  Expect("tavg(c,20)", 19, [&](int i) { return mean(i, 11, 10); });
  Expect("tavg(c,21)", 20, [&](int i) { return mean(i, 11, 11); });
}

TEST_F(ReferenceValues, Correlations) {
  Expect("Correlation(h,l,20)", 19, [&](int i) {
    const Reals x = Window(h, i, 20);
    const Reals y = Window(l, i, 20);
    return Deviations(x, y) / std::sqrt(Deviations(x, x) * Deviations(y, y));
  });
}

TEST_F(ReferenceValues, CommodityChannelIndex) {
  Reals typical;
  for (int i = 0; i < 252; ++i) typical.push_back((h[At(i)] + l[At(i)] + c[At(i)]) / 3);
  Expect("cci(14)", 13, [&](int i) {
    const Reals window = Window(typical, i, 14);
    Real deviations = 0;
    for (const Real element : window) deviations += std::fabs(element - Mean(window));
    return (typical[At(i)] - Mean(window)) / (0.015L * deviations / 14);
  });
}

TEST_F(ReferenceValues, RelativeStrengthIndex) {
  const auto rise = [&](int i) { return std::max(c[At(i)] - c[At(i - 1)], Real(0)); };
  const auto fall = [&](int i) { return std::max(c[At(i - 1)] - c[At(i)], Real(0)); };
  // The smoothed mean at bar i, from the plain mean of the first 14 on.
  const auto smooth = [&](const auto &part, int i) {
    Real mean = 0;
    for (int j = 1; j <= 14; ++j) mean += part(j) / 14;
    for (int j = 15; j <= i; ++j) mean = (13 * mean + part(j)) / 14;
    return mean;
  };
  Expect("rsi(14)", 14, [&](int i) { return 100 * smooth(rise, i) / (smooth(rise, i) + smooth(fall, i)); });
}

TEST_F(ReferenceValues, ExponentialForms) {
  Expect("eavg(c,20)", 19, [&](int i) {
    Real average = Mean(Window(c, 19, 20));
    for (int j = 20; j <= i; ++j) average = c[At(j)] * 2 / 21 + average * 19 / 21;
    return average;
  });
  Expect("eavg(c)", 0, [&](int i) {
    Real average = c[0];
    for (int j = 1; j <= i; ++j) average += 2 / static_cast<Real>(j + 2) * (c[At(j)] - average);
    return average;
  });
  Expect("esum(c,20)", 19, [&](int i) {
    Real sum = Sum(Window(c, 19, 20));
    for (int j = 20; j <= i; ++j) sum = sum * 19 / 20 + c[At(j)];
    return sum;
  });
  Expect("esum(c)", 0, [&](int i) {
    Real sum = c[0];
    for (int j = 1; j <= i; ++j) sum = sum * (j - 1) / j + c[At(j)];
    return sum;
  });
}

TEST_F(ReferenceValues, GrowingForms) {
  Expect("sum(c)", 0, [&](int i) { return Sum(Window(c, i, i + 1)); });
  Expect("avg(c)", 0, [&](int i) { return Mean(Window(c, i, i + 1)); });
  Expect("wavg(c)", 0, [&](int i) { return WeightedMean(Window(c, i, i + 1)); });
}

// Every bar's value of the parabolic, written down as one reads it.
Reals Parabolic(const Reals &high, const Reals &low, const Reals &close, Real step, Real maximum) {
  Reals values(close.size());
  bool up = close[0] < close[1];
  Real extreme = up ? high[0] : low[0];
  Real stop = up ? low[0] : high[0];
  Real acceleration = 0.02L;
  stop = (extreme - stop) * step + stop;
  values[1] = stop;
  for (std::size_t i = 2; i < close.size(); ++i) {
    stop = (extreme - stop) * acceleration + stop;
    const Real before = extreme;
    if (up) {
      if (low[i] < stop) {
        stop = extreme;
        extreme = low[i];
        acceleration = 0.02L;
        up = false;
      } else if (before < high[i]) {
        extreme = high[i];
        acceleration = acceleration + step < maximum ? acceleration + step : maximum;
      }
    } else {
      if (high[i] > stop) {
        stop = extreme;
        extreme = high[i];
        acceleration = 0.02L;
        up = true;
      } else if (before > low[i]) {
        extreme = low[i];
        acceleration = acceleration + step < maximum ? acceleration + step : maximum;
      }
    }
    values[i] = stop;
  }
  return values;
}

TEST_F(ReferenceValues, Parabolics) {
  for (const Real step : {0.02L, 0.05L}) {
    const std::string arguments = step == 0.02L ? "(0.02,0.2)" : "(0.05,0.2)";
    const Reals sar = Parabolic(h, l, c, step, 0.2L);
    const Reals closing = Parabolic(c, c, c, step, 0.2L);
    Expect(("sar" + arguments).c_str(), 5, [&](int i) { return sar[At(i)]; });
    Expect(("csar" + arguments).c_str(), 5, [&](int i) { return closing[At(i)]; });
  }
}

TEST_F(ReferenceValues, VolumeFlow) {
  const auto index = [&](int i, bool positive) {
    Real value = 100;
    for (int j = 1; j <= i; ++j) {
      const bool moves = positive ? v[At(j - 1)] < v[At(j)] : v[At(j - 1)] > v[At(j)];
      if (moves) value += (c[At(j)] - c[At(j - 1)]) / c[At(j - 1)] * 100;
    }
    return value;
  };
  Expect("pvi(c)", 0, [&](int i) { return index(i, true); });
  Expect("nvi(c)", 0, [&](int i) { return index(i, false); });
  Expect("ad()", 0, [&](int i) {
    Real value = 0;
    for (int j = 1; j <= i; ++j) value += (c[At(j)] - o[At(j)]) * v[At(j)] / (h[At(j)] - l[At(j)]);
    return value;
  });
  Expect("PVT()", 0, [&](int i) {
    Real value = v[0];
    for (int j = 1; j <= i; ++j) value += (c[At(j)] - c[At(j - 1)]) * v[At(j)] / c[At(j - 1)];
    return value;
  });
}

}  // namespace
}  // namespace trovenu::tests
