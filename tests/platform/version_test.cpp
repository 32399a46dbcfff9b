#include "trovenu/platform/version.h"

#include <gtest/gtest.h>

#include <regex>

namespace trovenu {
namespace {

TEST(Version, IsThreeNumbers) {
  EXPECT_TRUE(std::regex_match(Version(), std::regex(R"(\d+\.\d+\.\d+)"))) << Version();
}

}  // namespace
}  // namespace trovenu
