#include "tests/formula/formula_properties.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "tests/formula/engine.h"
#include "tests/formula/random_formula.h"
#include "trovenu/formula/postfix/carried.h"
#include "trovenu/formula/words.h"

namespace trovenu::tests {
namespace {

Bars BarsFrom(int count, std::uint32_t seed, int firstBar) {
  Bars bars = RandomBars(count, seed);
  for (SVector *series : bars.Columns()) series->SetStartIndex(firstBar);
  return bars;
}

// An engine that reads `formula` over these bars, with the user functions of `RandomFormula`.
struct Reader {
  Reader(Bars &bars, const std::string &formula) {
    static SFunctionList functions = RandomFormula::UserFunctions();
    bars.Bind(calc);
    calc.SetFunction(&functions);
    calc.SetExpression(formula.c_str());
  }
  SCalc calc;
};

struct Outcome {
  SVector value;
  int errors;
  bool full;
};

Outcome Whole(Bars &bars, const std::string &formula) {
  Reader reader(bars, formula);
  SCalc &calc = reader.calc;
  SVector value = calc.Calculate();
  if (calc.errorCount > 0) ADD_FAILURE() << Readable(calc.errorText.c_str()) << " in " << Readable(formula);
  return {std::move(value), calc.errorCount, calc.fullCalc != 0};
}

// The first bar at which the tail from bar `first` on differs from the whole, or -1.
int FirstDifference(Bars &bars, const std::string &formula, const SVector &whole, int first) {
  const SVector tail = Reader(bars, formula).calc.Calculate(first - whole.GetStartIndex());
  for (int i = first; i < whole.GetSize(); ++i) {
    if (!SameNumber(whole[i], tail[i])) return i;
  }
  return -1;
}

bool SameBars(Bars &a, Bars &b) {
  const std::vector<SVector *> left = a.Columns();
  const std::vector<SVector *> right = b.Columns();
  for (std::size_t i = 0; i < left.size(); ++i) {
    if (!Agree(*left[i], *right[i])) return false;
    // The elements below the start index too.
    if (!std::equal(left[i]->data, left[i]->data + left[i]->size, right[i]->data, SameNumber)) return false;
  }
  return true;
}

}  // namespace

void ExpectTailsAgree(std::uint32_t seed, int formulas, int bars, int firstBar) {
  std::mt19937 random(seed);
  Bars data = BarsFrom(bars, seed, firstBar);
  RandomFormula source(seed, RandomFormula::Words::TailCalls);
  int compared = 0;
  for (int n = 0; n < formulas; ++n) {
    const std::string formula = source.Next();
    const Outcome whole = Whole(data, formula);
    if (whole.full) continue;
    ASSERT_EQ(whole.value.GetSize(), bars) << Readable(formula);
    const int start = whole.value.GetStartIndex();
    if (start >= bars) continue;
    const int between = start + static_cast<int>(random() % static_cast<unsigned>(bars - start));
    for (const int first : {start, between, bars - 1}) {
      const int different = FirstDifference(data, formula, whole.value, first);
      EXPECT_EQ(different, -1) << "in the tail from bar " << first << " of " << Readable(formula);
      if (different >= 0) break;
    }
    ++compared;
  }
  EXPECT_GT(compared, formulas * 3 / 4);
}

void ExpectRepeatable(std::uint32_t seed, int formulas, int bars) {
  Bars data = BarsFrom(bars, seed, 1);
  Bars before = BarsFrom(bars, seed, 1);
  RandomFormula source(seed, RandomFormula::Words::AllCalls);
  for (int n = 0; n < formulas; ++n) {
    const std::string formula = source.Next();
    const Outcome first = Whole(data, formula);
    const Outcome second = Whole(data, formula);
    EXPECT_TRUE(Agree(first.value, second.value)) << Readable(formula);
    Reader(data, formula).calc.Calculate(bars / 2);
    ASSERT_TRUE(SameBars(data, before)) << Readable(formula);
  }
}

namespace {

class RandomText {
 public:
  explicit RandomText(std::uint32_t seed) : random_(seed), source_(seed, RandomFormula::Words::AllCalls) {}

  std::string Next() {
    switch (UpTo(3)) {
      case 0:
        return Bytes();
      case 1:
        return Tokens();
      default:
        return Mutated();
    }
  }

 private:
  int UpTo(int n) { return static_cast<int>(random_() % static_cast<unsigned>(n)); }
  // Mostly short, up to what the buffer holds and a little more.
  int Length() { return UpTo(10) == 0 ? UpTo(kExpressionBytes + 20) : UpTo(200); }

  std::string Bytes() {
    std::string text;
    const bool anyByte = UpTo(2) == 0;
    for (int n = Length(); n > 0; --n) {
      text += anyByte ? static_cast<char>(1 + UpTo(255)) : "cx_1.+-*/%(),;=<>!&|^ \n#\xB0\xFE"[UpTo(27)];
    }
    return text;
  }

  std::string Token() {
    const char *const kSigns[] = {"+",  "-",  "*",  "/",   "%",  "(",  "(",   ")",  ")",  ",", ",",
                                  ";",  "=",  "==", "<",   "<=", ">=", ">",   "!",  "!=", "&", "|",
                                  "&&", "||", "^",  "//",  "/*", "*/", "x",   "y",  "x=", "0", "1",
                                  "2",  "5",  "9",  "0.5", "30", "-1", "1e9", "\n", "'"};
    if (UpTo(3) > 0) return kSigns[UpTo(static_cast<int>(std::size(kSigns)))];
    const Word &word = Words()[static_cast<std::size_t>(UpTo(static_cast<int>(Words().size())))];
    return word.family == WordFamily::Operator || UpTo(3) == 0 ? word.text : std::string(word.text) + "(";
  }

  std::string Tokens() {
    std::string text;
    for (const int length = Length(); static_cast<int>(text.size()) < length;) {
      text += Token();
      if (UpTo(3) == 0) text += ' ';
    }
    return text;
  }

  std::string Mutated() {
    std::string text = source_.Next();
    for (int changes = 1 + UpTo(4); changes > 0 && !text.empty(); --changes) {
      const auto at = static_cast<std::size_t>(UpTo(static_cast<int>(text.size())));
      const auto length = static_cast<std::size_t>(UpTo(UpTo(8) == 0 ? 60 : 3)) + 1;
      switch (UpTo(4)) {
        case 0:
          text.erase(at, length);
          break;
        case 1:
          text.insert(at, Token());
          break;
        case 2:
          text.insert(static_cast<std::size_t>(UpTo(static_cast<int>(text.size()))), text.substr(at, length));
          break;
        default:
          text[at] = static_cast<char>(1 + UpTo(255));
      }
    }
    return text;
  }

  std::mt19937 random_;
  RandomFormula source_;
};

void ExpectTokensEnd(const std::string &text) {
  SCalc calc;
  calc.SetExpression(text.c_str());
  const char *last = calc.readPointer;
  int standing = 0;
  while (*calc.readPointer != '\0') {
    const TokenValue token = calc.GetToken();
    if (calc.readPointer == last) {
      // Only what starts no token stays, and the grammar steps over it.
      ASSERT_EQ(token, PRINT) << Readable(text);
      ++calc.readPointer;
      ++standing;
    }
    last = calc.readPointer;
  }
  EXPECT_EQ(calc.GetToken(), PRINT);
  ASSERT_LE(standing, kExpressionBytes);
}

}  // namespace

void ExpectAnyTextEnds(std::uint32_t seed, int texts) {
  Bars data = BarsFrom(40, seed, 1);
  Bars before = BarsFrom(40, seed, 1);
  RandomText source(seed);
  SFunctionList functions = RandomFormula::UserFunctions();
  for (int n = 0; n < texts; ++n) {
    const std::string text = source.Next();
    ExpectTokensEnd(text);
    // One body after the other becomes any text.
    functions[n % functions.Size].Expression = source.Next().c_str();

    SCalc calc;
    data.Bind(calc);
    calc.SetFunction(&functions);
    calc.SetExpression(text.c_str());
    const SVector whole = calc.Calculate();
    EXPECT_EQ(*calc.readPointer, '\0') << Readable(text);
    if (calc.errorCount > 0) {
      EXPECT_EQ(whole.GetStartIndex(), kNoValidBar) << Readable(text);
    }
    calc.InitCalc();
    calc.SetExpression(text.c_str());
    calc.Calculate(30);
    EXPECT_EQ(*calc.readPointer, '\0') << Readable(text);
    ASSERT_TRUE(SameBars(data, before)) << Readable(text);

    // A fresh program costs a hundred items and as many for each function.
    if (n % 8 != 0) continue;
    // Programs change bound series.
    Bars own = data;
    SCalc compiled;
    own.Bind(compiled);
    compiled.SetFunction(&functions);
    compiled.SetExpression(text.c_str());
    compiled.InfixToPostFix();
    ASSERT_LT(compiled.programStack->Top, kStackItems);
    compiled.CalcOp(nullptr);
    compiled.CalcOp(nullptr);
    FindNotCarried(text.c_str(), &functions);
  }
}

}  // namespace trovenu::tests
