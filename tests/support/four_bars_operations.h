#pragma once

/// \file
/// Every operation on four bars in the build of four_bars.h that the including file asks for.

#include <vector>

#include "trovenu/support/kernels/four_bars.h"

namespace trovenu {

/// The results, four elements each, for 16 elements: those of the vectors of the compiler, and those of plain
/// numbers.
std::vector<double> VectorOperations(const double *x);
std::vector<double> PlainOperations(const double *x);

namespace {

std::vector<double> Operations(const double *x) {
  const FourBars a = Load(x);
  const FourBars b = Load(x + 4);
  const FourBars c = Load(x + 8);
  const FourBars d = Load(x + 12);
  std::vector<double> results;
  for (const FourBars bars :
       {a + b, a - b, a * b, a / b, Larger(a, b), Smaller(a, b), UnlessZero(a, b, x[0]), SquareRoot(a),
        Magnitude(a), WhereBelow(a, b, c, d), TwoBarsEarlier(a, b), Gather(x + 1, 5), All(x[2])}) {
    double elements[4];
    Store(elements, bars);
    results.insert(results.end(), elements, elements + 4);
  }
  results.resize(results.size() + 12);
  Scatter(results.data() + results.size() - 12, 3, a);
  for (const Part part : {Single(x[5]), WhereBelow(Single(x[0]), Single(x[1]), Single(x[2]), Single(x[3])),
                          WhereEqual(Single(x[4]), Single(x[5]), Single(x[6]), Single(x[7]))}) {
    results.push_back(First(part));
  }
  return results;
}

}  // namespace
}  // namespace trovenu
