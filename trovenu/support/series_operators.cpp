#include <algorithm>
#include <cmath>

#include "trovenu/support/kernels/kernels.h"
#include "trovenu/support/series.h"

// An element depends on the elements of its own index alone, so a loop may be vectorised also where the
// result is one of the operands.
#if defined(__clang__)
#pragma clang diagnostic ignored "-Wpass-failed"  // A loop that calls `fmod` stays as it is.
#define TROVENU_INDEPENDENT_ELEMENTS _Pragma("clang loop vectorize(assume_safety)")
#elif defined(__GNUC__)
#define TROVENU_INDEPENDENT_ELEMENTS _Pragma("GCC ivdep")
#else
#define TROVENU_INDEPENDENT_ELEMENTS
#endif

namespace trovenu {
namespace {

struct Plus {
  double operator()(double a, double b) const { return a + b; }
};
struct Minus {
  double operator()(double a, double b) const { return a - b; }
};
struct Multiply {
  double operator()(double a, double b) const { return a * b; }
};
struct Divide {
  double operator()(double a, double b) const {
    const double quotient = a / b;
    return b == 0.0 ? 0.0 : quotient;
  }
};
struct Mod {
  double operator()(double a, double b) const { return b == 0.0 ? 0.0 : std::fmod(a, b); }
};
struct Less {
  double operator()(double a, double b) const { return a < b ? 1.0 : 0.0; }
};
struct LessEqual {
  double operator()(double a, double b) const { return a <= b ? 1.0 : 0.0; }
};
struct Greater {
  double operator()(double a, double b) const { return a > b ? 1.0 : 0.0; }
};
struct GreaterEqual {
  double operator()(double a, double b) const { return a >= b ? 1.0 : 0.0; }
};
struct Equal {
  double operator()(double a, double b) const { return a == b ? 1.0 : 0.0; }
};
struct NotEqual {
  double operator()(double a, double b) const { return a != b ? 1.0 : 0.0; }
};
struct And {
  double operator()(double a, double b) const { return ((a != 0.0) & (b != 0.0)) ? 1.0 : 0.0; }
};
struct Or {
  double operator()(double a, double b) const { return ((a != 0.0) | (b != 0.0)) ? 1.0 : 0.0; }
};
struct Negate {
  double operator()(double a) const { return -a; }
};
struct Not {
  double operator()(double a) const { return a == 0.0 ? 1.0 : 0.0; }
};

template <class Operation>
void CombineElements(Operation op, const double *a, const double *b, double *out, int from, int to) {
  TROVENU_INDEPENDENT_ELEMENTS
  for (int i = from; i < to; ++i) out[i] = op(a[i], b[i]);
}

template <class Operation>
void MapElements(Operation op, const double *a, double *out, int from, int to) {
  TROVENU_INDEPENDENT_ELEMENTS
  for (int i = from; i < to; ++i) out[i] = op(a[i]);
}

template <class Operation>
void CombineNumber(Operation op, double number, const double *b, double *out, int from, int to) {
  MapElements([op, number](double y) { return op(number, y); }, b, out, from, to);
}

// The choice between the quotient and 0 keeps compilers from vectorising a division.
void CombineElements(Divide, const double *a, const double *b, double *out, int from, int to) {
  ActiveKernels().quotients(a, b, from, to, out);
}

void CombineNumber(Divide, double number, const double *b, double *out, int from, int to) {
  ActiveKernels().quotientsOfNumber(number, b, from, to, out);
}

// `out` may hold the operand from which the number was computed.
void BecomeConstant(SVector &out, double number) {
  out.BeginResult(1, 0);
  out.data[0] = number;
  out.isSeries = 0;
}

// Makes `out` ready for a result, in place where it is an operand of that size already.
void BeginInto(SVector &out, bool outIsSeriesOperand, int size, int start) {
  if (outIsSeriesOperand && out.size == size) {
    out.RaiseStart(start);
  } else {
    out.BeginResult(size, start);
  }
}

template <class Operation>
void Combine(SVector &out, const SVector &a, const SVector &b, Operation op) {
  if (a.IsConstant() && b.IsConstant()) {
    BecomeConstant(out, op(a.data[0], b.data[0]));
    return;
  }
  const int size = a.IsConstant() ? b.size : b.IsConstant() ? a.size : std::min(a.size, b.size);
  const int start = a.IsConstant()   ? b.startIndex
                    : b.IsConstant() ? a.startIndex
                                     : std::max(a.startIndex, b.startIndex);
  const bool isOperand = &out == &a || &out == &b;
  if (isOperand && (out.IsConstant() || out.size != size)) {
    // The operand must outlive the result that takes its place.
    const SVector operand = out.TakeElements();
    Combine(out, &a == &out ? operand : a, &b == &out ? operand : b, op);
    return;
  }
  BeginInto(out, isOperand, size, start);
  const int from = std::max(start, 0);
  if (a.IsConstant()) {
    const double number = a.data[0];
    CombineNumber(op, number, b.data, out.data, from, out.size);
  } else if (b.IsConstant()) {
    const double number = b.data[0];
    MapElements([op, number](double x) { return op(x, number); }, a.data, out.data, from, out.size);
  } else {
    CombineElements(op, a.data, b.data, out.data, from, out.size);
  }
}

template <class Operation>
void Map(SVector &out, const SVector &a, Operation op) {
  if (a.IsConstant()) {
    BecomeConstant(out, op(a.data[0]));
    return;
  }
  BeginInto(out, &out == &a, a.size, a.startIndex);
  MapElements(op, a.data, out.data, std::max(a.startIndex, 0), out.size);
}

void Shift(SVector &out, const SVector &in, int n) {
  if (in.IsConstant()) {
    BecomeConstant(out, in.data[0]);
    return;
  }
  if (&out == &in) {
    const SVector operand = out.TakeElements();
    Shift(out, operand, n);
    return;
  }
  const int moved = MoveIndex(in.startIndex, n);
  const int start = n >= 0 ? moved : std::max(0, moved);
  out.BeginResult(in.size, start);
  // Elements from `begin` to `end` - 1 have a source; the others hold 0.0.
  const int first = std::min(std::max(start, 0), out.size);
  const int begin = std::min(std::max(start, n), out.size);
  const long long last = std::min<long long>(static_cast<long long>(in.size) + n, out.size);
  const int end = static_cast<int>(std::max<long long>(last, begin));
  std::fill(out.data + first, out.data + begin, 0.0);
  if (begin < end) std::copy(in.data + (begin - n), in.data + (end - n), out.data + begin);
  std::fill(out.data + end, out.data + out.size, 0.0);
}

template <class Operation>
SVector Combined(const SVector &a, const SVector &b, Operation op) {
  SVector result;
  Combine(result, a, b, op);
  return result;
}

}  // namespace

SVector operator+(const SVector &a, const SVector &b) { return Combined(a, b, Plus{}); }
SVector operator-(const SVector &a, const SVector &b) { return Combined(a, b, Minus{}); }
SVector operator*(const SVector &a, const SVector &b) { return Combined(a, b, Multiply{}); }
SVector operator*(const SVector &a, double b) { return Combined(a, SVector(b), Multiply{}); }
SVector operator/(const SVector &a, const SVector &b) { return Combined(a, b, Divide{}); }
SVector operator%(const SVector &a, const SVector &b) { return Combined(a, b, Mod{}); }
SVector operator<(const SVector &a, const SVector &b) { return Combined(a, b, Less{}); }
SVector operator<=(const SVector &a, const SVector &b) { return Combined(a, b, LessEqual{}); }
SVector operator>(const SVector &a, const SVector &b) { return Combined(a, b, Greater{}); }
SVector operator>=(const SVector &a, const SVector &b) { return Combined(a, b, GreaterEqual{}); }
SVector operator==(const SVector &a, const SVector &b) { return Combined(a, b, Equal{}); }
SVector operator!=(const SVector &a, const SVector &b) { return Combined(a, b, NotEqual{}); }
SVector operator&&(const SVector &a, const SVector &b) { return Combined(a, b, And{}); }
SVector operator||(const SVector &a, const SVector &b) { return Combined(a, b, Or{}); }

SVector SVector::operator-() const {
  SVector result;
  Map(result, *this, Negate{});
  return result;
}

SVector SVector::operator!() const {
  SVector result;
  Map(result, *this, Not{});
  return result;
}

SVector SVector::operator()(int n) const {
  SVector result;
  Shift(result, *this, n);
  return result;
}

void VecPlus(SVector &out, const SVector &a, const SVector &b) { Combine(out, a, b, Plus{}); }
void VecMinus(SVector &out, const SVector &a, const SVector &b) { Combine(out, a, b, Minus{}); }
void VecMultiply(SVector &out, const SVector &a, const SVector &b) { Combine(out, a, b, Multiply{}); }
void VecDivide(SVector &out, const SVector &a, const SVector &b) { Combine(out, a, b, Divide{}); }
void VecMod(SVector &out, const SVector &a, const SVector &b) { Combine(out, a, b, Mod{}); }
void VecLT(SVector &out, const SVector &a, const SVector &b) { Combine(out, a, b, Less{}); }
void VecLE(SVector &out, const SVector &a, const SVector &b) { Combine(out, a, b, LessEqual{}); }
void VecGT(SVector &out, const SVector &a, const SVector &b) { Combine(out, a, b, Greater{}); }
void VecGE(SVector &out, const SVector &a, const SVector &b) { Combine(out, a, b, GreaterEqual{}); }
void VecEQ(SVector &out, const SVector &a, const SVector &b) { Combine(out, a, b, Equal{}); }
void VecNEQ(SVector &out, const SVector &a, const SVector &b) { Combine(out, a, b, NotEqual{}); }
void VecAND(SVector &out, const SVector &a, const SVector &b) { Combine(out, a, b, And{}); }
void VecOR(SVector &out, const SVector &a, const SVector &b) { Combine(out, a, b, Or{}); }
void VecUMinus(SVector &out, const SVector &a) { Map(out, a, Negate{}); }
void VecNot(SVector &out, const SVector &a) { Map(out, a, Not{}); }
void VecCopy(SVector &out, const SVector &in) { out = in; }
void VecRef(SVector &out, const SVector &in, int n) { Shift(out, in, n); }

}  // namespace trovenu
