#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "tests/formula/bars.h"
#include "trovenu/formula/calc.h"

namespace trovenu::tests {

/// Four bars that can be worked with by head, the same in every test.
Bars FourBars();

/// Bars of a made-up intraday market, two to four a day, some of them flat; alike for the same seed.
Bars RandomBars(int count, std::uint32_t seed);

/// An engine that is bound to bars of its own.
struct Engine {
  explicit Engine(Bars itsBars = FourBars()) : bars(std::move(itsBars)) { bars.Bind(calc); }
  // The engine points at the bars.
  Engine(const Engine &) = delete;
  Engine &operator=(const Engine &) = delete;

  SVector Calculate(const std::string &formula) {
    calc.SetExpression(formula.c_str());
    return calc.Calculate();
  }
  SVector Calculate(const std::string &formula, int start) {
    calc.SetExpression(formula.c_str());
    return calc.Calculate(start);
  }
  /// The first message.
  std::string Message() const { return calc.errorText.c_str(); }

  Bars bars;
  SCalc calc;
};

/// Code-page text for a person.
std::string Readable(const std::string &codePage);

/// All elements, 0.0 for those below the start index.
std::vector<double> ValuesOf(const SVector &series);

/// Whether two series agree in kind, size, start index and every valid element, bit for bit.
testing::AssertionResult Agree(const SVector &a, const SVector &b);

}  // namespace trovenu::tests
