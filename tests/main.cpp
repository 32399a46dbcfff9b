#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <string_view>

namespace {

// The folder below tests/ in which a test is written, "." for tests/ itself.
std::string FolderOf(const testing::TestInfo &test) {
  constexpr std::string_view kRoot = TROVENU_SOURCE_DIR "/tests/";
  const std::string file = test.file();
  if (!file.starts_with(kRoot)) return "?";
  const size_t slash = file.rfind('/');
  return slash < kRoot.size() ? "." : file.substr(kRoot.size(), slash - kRoot.size());
}

// The filter text that selects the tests of one folder; empty if there are none.
std::string FilterOf(const std::string &folder) {
  std::string filter;
  const testing::UnitTest &all = *testing::UnitTest::GetInstance();
  for (int i = 0; i < all.total_test_suite_count(); ++i) {
    const testing::TestSuite &suite = *all.GetTestSuite(i);
    for (int k = 0; k < suite.total_test_count(); ++k) {
      const testing::TestInfo &test = *suite.GetTestInfo(k);
      if (FolderOf(test) == folder) filter += std::string(suite.name()) + "." + test.name() + ":";
    }
  }
  return filter;
}

class FailingTest : public testing::Test {
  void TestBody() override { FAIL() << "as it should"; }
};

}  // namespace

// Takes GoogleTest's own options, `--folder=NAME`, which runs the tests written in tests/NAME alone, and
// `--must-fail`, which runs one test that fails: a way to run the tests that takes that for a success is no
// good.
int main(int argc, char **argv) {
  testing::InitGoogleTest(&argc, argv);
  constexpr std::string_view kFolder = "--folder=";
  for (int i = 1; i < argc; ++i) {
    const std::string_view argument = argv[i];
    if (argument == "--must-fail") {
      testing::RegisterTest("MustFail", "Fails", nullptr, nullptr, __FILE__, __LINE__,
                            []() -> testing::Test * { return new FailingTest; });
      GTEST_FLAG_SET(filter, "MustFail.Fails");
    }
    if (!argument.starts_with(kFolder)) continue;
    const std::string filter = FilterOf(std::string(argument.substr(kFolder.size())));
    if (filter.empty()) {
      std::fprintf(stderr, "no test in this folder: %s\n", argv[i]);
      return 2;
    }
    GTEST_FLAG_SET(filter, filter);
  }
  return RUN_ALL_TESTS();
}
