#pragma once

/// \file
/// Windows whose elements are all equal.

namespace trovenu {
namespace {

// Writes x[i] for every window of n bars that ends at a bar i from `from` to `to` - 1 and whose elements are
// equal. Such a window holds two of the bars that are compared: those at the multiples of half its length.
void MendFlatWindows(const double *x, int from, int to, int n, double *out) {
  const int step = n / 2;
  if (step == 0) return;
  const int oldest = from - n + 1;
  for (int s = (oldest + step - 1) / step * step; s + step < to; s += step) {
    if (x[s] != x[s + step]) continue;
    int begin = s;
    int last = s;
    while (begin > oldest && begin > s - n && x[begin - 1] == x[s]) --begin;
    while (last + 1 < to && x[last + 1] == x[s]) ++last;
    for (int i = begin + n - 1 < from ? from : begin + n - 1; i <= last; ++i) out[i - from] = x[i];
    while (s + step <= last) s += step;
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
