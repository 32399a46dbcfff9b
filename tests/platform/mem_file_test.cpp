#include "trovenu/platform/mem_file.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace trovenu::tests {

namespace {

TEST(MemFileTest, ReadsBackWhatWasWrittenOver) {
  CMemFile file;
  file.Write("0123456789", 10);
  EXPECT_EQ(file.GetPosition(), 10u);
  EXPECT_EQ(file.Seek(-4, CMemFile::end), 6u);
  file.Write("abcdef", 6);
  EXPECT_EQ(file.GetLength(), 12u);
  EXPECT_EQ(file.Seek(-2, CMemFile::current), 10u);
  char bytes[8] = {};
  EXPECT_EQ(file.Read(bytes, 8), 2u);
  EXPECT_EQ(std::string_view(bytes, 2), "ef");
  EXPECT_EQ(file.Read(bytes, 8), 0u);
  file.SeekToBegin();
  EXPECT_EQ(file.Read(bytes, 8), 8u);
  EXPECT_EQ(file.View(), "012345abcdef");
}

TEST(MemFileTest, GapsAreZeroAndCutsMoveThePosition) {
  CMemFile file("ab");
  EXPECT_EQ(file.Seek(4, CMemFile::begin), 4u);
  char byte = 'x';
  EXPECT_EQ(file.Read(&byte, 1), 0u);
  file.Write("c", 1);
  EXPECT_EQ(file.View(), std::string_view("ab\0\0c", 5));
  file.SetLength(1);
  EXPECT_EQ(file.GetPosition(), 1u);
  file.SetLength(3);
  EXPECT_EQ(file.View(), std::string_view("a\0\0", 3));
  file.Close();
  EXPECT_EQ(file.GetLength(), 0u);
  EXPECT_EQ(file.GetPosition(), 0u);
}

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
