#include <algorithm>
#include <cmath>
#include <limits>

#include "trovenu/support/moving_window.h"
#include "trovenu/support/series.h"

namespace trovenu {
namespace {

struct WindowWeightedSum {
  // `sum` of the run and `weighted`, its sum with weights that begin at 1 on the side where the run does not
  // grow (newer part) or grows (older part).
  struct Part {
    double sum = 0.0;
    double weighted = 0.0;
    int count = 0;
  };
  const double *x;
  double n;
  double divisor;

  void Append(Part &part, int i, int /*block*/) const {
    ++part.count;
    part.sum += x[i];
    part.weighted += part.count * x[i];
  }
  void Prepend(Part &part, int i, int /*block*/) const {
    part.sum += x[i];
    part.weighted += part.sum;
  }
  double Value(const Part &older, const Part &newer, int newerCount, int, int) const {
    return (older.weighted + (newer.weighted + (n - newerCount) * newer.sum)) / divisor;
  }
};

struct WindowDeviation {
  struct Part {
    double sum = 0.0;
    double squares = 0.0;
  };
  const double *x;
  double n;

  void Append(Part &part, int i, int block) const {
    const double d = x[i] - x[block];
    part.sum += d;
    part.squares += d * d;
  }
  void Prepend(Part &part, int i, int block) const { Append(part, i, block); }
  double Value(const Part &older, const Part &newer, int, int, int) const {
    const double sum = older.sum + newer.sum;
    const double squares = older.squares + newer.squares;
    const double variance = (squares - sum * (sum / n)) / n;
    return variance < 0.0 ? 0.0 : std::sqrt(variance);
  }
};

template <bool kLargest>
struct WindowExtreme {
  struct Part {
    double extreme =
        kLargest ? -std::numeric_limits<double>::infinity() : std::numeric_limits<double>::infinity();
  };
  const double *x;

  static double Pick(double a, double b) {
    if constexpr (kLargest) {
      return b > a ? b : a;
    } else {
      return b < a ? b : a;
    }
  }
  void Append(Part &part, int i, int /*block*/) const { part.extreme = Pick(part.extreme, x[i]); }
  void Prepend(Part &part, int i, int /*block*/) const { part.extreme = Pick(part.extreme, x[i]); }
  double Value(const Part &older, const Part &newer, int, int, int) const {
    return Pick(older.extreme, newer.extreme);
  }
};

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

// A series of `map(x[i])` for the bars from `first` to `end` - 1; empty when memory is exhausted.
template <class Map>
SVector MapElements(const double *x, int first, int end, Map map) {
  SVector result;
  result.BeginResult(end, first);
  for (int i = first; i < result.size; ++i) result.data[i] = map(x[i]);
  return result;
}

void KeepFlatWindows(const double *x, int first, int size, int n, double *out) {
  ForEachFlatWindow(x, first, size, n, [x, out](int i) { out[i] = x[i]; });
}

// A geometric or harmonic mean has no meaning where the window holds an element at or below 0.
void ClearNonPositiveWindows(const double *x, int first, int size, int n, double *out) {
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

void SVector::CalcSum(const SVector &source, int n) {
  FillMoving(*this, source, n, [n](const double *x, int first, int end, double *out) {
    SlideWindow(WindowSum{x}, first, end, n, out);
  });
}

void SVector::CalcAvg(const SVector &source, int n) {
  FillMoving(*this, source, n, [n](const double *x, int first, int end, double *out) {
    SlideWindow(WindowSum{x, static_cast<double>(n)}, first, end, n, out);
    KeepFlatWindows(x, first, end, n, out);
  });
}

void SVector::CalcEAvg(const SVector &source, int n) {
  FillMoving(*this, source, n, [n](const double *x, int first, int end, double *out) {
    const int seed = first + n - 1;
    SlideWindow(WindowSum{x, static_cast<double>(n)}, first, seed + 1, n, out);
    KeepFlatWindows(x, first, seed + 1, n, out);
    const double factor = 2.0 / (static_cast<double>(n) + 1.0);
    double average = out[seed];
    for (int i = seed + 1; i < end; ++i) {
      average += factor * (x[i] - average);
      out[i] = average;
    }
  });
}

void SVector::CalcWAvg(const SVector &source, int n) {
  FillMoving(*this, source, n, [n](const double *x, int first, int end, double *out) {
    const double count = n;
    SlideWindow(WindowWeightedSum{x, count, count * (count + 1.0) / 2.0}, first, end, n, out);
    KeepFlatWindows(x, first, end, n, out);
  });
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
    SlideWindow(WindowSum{logarithms.data, static_cast<double>(n)}, first, end, n, out);
    for (int i = first + n - 1; i < end; ++i) out[i] = std::exp(out[i]);
    KeepFlatWindows(x, first, end, n, out);
    ClearNonPositiveWindows(x, first, end, n, out);
  });
}

void SVector::CalcHAvg(const SVector &source, int n) {
  FillMoving(*this, source, n, [this, n](const double *x, int first, int end, double *out) {
    const SVector reciprocals = MapElements(x, first, end, [](double v) { return 1.0 / v; });
    if (reciprocals.size < end) return SetSize(0);
    SlideWindow(WindowSum{reciprocals.data, 1.0}, first, end, n, out);
    for (int i = first + n - 1; i < end; ++i) out[i] = n / out[i];
    KeepFlatWindows(x, first, end, n, out);
    ClearNonPositiveWindows(x, first, end, n, out);
  });
}

void SVector::CalcStdev(const SVector &source, int n) {
  FillMoving(*this, source, n, [n](const double *x, int first, int end, double *out) {
    SlideWindow(WindowDeviation{x, static_cast<double>(n)}, first, end, n, out);
  });
}

void SVector::CalcHighest(const SVector &source, int n) {
  FillMoving(*this, source, n, [n](const double *x, int first, int end, double *out) {
    SlideWindow(WindowExtreme<true>{x}, first, end, n, out);
  });
}

void SVector::CalcLowest(const SVector &source, int n) {
  FillMoving(*this, source, n, [n](const double *x, int first, int end, double *out) {
    SlideWindow(WindowExtreme<false>{x}, first, end, n, out);
  });
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
    return sum = m == 1.0 ? x : sum * (static_cast<double>(i) - 1.0) / i + x;
  });
}

}  // namespace trovenu
