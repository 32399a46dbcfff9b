#include "trovenu/price/price_data_list.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>

#include "trovenu/support/archive.h"

namespace trovenu {
namespace {

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

TEST(PriceDataList, AddGrowsByTheStepAndGivesTheLargestIdPlusOne) {
  SPriceDataList list;
  EXPECT_EQ(list.GetNextID(), 0);
  for (int i = 0; i < 8; ++i) {
    EXPECT_EQ(list.Add(), i);
    EXPECT_EQ(list.capacity, i < 1 ? 1 : i < 6 ? 6 : 11) << i;
  }
  list[3].SetID(50);
  EXPECT_EQ(list.Add(), 51);
  EXPECT_EQ(list.GetSymbolNoFromID(50), 3);
  EXPECT_EQ(list.GetSymbolNoFromID(99), -1);
  EXPECT_EQ(list.GetSymbolIDFromNo(9), -1);
  list[3].SetID(INT_MAX);
  EXPECT_EQ(list.GetNextID(), INT_MAX);
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
}

TEST(PriceDataList, OutOfRangeGivesTheFallback) {
  SPriceDataList list;
  Fill(list, {0, 1});
  for (const int index : {-1, 2, 5, INT_MIN, INT_MAX}) EXPECT_EQ(&list[index], &list.fallback) << index;
}

TEST(PriceDataList, ASelectionThatHasGoneBecomesTheFirstSymbol) {
  SPriceDataList list;
  EXPECT_EQ(list.GetCurSlectedData(), &list.fallback);
  Fill(list, {7, 3});
  EXPECT_EQ(list.GetCurData(-1), &list.fallback) << "the selected ID is 0, and looking does not repair it";
  EXPECT_EQ(list.GetCurSlectedData(), &list[0]);
  EXPECT_EQ(list.selectedId, 7);
}

// Required: an index from `count` to `capacity` - 1 removes the last symbol.
TEST(PriceDataList, DeletePastTheEndRemovesTheLastSymbol) {
  SPriceDataList list;
  Fill(list, {0, 1, 2, 3});
  list.Delete(5);
  list.Delete(1);
  EXPECT_EQ(NamesOf(list), "0 2 ");
  for (const int index : {-1, 6, INT_MIN, INT_MAX}) list.Delete(index);
  EXPECT_EQ(list.GetSize(), 2);
  for (int i = 0; i < 4; ++i) list.Delete(5);
  EXPECT_EQ(list.GetSize(), 0);
}

// Required: clears the first symbol only; the others keep their contents until `Add` reaches them.
TEST(PriceDataList, ClearLeavesLaterSymbolsUntilAdd) {
  SPriceDataList list;
  Fill(list, {0, 1});
  for (int i = 0; i < 2; ++i) list[i].AddData(SPriceData::kClose, 5.0);
  list.Clear();
  EXPECT_EQ(list.GetSize(), 0);
  EXPECT_EQ(list.data[0].close.GetSize(), 0);
  EXPECT_EQ(list.data[1].close.GetSize(), 1);
  Fill(list, {0, 1});
  EXPECT_EQ(list[1].close.GetSize(), 0);
}

// Required: where an earlier symbol stood at that position, its texts, property and lines are still there.
TEST(PriceDataList, AddKeepsWhatStoodThere) {
  SPriceDataList list;
  Fill(list, {0, 41});
  list[1].property->LogY = list[1].hostMark = 1;
  list.Delete(1);
  EXPECT_EQ(list.Add(), 1);
  EXPECT_EQ(NamesOf(list), "0 41 ");
  EXPECT_EQ(list[1].property->LogY, 1);
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
  SPriceDataList &same = roomy;
  roomy = same;
  EXPECT_EQ(roomy.GetSize(), 8);
}

TEST(PriceDataList, ArchiveHasAllSymbols) {
  SPriceDataList list;
  Fill(list, {5, 3});
  list[1].lines->ShowLine[4] = 1;
  list[1].property->LogY = 1;
  CKqArchive archive;
  list.Store(archive);
  SPriceDataList loaded;
  Fill(loaded, {0, 1, 2});
  loaded.Load(archive);
  SPriceDataList theme;
  theme.LoadTheme(archive);
  EXPECT_EQ(NamesOf(loaded), "5 3 ");
  EXPECT_EQ(IdsOf(theme), (Ids{5, 3}));
  EXPECT_EQ(loaded[1].lines->ShowLine[4], 1);
  EXPECT_EQ(theme[1].lines->ShowLine[4], 0);
  EXPECT_EQ(theme[1].property->LogY, 1);
}

TEST(PriceDataList, ASizeThatIsMissingOrDamagedIsHarmless) {
  SPriceDataList list;
  list.Add();
  CKqArchive empty;
  list.Load(empty);
  EXPECT_EQ(list.GetSize(), 0);
  for (const int size : {3, INT_MAX, -5}) {
    CKqArchive archive;
    archive.SetCategory("PriceDataList");
    archive.SetInt("size", size, 0);
    list.Load(archive);
    EXPECT_EQ(list.GetSize(), size == 3 ? 3 : size < 0 ? 0 : 256);
  }
}

}  // namespace
}  // namespace trovenu
