#include <algorithm>
#include <cmath>

#include "trovenu/support/kernels/kernels.h"
#include "trovenu/support/series.h"

namespace trovenu {
namespace {

// Fills `result` with a moving calculation; `run(x, first, size, out)` writes the bars from the start index
// on.
template <class Run>
void FillMoving(SVector &result, const SVector &source, int n, Run run) {
  if (&result == &source) {
    const SVector operand = result.TakeElements();
    FillMoving(result, operand, n, run);
    return;
  }
  if (n < 1) {
    result.BeginResult(source.size, kNoValidBar);
    return;
  }
  const int first = std::max(source.startIndex, 0);
  result.BeginResult(source.size, MoveIndex(first, n - 1));
  if (result.size - first >= n) run(source.data, first, result.size, result.data);
}

void FillWindows(SVector &result, const SVector &source, int n, WindowKernel kernel) {
  FillMoving(result, source, n, [n, kernel](const double *x, int first, int end, double *out) {
    kernel(x, first + n - 1, end, n, out);
  });
}

// A series of `map(x[i])` for the bars from `first` to `end` - 1; empty when memory is exhausted.
template <class Map>
SVector MapElements(const double *x, int first, int end, Map map) {
  SVector result;
  result.BeginResult(end, first);
  for (int i = first; i < result.size; ++i) result.data[i] = map(x[i]);
  return result;
}

// A geometric or harmonic mean has no meaning where the window holds an element at or below 0.
void ClearNonPositiveWindows(const double *x, int first, int size, int n, double *out) {
  bool any = false;
  for (int i = first; i < size; ++i) any |= x[i] <= 0.0;
  if (!any) return;
  int lastNonPositive = first - 1;
  for (int i = first; i < size; ++i) {
    if (x[i] <= 0.0) lastNonPositive = i;
    if (i >= first + n - 1 && lastNonPositive > i - n) out[i] = 0.0;
  }
}

// A growing form over min(n, size) bars, or n of them for a constant; `next(m, i, x)` gives the value at bar
// i, which is the m-th valid one.
template <class Next>
void FillGrowing(SVector &result, const SVector &source, int n, Next next) {
  if (&result == &source) {
    const SVector operand = result.TakeElements();
    FillGrowing(result, operand, n, next);
    return;
  }
  const bool constant = source.IsConstant();
  result.BeginResult(constant ? n : std::min(n, source.size), source.startIndex);
  const int first = std::max(source.startIndex, 0);
  for (int i = first; i < result.size; ++i) {
    result.data[i] =
        next(static_cast<double>(i - first) + 1.0, i, constant ? source.data[0] : source.data[i]);
  }
}

// Tells whether all elements so far were equal.
class FlatSoFar {
 public:
  bool operator()(double m, double x) {
    if (m == 1.0) first_ = x;
    flat_ = flat_ && x == first_;
    return flat_;
  }

 private:
  double first_ = 0.0;
  bool flat_ = true;
};

}  // namespace

void SVector::CalcSum(const SVector &source, int n) { FillWindows(*this, source, n, ActiveKernels().sum); }

void SVector::CalcAvg(const SVector &source, int n) { FillWindows(*this, source, n, ActiveKernels().mean); }

void SVector::CalcEAvg(const SVector &source, int n) {
  FillMoving(*this, source, n, [n](const double *x, int first, int end, double *out) {
    const int seed = first + n - 1;
    ActiveKernels().mean(x, seed, seed + 1, n, out);
    ActiveKernels().exponential(x, seed, end, 2.0 / (static_cast<double>(n) + 1.0), out);
  });
}

void SVector::CalcWAvg(const SVector &source, int n) {
  FillWindows(*this, source, n, ActiveKernels().weightedMean);
}

void SVector::CalcTAvg(const SVector &source, int n) {
  if (n < 1) {
    BeginResult(source.size, kNoValidBar);
    return;
  }
  const int inner = n / 2 + 1;
  const int outer = n % 2 != 0 ? inner : n / 2;
  SVector mean;
  mean.CalcAvg(source, inner);
  CalcAvg(mean, outer);
}

void SVector::CalcGAvg(const SVector &source, int n) {
  FillMoving(*this, source, n, [this, n](const double *x, int first, int end, double *out) {
    const SVector logarithms = MapElements(x, first, end, [](double v) { return std::log(v); });
    if (logarithms.size < end) return SetSize(0);
    ActiveKernels().mean(logarithms.data, first + n - 1, end, n, out);
    for (int i = first + n - 1; i < end; ++i) out[i] = std::exp(out[i]);
    ActiveKernels().keepFlat(x, first + n - 1, end, n, out);
    ClearNonPositiveWindows(x, first, end, n, out);
  });
}

void SVector::CalcHAvg(const SVector &source, int n) {
  FillMoving(*this, source, n, [this, n](const double *x, int first, int end, double *out) {
    const Kernels &kernels = ActiveKernels();
    const int from = first + n - 1;
    SVector reciprocals;
    reciprocals.BeginResult(end, first);
    if (reciprocals.size < end) return SetSize(0);
    kernels.quotientsOfNumber(1.0, x, first, end, reciprocals.data);
    kernels.sum(reciprocals.data, from, end, n, out);
    kernels.quotientsOfNumber(n, out, from, end, out);
    kernels.keepFlat(x, from, end, n, out);
    ClearNonPositiveWindows(x, first, end, n, out);
  });
}

void SVector::CalcStdev(const SVector &source, int n) {
  FillWindows(*this, source, n, ActiveKernels().deviation);
}

void SVector::CalcHighest(const SVector &source, int n) {
  FillWindows(*this, source, n, ActiveKernels().highest);
}

void SVector::CalcLowest(const SVector &source, int n) {
  FillWindows(*this, source, n, ActiveKernels().lowest);
}

void SVector::CalcESum(const SVector &source, int n) {
  FillMoving(*this, source, n, [n](const double *x, int first, int end, double *out) {
    double sum = 0.0;
    for (int i = first; i < first + n; ++i) sum += x[i];
    out[first + n - 1] = sum;
    const double keep = (static_cast<double>(n) - 1.0) / n;
    for (int i = first + n; i < end; ++i) {
      sum = sum * keep + x[i];
      out[i] = sum;
    }
  });
}

void SVector::CalcSumCum(const SVector &source, int n) {
  double sum = 0.0;
  FillGrowing(*this, source, n, [&sum](double, int, double x) { return sum += x; });
}

void SVector::CalcAvgCum(const SVector &source, int n) {
  double sum = 0.0;
  FlatSoFar flat;
  FillGrowing(*this, source, n, [&](double m, int, double x) {
    sum += x;
    return flat(m, x) ? x : sum / m;
  });
}

void SVector::CalcEAvgCum(const SVector &source, int n) {
  double average = 0.0;
  FillGrowing(*this, source, n, [&average](double m, int, double x) {
    return average = m == 1.0 ? x : average + 2.0 / (m + 1.0) * (x - average);
  });
}

void SVector::CalcWAvgCum(const SVector &source, int n) {
  double weighted = 0.0;
  FlatSoFar flat;
  FillGrowing(*this, source, n, [&](double m, int, double x) {
    weighted += m * x;
    return flat(m, x) ? x : weighted / (m * (m + 1.0) / 2.0);
  });
}

void SVector::CalcESumCum(const SVector &source, int n) {
  double sum = 0.0;
  FillGrowing(*this, source, n, [&sum](double m, int i, double x) {
    return sum = m == 1.0 ? x : sum * ((static_cast<double>(i) - 1.0) / i) + x;
  });
}

}  // namespace trovenu
