#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "tests/support/series_tools.h"
#include "trovenu/support/kernels/kernels.h"
#include "trovenu/support/kernels/long_windows.h"

namespace trovenu {
namespace {

TEST(LongWindows, CoversExactlyTheBarsOfEachWindow) {
  // Sums of whole numbers are exact, so they must equal the differences of the running total.
  const int size = 620000;
  std::vector<double> x;
  std::vector<double> total{0.0};
  std::mt19937 random(3);
  for (int i = 0; i < size; ++i) {
    x.push_back(static_cast<double>(random() % 1000));
    total.push_back(total.back() + x.back());
  }
  std::vector<double> out(static_cast<std::size_t>(size));
  const int group = kWindowStrip * kWindowEdges;
  for (const int n : {36, 37, 1023, 1024, 1025, 2049, group, group + 1, group + kWindowStrip + 1, 300001}) {
    for (const int first : {0, 12345}) {
      ActiveKernels().sum(x.data(), first + n - 1, size, n, out.data());
      for (std::size_t i = static_cast<std::size_t>(first + n - 1); i < x.size(); ++i) {
        ASSERT_EQ(out[i], total[i + 1] - total[i + 1 - static_cast<std::size_t>(n)])
            << "n " << n << " bar " << i;
      }
    }
  }
}

}  // namespace
}  // namespace trovenu
