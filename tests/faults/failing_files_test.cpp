// Whatever call of the system fails while something is saved, each file afterwards holds what it held before
// or what it was to hold, the caller hears of it, and the next attempt of the same object succeeds.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tests/backtest/small_market.h"
#include "tests/indicator/index_folder.h"
#include "tests/platform/write_faults.h"
#include "tests/support/table_maker.h"
#include "trovenu/backtest/optimiser.h"
#include "trovenu/backtest/simulation.h"
#include "trovenu/indicator/formula_tables.h"
#include "trovenu/indicator/index.h"
#include "trovenu/platform/platform.h"
#include "trovenu/price/price_data_list.h"
#include "trovenu/price/sr_lines.h"
#include "trovenu/support/archive.h"
#include "trovenu/support/ini_file.h"
#include "trovenu/support/ini_mem_file.h"
#include "trovenu/support/table_check.h"
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

void Refill(const TempFolder &folder) {
  for (const std::string &name : FilesIn(folder.Path())) RemoveFile(folder.Path(name));
  for (const char *name : {"a.txt", "alarmset.ini"}) folder.Put(name, "[A]\nx=old\n");
  MakeTable(folder.Path("a.rpt"), 5);
}

std::size_t OpenFiles() {
  std::size_t count = 0;
  for ([[maybe_unused]] const auto &entry : std::filesystem::directory_iterator("/proc/self/fd")) ++count;
  return count;
}

// What is tried, and tried again, on the objects that it holds. Whether it says that it is done, if it says
// anything.
using Attempt = std::function<std::optional<bool>()>;

template <class Action>
Attempt Silent(Action action) {
  return [action]() mutable {
    action();
    return std::nullopt;
  };
}

std::shared_ptr<SIndex> Formula(const char *text) {
  auto index = std::make_shared<SIndex>("Average", kIndicatorIndex);
  index->SetExpression(0, text);
  return index;
}

std::shared_ptr<SSimulation> FinishedRun() {
  auto run = std::make_shared<SSimulation>();
  run->SummaryInfoFileName = "runs.rpt";
  run->IndividualSummaryFileName = run->SummaryInfo.SumFileName = "summary.rpt";
  run->TradingHistoryFileName = run->SummaryInfo.TradeListFileName = "trades.rpt";
  run->InsertSummary({"0", "all", "0", "profit", "0", "net", "2.64", "", ""});
  for (int trade = 0; trade < 40; ++trade) {
    for (SVector &column : run->History) column.Add(trade);
  }
  return run;
}

Attempt Page(void (*write)(SString runs, SString table, SString page), const char *table) {
  const auto run = FinishedRun();
  run->CreateSummaryDB("runs.rpt");
  run->InsertSummaryDB("runs.rpt", run->SummaryInfo);
  run->WriteRunTables();
  return Silent([=] { write("runs.rpt", table, "page.html"); });
}

std::shared_ptr<SmallMarket> Market() {
  auto market = std::make_shared<SmallMarket>(std::vector<Bar>{{9, 9, 9, 9}, {7, 9, 6, 8}, {8, 9, 5, 6}});
  market->test.Index.SetExpression(kLongEntry, "c>o");
  market->test.Index.SetExpression(kLongExit, "c<o");
  return market;
}

struct Operation {
  const char *name;
  std::function<Attempt()> prepare;
};

// Each finds "a.txt" and "alarmset.ini", which are INI files, and the table "a.rpt" with the records 0 to 4.
std::vector<Operation> Operations() {
  std::vector<Operation> operations;
  const auto row = [&](const char *name, std::function<Attempt()> prepare) {
    operations.push_back({name, std::move(prepare)});
  };
  row("a file",
      [] { return [] { return WriteFileBytes("a.txt", std::string(100'000, 'n'), Flush::ToDisk); }; });
  row("an archive", [] {
    const auto archive = std::make_shared<CKqArchive>();
    archive->SetInt("x", 5, 0);
    return [archive] { return archive->Save("a.txt") != 0; };
  });
  row("an INI file", [] {
    const auto ini = std::make_shared<CIniFile>("a.txt");
    ini->WriteString("A", "y", "new");
    return [ini] { return ini->Save() != 0; };
  });
  row("an INI file that is opened too", [] {
    return [ini = std::make_shared<CIniFile>()] {
      ini->SetFileName("a.txt");
      ini->WriteString("A", "y", "new");
      return ini->Save() != 0;
    };
  });
  row("an INI text", [] {
    const auto ini = std::make_shared<CIniMemFile>();
    ini->WriteInt("A", "x", 5);
    return [ini] { return ini->SaveIniFile("a.txt") != 0; };
  });
  row("a new table", [] {
    return [table = std::make_shared<DB>()] {
      return table->CreateDB("a.rpt") != 0 && table->InsertField("Name", 'c', 20) != 0 &&
             table->WriteHead() != 0 && table->WriteField() != 0 && table->WriteEof() != 0;
    };
  });
  row("a record",
      [] { return [table = std::make_shared<DB>("a.rpt")] { return AddRecord(table.get(), 5) != 0; }; });
  row("a changed record", [] {
    return [table = std::make_shared<DB>("a.rpt")] {
      return table->FindFirst("Value", "3") != 0 && table->InsField("Value", "33") != 0 &&
             table->WriteRecord() != 0;
    };
  });
  row("records", [] {
    return [table = std::make_shared<TableFile>()] {
      return (table->IsOpen() || table->Open("a.rpt")) &&
             table->Append(std::string(50 * kMadeRecordSize, ' '));
    };
  });
  row("a replaced record", [] {
    return [table = std::make_shared<TableFile>()] {
      return (table->IsOpen() || table->Open("a.rpt")) &&
             table->Replace(2, std::string(kMadeRecordSize, ' '));
    };
  });
  row("a deletion", [] { return [] { return DeleteRecords("a.rpt", "Value", "3") == 1; }; });
  row("what can be read of a table", [] { return [] { return SaveReadableTable("a.rpt", "b.rpt"); }; });
  row("formula tables", [] { return [] { return CreateFormulaTables(kIndicatorIndex); }; });
  row("a new formula", [] {
    CreateFormulaTables(kIndicatorIndex);
    return [index = Formula("avg(c,9)")] { return index->WriteExpression("Average", 1, 0) != 0; };
  });
  row("a changed formula", [] {
    CreateFormulaTables(kIndicatorIndex);
    Formula("avg(c,5)")->WriteExpression("Average", 1, 0);
    return [index = Formula("avg(c,9)")] { return index->WriteExpression("Average", 0, 0) != 0; };
  });
  row("a candle pattern", [] {
    CreateFormulaTable(kCandleIndex, GetCandleTablePath().c_str());
    return [index = Formula("c>o")] { return WriteCandlePattern(GetCandleTablePath().c_str(), *index); };
  });
  row("price settings",
      [] { return Silent([list = std::make_shared<SPriceDataList>()] { list->SaveSetting("a.txt"); }); });
  row("back-test settings",
      [] { return Silent([run = std::make_shared<SSimulation>()] { run->SaveSetting("a.txt"); }); });
  row("line settings",
      [] { return Silent([lines = std::make_shared<SSRLines>()] { lines->SaveSetting(); }); });
  row("a run table", [] { return Silent([run = FinishedRun()] { run->CreateSummaryDB("runs.rpt"); }); });
  row("a run in the run table", [] {
    const auto run = FinishedRun();
    run->CreateSummaryDB("runs.rpt");
    return Silent([run] { run->InsertSummaryDB("runs.rpt", run->SummaryInfo); });
  });
  row("the tables of a run", [] { return Silent([run = FinishedRun()] { run->WriteRunTables(); }); });
  row("excursions", [] {
    const auto market = Market();
    market->Fire(kLongEntry, {0});
    market->Fire(kLongExit, {2});
    return Silent([market] { market->test.CalcStatics(); });
  });
  row("a search", [] {
    const auto market = Market();
    const auto search = std::make_shared<SSimulationMain>(&market->test, SSimulationMain::Variables, ".");
    return Silent([market, search, again = false]() mutable {
      if (again) search->PrepareDB();
      again = true;
      search->Calc(nullptr);
    });
  });
  row("a summary page", [] { return Page(SSimulation::SaveSummaryToHTML, "summary.rpt"); });
  row("a page of trades", [] { return Page(SSimulation::SaveTradeHistoryToHTML, "trades.rpt"); });
  row("a summary to print", [] { return Page(SSimulation::SaveSummaryToHTML2, "summary.rpt"); });
  row("trades to print", [] { return Page(SSimulation::SaveTradeHistoryToHTML2, "trades.rpt"); });
  return operations;
}

// The files that the operation makes or changes when nothing fails.
Files Outcome(const Operation &operation, const TempFolder &folder) {
  Refill(folder);
  const Attempt attempt = operation.prepare();
  const Files before = FilesOf(folder);
  EXPECT_NE(attempt(), false);
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
  const IndexFolder folder;
  const std::filesystem::path workingFolder = std::filesystem::current_path();
  std::filesystem::current_path(folder.Path());
  for (const Operation &operation : Operations()) {
    SCOPED_TRACE(operation.name);
    const Files outcome = Outcome(operation, folder);
    EXPECT_FALSE(outcome.empty());
    int failures = 0;
    bool happened = true;
    for (int nth = 1; happened && nth < 200; ++nth) {
      SCOPED_TRACE("call " + std::to_string(nth));
      Refill(folder);
      const std::size_t open = OpenFiles();
      Attempt attempt = operation.prepare();
      const Files before = FilesOf(folder);
      std::optional<bool> done;
      {
        const FailingCall failing(nth);
        done = attempt();
        happened = failing.Happened();
      }
      failures += happened ? 1 : 0;
      ExpectOldOrNew(before, outcome, FilesOf(folder));
      const bool isThere = IsThere(outcome, FilesOf(folder));
      EXPECT_EQ(done.value_or(isThere), isThere);
      if (!isThere) {
        EXPECT_NE(attempt(), false);
        EXPECT_TRUE(IsThere(outcome, FilesOf(folder)));
      }
      attempt = nullptr;
      EXPECT_EQ(OpenFiles(), open);
    }
    EXPECT_FALSE(happened);
    EXPECT_GT(failures, 2);
  }
  std::filesystem::current_path(workingFolder);
}

}  // namespace
}  // namespace trovenu::tests
