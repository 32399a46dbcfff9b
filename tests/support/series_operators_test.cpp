#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "tests/support/series_tools.h"
#include "trovenu/support/series.h"

namespace trovenu {
namespace {

using Values = std::vector<double>;

struct Binary {
  const char *name;
  SVector (*returned)(const SVector &, const SVector &);
  void (*into)(SVector &, const SVector &, const SVector &);
  double (*ofElements)(double, double);
};

constexpr double kInf = kInfinity;

// A zero divisor of either sign gives 0.0; NaN is not zero, so it is true.
constexpr Binary kBinary[] = {
    {"+", operator+, VecPlus, [](double a, double b) { return a + b; }},
    {"-", operator-, VecMinus, [](double a, double b) { return a - b; }},
    {"*", operator*, VecMultiply, [](double a, double b) { return a * b; }},
    {"/", operator/, VecDivide, [](double a, double b) { return b == 0 ? 0.0 : a / b; }},
    {"%", operator%, VecMod, [](double a, double b) { return b == 0 ? 0.0 : std::fmod(a, b); }},
    {"<", operator<, VecLT, [](double a, double b) { return a < b ? 1.0 : 0.0; }},
    {"<=", operator<=, VecLE, [](double a, double b) { return a <= b ? 1.0 : 0.0; }},
    {">", operator>, VecGT, [](double a, double b) { return a > b ? 1.0 : 0.0; }},
    {">=", operator>=, VecGE, [](double a, double b) { return a >= b ? 1.0 : 0.0; }},
    {"==", operator==, VecEQ, [](double a, double b) { return a == b ? 1.0 : 0.0; }},
    {"!=", operator!=, VecNEQ, [](double a, double b) { return a != b ? 1.0 : 0.0; }},
    {"&&", operator&&, VecAND, [](double a, double b) { return a != 0 && b != 0 ? 1.0 : 0.0; }},
    {"||", operator||, VecOR, [](double a, double b) { return a != 0 || b != 0 ? 1.0 : 0.0; }},
};

TEST(SeriesOperators, WorkOnEachElement) {
  const Values elements = {7.5, -7.5, 2.0, -2.0, 3.0, 0.0, -0.0, kInf, -kInf, kNaN, 5e-324, 0.3, 0.1 + 0.2};
  for (const double x : elements) {
    for (const double y : elements) {
      // Three bars, of which the first is not valid; the newest holds the pair.
      const SVector a = Series({7, 1, x}, 1);
      const SVector b = Series({8, 1, y}, 1);
      for (const Binary &operation : kBinary) {
        const double want = operation.ofElements(x, y);
        SCOPED_TRACE(testing::Message() << x << " " << operation.name << " " << y);
        SVector out(2.0);
        operation.into(out, a, b);
        EXPECT_TRUE(Same(out[2], want)) << out[2];
        EXPECT_TRUE(Same(operation.returned(a, b)[2], want));
        EXPECT_TRUE(Same(operation.returned(a, SVector(y))[2], want));
        EXPECT_TRUE(Same(operation.returned(SVector(x), b)[2], want));
        ExpectSameSeries(operation.returned(SVector(x), SVector(y)), SVector(want));
      }
    }
  }
}

TEST(SeriesOperators, HaveTheSmallerSizeAndTheLargerStartIndex) {
  constexpr int kNumber = -1;  // as a size
  const struct {
    int sizeA, startA, sizeB, startB, size, start;
  } cases[] = {{8, 0, 8, 0, 8, 0},
               {8, 2, 8, 5, 8, 5},
               {8, 5, 8, 2, 8, 5},
               {8, 2, 6, 1, 6, 2},
               {8, 3, kNumber, 0, 8, 3},
               {8, 3, 1, 0, 1, 3},
               {0, 0, 8, 4, 0, 4},
               {8, 1, 0, 6, 0, 6},
               {kNumber, 0, 0, 2, 0, 2},
               {1, 0, 1, 0, 1, 0},
               {8, 10008, 8, 0, 8, 10008},
               {8, kNoValidBar, 8, 3, 8, kNoValidBar},
               {8, kGreatestInt, kNumber, 0, 8, kGreatestInt},
               {8, -3, 8, -5, 8, -3}};
  const auto make = [](int size, int start, double value) {
    if (size == kNumber) return SVector(value);
    return Series(Values(static_cast<std::size_t>(size), value), start);
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(testing::Message() << "case " << (&c - cases));
    const SVector a = make(c.sizeA, c.startA, 5.0);
    const SVector b = make(c.sizeB, c.startB, 3.0);
    for (const Binary &operation : kBinary) {
      const double value = operation.returned(SVector(5.0), SVector(3.0))[0];
      const Values want(static_cast<std::size_t>(c.size), value);
      SpoilPool(c.size);
      ExpectSeries(operation.returned(a, b), want, c.start);
      for (const int old : {0, 1, 6, 8, 30}) {
        SVector out = Series(Values(static_cast<std::size_t>(old), 9.0), 2);
        operation.into(out, a, b);
        ExpectSeries(out, want, c.start);
      }
    }
  }
}

TEST(SeriesOperators, MayWriteIntoAnOperand) {
  const auto make = [](int size, int start) {
    return size < 0 ? SVector(4.5) : Series(RandomWalk(size, 900.0, static_cast<unsigned>(size)), start);
  };
  const std::pair<int, int> kinds[] = {{-1, 0},  {0, 0},  {1, 0},           {40, 3},
                                       {40, 30}, {25, 0}, {40, kNoValidBar}};
  for (const Binary &operation : kBinary) {
    for (const auto &[sizeA, startA] : kinds) {
      for (const auto &[sizeB, startB] : kinds) {
        SCOPED_TRACE(testing::Message() << sizeA << " " << operation.name << " " << sizeB);
        const SVector a = make(sizeA, startA);
        const SVector b = make(sizeB, startB);
        const SVector want = operation.returned(a, b);
        SVector left(a);
        operation.into(left, left, b);
        ExpectSameSeries(left, want);
        SVector right(b);
        operation.into(right, a, right);
        ExpectSameSeries(right, want);
      }
      SVector both = make(sizeA, startA);
      const SVector want = operation.returned(both, both);
      operation.into(both, both, both);
      ExpectSameSeries(both, want);
    }
  }
}

TEST(SeriesOperators, NegateAndDeny) {
  const SVector series = Series({7, 2.0, -2.0, 0.0, -0.0, 5e-324, kInf, kNaN}, 1);
  ExpectSeries(-series, {0, -2.0, 2.0, -0.0, 0.0, -5e-324, -kInf, kNaN}, 1);
  ExpectSeries(!series, {0, 0.0, 0.0, 1.0, 1.0, 0.0, 0.0, 0.0}, 1);
  EXPECT_TRUE((-SVector(2.0)).IsConstant() && (!SVector(2.0)).IsConstant());
}

TEST(SeriesShift, ReadsEarlierOrLaterElements) {
  for (const int size : {0, 1, 2, 9}) {
    for (const int start : {0, 1, 4, 8, 9, kNoValidBar, kGreatestInt, -2, kLeastInt}) {
      Values x;
      for (int i = 0; i < size; ++i) x.push_back(i + 1.0);
      const SVector source = Series(x, start);
      for (const int n : {0, 1, 3, 8, 9, 10, kGreatestInt, -1, -3, -8, -9, -10, -kGreatestInt, kLeastInt}) {
        SCOPED_TRACE(testing::Message() << "size " << size << " start " << start << " n " << n);
        const long long moved = std::min<long long>(static_cast<long long>(start) + n, kNoValidBar);
        const long long first = n < 0 ? std::max(moved, 0LL) : std::max<long long>(moved, -kNoValidBar);
        Values want;
        for (long long i = 0; i < size; ++i) {
          const long long from = i - n;
          want.push_back(from >= 0 && from < size ? x[static_cast<std::size_t>(from)] : 0.0);
        }
        SpoilPool(size);
        ExpectSeries(source(n), want, static_cast<int>(first));
        SVector out(3.0);
        VecRef(out, source, n);
        ExpectSameSeries(out, source(n));
        out = source;
        VecRef(out, out, n);
        ExpectSameSeries(out, source(n));
      }
    }
  }
}

}  // namespace
}  // namespace trovenu
