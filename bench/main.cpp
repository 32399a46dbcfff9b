// Runs all benchmarks, or prints with --goals the tables of the formulas that have a limit, with --report the
// whole page of what things cost. Those that come
// from the function table are registered here and not by their own static objects, since the table must exist
// before them.

#include <benchmark/benchmark.h>

#include <string_view>

#include "bench/language.h"
#include "bench/report.h"

int main(int argc, char **argv) {
  const std::string_view option = argc == 2 ? argv[1] : "";
  if (option == "--goals") return trovenu::bench::PrintGoals();
  if (option == "--report") return trovenu::bench::PrintReport();
  trovenu::bench::RegisterLanguage();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
