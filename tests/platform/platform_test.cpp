#include "trovenu/platform/platform.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <string>

namespace trovenu {
namespace {

TEST(Platform, FileExistKnowsFilesFromFolders) {
  const std::filesystem::path folder = std::filesystem::path(testing::TempDir()) /
                                       ("trovenu_file_exist_" + std::to_string(std::random_device()()));
  std::filesystem::remove_all(folder);
  std::filesystem::create_directory(folder);
  const std::string file = (folder / "table.dbf").string();
  EXPECT_EQ(FileExist(file.c_str()), 0);
  std::ofstream(file).put('x');
  EXPECT_NE(FileExist(file.c_str()), 0);
  EXPECT_EQ(FileExist(folder.string().c_str()), 0);
  std::filesystem::remove_all(folder);
  EXPECT_EQ(FileExist(file.c_str()), 0);
  EXPECT_EQ(FileExist(""), 0);
  EXPECT_EQ(FileExist(nullptr), 0);
}

}  // namespace
}  // namespace trovenu
