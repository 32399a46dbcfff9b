#include "trovenu/platform/version.h"

#include <gtest/gtest.h>

#include <cstdio>

namespace trovenu {
namespace {

TEST(Version, IsThreeNumbers) {
  int major = -1;
  int minor = -1;
  int patch = -1;
  int length = -1;
  ASSERT_EQ(std::sscanf(Version(), "%d.%d.%d%n", &major, &minor, &patch, &length), 3) << Version();
  EXPECT_EQ(Version()[length], '\0') << Version();
}

}  // namespace
}  // namespace trovenu
