#include "trovenu/support/text.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <type_traits>
#include <utility>

#include "trovenu/support/korean.h"

namespace trovenu {
namespace {

static_assert(std::is_base_of_v<CString, SString>);
static_assert(sizeof(SString) == sizeof(void *) + sizeof(CString));

TEST(SString, Construction) {
  EXPECT_EQ(SString(), "");
  EXPECT_EQ(SString("abc"), "abc");
  EXPECT_EQ(SString(static_cast<const char *>(nullptr)), "");
  EXPECT_EQ(SString(static_cast<const unsigned char *>(nullptr)), "");
  EXPECT_EQ(SString(static_cast<const wchar_t *>(nullptr)), "");
  EXPECT_EQ(SString(CString("abc")), "abc");
  EXPECT_EQ(SString(SString("abc")), "abc");
  EXPECT_EQ(SString('x', 3), "xxx");
  EXPECT_EQ(SString("abc", 2), "ab");
  const unsigned char bytes[] = {0xC1, 0xBE, 0xB0, 0xA1, 0};
  EXPECT_EQ(SString(bytes), "종가"_kr);
  EXPECT_EQ(SString(L"종가 abc"), "종가 abc"_kr);
  EXPECT_EQ(SString(L"a\u1234b"), "a?b");
}

TEST(SString, WholeNumbers) {
  EXPECT_EQ(SString(0), "0");
  EXPECT_EQ(SString(INT_MIN), "-2147483648");
  EXPECT_EQ(SString(LONG_MIN), std::to_string(LONG_MIN).c_str());
  EXPECT_EQ(SString().ltos(-7), "-7");
  EXPECT_EQ(SString().ultos(7), "7");
}

TEST(SString, UnsignedValuesPrintAsSignedOnes) {
  EXPECT_EQ(SString(UINT_MAX), "-1");
  EXPECT_EQ(SString(0x80000000U), "-2147483648");
  EXPECT_EQ(SString(ULONG_MAX), "-1");
  EXPECT_EQ(SString(static_cast<unsigned long>(LONG_MAX) + 1), std::to_string(LONG_MIN).c_str());
  EXPECT_EQ(SString().ultos(ULONG_MAX), "-1");
  SString s;
  EXPECT_EQ(s = UINT_MAX, "-1");
  EXPECT_EQ(s = ULONG_MAX - 1, "-2");
}

TEST(SString, Doubles) {
  struct Case {
    double value;
    int digits;
    const char *text;
  };
  const Case cases[] = {
      {0.0, 0, "0"},
      {0.0, -1, "0"},
      {3.0, 0, "3"},
      {-2.5, 0, "-2.5"},
      {1234567.0, 0, "1.23457e+06"},
      {100000.0, 0, "100000"},
      {0.1, 0, "0.1"},
      {1e-13, 0, "1e-13"},  // no bare zero
      {1.0, 2, "1.00"},
      {1.005, 2, "1.00"},  // the double lies below the tie
      {-0.001, 2, "-0.00"},
      {1e10, 1, "10000000000.0"},
      {std::numeric_limits<double>::infinity(), 0, "inf"},
      {std::numeric_limits<double>::quiet_NaN(), 2, "nan"},
  };
  for (const Case &c : cases) EXPECT_EQ(SString().dtos(c.value, c.digits), c.text);
  EXPECT_EQ(SString(0.25), "0.25");
  EXPECT_EQ(SString().dtos(1.0, INT_MAX).Left(4), "1.00");
}

TEST(SString, AssignmentReplacesAndReturnsTheObject) {
  SString s = "a long text that is replaced";
  EXPECT_EQ(&(s = 5), &s);
  EXPECT_EQ(s, "5");
  EXPECT_EQ(&(s = 0.5F), &s);
  EXPECT_EQ(s, "0.5");
  EXPECT_EQ(&(s = 1e6), &s);
  EXPECT_EQ(s, "1e+06");
  EXPECT_EQ(&(s = 6L), &s);
  EXPECT_EQ(s, "6");
  EXPECT_EQ(&(s = SString("b")), &s);
  EXPECT_EQ(s, "b");
  EXPECT_EQ(&(s = CString("c")), &s);
  EXPECT_EQ(s, "c");
  EXPECT_EQ(&(s = "d"), &s);
  EXPECT_EQ(s, "d");
  s = L"종가";
  EXPECT_EQ(s, "종가"_kr);
  s = s + "!";
  EXPECT_EQ(s, "종가!"_kr);
}

TEST(SString, CopiesAreIndependent) {
  SString a = "abc";
  SString b = a;
  b.SetAt(0, 'x');
  a += "d";
  EXPECT_EQ(a, "abcd");
  EXPECT_EQ(b, "xbc");
  const SString c = std::move(a);
  EXPECT_EQ(c, "abcd");
}

TEST(SString, LengthAndText) {
  const SString s = "종가a"_kr;
  EXPECT_EQ(s.Length(), 5);
  EXPECT_STREQ(s.c_str(),
               "\xC1\xBE\xB0\xA1"
               "a");
}

TEST(SString, Trim) {
  SString s = " \t\n\v\f\r a\tb \t\n\v\f\r ";
  EXPECT_EQ(&s.Trim(), &s);
  EXPECT_EQ(s, "a\tb");
  EXPECT_EQ(SString("  ").Trim(), "");
  EXPECT_EQ(SString("\x08x\x0E").Trim(), "\x08x\x0E");  // the characters beside the range stay
}

#if defined(__GNUC__) && (defined(__x86_64__) || defined(__i386__))
// A pointer to a virtual member function starts with one more than its offset in the virtual table.
template <class Value>
std::size_t VirtualSlot() {
  SString &(SString::*member)(Value) = &SString::operator=;
  std::uintptr_t offset = 0;
  std::memcpy(&offset, &member, sizeof(offset));
  return (offset - 1) / sizeof(void *);
}

TEST(SString, VirtualTableHoldsTheAssignmentsInOrder) {
  EXPECT_EQ(VirtualSlot<double>(), 0U);
  EXPECT_EQ(VirtualSlot<float>(), 1U);
  EXPECT_EQ(VirtualSlot<unsigned long>(), 2U);
  EXPECT_EQ(VirtualSlot<long>(), 3U);
  EXPECT_EQ(VirtualSlot<unsigned int>(), 4U);
  EXPECT_EQ(VirtualSlot<int>(), 5U);
}
#endif

}  // namespace
}  // namespace trovenu
