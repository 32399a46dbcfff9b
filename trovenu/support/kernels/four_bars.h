#pragma once

/// \file
/// The values of four consecutive bars, computed side by side: two registers of 16 bytes in the baseline
/// build, one of 32 bytes with AVX2, plain numbers where the compiler has no vector types, or where
/// TROVENU_PLAIN_NUMBERS asks for them. Every operation is that of plain numbers, element by element, so all
/// builds give the same bits.

#include <cmath>
#include <cstddef>

#if defined(__GNUC__) && !defined(TROVENU_PLAIN_NUMBERS)
#define TROVENU_VECTORS
#endif

#if defined(TROVENU_VECTORS) && defined(__SSE2__)
#include <immintrin.h>
#endif

#if defined(__GNUC__)
#define TROVENU_INLINE inline __attribute__((always_inline))
#define TROVENU_INLINE_LAMBDA __attribute__((always_inline))
#define TROVENU_NO_INLINE __attribute__((noinline))
#else
#define TROVENU_INLINE inline
#define TROVENU_INLINE_LAMBDA
#define TROVENU_NO_INLINE
#endif

namespace trovenu {
namespace {

// A Part is what one instruction works on.
#if defined(TROVENU_VECTORS) && defined(__AVX__)

using Part = double __attribute__((vector_size(32)));
// The same in memory, at any element.
// NOLINTNEXTLINE(modernize-use-using): Clang drops the alignment where it stands behind "using".
typedef double PartAt __attribute__((vector_size(32), aligned(alignof(double)), may_alias));
static_assert(alignof(PartAt) == alignof(double));

struct FourBars {
  Part all;
};

/// The bars that stand at `x`, `x` + 1 and so on.
TROVENU_INLINE FourBars Load(const double *x) { return {*reinterpret_cast<const PartAt *>(x)}; }

TROVENU_INLINE void Store(double *out, FourBars bars) { *reinterpret_cast<PartAt *>(out) = bars.all; }

/// A number at every bar.
TROVENU_INLINE FourBars All(double number) { return {Part{number, number, number, number}}; }

template <class Operation>
TROVENU_INLINE FourBars Each(FourBars a, Operation operation) {
  return {operation(a.all)};
}

template <class Operation>
TROVENU_INLINE FourBars Each(FourBars a, FourBars b, Operation operation) {
  return {operation(a.all, b.all)};
}

template <class Operation>
TROVENU_INLINE FourBars Each(FourBars a, FourBars b, FourBars c, Operation operation) {
  return {operation(a.all, b.all, c.all)};
}

template <class Operation>
TROVENU_INLINE FourBars Each(FourBars a, FourBars b, FourBars c, FourBars d, Operation operation) {
  return {operation(a.all, b.all, c.all, d.all)};
}

TROVENU_INLINE Part RootOf(Part x) { return _mm256_sqrt_pd(x); }
TROVENU_INLINE Part MagnitudeOf(Part x) { return _mm256_andnot_pd(_mm256_set1_pd(-0.0), x); }
TROVENU_INLINE Part LargerOf(Part x, Part y) { return _mm256_max_pd(x, y); }
TROVENU_INLINE Part SmallerOf(Part x, Part y) { return _mm256_min_pd(x, y); }

/// The value of the bar two places before each of `now`; `before` are the four bars before.
TROVENU_INLINE FourBars TwoBarsEarlier(FourBars before, FourBars now) {
  return {__builtin_shufflevector(before.all, now.all, 2, 3, 4, 5)};
}

/// Bars that stand `apart` elements from each other, the first of them at `x`.
TROVENU_INLINE FourBars Gather(const double *x, std::ptrdiff_t apart) {
  return {Part{x[0], x[apart], x[2 * apart], x[3 * apart]}};
}

TROVENU_INLINE void Scatter(double *out, std::ptrdiff_t apart, FourBars bars) {
  for (int k = 0; k < 4; ++k) out[k * apart] = bars.all[k];
}

#elif defined(TROVENU_VECTORS)

using Part = double __attribute__((vector_size(16)));
// NOLINTNEXTLINE(modernize-use-using): Clang drops the alignment where it stands behind "using".
typedef double PartAt __attribute__((vector_size(16), aligned(alignof(double)), may_alias));
static_assert(alignof(PartAt) == alignof(double));

struct FourBars {
  Part older;
  Part newer;
};

TROVENU_INLINE FourBars Load(const double *x) {
  return {*reinterpret_cast<const PartAt *>(x), *reinterpret_cast<const PartAt *>(x + 2)};
}

TROVENU_INLINE void Store(double *out, FourBars bars) {
  *reinterpret_cast<PartAt *>(out) = bars.older;
  *reinterpret_cast<PartAt *>(out + 2) = bars.newer;
}

TROVENU_INLINE FourBars All(double number) { return {Part{number, number}, Part{number, number}}; }

template <class Operation>
TROVENU_INLINE FourBars Each(FourBars a, Operation operation) {
  return {operation(a.older), operation(a.newer)};
}

template <class Operation>
TROVENU_INLINE FourBars Each(FourBars a, FourBars b, Operation operation) {
  return {operation(a.older, b.older), operation(a.newer, b.newer)};
}

template <class Operation>
TROVENU_INLINE FourBars Each(FourBars a, FourBars b, FourBars c, Operation operation) {
  return {operation(a.older, b.older, c.older), operation(a.newer, b.newer, c.newer)};
}

template <class Operation>
TROVENU_INLINE FourBars Each(FourBars a, FourBars b, FourBars c, FourBars d, Operation operation) {
  return {operation(a.older, b.older, c.older, d.older), operation(a.newer, b.newer, c.newer, d.newer)};
}

#if defined(__SSE2__)
TROVENU_INLINE Part RootOf(Part x) { return _mm_sqrt_pd(x); }
TROVENU_INLINE Part MagnitudeOf(Part x) {
  // All bits but the sign. The other way round, without the bits of -0.0, would need a copy of those each
  // time.
  return _mm_and_pd(_mm_castsi128_pd(_mm_set1_epi64x(0x7fffffffffffffff)), x);
}
TROVENU_INLINE Part LargerOf(Part x, Part y) { return _mm_max_pd(x, y); }
TROVENU_INLINE Part SmallerOf(Part x, Part y) { return _mm_min_pd(x, y); }
#else
TROVENU_INLINE Part RootOf(Part x) { return Part{std::sqrt(x[0]), std::sqrt(x[1])}; }
TROVENU_INLINE Part MagnitudeOf(Part x) { return Part{std::fabs(x[0]), std::fabs(x[1])}; }
TROVENU_INLINE Part LargerOf(Part x, Part y) { return x > y ? x : y; }
TROVENU_INLINE Part SmallerOf(Part x, Part y) { return x < y ? x : y; }
#endif

TROVENU_INLINE FourBars TwoBarsEarlier(FourBars before, FourBars now) { return {before.newer, now.older}; }

TROVENU_INLINE FourBars Gather(const double *x, std::ptrdiff_t apart) {
  return {Part{x[0], x[apart]}, Part{x[2 * apart], x[3 * apart]}};
}

TROVENU_INLINE void Scatter(double *out, std::ptrdiff_t apart, FourBars bars) {
  for (int k = 0; k < 2; ++k) {
    out[k * apart] = bars.older[k];
    out[(k + 2) * apart] = bars.newer[k];
  }
}

#else

using Part = double;

struct FourBars {
  Part bar[4];
};

inline FourBars Load(const double *x) { return {{x[0], x[1], x[2], x[3]}}; }

inline void Store(double *out, FourBars bars) {
  for (int k = 0; k < 4; ++k) out[k] = bars.bar[k];
}

inline FourBars All(double number) { return {{number, number, number, number}}; }

template <class Operation>
FourBars Each(FourBars a, Operation operation) {
  return {{operation(a.bar[0]), operation(a.bar[1]), operation(a.bar[2]), operation(a.bar[3])}};
}

template <class Operation>
FourBars Each(FourBars a, FourBars b, Operation operation) {
  return {{operation(a.bar[0], b.bar[0]), operation(a.bar[1], b.bar[1]), operation(a.bar[2], b.bar[2]),
           operation(a.bar[3], b.bar[3])}};
}

template <class Operation>
FourBars Each(FourBars a, FourBars b, FourBars c, Operation operation) {
  return {{operation(a.bar[0], b.bar[0], c.bar[0]), operation(a.bar[1], b.bar[1], c.bar[1]),
           operation(a.bar[2], b.bar[2], c.bar[2]), operation(a.bar[3], b.bar[3], c.bar[3])}};
}

template <class Operation>
FourBars Each(FourBars a, FourBars b, FourBars c, FourBars d, Operation operation) {
  return {
      {operation(a.bar[0], b.bar[0], c.bar[0], d.bar[0]), operation(a.bar[1], b.bar[1], c.bar[1], d.bar[1]),
       operation(a.bar[2], b.bar[2], c.bar[2], d.bar[2]), operation(a.bar[3], b.bar[3], c.bar[3], d.bar[3])}};
}

inline Part RootOf(Part x) { return std::sqrt(x); }
inline Part MagnitudeOf(Part x) { return std::fabs(x); }
inline Part LargerOf(Part x, Part y) { return x > y ? x : y; }
inline Part SmallerOf(Part x, Part y) { return x < y ? x : y; }

inline FourBars TwoBarsEarlier(FourBars before, FourBars now) {
  return {{before.bar[2], before.bar[3], now.bar[0], now.bar[1]}};
}

inline FourBars Gather(const double *x, std::ptrdiff_t apart) {
  return {{x[0], x[apart], x[2 * apart], x[3 * apart]}};
}

inline void Scatter(double *out, std::ptrdiff_t apart, FourBars bars) {
  for (int k = 0; k < 4; ++k) out[k * apart] = bars.bar[k];
}

#endif

TROVENU_INLINE FourBars operator+(FourBars a, FourBars b) {
  return Each(a, b, [](Part x, Part y) { return x + y; });
}
TROVENU_INLINE FourBars operator-(FourBars a, FourBars b) {
  return Each(a, b, [](Part x, Part y) { return x - y; });
}
TROVENU_INLINE FourBars operator*(FourBars a, FourBars b) {
  return Each(a, b, [](Part x, Part y) { return x * y; });
}
TROVENU_INLINE FourBars operator/(FourBars a, FourBars b) {
  return Each(a, b, [](Part x, Part y) { return x / y; });
}

/// The larger one; b where one of them is NaN.
TROVENU_INLINE FourBars Larger(FourBars a, FourBars b) {
  return Each(a, b, [](Part x, Part y) { return LargerOf(x, y); });
}
/// The smaller one; b where one of them is NaN.
TROVENU_INLINE FourBars Smaller(FourBars a, FourBars b) {
  return Each(a, b, [](Part x, Part y) { return SmallerOf(x, y); });
}

/// The same for a single bar, for what is written once for both.
TROVENU_INLINE double Larger(double a, double b) { return a > b ? a : b; }
TROVENU_INLINE double Smaller(double a, double b) { return a < b ? a : b; }

/// `V` is FourBars, or double for a single bar.
template <class V>
TROVENU_INLINE V LoadAs(const double *x) {
  if constexpr (sizeof(V) == sizeof(double)) {
    return *x;
  } else {
    return Load(x);
  }
}
template <class V>
TROVENU_INLINE V AllAs(double number) {
  if constexpr (sizeof(V) == sizeof(double)) {
    return number;
  } else {
    return All(number);
  }
}

/// `value`, but `number` where `test` is 0.
TROVENU_INLINE FourBars UnlessZero(FourBars test, FourBars value, double number) {
  return Each(test, value, All(number), [](Part t, Part v, Part n) { return t == 0.0 ? n : v; });
}

TROVENU_INLINE FourBars SquareRoot(FourBars a) {
  return Each(a, [](Part x) { return RootOf(x); });
}

TROVENU_INLINE double SquareRoot(double a) { return std::sqrt(a); }

TROVENU_INLINE FourBars Magnitude(FourBars a) {
  return Each(a, [](Part x) { return MagnitudeOf(x); });
}

/// A number as the first element of a part, and that element.
TROVENU_INLINE Part Single(double number) { return Part{number}; }
TROVENU_INLINE double First(Part part) {
#if defined(TROVENU_VECTORS)
  return part[0];
#else
  return part;
#endif
}

/// `value` where a is below b, or equals it, else `other`; no branch is taken.
TROVENU_INLINE Part WhereBelow(Part a, Part b, Part value, Part other) { return a < b ? value : other; }
TROVENU_INLINE Part WhereEqual(Part a, Part b, Part value, Part other) { return a == b ? value : other; }

TROVENU_INLINE FourBars WhereBelow(FourBars a, FourBars b, FourBars value, FourBars other) {
  return Each(a, b, value, other, [](Part x, Part y, Part v, Part o) { return WhereBelow(x, y, v, o); });
}

}  // namespace
}  // namespace trovenu
