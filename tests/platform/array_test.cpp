#include "trovenu/platform/array.h"

#include <gtest/gtest.h>

#include <string>

namespace trovenu::tests {

namespace {

std::string Shown(const CArray<int, int> &array) {
  std::string text;
  for (std::ptrdiff_t i = 0; i < array.GetSize(); ++i) text += std::to_string(array[i]) + ' ';
  return text;
}

CArray<int, int> Numbers(int count) {
  CArray<int, int> array;
  for (int i = 1; i <= count; ++i) EXPECT_EQ(array.Add(i), i - 1);
  return array;
}

TEST(ArrayTest, GrowsInsertsAndRemoves) {
  CArray<int, int> array = Numbers(4);
  array.InsertAt(1, 9, 2);
  EXPECT_EQ(Shown(array), "1 9 9 2 3 4 ");
  array.RemoveAt(2, 3);
  EXPECT_EQ(Shown(array), "1 9 4 ");
  array.RemoveAt(1, 100);
  EXPECT_EQ(Shown(array), "1 ");
  array.SetAtGrow(3, 7);
  EXPECT_EQ(Shown(array), "1 0 0 7 ");
  array.InsertAt(6, 5);
  EXPECT_EQ(Shown(array), "1 0 0 7 0 0 5 ");
  array.SetSize(2);
  EXPECT_EQ(array.Append(array), 2);
  EXPECT_EQ(Shown(array), "1 0 1 0 ");
  array.SetSize(-1);
  EXPECT_EQ(array.GetUpperBound(), -1);
  EXPECT_EQ(array.GetData(), nullptr);
}

TEST(ArrayTest, SerializeOfADamagedArchiveLeavesTheArray) {
  for (const std::string_view bytes :
       {std::string_view("\x02\0\0\0\1\0\0\0\2\0\0", 11), std::string_view("\x01\0\0", 3),
        std::string_view("\xFF\xFF\xFF\xFF\1\2\3\4", 8), std::string_view()}) {
    CMemFile file(bytes);
    CArchive archive(&file, CArchive::load);
    CArray<int, int> array = Numbers(2);
    array.Serialize(archive);
    EXPECT_EQ(Shown(array), "1 2 ");
  }
}

}  // namespace

}  // namespace trovenu::tests
