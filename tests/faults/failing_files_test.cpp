// Whatever call of the system fails while something is saved, each file afterwards holds what it held before
// or what it was to hold, the caller hears of it, and the next attempt succeeds.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <string>

#include "tests/indicator/index_folder.h"
#include "tests/platform/write_faults.h"
#include "tests/support/table_maker.h"
#include "trovenu/backtest/simulation.h"
#include "trovenu/indicator/formula_tables.h"
#include "trovenu/indicator/index.h"
#include "trovenu/platform/platform.h"
#include "trovenu/price/price_data_list.h"
#include "trovenu/support/archive.h"
#include "trovenu/support/ini_file.h"
#include "trovenu/support/ini_mem_file.h"
#include "trovenu/support/table_delete.h"
#include "trovenu/support/table_file.h"

namespace trovenu::tests {
namespace {

using Files = std::map<std::string, std::string>;

Files FilesOf(const TempFolder &folder) {
  Files files;
  for (const std::string &name : FilesIn(folder.Path())) files[name] = folder.Content(name);
  return files;
}

std::size_t OpenFiles() {
  std::size_t count = 0;
  for ([[maybe_unused]] const auto &entry : std::filesystem::directory_iterator("/proc/self/fd")) ++count;
  return count;
}

SIndex Formula(const char *text) {
  SIndex index("Average", kIndicatorIndex);
  index.SetExpression(0, text);
  return index;
}

SSimulation FinishedRun(const TempFolder &folder) {
  SSimulation run;
  run.IndividualSummaryFileName = folder.Path("summary.rpt").c_str();
  run.TradingHistoryFileName = folder.Path("trades.rpt").c_str();
  run.SummaryInfo.SumFileName = run.IndividualSummaryFileName;
  run.SummaryInfo.TradeListFileName = run.TradingHistoryFileName;
  run.InsertSummary({"0", "all", "0", "profit", "0", "net", "2.64", "", ""});
  for (int trade = 0; trade < 40; ++trade) {
    for (SVector &column : run.History) column.Add(trade);
  }
  return run;
}

enum class Answer { SaysSo, SaysNothing };

struct Operation {
  const char *name;
  Answer answer;
  void (*prepare)(const TempFolder &folder);
  // True if the operation says that it is done.
  bool (*run)(const TempFolder &folder);
};

void PrepareTable(const TempFolder &folder) { MakeTable(folder.Path("a.rpt"), 5); }
void PrepareTables(const TempFolder &) { CreateFormulaTables(kIndicatorIndex); }
void PrepareFormula(const TempFolder &folder) {
  PrepareTables(folder);
  Formula("avg(c,5)").WriteExpression("Average", 1, 0);
}
void PrepareNothing(const TempFolder &) {}
void PrepareText(const TempFolder &folder) { folder.Put("a.txt", "[A]\nx=old\n"); }

const Operation kOperations[] = {
    {"a file", Answer::SaysSo, PrepareText,
     [](const TempFolder &folder) {
       return WriteFileBytes(folder.Path("a.txt"), std::string(100'000, 'n'), Flush::ToDisk);
     }},
    {"an archive", Answer::SaysSo, PrepareText,
     [](const TempFolder &folder) {
       CKqArchive archive;
       archive.SetInt("x", 5, 0);
       return archive.Save(folder.Path("a.txt").c_str()) != 0;
     }},
    {"an INI file", Answer::SaysNothing, PrepareText,
     [](const TempFolder &folder) {
       CIniFile(folder.Path("a.txt").c_str()).WriteString("A", "y", "new");
       return true;
     }},
    {"an INI text", Answer::SaysSo, PrepareText,
     [](const TempFolder &folder) {
       CIniMemFile ini;
       ini.WriteInt("A", "x", 5);
       return ini.SaveIniFile(folder.Path("a.txt").c_str()) != 0;
     }},
    {"a record", Answer::SaysSo, PrepareTable,
     [](const TempFolder &folder) {
       DB table(folder.Path("a.rpt").c_str());
       return AddRecord(&table, 5) != 0;
     }},
    {"records", Answer::SaysSo, PrepareTable,
     [](const TempFolder &folder) {
       TableFile table;
       return table.Open(folder.Path("a.rpt")) && table.Append(std::string(50 * kMadeRecordSize, ' '));
     }},
    {"a deletion", Answer::SaysSo, PrepareTable,
     [](const TempFolder &folder) { return DeleteRecords(folder.Path("a.rpt"), "Value", "3") == 1; }},
    {"a new formula", Answer::SaysSo, PrepareTables,
     [](const TempFolder &) { return Formula("avg(c,9)").WriteExpression("Average", 1, 0) != 0; }},
    {"a changed formula", Answer::SaysSo, PrepareFormula,
     [](const TempFolder &) { return Formula("avg(c,9)").WriteExpression("Average", 0, 0) != 0; }},
    {"a candle pattern", Answer::SaysSo,
     [](const TempFolder &) { CreateFormulaTable(kCandleIndex, GetCandleTablePath().c_str()); },
     [](const TempFolder &) { return WriteCandlePattern(GetCandleTablePath().c_str(), Formula("c>o")); }},
    {"price settings", Answer::SaysNothing, PrepareText,
     [](const TempFolder &folder) {
       SPriceDataList().SaveSetting(folder.Path("a.txt").c_str());
       return true;
     }},
    {"back-test settings", Answer::SaysNothing, PrepareText,
     [](const TempFolder &folder) {
       SSimulation().SaveSetting(folder.Path("a.txt").c_str());
       return true;
     }},
    {"the tables of a run", Answer::SaysNothing, PrepareNothing,
     [](const TempFolder &folder) {
       FinishedRun(folder).WriteRunTables();
       return true;
     }},
    {"a page", Answer::SaysNothing,
     [](const TempFolder &folder) {
       SSimulation run = FinishedRun(folder);
       run.CreateSummaryDB(folder.Path("runs.rpt").c_str());
       run.InsertSummaryDB(folder.Path("runs.rpt").c_str(), run.SummaryInfo);
       run.WriteRunTables();
     },
     [](const TempFolder &folder) {
       SSimulation::SaveTradeHistoryToHTML(folder.Path("runs.rpt").c_str(), folder.Path("trades.rpt").c_str(),
                                           folder.Path("page.html").c_str());
       return true;
     }},
};

// The files that the operation makes or changes when nothing fails.
Files Outcome(const Operation &operation) {
  const IndexFolder folder;
  operation.prepare(folder);
  const Files before = FilesOf(folder);
  EXPECT_TRUE(operation.run(folder));
  Files outcome = FilesOf(folder);
  std::erase_if(outcome, [&](const auto &file) {
    const auto old = before.find(file.first);
    return old != before.end() && old->second == file.second;
  });
  return outcome;
}

bool IsThere(const Files &outcome, const Files &files) {
  return std::ranges::all_of(outcome, [&](const auto &file) {
    const auto found = files.find(file.first);
    return found != files.end() && found->second == file.second;
  });
}

void ExpectOldOrNew(const Files &before, const Files &outcome, const Files &after) {
  for (const auto &[name, content] : before) EXPECT_TRUE(after.contains(name)) << name;
  for (const auto &file : after) {
    EXPECT_TRUE(IsThere({file}, before) || IsThere({file}, outcome)) << file.first;
  }
}

TEST(FailingFiles, EveryFailingCallLeavesOldFilesOrNewOnes) {
  if (!CanStopWrites()) GTEST_SKIP() << "calls of the system can't be made to fail here";
  for (const Operation &operation : kOperations) {
    SCOPED_TRACE(operation.name);
    const Files outcome = Outcome(operation);
    EXPECT_FALSE(outcome.empty());
    int failures = 0;
    bool happened = true;
    for (int nth = 1; happened && nth < 200; ++nth) {
      SCOPED_TRACE("call " + std::to_string(nth));
      const IndexFolder folder;
      operation.prepare(folder);
      const Files before = FilesOf(folder);
      const std::size_t open = OpenFiles();
      bool done = false;
      {
        const FailingCall failing(nth);
        done = operation.run(folder);
        happened = failing.Happened();
      }
      failures += happened ? 1 : 0;
      EXPECT_EQ(OpenFiles(), open);
      ExpectOldOrNew(before, outcome, FilesOf(folder));
      const bool isThere = IsThere(outcome, FilesOf(folder));
      if (operation.answer == Answer::SaysSo) {
        EXPECT_EQ(done, isThere);
      }
      if (isThere) continue;
      EXPECT_TRUE(operation.run(folder));
      EXPECT_TRUE(IsThere(outcome, FilesOf(folder)));
    }
    EXPECT_FALSE(happened);
    EXPECT_GT(failures, 2);
  }
}

}  // namespace
}  // namespace trovenu::tests
