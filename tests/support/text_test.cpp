#include "trovenu/support/text.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <cstring>
#include <string>

#include "trovenu/support/korean.h"

namespace trovenu {
namespace {

TEST(SString, WideTextBecomesCodePageBytes) {
  EXPECT_EQ(SString(static_cast<const wchar_t *>(nullptr)), "");
  EXPECT_EQ(SString(L"종가 abc"), "종가 abc"_kr);
  EXPECT_EQ(SString(L"a\u1234b"), "a?b");
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
  const struct {
    double value;
    int digits;
    const char *text;
  } cases[] = {{-2.5, 0, "-2.5"},  {1234567.0, 0, "1.23457e+06"}, {1e-13, 0, "1e-13"},
               {1.005, 2, "1.00"}, {-0.001, 2, "-0.00"},          {1e10, 1, "10000000000.0"}};
  for (const auto &c : cases) EXPECT_EQ(SString().dtos(c.value, c.digits), c.text);
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
