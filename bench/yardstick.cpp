#include "bench/yardstick.h"

namespace trovenu::bench {

void CopySeries(const SVector &in, SVector &out) {
  const double *x = in.data;
  double *y = out.data;
  // An addition keeps the compiler from calling a copying routine.
  for (int i = 0; i < in.size; ++i) y[i] = x[i] + 1.0;
}

void RunningMean(const SVector &in, SVector &out) {
  constexpr int kPeriod = 20;
  const double *x = in.data;
  double *y = out.data;
  double sum = 0.0;
  for (int i = 0; i < kPeriod - 1; ++i) sum += x[i];
  for (int i = kPeriod - 1; i < in.size; ++i) {
    sum += x[i];
    y[i] = sum / kPeriod;
    sum -= x[i - kPeriod + 1];
  }
}

}  // namespace trovenu::bench
