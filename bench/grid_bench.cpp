// A search of the optimiser over 40 pairs of values at 2,500 bars, with tables in memory where the system has
// such a folder. Beside the time of a run stand the times of its parts alone: evaluation and simulation, and
// the file calls with the same bytes; the share is what the first has of the run without the second. All
// three take turns, and each counts with its best time, since other work on the machine only adds to it.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <iterator>
#include <limits>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "bench/bars.h"
#include "bench/measure.h"
#include "trovenu/backtest/optimiser.h"
#include "trovenu/platform/platform.h"

namespace trovenu::bench {
namespace {

constexpr int kBars = 2500;
// Values of the variables s and l.
constexpr int kShortFirst = 3;
constexpr int kShortValues = 8;
constexpr int kLongFirst = 20;
constexpr int kLongValues = 5;
constexpr int kRuns = kShortValues * kLongValues;

struct System {
  const char *name;
  std::array<const char *, kRules> rules;
};

constexpr System kSystems[] = {
    {"TwoAverages",
     {"crossup(avg(c,s),avg(c,l))", "crossdown(avg(c,s),avg(c,l))", "crossdown(avg(c,s),avg(c,l))",
      "crossup(avg(c,s),avg(c,l))"}},
    {"Strength",
     {"crossup(rsi(s),30)", "crossdown(rsi(s),70)", "crossdown(rsi(s),70)", "crossup(rsi(s),30)"}},
    {"Bands",
     {"crossup(c,avg(c,l)-2*stdev(c,l))", "crossup(c,avg(c,l))", "crossdown(c,avg(c,l)+2*stdev(c,l))",
      "crossdown(c,avg(c,l))"}},
    {"Signal",
     {"m=eavg(c,s)-eavg(c,l);g=eavg(m,9);crossup(m,g)", "crossdown(m,g)", "crossdown(m,g)&&c<avg(c,60)",
      "crossup(m,g)"}},
    {"NoTrade", {"0", "0", "0", "0"}},
};

/// A folder for reports, as long as it is used.
class ReportFolder {
 public:
  ReportFolder() {
    const std::filesystem::path memory = "/dev/shm";
    path_ = (std::filesystem::is_directory(memory) ? memory : std::filesystem::temp_directory_path()) /
            ("trovenu-bench-" + std::to_string(std::random_device()()));
  }
  ~ReportFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  ReportFolder(const ReportFolder &) = delete;
  ReportFolder &operator=(const ReportFolder &) = delete;

  std::string Path() const { return path_.string(); }

 private:
  std::filesystem::path path_;
};

void Prepare(SSimulation &test, const System &system, Bars &bars) {
  SIndex rules(system.name, kSystemIndex);
  for (int rule = 0; rule < kRules; ++rule) {
    rules.SetExpression(rule, system.rules[static_cast<std::size_t>(rule)]);
  }
  const auto setVariable = [&rules](int k, const char *name, int first, int values) {
    rules.VarName[k] = name;
    rules.VarStart[k] = first;
    rules.VarEnd[k] = first + values - 1;
    rules.VarIncrement[k] = 1;
  };
  setVariable(0, "s", kShortFirst, kShortValues);
  setVariable(1, "l", kLongFirst, kLongValues);
  test.SetIndex(rules);
  test.TickSize = 0.01;
  test.Setting.BlMoneyManagementStop = 1;
  test.SetVariablePointer(&bars.close, &bars.open, &bars.high, &bars.low, &bars.volume, &bars.date,
                          &bars.openInterest, &bars.amount);
}

// All runs of the search without their tables. Returns the mean number of trades.
double Simulate(SSimulation &test) {
  int trades = 0;
  for (int run = 0; run < kRuns; ++run) {
    test.Index.VarValue[0] = double{kShortFirst} + run % kShortValues;
    test.Index.VarValue[1] = double{kLongFirst} + run / kShortValues;
    test.Index.Calc();
    test.TradeRules();
    trades += test.History[kTradeSide].GetSize();
  }
  return static_cast<double>(trades) / kRuns;
}

/// The file calls of a search, with the files that it has left, which go first: a file that takes the place
/// of another one costs more.
class FileCalls {
 public:
  explicit FileCalls(const std::string &folder) {
    for (const std::string &name : FilesIn(folder)) {
      Table table{folder + kPathSeparator + name, ""};
      ReadFileBytes(table.path, &table.bytes);
      const bool ofRuns = name == "SumInfo.rpt";
      if (!ofRuns) RemoveFile(table.path);
      (ofRuns ? runs_ : tables_.emplace_back()) = std::move(table);
    }
  }

  void Repeat() {
    for (const Table &table : tables_) WriteFileBytes(table.path, table.bytes, Flush::ToSystem);
    for (int run = 0; run < kRuns; ++run) AppendRecord();
  }

 private:
  struct Table {
    std::string path;
    std::string bytes;
  };

  // A reader and a writer, each of which looks at the counts.
  void AppendRecord() {
    const std::size_t record = runs_.bytes.size() / kRuns;
    std::string bytes(runs_.bytes.size() / 2, '\0');
    char count[5];
    File reader;
    reader.Open(runs_.path, File::Access::Read);
    reader.ReadAt(0, bytes.data(), bytes.size());
    reader.ReadAt(0, count, 4);
    reader.ReadAt(bytes.size(), count, 1);
    File writer;
    writer.Open(runs_.path, File::Access::ReadAndWrite);
    writer.Lock();
    benchmark::DoNotOptimize(writer.IsAt(runs_.path) && reader.IsAt(runs_.path));
    writer.ReadAt(0, count, 4);
    writer.ReadAt(bytes.size(), count, 1);
    writer.WriteAt(runs_.bytes.size() - record, runs_.bytes.data(), record);
    writer.WriteAt(4, count, 4);
    writer.Unlock();
  }

  std::vector<Table> tables_;
  Table runs_;
};

void GridRun(benchmark::State &state) {
  const System &system = kSystems[state.range(0)];
  state.SetLabel(system.name);
  Bars bars(kBars);
  SSimulation test;
  Prepare(test, system, bars);
  const ReportFolder folder;
  double trades = 0.0;
  double whole = std::numeric_limits<double>::infinity();
  double simulation = whole;
  double files = whole;
  for (auto _ : state) {
    SSimulationMain search(&test, SSimulationMain::Variables, folder.Path().c_str());
    const double seconds = ProcessorSeconds([&] { search.Calc(nullptr); });
    state.SetIterationTime(seconds);
    whole = std::min(whole, seconds);
    FileCalls calls(folder.Path());
    files = std::min(files, ProcessorSeconds([&] { calls.Repeat(); }));
    test.SummaryInfoFileName = "";
    simulation = std::min(simulation, ProcessorSeconds([&] { trades = Simulate(test); }));
  }
  const auto microseconds = [](double seconds) { return seconds * 1e6 / kRuns; };
  state.counters["trades"] = trades;
  state.counters["us_run"] = microseconds(whole);
  state.counters["us_files"] = microseconds(files);
  state.counters["us_simulation"] = microseconds(simulation);
  state.counters["share"] = simulation / (whole - files);
}

BENCHMARK(GridRun)
    ->ArgName("system")
    ->DenseRange(0, std::size(kSystems) - 1)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace trovenu::bench
