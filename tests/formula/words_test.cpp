#include "trovenu/formula/words.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "tests/formula/engine.h"
#include "trovenu/formula/function_table.h"
#include "trovenu/support/korean.h"

namespace trovenu::tests {
namespace {

std::string Upper(std::string word) {
  for (char &c : word) c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
  return word;
}

TEST(Words, FamiliesAreComplete) {
  const struct {
    WordFamily family;
    int count;
  } kCases[] = {
      {WordFamily::Vector, 65},  {WordFamily::Data, 29},          {WordFamily::Math, 29},
      {WordFamily::Time, 14},    {WordFamily::Method, 5},         {WordFamily::Unit, 8},
      {WordFamily::Operator, 6}, {WordFamily::UnlistedVector, 1},
  };
  for (const auto &test : kCases) {
    EXPECT_EQ(std::ranges::count(Words(), test.family, &Word::family), test.count)
        << static_cast<int>(test.family);
  }
}

TEST(Words, AreKnownToTheirFamilyAlone) {
  const SCalc calc;
  for (const Word &word : Words()) {
    for (const std::string &text : {std::string(word.text), Upper(word.text)}) {
      EXPECT_EQ(FindWord(text.c_str(), word.family), &word) << Readable(text);
      // The units "월" and "년" are data words too.
      const bool both = text == "월"_kr || text == "년"_kr || Upper(text) == "MONTH" || Upper(text) == "YEAR";
      const auto is = [&](WordFamily family) {
        return word.family == family || (both && family == WordFamily::Data);
      };
      EXPECT_EQ(calc.IsVectorFunction(text.c_str()), is(WordFamily::Vector)) << Readable(text);
      EXPECT_EQ(calc.IsDataVariable(text.c_str()), is(WordFamily::Data)) << Readable(text);
      EXPECT_EQ(calc.IsMathFunction(text.c_str()), is(WordFamily::Math)) << Readable(text);
      EXPECT_EQ(calc.IsTimeFunction(text.c_str()), is(WordFamily::Time)) << Readable(text);
      EXPECT_EQ(calc.IsMethodVariable(text.c_str()), is(WordFamily::Method)) << Readable(text);
    }
  }
  for (const char *word : {"", "x", "closes", "clos", "c ", " c", "ma(", "종"_kr, "종가격"_kr}) {
    EXPECT_EQ(FindName(word), nullptr) << Readable(word);
  }
  EXPECT_EQ(FindName(nullptr), nullptr);
  EXPECT_EQ(FindWord(nullptr, WordFamily::Data), nullptr);
}

TEST(Words, HaveARuleBehindThem) {
  for (const Word &word : Words()) {
    const bool called = word.family == WordFamily::Vector || word.family == WordFamily::Data ||
                        word.family == WordFamily::Math || word.family == WordFamily::Time;
    const bool ruleless = std::string(word.text) == "좌우이동"_kr;
    EXPECT_EQ(FindFunction(word.function) != nullptr,
              (called && !ruleless) || word.family == WordFamily::UnlistedVector)
        << Readable(word.text);
  }
}

}  // namespace
}  // namespace trovenu::tests
