#include "trovenu/price/price_data_list.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>

#include "tests/price/stored_values.h"

namespace trovenu {
namespace {

using tests::KeysOf;
using tests::StoredBy;
using tests::StoredValue;

// A list of symbols with these IDs, each named by its ID.
void Fill(SPriceDataList &list, const std::vector<int> &ids) {
  for (const int id : ids) {
    list.Add();
    list[list.GetSize() - 1].SetID(id);
    list[list.GetSize() - 1].SymbolName = id;
  }
}

std::vector<int> IdsOf(const SPriceDataList &list) {
  std::vector<int> ids;
  for (int i = 0; i < list.GetSize(); ++i) ids.push_back(list[i].GetID());
  return ids;
}

std::string NamesOf(const SPriceDataList &list) {
  std::string names;
  for (int i = 0; i < list.GetSize(); ++i) names += std::string(list[i].SymbolName.c_str()) + " ";
  return names;
}

using Ids = std::vector<int>;

TEST(PriceDataList, StartsEmptyWithRoomForOne) {
  const SPriceDataList list;
  EXPECT_EQ(list.GetSize(), 0);
  EXPECT_EQ(list.capacity, 1);
  EXPECT_EQ(list.growStep, 5);
  EXPECT_EQ(list.selectedId, 0);
  EXPECT_EQ(list.GetNextID(), 0);
}

TEST(PriceDataList, AddGivesFreshIdsAndGrowsByTheStep) {
  SPriceDataList list;
  for (int i = 0; i < 12; ++i) {
    EXPECT_EQ(list.Add(), i);
    EXPECT_EQ(list.capacity, i < 1 ? 1 : i < 6 ? 6 : i < 11 ? 11 : 16) << i;
    list[i].AddData(SPriceData::kClose, 100.0 + i);
  }
  for (int i = 0; i < 12; ++i) {
    EXPECT_EQ(list[i].GetID(), i);
    EXPECT_EQ(list[i].GetData(SPriceData::kClose, 0), 100.0 + i);
  }
}

TEST(PriceDataList, NextIdIsOneAboveTheLargest) {
  SPriceDataList list;
  Fill(list, {0, 5, 2});
  EXPECT_EQ(list.GetNextID(), 6);
  EXPECT_EQ(list.Add(), 6);
  list[1].SetID(INT_MAX);
  EXPECT_EQ(list.GetNextID(), INT_MAX);
}

TEST(PriceDataList, AddOfASymbolDropsItsId) {
  SPriceDataList list;
  Fill(list, {3});
  SPriceData symbol;
  symbol.SetID(99);
  symbol.SymbolName = "copied";
  symbol.AddData(SPriceData::kClose, 5.0);
  symbol.hostMark = 7;
  EXPECT_EQ(list.Add(symbol), 4);
  EXPECT_TRUE(list[1].SymbolName == "copied");
  EXPECT_EQ(list[1].GetData(SPriceData::kClose, 0), 5.0);
  EXPECT_EQ(list[1].hostMark, 7) << "not set to its defaults";
  EXPECT_EQ(symbol.GetID(), 99);
}

TEST(PriceDataList, ASymbolOfTheListItselfCanBeAdded) {
  SPriceDataList list;
  Fill(list, {0, 1, 2, 3, 4, 5});
  ASSERT_EQ(list.count, list.capacity);
  EXPECT_EQ(list.Add(list[2]), 6);
  EXPECT_EQ(list.Add(list[6]), 7);
  EXPECT_EQ(NamesOf(list), "0 1 2 3 4 5 2 2 ");
}

// Required: symbols move by assignment, so ShowBaseLine of the symbols before is lost when the list grows.
TEST(PriceDataList, GrowthLosesWhatAssignmentLoses) {
  SPriceDataList list;
  list.Add();
  list[0].property->ShowBaseLine[0] = 1;
  list[0].property->UserMax = 7.0;
  list.Add();
  EXPECT_EQ(list[0].property->ShowBaseLine[0], 0);
  EXPECT_EQ(list[0].property->UserMax, 7.0);

  SPriceDataList roomy;
  roomy.SetMaxSize(2);
  roomy.Add();
  roomy[0].property->ShowBaseLine[0] = 1;
  roomy.Add();
  EXPECT_EQ(roomy[0].property->ShowBaseLine[0], 1);
}

TEST(PriceDataList, SetMaxSizeOnlyGrows) {
  SPriceDataList list;
  Fill(list, {4});
  list.SetMaxSize(1);
  EXPECT_EQ(list.capacity, 1);
  list.SetMaxSize(-5);
  EXPECT_EQ(list.capacity, 1);
  list.SetMaxSize(9);
  EXPECT_EQ(list.capacity, 9);
  EXPECT_EQ(list.GetSize(), 1);
  EXPECT_EQ(list[0].GetID(), 4);
}

TEST(PriceDataList, OutOfRangeGivesTheFallback) {
  SPriceDataList list;
  Fill(list, {0, 1});
  const SPriceDataList &constant = list;
  for (const long index : {-1L, 2L, 5L, 1000L, static_cast<long>(INT_MIN), static_cast<long>(INT_MAX)}) {
    EXPECT_EQ(&list[index], &list.fallback) << index;
    EXPECT_EQ(&constant[index], &list.fallback) << index;
  }
  EXPECT_EQ(list.fallback.GetID(), -1);
}

TEST(PriceDataList, LookUpsByIdAndPosition) {
  SPriceDataList list;
  Fill(list, {7, 3, 3});
  EXPECT_EQ(list.GetSymbolNoFromID(7), 0);
  EXPECT_EQ(list.GetSymbolNoFromID(3), 1);
  EXPECT_EQ(list.GetSymbolNoFromID(99), -1);
  EXPECT_EQ(list.GetSymbolIDFromNo(0), 7);
  for (const int no : {-1, 3, INT_MAX}) EXPECT_EQ(list.GetSymbolIDFromNo(no), -1);
  EXPECT_EQ(list.GetCurData(3), &list[1]);
  EXPECT_EQ(list.GetCurData(99), &list.fallback);
  EXPECT_EQ(list.GetCurData(-1), &list.fallback) << "the selected ID is 0, and looking does not repair it";
  EXPECT_EQ(list.selectedId, 0);
  list.selectedId = 3;
  EXPECT_EQ(list.GetCurData(-1), &list[1]);
}

TEST(PriceDataList, ASelectionThatHasGoneBecomesTheFirstSymbol) {
  SPriceDataList list;
  Fill(list, {7, 3});
  EXPECT_EQ(list.GetCurSlectedData(), &list[0]);
  EXPECT_EQ(list.selectedId, 7);
  list.selectedId = 3;
  EXPECT_EQ(list.GetCurSlectedData(), &list[1]);
  EXPECT_EQ(list.GetCurSelecedID(), 3);
  list.selectedId = 7;
  list.Delete(0);
  EXPECT_EQ(list.GetCurSelecedID(), 3);
  list.Delete(0);
  EXPECT_EQ(list.GetCurSlectedData(), &list.fallback);
  list.Add();
  EXPECT_EQ(list.GetCurSlectedData(), &list[0]);
}

TEST(PriceDataList, DeleteMovesTheFollowingSymbols) {
  SPriceDataList list;
  Fill(list, {0, 1, 2, 3});
  list.Delete(1);
  EXPECT_EQ(NamesOf(list), "0 2 3 ");
  EXPECT_EQ(IdsOf(list), (Ids{0, 2, 3}));
  for (const int index : {-1, 6, INT_MIN, INT_MAX}) list.Delete(index);
  EXPECT_EQ(list.GetSize(), 3);
}

// Required: an index from `count` to `capacity` - 1 removes the last symbol.
TEST(PriceDataList, DeletePastTheEndRemovesTheLastSymbol) {
  SPriceDataList list;
  Fill(list, {0, 1, 2});
  list.Delete(5);
  EXPECT_EQ(NamesOf(list), "0 1 ");
  for (int i = 0; i < 4; ++i) list.Delete(5);
  EXPECT_EQ(list.GetSize(), 0);
}

// Required: clears the first symbol only; the others keep their contents until `Add` reaches them.
TEST(PriceDataList, ClearLeavesLaterSymbolsUntilAdd) {
  SPriceDataList list;
  Fill(list, {0, 1});
  for (int i = 0; i < 2; ++i) list[i].AddData(SPriceData::kClose, 5.0);
  list.selectedId = 1;
  list.Clear();
  EXPECT_EQ(list.GetSize(), 0);
  EXPECT_EQ(list.selectedId, 1);
  EXPECT_EQ(list.data[0].close.GetSize(), 0);
  EXPECT_EQ(list.data[1].close.GetSize(), 1);
  list.Add();
  list.Add();
  EXPECT_EQ(list[1].close.GetSize(), 0);
}

// Required: where an earlier symbol stood at that position, its texts, property and lines are still there.
TEST(PriceDataList, AddKeepsWhatStoodThere) {
  SPriceDataList list;
  Fill(list, {0, 41});
  list[1].property->LogY = 1;
  list[1].SetSRLineValue(3, 5.0);
  list[1].hostMark = 9;
  list.Delete(1);
  EXPECT_EQ(list.Add(), 1);
  EXPECT_TRUE(list[1].SymbolName == "41");
  EXPECT_EQ(list[1].property->LogY, 1);
  EXPECT_EQ(list[1].lines->LineValue[3], 5.0);
  EXPECT_EQ(list[1].hostMark, 0);
}

// Required: symbols that find room keep their ID, one for which the list has to grow gets a fresh one.
TEST(PriceDataList, AssignmentGivesFreshIdsWhereTheListGrows) {
  SPriceDataList source;
  Fill(source, {20, 10, 30, 40, 50, 60, 5, 70});
  source.selectedId = 30;
  SPriceDataList target;
  target = source;
  // Room for one, then six, then eleven: the second and the seventh symbol find the list full.
  EXPECT_EQ(IdsOf(target), (Ids{20, 21, 30, 40, 50, 60, 61, 70}));
  EXPECT_EQ(NamesOf(target), NamesOf(source));
  EXPECT_EQ(target.selectedId, 0);
  EXPECT_EQ(IdsOf(SPriceDataList(source)), IdsOf(target));

  SPriceDataList roomy;
  roomy.SetMaxSize(8);
  roomy = source;
  EXPECT_EQ(IdsOf(roomy), IdsOf(source));
  roomy[0].SymbolName = "own";
  EXPECT_TRUE(source[0].SymbolName == "20");

  SPriceDataList &same = roomy;
  roomy = same;
  EXPECT_EQ(roomy.GetSize(), 8);
  roomy = SPriceDataList();
  EXPECT_EQ(roomy.GetSize(), 0);
}

TEST(PriceDataList, ArchiveHasAllSymbols) {
  SPriceDataList list;
  Fill(list, {5, 3});
  list[1].lines->ShowLine[4] = 1;
  list[1].property->LogY = 1;
  list[1].AddData(SPriceData::kClose, 1.0);
  const std::vector<StoredValue> values = StoredBy(list);
  EXPECT_EQ(values.front(), (StoredValue{"PriceDataList", "size", "2"}));
  for (const char *category : {"PriceData0", "SSRLines0", "PriceProperty0", "PriceData1", "PriceProperty1"}) {
    EXPECT_NE(KeysOf(values, category), "") << category;
  }

  CKqArchive archive;
  list.Store(archive);
  SPriceDataList loaded;
  Fill(loaded, {0, 1, 2});
  loaded.Load(archive);
  EXPECT_EQ(IdsOf(loaded), (Ids{5, 3}));
  EXPECT_EQ(loaded[1].lines->ShowLine[4], 1);
  EXPECT_EQ(loaded[1].property->LogY, 1);
  EXPECT_EQ(loaded[1].close.GetSize(), 0);

  SPriceDataList theme;
  theme.LoadTheme(archive);
  EXPECT_EQ(IdsOf(theme), (Ids{5, 3}));
  EXPECT_EQ(theme[1].lines->ShowLine[4], 0);
  EXPECT_EQ(theme[1].property->LogY, 1);
  CKqArchive stored;
  list.StoreTheme(stored);
  EXPECT_EQ(KeysOf(tests::ValuesOf(stored), "SSRLines0"), "");
}

TEST(PriceDataList, LoadingLosesBaseLinesOfTheSymbolsBefore) {
  CKqArchive archive;
  SPriceDataList list;
  Fill(list, {0, 1});
  for (int i = 0; i < 2; ++i) list[i].property->ShowBaseLine[0] = 1;
  list.Store(archive);
  SPriceDataList loaded;
  loaded.Load(archive);
  EXPECT_EQ(loaded[0].property->ShowBaseLine[0], 0) << "moved when the second symbol came";
  EXPECT_EQ(loaded[1].property->ShowBaseLine[0], 1);
}

TEST(PriceDataList, ASizeThatIsMissingOrDamagedIsHarmless) {
  CKqArchive archive;
  SPriceDataList list;
  list.Add();
  list.Load(archive);
  EXPECT_EQ(list.GetSize(), 0);

  archive.SetCategory("PriceDataList");
  archive.SetInt("size", 3, 0);
  list.Load(archive);
  EXPECT_EQ(list.GetSize(), 3) << "symbols with their defaults";
  EXPECT_EQ(IdsOf(list), (Ids{-1, -1, -1}));

  archive.SetCategory("PriceDataList");
  archive.SetInt("size", INT_MAX, 0);
  list.Load(archive);
  EXPECT_EQ(list.GetSize(), 256) << "and not two thousand million of them";
  archive.SetCategory("PriceDataList");
  archive.SetInt("size", -5, 0);
  list.Load(archive);
  EXPECT_EQ(list.GetSize(), 0);
}

}  // namespace
}  // namespace trovenu
