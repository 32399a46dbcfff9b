#include "trovenu/backtest/optimiser.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <mutex>
#include <string>
#include <vector>

#include "tests/platform/temp_folder.h"
#include "trovenu/indicator/formula_tables.h"
#include "trovenu/platform/platform.h"
#include "trovenu/support/index_paths.h"
#include "trovenu/support/number_text.h"
#include "trovenu/support/table_writer.h"

namespace trovenu::tests {
namespace {

// Sixty bars of a wave, and a system of two variables that trades on it.
struct Bench {
  Bench() {
    for (int i = 0; i < 60; ++i) {
      const double close = 100.0 + 10.0 * std::sin(i * 0.7) + i % 3;
      bars[0].Add(close);
      bars[1].Add(close - 1);
      bars[2].Add(close + 2);
      bars[3].Add(close - 2);
      bars[4].Add(1000);
      bars[5].Add(20240101 + i % 28 + 100 * (i / 28));
      bars[6].Add(0);
      bars[7].Add(0);
    }
    SIndex rules("cross", 3);
    rules.SetExpression(0, "crossup(avg(c,short),avg(c,long))");
    rules.SetExpression(1, "crossdown(avg(c,short),avg(c,long))");
    SetVariable(&rules, 0, "short", "2", "2", "4", "1");
    SetVariable(&rules, 1, "long", "5", "6", "5", "-1");
    simulation.SetIndex(rules);
    simulation.TickSize = 0.01;
    simulation.Setting.Position = 0;
    simulation.SetVariable(bars[0], bars[1], bars[2], bars[3], bars[4], bars[5], bars[6], bars[7]);
  }

  static void SetVariable(SIndex *rules, int k, const char *name, const char *value, const char *start,
                          const char *end, const char *step) {
    rules->VarName[k] = name;
    rules->VarValue[k] = value;
    rules->VarStart[k] = start;
    rules->VarEnd[k] = end;
    rules->VarIncrement[k] = step;
  }

  // The figures of a back-test of its own with these values.
  SSummaryInfo Single(const char *shorter, const char *longer) {
    SSimulation single(simulation);
    single.SetVariable(bars[0], bars[1], bars[2], bars[3], bars[4], bars[5], bars[6], bars[7]);
    single.SummaryInfoFileName = "";
    single.Index.VarValue[0] = shorter;
    single.Index.VarValue[1] = longer;
    single.SetVariableToIndex();
    single.Index.Calc();
    single.TradeRules();
    return single.SummaryInfo;
  }

  TempFolder folder{TempFolder::Place::InMemory};
  SVector bars[8];
  SSimulation simulation;
};

TEST(Optimiser, CountsTheStepsOfAVariable) {
  const double kInfinity = std::numeric_limits<double>::infinity();
  const struct {
    double start, end, step;
    int steps;
  } cases[] = {
      {5, 5, 1, 1},
      {10, 1, -3, 4},
      {0, 10, 3, 4},
      {0, 1, 0.1, 11},
      {1, 2, 0, 1},
      {1, 2, -1, 1},
      {1, 1e300, 1e-9, 0x7fffffff},
      {0, kInfinity, 1, 0x7fffffff},
  };
  for (const auto &c : cases)
    EXPECT_EQ(GridSteps(c.start, c.end, c.step), c.steps) << c.start << ' ' << c.end;
}

// Variable 0 takes 2, 3, 4 and moves fastest, variable 1 takes 6, 5.
TEST(Optimiser, EveryRunOfAGridEqualsABackTestOfItsOwn) {
  Bench bench;
  const std::string old = bench.folder.Put("old.html", "x");
  SSimulationMain optimiser(&bench.simulation, SSimulationMain::Variables, bench.folder.Path().c_str());
  EXPECT_FALSE(FileExist(old.c_str()));
  HostWindow window;
  HostLock lock;
  tagOPVARTHREADINFO info;
  info.Window = &window;
  info.Lock = &lock;
  EXPECT_EQ(optimiser.Calc(&info), 1u);
  EXPECT_EQ(info.Current, 5);
  ASSERT_EQ(info.Result.GetSize(), 13);
  EXPECT_EQ(info.Result[0], "cross(4,5)");
  HostMessage message;
  for (int i = 0; i < 6; ++i) {
    ASSERT_TRUE(window.Wait(0, &message));
    EXPECT_EQ(message.number, kRunDoneMessage);
  }
  EXPECT_FALSE(window.Wait(0, &message));
  DB runs(optimiser.Simulation->SummaryInfoFileName.c_str());
  const char *const values[][2] = {{"2", "6"}, {"3", "6"}, {"4", "6"}, {"2", "5"}, {"3", "5"}, {"4", "5"}};
  for (int r = 0; r < 6; ++r, runs.MoveNext()) {
    const SSummaryInfo single = bench.Single(values[r][0], values[r][1]);
    EXPECT_NE(single.TransactionCount, "0");
    EXPECT_EQ(runs.GetStr("IndicatorName"), single.IndicatorName);
    EXPECT_EQ(runs.GetStr("TotalProfit"), single.TotalProfit);
    EXPECT_EQ(runs.GetStr("TransactionCount"), single.TransactionCount);
    DB trades(runs.GetStr("TradeListFileName").c_str());
    EXPECT_EQ(FormatValue("%d", trades.RecordCount), single.TransactionCount);
    DB summary(runs.GetStr("SumFileName").c_str());
    EXPECT_EQ(summary.RecordCount, 28);
    EXPECT_EQ(summary.GetStr("Value1"), single.TotalProfit);
  }
  EXPECT_NE(runs.Eof(), 0);
}

// The formula tables of three systems in the folder of the indicators, and back.
class SystemsFolder {
 public:
  SystemsFolder() : before_(getIndexDir()) {
    setIndexDir(folder_.Path().c_str());
    CreateFormulaTables(3);
    for (const int period : {3, 5, 8}) {
      SIndex system(FormatValue("s%d", period).c_str(), 3);
      system.SetExpression(0, FormatValue("crossup(c,avg(c,%d))", period).c_str());
      system.SetExpression(1, FormatValue("crossdown(c,avg(c,%d))", period).c_str());
      system.WriteExpression(system.IndexName.c_str(), 1, period == 3);
    }
  }
  ~SystemsFolder() { setIndexDir(before_.c_str()); }

 private:
  TempFolder folder_;
  SString before_;
};

TEST(Optimiser, SearchesSystemsAndCompressions) {
  const SystemsFolder systems;
  Bench bench;
  SAnsiStringList names;
  for (const char *name : {"s3", "absent", "s8"}) names.Add(name);
  tagOPVARTHREADINFO info;
  info.FormulaNames = &names;
  SSimulationMain optimiser(&bench.simulation, SSimulationMain::Logics, bench.folder.Path().c_str());
  EXPECT_EQ(optimiser.Calc(&info), 1u);
  EXPECT_EQ(info.Current, 1);
  EXPECT_EQ(info.Result[0], "s8");
  EXPECT_TRUE(FileExist(bench.folder.Path("Summary0.rpt").c_str()));
  EXPECT_FALSE(FileExist(bench.folder.Path("Summary1.rpt").c_str()));
  EXPECT_TRUE(FileExist(bench.folder.Path("TradeList2.rpt").c_str()));

  optimiser.SetSimType(SSimulationMain::TimeFrames);
  bench.simulation.CompressStart = 4;
  bench.simulation.CompressEnd = 0;
  bench.simulation.CompressIncrement = -2;
  EXPECT_EQ(optimiser.Calc(&info), 1u);
  ASSERT_EQ(info.Result.GetSize(), 14);
  EXPECT_EQ(info.Result[0], "2");
  EXPECT_EQ(info.Result[1], "s8");
  EXPECT_EQ(info.Current, 3);
  EXPECT_EQ(bench.simulation.Close->GetSize(), 30);

  optimiser.SetSimType(3);
  EXPECT_EQ(optimiser.Calc(&info), 1u);
  info.FormulaNames = nullptr;
  for (const int search : {SSimulationMain::Logics, SSimulationMain::TimeFrames}) {
    optimiser.SetSimType(search);
    EXPECT_EQ(optimiser.Calc(&info), 1u);
  }
}

// A host that reads, pauses, resumes and cancels over and over. The search may suspend itself once more
// before it sees the new state, so a host that resumes goes on until it sees the effect.
TEST(Optimiser, HostPausesResumesAndCancels) {
  Bench bench;
  Bench::SetVariable(&bench.simulation.Index, 0, "short", "2", "1", "1000000", "1");
  SSimulationMain optimiser(&bench.simulation, SSimulationMain::Variables, bench.folder.Path().c_str());
  HostWindow window;
  HostLock lock;
  constexpr int kRounds = 50;
  constexpr int kPauses = 20;
  for (int round = 0; round < kRounds; ++round) {
    HostThread thread;
    std::atomic<bool> done = false;
    tagOPVARTHREADINFO info;
    info.Thread = &thread;
    info.Window = &window;
    info.Lock = &lock;
    ASSERT_TRUE(thread.Start([&] {
      const unsigned result = optimiser.Calc(&info);
      done = true;
      return result;
    }));
    HostMessage message;
    for (int runs = 0; runs < kPauses; ++runs) {
      ASSERT_TRUE(window.Wait(10000, &message));
      {
        const std::lock_guard guard(lock);
        ASSERT_EQ(info.Result.GetSize(), 13);
        ASSERT_GE(info.Current, runs);
      }
      info.State = kOptimiserPause;
      while (!thread.Resume()) {
      }
      info.State = kOptimiserRun;
    }
    info.State = kOptimiserCancel;
    while (!done) thread.Resume();
    EXPECT_EQ(thread.Join(), 0u);
    EXPECT_EQ(info.State, kOptimiserRun);
    while (window.Wait(0, &message)) {
    }
  }
}

}  // namespace
}  // namespace trovenu::tests
