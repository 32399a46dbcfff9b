#include "trovenu/formula/functions/math.h"

#include <algorithm>
#include <bit>
#include <cerrno>
#include <cmath>
#include <cstdint>

namespace trovenu {
namespace {

// Bars between two looks at errno, a call each.
constexpr int kBarsAtOnce = 128;

// In whole numbers, since compilers turn that into a few instructions for several elements.
bool AllFinite(const double *x, int count) {
  constexpr std::uint64_t kExponent = 0x7ff0000000000000;
  constexpr std::uint64_t kOne = 0x0010000000000000;
  std::uint64_t carries = 0;
  for (int i = 0; i < count; ++i) carries |= (std::bit_cast<std::uint64_t>(x[i]) & kExponent) + kOne;
  return carries >> 63 == 0;
}

// Whether the C library has set errno, or should have: some leave it alone when a result is out of range, and
// compilers take it that some functions never set it.
bool HasFailed(double operand, double result) {
  return errno != 0 || (std::isnan(result) && !std::isnan(operand)) ||
         (std::isinf(result) && std::isfinite(operand));
}

// Writes the function of the elements from `from` to `to` - 1. \return the first bar at which it failed, or
// `to`.
template <double (*kFunction)(double)>
int Map(const double *x, int from, int to, double *out) {
  for (int begin = from; begin < to; begin += kBarsAtOnce) {
    const int end = begin + std::min(to - begin, kBarsAtOnce);
    errno = 0;
    for (int i = begin; i < end; ++i) out[i] = kFunction(x[i]);
    if (errno == 0 && AllFinite(out + begin, end - begin)) continue;
    for (int i = begin; i < end; ++i) {
      errno = 0;
      out[i] = kFunction(x[i]);
      if (HasFailed(x[i], out[i])) return i;
    }
  }
  return to;
}

// Required: from the first bar at which the function fails on, every bar is 0.0.
template <double (*kFunction)(double)>
Operand MapRule(Call &call) {
  const SVector &x = call.X(0);
  SVector result(0.0);
  if (!x.IsConstant()) result.BeginResult(x.size, x.startIndex);
  const int from = std::max(x.startIndex, 0);
  if (from < result.size) {
    std::fill(result.data + Map<kFunction>(x.data, from, result.size, result.data), result.data + result.size,
              0.0);
  }
  errno = 0;
  return result;
}

Operand PowerRule(Call &call) { return Power(call.X(0), call.X(1)); }

// The word "^" can't be written in a formula; a direct call of it reads two arguments for nothing.
Operand NothingRule(Call & /*call*/) { return SVector(); }

constexpr Function Math(FunctionId id, Rule rule, const char *help) {
  return {id, Reading::Plain, 1, 1, FullCalc::Never, nullptr, nullptr, rule, "x", help};
}

constexpr Function kRows[] = {
    {FunctionId::Pow, Reading::Plain, 2, 2, FullCalc::Never, nullptr, nullptr, PowerRule, "x, y",
     "x raised to the power y"},
    {FunctionId::Caret, Reading::Plain, 2, 2, FullCalc::Never, nullptr, nullptr, NothingRule, "x, y",
     "No meaning in a formula: use pow"},
    Math(FunctionId::Abs, MapRule<std::fabs>, "Absolute value"),
    Math(FunctionId::Log, MapRule<std::log>, "Natural logarithm"),
    Math(FunctionId::Log10, MapRule<std::log10>, "Logarithm to base 10"),
    Math(FunctionId::Sqrt, MapRule<std::sqrt>, "Square root"),
    Math(FunctionId::Sin, MapRule<std::sin>, "Sine of an angle in radians"),
    Math(FunctionId::Cos, MapRule<std::cos>, "Cosine of an angle in radians"),
    Math(FunctionId::Tan, MapRule<std::tan>, "Tangent of an angle in radians"),
    Math(FunctionId::Asin, MapRule<std::asin>, "Arc sine in radians"),
    Math(FunctionId::Acos, MapRule<std::acos>, "Arc cosine in radians"),
    Math(FunctionId::Atan, MapRule<std::atan>, "Arc tangent in radians"),
    Math(FunctionId::Sinh, MapRule<std::sinh>, "Hyperbolic sine"),
    Math(FunctionId::Cosh, MapRule<std::cosh>, "Hyperbolic cosine"),
    Math(FunctionId::Tanh, MapRule<std::tanh>, "Hyperbolic tangent"),
};

}  // namespace

SVector Power(const SVector &base, const SVector &exponent) {
  if (base.size != exponent.size && base.size != 1 && exponent.size != 1) return SVector();
  if (base.IsConstant() && exponent.IsConstant()) return std::pow(base[0], exponent[0]);
  const SVector &bars = exponent.size == 1 ? base : exponent.size == base.size ? base : exponent;
  SVector result;
  const bool sameSize = base.size == exponent.size;
  result.BeginResult(bars.size, sameSize ? std::max(base.startIndex, exponent.startIndex) : bars.startIndex);
  // A single element answers every bar.
  const double *const x = base.data;
  const double *const y = exponent.data;
  const int stepX = base.size == 1 ? 0 : 1;
  const int stepY = exponent.size == 1 ? 0 : 1;
  for (int i = std::max(result.startIndex, 0); i < result.size; ++i) {
    result.data[i] = std::pow(x[stepX * i], y[stepY * i]);
  }
  return result;
}

FunctionRows MathRows() { return kRows; }

}  // namespace trovenu
