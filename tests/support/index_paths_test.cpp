#include "trovenu/support/index_paths.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "trovenu/platform/platform.h"

namespace trovenu::tests {

namespace {

class IndexPathsTest : public testing::Test {
 protected:
  void TearDown() override { setIndexDir(before_.c_str()); }

 private:
  SString before_ = getIndexDir();
};

TEST_F(IndexPathsTest, FolderEndsInASeparator) {
  const std::string separator(1, kPathSeparator);
  setIndexDir("some/folder");
  EXPECT_EQ(getIndexDir(), ("some/folder" + separator).c_str());
  setIndexDir(("some" + separator).c_str());
  EXPECT_EQ(getIndexDir(), ("some" + separator).c_str());
  for (const char *none : {"", static_cast<const char *>(nullptr)}) {
    setIndexDir(none);
    EXPECT_EQ(getIndexDir(), ("Index" + separator).c_str());
  }
}

TEST_F(IndexPathsTest, EachKindHasAPairOfTables) {
  setIndexDir("folder");
  std::set<std::string> paths;
  for (int kind = 0; kind <= 4; ++kind) {
    const std::string ending = std::string(".") + getIndexDBExt(kind).c_str();
    for (const SString &path : {getIndexDBFileName(kind), getUserDBFileName(kind)}) {
      EXPECT_TRUE(std::string(path.c_str()).starts_with(getIndexDir().c_str()));
      EXPECT_TRUE(std::string(path.c_str()).ends_with(ending));
      paths.insert(path.c_str());
    }
  }
  EXPECT_EQ(paths.size(), 10u);
  EXPECT_EQ(getIndexDBExt(3), "sys");
  for (const int kind : {-1, 5, 30}) {
    EXPECT_EQ(getIndexDBFileName(kind), "");
    EXPECT_EQ(getUserDBFileName(kind), "");
    EXPECT_EQ(getIndexDBExt(kind), "");
  }
}

}  // namespace

}  // namespace trovenu::tests
