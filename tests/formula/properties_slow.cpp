#include <gtest/gtest.h>

#include "tests/formula/formula_properties.h"

namespace trovenu::tests {
namespace {

TEST(FormulaPropertiesSlow, TailsAgreeWithTheWhole) {
  for (std::uint32_t seed = 100; seed < 140; ++seed) ExpectTailsAgree(seed, 2500, 60, seed % 3 == 0 ? 5 : 0);
  // More bars than the strips of the moving windows.
  ExpectTailsAgree(140, 2000, 2500, 0);
}

TEST(FormulaPropertiesSlow, EvaluationIsRepeatable) {
  for (std::uint32_t seed = 200; seed < 220; ++seed) ExpectRepeatable(seed, 2500, 70);
}

TEST(FormulaPropertiesSlow, AnyTextEnds) {
  for (std::uint32_t seed = 400; seed < 410; ++seed) ExpectAnyTextEnds(seed, 50000);
}

}  // namespace
}  // namespace trovenu::tests
