#include "bench/report.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "bench/goals.h"
#include "bench/measure.h"
#include "bench/sample_call.h"
#include "bench/yardstick.h"

namespace trovenu::bench {
namespace {

constexpr int kSizes[] = {1'000, 10'000, 100'000, 1'000'000};

// What the system took for all evaluations, and whether every limit was kept.
struct Totals {
  unsigned long long blocks = 0;
  unsigned long long allocations = 0;
  long faults = 0;
  bool kept = true;

  void Count(const Cost &cost) {
    blocks += cost.blocks;
    allocations += cost.allocations;
    faults += cost.faults;
  }
};

std::string Processor() {
  std::ifstream file("/proc/cpuinfo");
  for (std::string line; std::getline(file, line);) {
    const std::size_t colon = line.find(": ");
    if (line.starts_with("model name") && colon != std::string::npos) return line.substr(colon + 2);
  }
  return "an unknown processor";
}

const char *Compiler() {
#if defined(__clang__)
  return "Clang " __clang_version__;
#elif defined(__GNUC__)
  return "GCC " __VERSION__;
#else
  return "an unknown compiler";
#endif
}

const char *NameOf(Instructions build) { return build == Instructions::Avx2 ? "AVX2" : "baseline"; }

// A figure beside its limit, bold where it is above.
std::string Judged(double value, double limit, Totals &totals) {
  const bool within = limit == 0.0 || value <= limit;
  totals.kept = totals.kept && within;
  char text[40];
  std::snprintf(text, sizeof text, within ? "%.2f" : "**%.2f**", value);
  return text;
}

void PrintYardsticks() {
  std::puts("| bars | T, ns a bar | R, ns a bar |\n|---:|---:|---:|");
  for (const int size : kSizes) {
    Bars &bars = SharedBars(size);
    SVector scratch(size);
    const auto times = MeasureInTurn(
        size, {[&] { RunningMean(bars.close, scratch); }, [&] { CopySeries(bars.close, scratch); }});
    std::printf("| %d | %.2f | %.2f |\n", size, times[0], times[1]);
  }
}

// One row a formula: its ratio to T at each size, and the limit.
void PrintBuild(Instructions build, Totals &totals) {
  std::printf("\n### %s build\n\n", NameOf(build));
  std::puts("| formula | 1,000 | 10,000 | 100,000 | 1,000,000 | at most |\n|---|---:|---:|---:|---:|---:|");
  std::vector<std::vector<Cost>> costs(Goals().size());
  for (const int size : kSizes) {
    Bars &bars = SharedBars(size);
    SCalc calc;
    bars.Bind(calc);
    for (std::size_t i = 0; i < Goals().size(); ++i) {
      costs[i].push_back(MeasureFormula(calc, Goals()[i].formula, bars));
      totals.Count(costs[i].back());
    }
  }
  for (std::size_t i = 0; i < Goals().size(); ++i) {
    const Goal &goal = Goals()[i];
    std::printf("| `%s` |", goal.formula);
    for (std::size_t k = 0; k < std::size(kSizes); ++k) {
      std::printf(" %s |", Judged(costs[i][k].perT, LimitOf(goal, build, kSizes[k]), totals).c_str());
    }
    const double limit = LimitOf(goal, build, 10'000);
    const double large = LimitOf(goal, build, 1'000'000);
    std::printf(large == limit ? " %.2f |\n" : " %.2f, %.1f |\n", limit, large);
  }
}

void PrintBuilds(Totals &totals) {
  const Instructions inUse = InstructionsInUse();
  for (const Instructions build : {Instructions::Baseline, Instructions::Avx2}) {
    if (UseInstructions(build)) PrintBuild(build, totals);
  }
  UseInstructions(inUse);
}

// A function of the C library, and the plain loop that calls it.
struct LibraryCall {
  const char *formula;
  void (*loop)(int count, const double *x, const double *y, double *out);
};

template <class Call>
constexpr LibraryCall Library(const char *formula, Call) {
  return {formula, [](int count, const double *x, const double *y, double *out) {
            for (int i = 0; i < count; ++i) out[i] = Call()(x[i], y[i]);
          }};
}

constexpr LibraryCall kLibraryCalls[] = {
    Library("log(x)", [](double x, double) { return std::log(x); }),
    Library("log10(x)", [](double x, double) { return std::log10(x); }),
    Library("sin(x)", [](double x, double) { return std::sin(x); }),
    Library("cos(x)", [](double x, double) { return std::cos(x); }),
    Library("tan(x)", [](double x, double) { return std::tan(x); }),
    Library("asin(y)", [](double, double y) { return std::asin(y); }),
    Library("acos(y)", [](double, double y) { return std::acos(y); }),
    Library("atan(x)", [](double x, double) { return std::atan(x); }),
    Library("sinh(y)", [](double, double y) { return std::sinh(y); }),
    Library("cosh(y)", [](double, double y) { return std::cosh(y); }),
    Library("tanh(y)", [](double, double y) { return std::tanh(y); }),
    Library("pow(x,y)", [](double x, double y) { return std::pow(x, y); }),
    // A logarithm for each element and its inverse for each window.
    Library("gavg(x,20)", [](double x, double) { return std::exp(std::log(x)); }),
};

void PrintLibraryCalls(Totals &totals) {
  std::puts("| formula | bars | C library, ns a bar | engine, ns a bar | beside the library, R | at most |");
  std::puts("|---|---:|---:|---:|---:|---:|");
  for (const int size : {10'000, 1'000'000}) {
    Bars &bars = SharedBars(size);
    SCalc calc;
    bars.Bind(calc);
    SVector y(size);
    const double highest = bars.close.GetMax();
    for (int i = 0; i < size; ++i) y[i] = bars.close[i] / highest;
    calc.Insert("x")->value = bars.close;
    calc.Insert("y")->value = y;
    SVector scratch(size);
    for (const LibraryCall &row : kLibraryCalls) {
      const auto times = MeasureInTurn(size, {[&] {
                                                calc.SetExpression(row.formula);
                                                calc.Calculate();
                                              },
                                              [&] { row.loop(size, bars.close.data, y.data, scratch.data); },
                                              [&] { CopySeries(bars.close, scratch); }});
      const double beside = (times[0] - times[1]) / times[2];
      std::printf("| `%s` | %d | %.2f | %.2f | %s | %.1f |\n", row.formula, size, times[1], times[0],
                  Judged(beside, kMostBesideLibrary, totals).c_str(), kMostBesideLibrary);
    }
  }
}

bool IsLibraryCall(std::string_view formula) {
  const std::string_view name = formula.substr(0, formula.find('('));
  return std::ranges::any_of(kLibraryCalls, [name](const LibraryCall &row) {
    return std::string_view(row.formula).substr(0, name.size() + 1) == std::string(name) + "(";
  });
}

// The calls and operators in a formula. Swings take one pass for the extremes of their neighbours and one for
// themselves, a ZigZag line those of both kinds and a walk.
int PassesOf(std::string_view formula) {
  if (formula.starts_with("swing")) return 2;
  if (formula.starts_with("ZigZag")) return 5;
  return static_cast<int>(std::ranges::count_if(formula, [](char c) { return c == '(' || c == '>'; }));
}

void PrintOthers(Totals &totals) {
  std::puts("| formula | passes | 1,000 | 10,000 | 100,000 | 1,000,000 | at most |");
  std::puts("|---|---:|---:|---:|---:|---:|---:|");
  std::vector<std::string> formulas = SampleCalls();
  std::erase_if(formulas, IsLibraryCall);
  std::vector<std::vector<double>> ratios(formulas.size());
  for (const int size : kSizes) {
    Bars &bars = SharedBars(size);
    SCalc calc;
    bars.Bind(calc);
    for (std::size_t i = 0; i < formulas.size(); ++i) {
      const Cost cost = MeasureFormula(calc, formulas[i].c_str(), bars);
      totals.Count(cost);
      ratios[i].push_back(cost.perT);
    }
  }
  for (std::size_t i = 0; i < formulas.size(); ++i) {
    const int passes = PassesOf(formulas[i]);
    const double limit = kMostOfAPass * passes;
    std::printf("| `%s` | %d |", formulas[i].c_str(), passes);
    for (std::size_t k = 0; k < std::size(kSizes); ++k) {
      std::printf(" %s |", Judged(ratios[i][k], kSizes[k] < 10'000 ? 0.0 : limit, totals).c_str());
    }
    std::printf(" %.0f |\n", limit);
  }
}

void PrintPeriods(Totals &totals) {
  constexpr int kPeriods[] = {100, 250, 500, 1000};
  constexpr int kBars = 100'000;
  std::puts("| formula | first | its T | 100 | 250 | 500 | 1,000 | largest by smallest | at most |");
  std::puts("|---|---:|---:|---:|---:|---:|---:|---:|---:|");
  Bars &bars = SharedBars(kBars);
  SCalc calc;
  bars.Bind(calc);
  for (const Periodic &row : PeriodicFormulas()) {
    std::vector<double> ratios;
    const auto measure = [&](int period) {
      std::string formula = row.formula;
      formula.replace(formula.find('#'), 1, std::to_string(period));
      ratios.push_back(MeasureFormula(calc, formula.c_str(), bars).perT);
    };
    measure(row.first);
    for (const int period : kPeriods) measure(period);
    std::printf("| `%s` | %d |", row.formula, row.first);
    for (const double ratio : ratios) std::printf(" %.2f |", ratio);
    const auto [least, most] = std::ranges::minmax(ratios);
    std::printf(" %s | %.1f |\n", Judged(most / least, kMostBetweenPeriods, totals).c_str(),
                kMostBetweenPeriods);
  }
}

// Keeps the medians of what the benchmark program runs.
class Medians : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context &) override { return true; }
  void ReportRuns(const std::vector<Run> &runs) override {
    std::ranges::copy_if(runs, std::back_inserter(runs_),
                         [](const Run &run) { return run.aggregate_name == "median"; });
  }
  const std::vector<Run> &Runs() const { return runs_; }

 private:
  std::vector<Run> runs_;
};

// "Tick/one_average/1000/min_time:0.100_median" without what is told elsewhere.
std::string ShortName(std::string name) {
  for (const char *tail : {"/min_time:", "/iterations:", "/manual_time", "_median"}) {
    name.resize(std::min(name.find(tail), name.size()));
  }
  return name;
}

void PrintBenchmarks() {
  char program[] = "trovenu_bench";
  char repetitions[] = "--benchmark_repetitions=7";
  char *arguments[] = {program, repetitions};
  int count = 2;
  benchmark::Initialize(&count, arguments);
  Medians medians;
  benchmark::RunSpecifiedBenchmarks(&medians, "^(Tick|search|WholeBackTest|GridRun)");
  std::puts("| benchmark | time | figures |\n|---|---:|---|");
  for (const auto &run : medians.Runs()) {
    // Those that take the time themselves say which.
    const bool isManual = run.benchmark_name().find("/manual_time") != std::string::npos;
    const double time = isManual ? run.GetAdjustedRealTime() : run.GetAdjustedCPUTime();
    std::printf("| %s%s%s | %.4g %s |", ShortName(run.benchmark_name()).c_str(),
                run.report_label.empty() ? "" : " ", run.report_label.c_str(), time,
                benchmark::GetTimeUnitString(run.time_unit));
    const char *separator = " ";
    for (const auto &[name, counter] : run.counters) {
      std::printf("%s%s %.4g", separator, name.c_str(), static_cast<double>(counter));
      separator = ", ";
    }
    std::puts(" |");
  }
}

}  // namespace

int PrintGoals() {
  Totals totals;
  PrintBuilds(totals);
  return totals.kept ? 0 : 1;
}

int PrintFormula(const char *formula) {
  std::puts("    bars   ns a bar         T         R  blocks  allocations  page faults, of 20 evaluations");
  for (const int size : kSizes) {
    Bars &bars = SharedBars(size);
    SCalc calc;
    bars.Bind(calc);
    const Cost cost = MeasureFormula(calc, formula, bars);
    std::printf("%8d %10.3f %9.2f %9.2f %7llu %12llu %12ld\n", size, cost.nsPerBar, cost.perT, cost.perR,
                cost.blocks, cost.allocations, cost.faults);
  }
  return 0;
}

int PrintReport() {
  Totals totals;
  std::printf(R"(# What things cost

This page is the output of `scripts/bench --report`, on %s (%u cores), compiled by %s, on one
thread unless a row says otherwise. A formula is measured through the engine, text in, series out, as the median of at
least 11 evaluations, in time of the processor; the rows of benchmarks are medians of 7. What is above its limit is
bold. Machines differ, and so do moments of one machine: figures are ratios to two yardsticks that take turns with what
is measured.

- **T** is the textbook running sum of 20 elements divided by 20: add the new one, take off the old one.
- **R** is reading one series and writing another.

)",
              Processor().c_str(), std::thread::hardware_concurrency(), Compiler());
  PrintYardsticks();
  std::puts("\n## Formulas, in T\n\nLimits hold from 10,000 bars on; the second one above that.");
  PrintBuilds(totals);
  std::puts(
      "\n## Functions of the C library\n\nBeside a plain loop that calls the library on the same data.\n");
  PrintLibraryCalls(totals);
  std::printf("\n## Every other function, in T\n\nWith the %s build.\n\n", NameOf(InstructionsInUse()));
  PrintOthers(totals);
  std::printf("\n## Periods, in T\n\nAt 100,000 bars, with the %s build.\n\n", NameOf(InstructionsInUse()));
  PrintPeriods(totals);
  std::printf(
      "\n## What evaluations take of the system\n\nTwenty further evaluations of each formula above, once "
      "settled:"
      " %llu blocks of elements, %llu other allocations, %ld\npage faults.\n",
      totals.blocks, totals.allocations, totals.faults);
  std::puts(R"(
## Ticks, searches, back-tests, searches over values

`Tick` is one change of the newest bar and `CalcLast`, by bars of the chart. `search/one_thread` runs a condition of
five functions over 2,000 symbols of 2,500 bars; `per_kernels` is the ratio to the bare kernels written out by hand.
`WholeBackTest` has 100,000 bars, 2,000 trades and none, four or six stops. `GridRun` is a search over 40 pairs of
values at 2,500 bars with its tables: `us_run` is one run, `share` what evaluation and simulation have of it apart from
the file calls of the system.
)");
  PrintBenchmarks();
  return totals.kept ? 0 : 1;
}

}  // namespace trovenu::bench
