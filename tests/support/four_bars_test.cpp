#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

#include "tests/support/four_bars_operations.h"
#include "tests/support/series_tools.h"

namespace trovenu {

std::vector<double> VectorOperations(const double *x) { return Operations(x); }

namespace {

// The same, bar by bar.
std::vector<double> SingleOperations(const double *x) {
  const double *const a = x, *const b = x + 4, *const c = x + 8, *const d = x + 12;
  std::vector<double> results;
  const auto add = [&](auto operation) {
    for (int k = 0; k < 4; ++k) results.push_back(operation(k));
  };
  add([&](int k) { return a[k] + b[k]; });
  add([&](int k) { return a[k] - b[k]; });
  add([&](int k) { return a[k] * b[k]; });
  add([&](int k) { return a[k] / b[k]; });
  add([&](int k) { return a[k] > b[k] ? a[k] : b[k]; });
  add([&](int k) { return a[k] < b[k] ? a[k] : b[k]; });
  add([&](int k) { return a[k] == 0.0 ? x[0] : b[k]; });
  add([&](int k) { return std::sqrt(a[k]); });
  add([&](int k) { return std::fabs(a[k]); });
  add([&](int k) { return a[k] < b[k] ? c[k] : d[k]; });
  add([&](int k) { return x[k + 2]; });
  add([&](int k) { return x[1 + 5 * k]; });
  add([&](int) { return x[2]; });
  for (int k = 0; k < 4; ++k) results.insert(results.end(), {a[k], 0.0, 0.0});
  results.insert(results.end(), {x[5], x[0] < x[1] ? x[2] : x[3], x[4] == x[5] ? x[6] : x[7]});
  return results;
}

TEST(FourBars, AreFourSingleBars) {
  const double awkward[] = {0.0, -0.0, 1.0, -1.0, 2.5, kNaN, kInfinity, -kInfinity, 1e-310, 7.0};
  std::mt19937 random(3);
  for (int run = 0; run < 2000; ++run) {
    double x[18];
    for (double &element : x) element = awkward[random() % std::size(awkward)];
    const std::vector<double> expected = SingleOperations(x);
    const std::vector<double> results[] = {VectorOperations(x), PlainOperations(x)};
    for (const std::vector<double> &result : results) {
      ASSERT_EQ(result.size(), expected.size());
      for (std::size_t i = 0; i < result.size(); ++i) {
        ASSERT_TRUE(Same(result[i], expected[i]))
            << "element " << i << ": " << result[i] << ", " << expected[i];
      }
    }
  }
}

}  // namespace
}  // namespace trovenu
