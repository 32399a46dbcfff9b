#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "tests/formula/engine.h"
#include "tests/formula/formula_properties.h"
#include "tests/formula/random_formula.h"
#include "trovenu/formula/function_table.h"
#include "trovenu/formula/words.h"

namespace trovenu::tests {
namespace {

TEST(RandomFormula, CallsEveryFunction) {
  RandomFormula source(1, RandomFormula::Words::AllCalls);
  for (int n = 0; n < 3000; ++n) source.Next();
  for (const Word &word : Words()) {
    const FunctionId id = word.function;
    // A word that no name can spell, and those that always are an error.
    if (FindFunction(id) == nullptr || id == FunctionId::Caret || id == FunctionId::Year ||
        id == FunctionId::Month) {
      continue;
    }
    EXPECT_TRUE(source.Used().contains(id)) << Readable(word.text);
  }
}

TEST(FormulaProperties, TailsAgreeWithTheWhole) {
  ExpectTailsAgree(1, 2500, 60, 0);
  ExpectTailsAgree(2, 1500, 40, 3);
}

TEST(FormulaProperties, EvaluationIsRepeatable) { ExpectRepeatable(3, 2000, 50); }

TEST(FormulaProperties, AnyTextEnds) { ExpectAnyTextEnds(5, 20000); }

}  // namespace
}  // namespace trovenu::tests
