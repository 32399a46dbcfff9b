#include "trovenu/platform/string.h"

#include <gtest/gtest.h>

namespace trovenu {
namespace {

const char *const kNull = nullptr;

TEST(CString, AssignmentAndAppending) {
  CString s = "abc";
  s = static_cast<const char *>(s) + 1;  // a part of itself
  EXPECT_EQ(s, "bc");
  s += s;
  s += static_cast<const char *>(s) + 2;
  EXPECT_EQ(s, "bcbcbc");
  s = 'x';
  s += 'y';
  s += kNull;
  EXPECT_EQ(s, "xy");
  s = kNull;
  EXPECT_TRUE(s.IsEmpty());
  EXPECT_EQ("a" + CString("b") + 'c' + "d" + CString("e"), "abcde");
  EXPECT_EQ('a' + CString("b"), "ab");
}

TEST(CString, Changing) {
  CString s = "a--b--";
  EXPECT_EQ(s.Replace("--", "---"), 2);
  EXPECT_EQ(s, "a---b---");
  EXPECT_EQ(s.Replace("", "x"), 0);
  EXPECT_EQ(s.Replace("x", "y"), 0);
  EXPECT_EQ(s.Replace('-', '+'), 6);
  EXPECT_EQ(s.Remove('+'), 6);
  EXPECT_EQ(s, "ab");
  EXPECT_EQ(s.Insert(1, "xy"), 4);
  EXPECT_EQ(s.Insert(99, "z"), 5);
  EXPECT_EQ(s.Insert(-1, kNull), 5);
  EXPECT_EQ(s, "axybz");
  EXPECT_EQ(s.Delete(1, 2), 3);
  EXPECT_EQ(s.Delete(2, 99), 2);
  EXPECT_EQ(s.Delete(5), 2);
  EXPECT_EQ(s.Delete(0, -1), 2);
  EXPECT_EQ(s, "ab");
  CString aaa = "aaa";
  EXPECT_EQ(aaa.Replace("aa", "a"), 1);
  EXPECT_EQ(aaa, "aa");
}

}  // namespace
}  // namespace trovenu
