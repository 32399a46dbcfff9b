#include <gtest/gtest.h>

#include <string>

#include "tests/formula/engine.h"
#include "trovenu/support/korean.h"

namespace trovenu::tests {
namespace {

TEST(Variables, ANewOneHoldsTheNumberOne) {
  SCalc calc;
  EXPECT_EQ(calc.Look("x", 0), nullptr);
  EXPECT_EQ(calc.tableCount, 0);

  Name *const x = calc.Look("x", 1);
  ASSERT_NE(x, nullptr);
  EXPECT_STREQ(x->string, "x");
  EXPECT_EQ(x->link, 0);
  EXPECT_TRUE(x->value.IsConstant());
  EXPECT_EQ(x->value[0], 1.0);
  const Name *const y = calc.Insert("y");
  EXPECT_EQ(calc.Look("y", 0), y);
  EXPECT_EQ(calc.Insert("x"), x);
  EXPECT_EQ(calc.tableCount, 2);
  EXPECT_EQ(calc.table[0].get(), x);

  const Name fresh;
  EXPECT_STREQ(fresh.string, "");
  EXPECT_EQ(fresh.value[0], 1.0);
}

TEST(Variables, AreFoundWithoutRegardToAsciiCase) {
  SCalc calc;
  const struct {
    const char *name;
    const char *other;
    bool same;
  } kCases[] = {
      {"Value_1", "vALUE_1", true},
      {"종가A"_kr, "종가a"_kr, true},
      {"가격"_kr, "가겨"_kr, false},
      {"x", "xx", false},
      // Two characters of the code page's extension, which end in a letter.
      {"\xB0\x41", "\xB0\x61", false},
  };
  for (const auto &test : kCases) {
    calc.ClearNameTable();
    const Name *const entry = calc.Insert(test.name);
    EXPECT_EQ(calc.Look(test.other, 0) == entry, test.same) << Readable(test.other);
    EXPECT_STREQ(entry->string, test.name);
  }
  EXPECT_EQ(calc.Look(nullptr, 1), nullptr);
}

TEST(Variables, ClearNameTableRemovesAll) {
  SCalc calc;
  calc.Insert("x");
  calc.errorCount = 3;
  calc.ClearNameTable();
  EXPECT_EQ(calc.tableCount, 0);
  EXPECT_EQ(calc.Look("x", 0), nullptr);
  EXPECT_EQ(calc.errorCount, 3);

  calc.Insert("x");
  calc.calcStart = 7;
  calc.InitCalc();
  EXPECT_EQ(calc.tableCount, 0);
  EXPECT_EQ(calc.Look("x", 0), nullptr);
  EXPECT_EQ(calc.errorCount, 0);
  EXPECT_EQ(calc.calcStart, 0);
}

TEST(Variables, CopyTableCopiesTheValues) {
  SCalc calc;
  calc.Insert("x")->value = Series({1, 2, 3}, 1);
  calc.Insert("y")->link = 5;
  NamePointer copies[3];
  SCalc::CopyTable(calc.table, copies, 2);
  ASSERT_NE(copies[0], nullptr);
  EXPECT_NE(copies[0], calc.table[0]);
  EXPECT_STREQ(copies[0]->string, "x");
  EXPECT_TRUE(Agree(copies[0]->value, Series({1, 2, 3}, 1)));
  EXPECT_EQ(copies[1]->link, 0);
  EXPECT_EQ(copies[2], nullptr);

  copies[0]->value[2] = 9.0;
  EXPECT_EQ(calc.table[0]->value[2], 3.0);
}

TEST(Variables, ALongNameIsRefused) {
  const std::string fits(kNameBytes - 1, 'n');
  Engine engine;
  EXPECT_EQ(engine.Calculate(fits + "=7;" + fits)[3], 7.0);
  EXPECT_EQ(engine.calc.errorCount, 0);

  const SVector result = engine.Calculate(fits + "n = 8; x = " + fits);
  EXPECT_EQ(result.GetStartIndex(), kNoValidBar);
  EXPECT_EQ(engine.calc.errorCount, 1);
  EXPECT_EQ(Readable(engine.Message()), "변수의 이름이 너무 깁니다.");
  // What stands behind it has been evaluated.
  EXPECT_EQ(engine.calc.tableCount, 2);
  EXPECT_EQ(engine.calc.Look("x", 0)->value[0], 7.0);
}

TEST(Variables, AFiftyFirstIsRefused) {
  Engine engine;
  std::string text;
  for (int i = 0; i < kTableEntries; ++i) text += "v" + std::to_string(i) + "=" + std::to_string(i) + ";";
  EXPECT_EQ(engine.Calculate(text + "v49")[0], 49.0);
  EXPECT_EQ(engine.calc.errorCount, 0);
  EXPECT_EQ(engine.calc.tableCount, kTableEntries);

  EXPECT_EQ(engine.Calculate("more = 5; v3 = more").GetStartIndex(), kNoValidBar);
  EXPECT_EQ(Readable(engine.Message()), "변수가 너무 많습니다.");
  // The second fault is the name that has not been made.
  EXPECT_EQ(engine.calc.errorCount, 2);
  EXPECT_EQ(engine.calc.tableCount, kTableEntries);
  // The value of the refused assignment passes on.
  EXPECT_EQ(engine.Calculate("v3 = (more = 6); v3").GetStartIndex(), kNoValidBar);
  EXPECT_EQ(engine.calc.Look("v3", 0)->value[0], 6.0);
}

}  // namespace
}  // namespace trovenu::tests
