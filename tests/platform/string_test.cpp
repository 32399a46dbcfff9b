#include "trovenu/platform/string.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstddef>
#include <string>

#include "trovenu/support/korean.h"

namespace trovenu {
namespace {

const char *const kNull = nullptr;

TEST(CString, Construction) {
  EXPECT_EQ(CString(), "");
  EXPECT_EQ(CString(kNull), "");
  EXPECT_EQ(CString("abc"), "abc");
  EXPECT_EQ(CString("abc", 2), "ab");
  EXPECT_EQ(CString("abc", 99), "abc");  // stops at the final zero
  EXPECT_EQ(CString("abc", -1), "");
  EXPECT_EQ(CString(kNull, 5), "");
  EXPECT_EQ(CString('x', 3), "xxx");
  EXPECT_EQ(CString('x', -3), "");
  const char unfinished[] = {'a', 'b'};
  EXPECT_EQ(CString(unfinished, 2), "ab");
}

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

TEST(CString, Comparison) {
  const CString a = "a";
  const CString b = "b";
  EXPECT_TRUE(a == "a" && "a" == a && a == CString("a") && a != b && a != "b" && "b" != a);
  EXPECT_TRUE(a < b && a <= "a" && "b" > a && b >= a && CString() < a && CString() == kNull);
  EXPECT_TRUE(CString("z") < CString("가"_kr));  // bytes are unsigned
  EXPECT_EQ(a.Compare("b"), -1);
  EXPECT_EQ(b.Compare(kNull), 1);
  EXPECT_EQ(CString("AbC").CompareNoCase("aBc"), 0);
}

TEST(CString, BytesByIndex) {
  CString s = "abc";
  EXPECT_EQ(s[0], 'a');
  EXPECT_EQ(s[std::size_t{2}], 'c');
  EXPECT_EQ(s[2L], 'c');
  EXPECT_EQ(s[3], '\0');
  EXPECT_EQ(s[-1], '\0');
  EXPECT_EQ(s[SIZE_MAX], '\0');
  EXPECT_EQ(s.GetAt(INT_MIN), '\0');
  s.SetAt(1, 'x');
  s.SetAt(3, 'x');
  s.SetAt(-1, 'x');
  EXPECT_EQ(s, "axc");
}

TEST(CString, Parts) {
  const CString s = "abcdef";
  EXPECT_EQ(s.Left(2), "ab");
  EXPECT_EQ(s.Left(-1), "");
  EXPECT_EQ(s.Left(99), "abcdef");
  EXPECT_EQ(s.Right(2), "ef");
  EXPECT_EQ(s.Right(99), "abcdef");
  EXPECT_EQ(s.Right(-1), "");
  EXPECT_EQ(s.Mid(4), "ef");
  EXPECT_EQ(s.Mid(99), "");
  EXPECT_EQ(s.Mid(-2, 2), "ab");
  EXPECT_EQ(s.Mid(4, INT_MAX), "ef");
  EXPECT_EQ(s.Mid(1, -1), "");
}

TEST(CString, Searching) {
  const CString s = "a,b,c";
  EXPECT_EQ(s.Find(","), 1);
  EXPECT_EQ(s.Find(",", 2), 3);
  EXPECT_EQ(s.Find(',', 4), -1);
  EXPECT_EQ(s.Find(",", -5), 1);
  EXPECT_EQ(s.Find(",", 99), -1);
  EXPECT_EQ(s.Find(kNull), 0);
  EXPECT_EQ(s.ReverseFind(','), 3);
  EXPECT_EQ(s.ReverseFind('x'), -1);
  EXPECT_EQ(CString("\x81\x41"
                    "A"
                    "\x81\x41")
                .ReverseFind('A'),
            2);  // 'A' is the second byte of the others
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

TEST(CString, CaseLeavesKoreanCharactersAlone) {
  CString s = CString("\x81\x61") + "abZ" + "종가"_kr;
  EXPECT_EQ(s.MakeUpper(), CString("\x81\x61") + "ABZ" + "종가"_kr);
  EXPECT_EQ(s.MakeLower(), CString("\x81\x61") + "abz" + "종가"_kr);
}

TEST(CString, Trimming) {
  EXPECT_EQ(CString(" \t\r\n\v\fa b ").TrimLeft(), "a b ");
  EXPECT_EQ(CString(" a b \t\r\n\v\f").TrimRight(), " a b");
  EXPECT_EQ(CString("  ").TrimLeft(), "");
  EXPECT_EQ(CString("  ").TrimRight(), "");
}

TEST(CString, Format) {
  CString s = "old";
  s.Format("%s-%d", s.GetString(), 5);
  EXPECT_EQ(s, "old-5");
}

TEST(CString, Buffer) {
  CString s = "ab";
  char *buffer = s.GetBuffer(10);
  EXPECT_STREQ(buffer, "ab");
  buffer[2] = 'c';
  s.ReleaseBuffer();
  EXPECT_EQ(s, "abc");
  s.GetBuffer();
  s.ReleaseBuffer(1);
  EXPECT_EQ(s, "a");
}

}  // namespace
}  // namespace trovenu
