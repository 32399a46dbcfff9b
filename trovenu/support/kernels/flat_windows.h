#pragma once

/// \file
/// Windows whose elements are all equal.

#include "trovenu/support/kernels/four_bars.h"

namespace trovenu {
namespace {

// Bars that are compared with each other: a first one and three newer ones, up to `width` bars away.
struct FlatProbe {
  explicit FlatProbe(int n) : width((n + 2) / 3), step(n - width) {}

  // 1 where all of them are equal, else 0. Prices repeat often, but hardly ever four times.
  TROVENU_INLINE Part Repeats(const double *first) const {
    const int half = width / 2;
    const Part x = Single(first[0]);
    const Part none = Single(0.0);
    const Part two = WhereEqual(x, Single(first[half]), Single(1.0), none);
    const Part three = WhereEqual(x, Single(first[width - half]), two, none);
    return WhereEqual(x, Single(first[width]), three, none);
  }

  const int width;
  // A window of n bars holds all bars that are compared with one of those a multiple of this.
  const int step;
};

// Probes that are looked at before a branch depends on them.
constexpr int kProbesAtOnce = 16;

// Writes x[i] for every window of n bars that ends at a bar i from `from` to `to` - 1 and whose elements are
// equal.
void MendFlatWindows(const double *x, int from, int to, int n, double *out) {
  if (n < 2) return;
  const FlatProbe probe(n);
  const int oldest = from - n + 1;
  const int end = to - probe.width;
  int s = (oldest + probe.step - 1) / probe.step * probe.step;
  while (s < end) {
    const int left = (end - s - 1) / probe.step + 1;
    const int probes = left < kProbesAtOnce ? left : kProbesAtOnce;
    const int behind = s + probes * probe.step;
    Part repeats = Single(0.0);
    for (const double *first = x + s; first != x + behind; first += probe.step) {
      repeats = LargerOf(repeats, probe.Repeats(first));
    }
    for (; First(repeats) != 0.0 && s < behind; s += probe.step) {
      if (First(probe.Repeats(x + s)) == 0.0) continue;
      int begin = s;
      int last = s;
      while (begin > oldest && begin > s - n && x[begin - 1] == x[s]) --begin;
      while (last + 1 < to && x[last + 1] == x[s]) ++last;
      for (int i = begin + n - 1 < from ? from : begin + n - 1; i <= last; ++i) out[i - from] = x[i];
      while (s + probe.step <= last) s += probe.step;
    }
    if (s < behind) s = behind;
  }
}

void KeepFlat(const double *x, int from, int to, int n, double *out) {
  if (n == 1) {
    for (int i = from; i < to; ++i) out[i] = x[i] == x[i] ? x[i] : out[i];
  }
  MendFlatWindows(x, from, to, n, out + from);
}

}  // namespace
}  // namespace trovenu
