#include "trovenu/support/ini_text.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/awkward_texts.h"

namespace trovenu::tests {

namespace {

IniText Parsed(std::string_view text) {
  IniText ini(IniText::LetterCase::Ignored);
  ini.Parse(text);
  EXPECT_EQ(ini.Text(), text);
  return ini;
}

std::string ValueOf(const IniText &ini, std::string_view section, std::string_view key) {
  return ini.Find(section, key).value_or("(none)");
}

TEST(IniTextTest, ReadsWhatPeopleWrite) {
  const struct {
    const char *line;
    const char *key;
    const char *value;
  } kLines[] = {
      {"a=1", "a", "1"},
      {"  a \t= 1 2 ", "a", "1 2"},
      {"a=", "a", ""},
      {"=v", "", "v"},
      {"a==b=c", "a", "=b=c"},
      {"a=1 ; no comment", "a", "1 ; no comment"},
      {"a=\"  kept \"", "a", "  kept "},
      {"a=\"C:\\new \"x\" y\"", "a", "C:\\new \"x\" y"},
      {"a=\"100%\"", "a", "100%"},
      {"a=\"%0a%zz%4\"", "a", "\n%zz%4"},
      {"a=%41", "a", "%41"},
      {"a=\"", "a", "\""},
      {"a=\"b", "a", "\"b"},
      {"a=[b]", "a", "[b]"},
      {"\"my = key\" = v", "my = key", "v"},
      {"\"open = v", "\"open", "v"},
      {"a b=c", "a b", "c"},
  };
  for (const auto &row : kLines) {
    for (const char *end : {"\n", "\r\n", ""}) {
      const IniText ini = Parsed(std::string("[s]\n") + row.line + end);
      EXPECT_EQ(ValueOf(ini, "s", row.key), row.value) << row.line;
    }
  }
}

TEST(IniTextTest, FirstOfTwoCounts) {
  IniText ini = Parsed("[s]\na=1\nA=2\n[t]\n[S]\na=3\nb=4\n");
  EXPECT_EQ(ValueOf(ini, "s", "a"), "1");
  EXPECT_EQ(ValueOf(ini, "s", "b"), "4");
  ini.Set("S", "A", "9");
  ini.Set("s", "b", "8");
  EXPECT_EQ(ini.Text(), "[s]\na=9\nA=2\n[t]\n[S]\na=3\nb=8\n");
}

TEST(IniTextTest, KeepsAllThatIsNotSet) {
  IniText ini = Parsed(
      "\xEF\xBB\xBF; of mine\r\n\r\n[b]\r\n; about k\r\n  k  =  1  \r\nunknown=x\r\njunk\r\n\r\n; end of "
      "b\r\n[a]\r\nq=2");
  ini.Set("b", "K", "22");
  ini.Set("a", "new", "3");
  ini.Set("b", "more", "4");
  ini.Set("c", "first", " 5");
  ini.Set("", "top", "6");
  EXPECT_EQ(ini.Text(),
            "\xEF\xBB\xBFtop=6\r\n; of mine\r\n\r\n[b]\r\n; about k\r\n  k  =  22  "
            "\r\nunknown=x\r\nmore=4\r\njunk\r\n\r\n"
            "; end of b\r\n[a]\r\nq=2\r\nnew=3\r\n\r\n[c]\r\nfirst=\" 5\"\r\n");
  ini.Set("c", "first", "5");
  EXPECT_TRUE(ini.Text().ends_with("[c]\r\nfirst=5\r\n"));
}

TEST(IniTextTest, WhatIsSetReadsBackFromItsText) {
  const std::vector<std::string> texts = AwkwardTexts();
  IniText ini(IniText::LetterCase::Matters);
  for (const std::string &text : texts) {
    for (const std::string &other : texts) ini.Set(text, other, other + text);
  }
  IniText again(IniText::LetterCase::Matters);
  again.Parse(ini.Text());
  for (const std::string &text : texts) {
    for (const std::string &other : texts) ASSERT_EQ(ValueOf(again, text, other), other + text);
  }
  EXPECT_EQ(again.Text(), ini.Text());
}

}  // namespace

}  // namespace trovenu::tests
