#include "trovenu/support/growing_list.h"

#include <gtest/gtest.h>

#include <memory>
#include <new>

namespace trovenu {
namespace {

// Tells assignments from moves.
struct Element {
  Element() = default;
  Element &operator=(const Element &other) {
    value = other.value;
    assigned = true;
    return *this;
  }
  Element &operator=(Element &&other) = delete;

  int value = 0;
  bool assigned = false;
};

// There is memory for one of them.
struct Page {
  static void *operator new[](std::size_t bytes) {
    if (bytes > 1) throw std::bad_alloc();
    return ::operator new[](bytes);
  }
  static void operator delete[](void *block) { ::operator delete[](block); }

  char byte = 0;
};

struct List {
  explicit List(int room)
      : data(std::make_unique<Element[]>(static_cast<std::size_t>(room))), capacity(room) {}
  Element &At(int i) { return data.get()[i]; }
  void Add(int value) {
    ASSERT_TRUE(GrowFullList(data, size, capacity, 5));
    At(size++).value = value;
  }

  std::unique_ptr<Element[]> data;
  int size = 0;
  int capacity;
};

TEST(GrowingList, GrowsByTheStepWhenFull) {
  List list(2);
  for (int i = 0; i < 8; ++i) {
    list.Add(i);
    EXPECT_EQ(list.capacity, i < 2 ? 2 : i < 7 ? 7 : 12) << i;
  }
  for (int i = 0; i < 8; ++i) EXPECT_EQ(list.At(i).value, i);
  EXPECT_TRUE(list.At(0).assigned);
  EXPECT_FALSE(list.At(7).assigned);
}

TEST(GrowingList, GrowsToExactlyWhatIsWantedAndNeverShrinks) {
  List list(4);
  list.Add(7);
  EXPECT_TRUE(GrowListTo(list.data, list.size, list.capacity, 3));
  EXPECT_EQ(list.capacity, 4);
  EXPECT_TRUE(GrowListTo(list.data, list.size, list.capacity, -1));
  EXPECT_EQ(list.capacity, 4);
  EXPECT_TRUE(GrowListTo(list.data, list.size, list.capacity, 9));
  EXPECT_EQ(list.capacity, 9);
  EXPECT_EQ(list.At(0).value, 7);
}

TEST(GrowingList, StaysAsItIsWithoutMemory) {
  auto pages = std::make_unique<Page[]>(1);
  int capacity = 1;
  EXPECT_FALSE(GrowListTo(pages, 1, capacity, 2));
  EXPECT_EQ(capacity, 1);
  EXPECT_NE(pages, nullptr);
}

TEST(GrowingList, AStepBelowOneStillMakesRoom) {
  List list(1);
  list.Add(1);
  EXPECT_TRUE(GrowFullList(list.data, list.size, list.capacity, -3));
  EXPECT_EQ(list.capacity, 2);
}

TEST(GrowingList, DeletesAnywhereAndNeverBelowZero) {
  struct Case {
    int index;
    int first;
    int second;
  };
  for (const Case &c : {Case{0, 1, 2}, Case{1, 0, 2}, Case{2, 0, 1}, Case{9, 0, 1}, Case{-1, 0, 1}}) {
    List list(5);
    for (int i = 0; i < 3; ++i) list.Add(i);
    DeleteFromList(list.data, list.size, c.index);
    EXPECT_EQ(list.size, 2) << c.index;
    EXPECT_EQ(list.At(0).value, c.first) << c.index;
    EXPECT_EQ(list.At(1).value, c.second) << c.index;
  }
  List empty(1);
  DeleteFromList(empty.data, empty.size, 0);
  EXPECT_EQ(empty.size, 0);
}

}  // namespace
}  // namespace trovenu
