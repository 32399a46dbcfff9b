// Runs all benchmarks; or prints what one formula costs, the formulas that have a limit, or the whole page of
// what things cost.

#include <benchmark/benchmark.h>

#include <string_view>

#include "bench/report.h"

int main(int argc, char **argv) {
  const std::string_view option = argc > 1 ? argv[1] : "";
  if (option == "--formula" && argc == 3) return trovenu::bench::PrintFormula(argv[2]);
  if (option == "--goals" && argc == 2) return trovenu::bench::PrintGoals();
  if (option == "--report" && argc == 2) return trovenu::bench::PrintReport();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
