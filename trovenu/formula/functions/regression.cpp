#include "trovenu/formula/functions/regression.h"

#include <algorithm>
#include <cmath>

#include "trovenu/formula/messages.h"
#include "trovenu/support/moving_window.h"

namespace trovenu {
namespace {

// Least squares over the last n bars. With deviations d from the block's first element and lags counted back
// from the newest bar: slope = (mean lag * sum d - sum (lag * d)) / sum (lag - mean lag)^2.
struct WindowLine {
  struct Part {
    double sum = 0.0;
    double lagged = 0.0;
    double squares = 0.0;
    int count = 0;
  };
  // What a window's line comes to.
  struct Line {
    double mean;
    double slope;
    double squares;
  };
  const double *x;
  double n;

  void Append(Part &part, int i, int block) const {
    const double d = x[i] - x[block];
    part.lagged += part.sum;
    part.sum += d;
    part.squares += d * d;
  }
  void Prepend(Part &part, int i, int block) const {
    const double d = x[i] - x[block];
    part.lagged += part.count * d;
    part.sum += d;
    part.squares += d * d;
    ++part.count;
  }
  double LagSquares() const { return n * (n * n - 1.0) / 12.0; }
  Line Fit(const Part &older, const Part &newer, int newerCount) const {
    const double sum = older.sum + newer.sum;
    const double lagged = newer.lagged + (older.lagged + newerCount * older.sum);
    const double slope = n == 1.0 ? 0.0 : ((n - 1.0) / 2.0 * sum - lagged) / LagSquares();
    return {sum / n, slope, older.squares + newer.squares - sum * (sum / n)};
  }
};

struct WindowSlope : WindowLine {
  double Value(const Part &older, const Part &newer, int newerCount, int, int) const {
    return Fit(older, newer, newerCount).slope;
  }
};

struct WindowLineValue : WindowLine {
  // Bars from the middle of the window to the bar that is asked for.
  double distance;

  double Value(const Part &older, const Part &newer, int newerCount, int, int block) const {
    const Line line = Fit(older, newer, newerCount);
    return x[block] + (line.mean + line.slope * distance);
  }
};

// The value of a flat window, below every other.
constexpr double kFlatWindow = -1.0;

struct WindowRSquared : WindowLine {
  double Value(const Part &older, const Part &newer, int newerCount, int, int) const {
    const Line line = Fit(older, newer, newerCount);
    if (line.squares <= 0.0) return kFlatWindow;
    return line.slope * line.slope * LagSquares() / line.squares;
  }
};

struct WindowCorrelation {
  struct Part {
    double x = 0.0;
    double y = 0.0;
    double xx = 0.0;
    double yy = 0.0;
    double xy = 0.0;
  };
  const double *x;
  const double *y;
  double n;

  void Append(Part &part, int i, int block) const {
    const double dx = x[i] - x[block];
    const double dy = y[i] - y[block];
    part.x += dx;
    part.y += dy;
    part.xx += dx * dx;
    part.yy += dy * dy;
    part.xy += dx * dy;
  }
  void Prepend(Part &part, int i, int block) const { Append(part, i, block); }
  double Value(const Part &older, const Part &newer, int, int, int) const {
    const double sumX = older.x + newer.x;
    const double sumY = older.y + newer.y;
    const double varianceX = older.xx + newer.xx - sumX * (sumX / n);
    const double varianceY = older.yy + newer.yy - sumY * (sumY / n);
    const double covariance = older.xy + newer.xy - sumX * (sumY / n);
    if (varianceX <= 0.0 || varianceY <= 0.0) return 0.0;
    const double product = varianceX * varianceY;
    return product == 0.0 ? 0.0 : covariance / std::sqrt(product);
  }
};

// A series of `size` elements whose windows over n bars of a source that starts at `start` are filled by
// `statistic`.
template <class Statistic>
SVector Windows(const Statistic &statistic, int size, int start, int n) {
  SVector result;
  const int first = std::max(start, 0);
  result.BeginResult(size, n < 1 ? kNoValidBar : MoveIndex(first, n - 1));
  if (n >= 1) SlideWindow(statistic, first, result.size, n, result.data);
  return result;
}

Operand SlopeRule(Call &call) {
  if (call.N(1) < 1) call.FailPeriod();
  return LinearRegressionSlope(call.X(0), call.N(1));
}

Operand ValueRule(Call &call) {
  if (call.N(1) < 1) call.FailPeriod();
  return LinearRegressionValue(call.X(0), call.N(1), call.N(2));
}

Operand CorrelationRule(Call &call) {
  if (call.N(2) < 1) call.FailPeriod();
  return Correlation(call.X(0), call.X(1), call.N(2));
}

Operand RSquaredRule(Call &call) {
  if (call.N(1) < 1) call.FailPeriod();
  return RSquared(call.X(0), call.N(1));
}

constexpr Function kRows[] = {
    {FunctionId::LinearRegressionValue, Reading::Plain, 3, 3, FullCalc::Never, messages::kRegressionPeriod,
     nullptr, ValueRule, "x, n, k", "Regression line through the last n bars, at k bars before its end"},
    {FunctionId::LinearRegressionSlope, Reading::Plain, 2, 2, FullCalc::Never, messages::kRegressionPeriod,
     nullptr, SlopeRule, "x, n", "Slope of the regression line through the last n bars"},
    {FunctionId::Correlation, Reading::Plain, 3, 3, FullCalc::Never, messages::kCorrelationPeriod, nullptr,
     CorrelationRule, "x, y, n", "Correlation of x and y over the last n bars, -1 to 1"},
    {FunctionId::RSquared, Reading::Plain, 2, 2, FullCalc::Never, messages::kRSquaredPeriod, nullptr,
     RSquaredRule, "x, n", "How well a line fits the last n bars, 0 to 1"},
};

}  // namespace

SVector LinearRegressionSlope(const SVector &x, int n) {
  return Windows(WindowSlope{{x.data, static_cast<double>(n)}}, x.size, x.startIndex, n);
}

SVector LinearRegressionValue(const SVector &x, int n, int k) {
  const double distance = (static_cast<double>(n) - 1.0) / 2.0 - static_cast<double>(k);
  return Windows(WindowLineValue{{x.data, static_cast<double>(n)}, distance}, x.size, x.startIndex, n);
}

SVector Correlation(const SVector &x, const SVector &y, int n) {
  return Windows(WindowCorrelation{x.data, y.data, static_cast<double>(n)}, std::min(x.size, y.size),
                 std::max(x.startIndex, y.startIndex), n);
}

SVector RSquared(const SVector &x, int n) {
  SVector result = Windows(WindowRSquared{{x.data, static_cast<double>(n)}}, x.size, x.startIndex, n);
  double before = 0.0;
  for (int i = result.startIndex; i < result.size; ++i) {
    if (result.data[i] == kFlatWindow) result.data[i] = before;
    before = result.data[i];
  }
  return result;
}

FunctionRows RegressionRows() { return kRows; }

}  // namespace trovenu
