#include "trovenu/platform/mem_file.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace trovenu::tests {

namespace {

TEST(MemFileTest, ImpossiblePlacesChangeNothing) {
  CMemFile file("abc");
  EXPECT_EQ(file.Seek(-9, CMemFile::current), 0u);
  EXPECT_EQ(file.Seek(INT64_MIN, CMemFile::end), 0u);
  file.Seek(INT64_MAX, CMemFile::begin);
  file.Write("x", 1);
  file.Seek(INT64_MAX, CMemFile::current);
  file.Seek(INT64_MAX, CMemFile::current);
  file.Write("xyz", 3);
  file.SetLength(UINT64_MAX);
  file.SeekToBegin();
  file.Write(nullptr, 3);
  EXPECT_EQ(file.View(), "abc");
  EXPECT_EQ(file.Read(nullptr, 3), 0u);
}

}  // namespace

}  // namespace trovenu::tests
