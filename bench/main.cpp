// Runs all benchmarks, or prints with --goals the table of the formulas that have a limit. Those that come
// from the function table are registered here and not by their own static objects, since the table must exist
// before them.

#include <benchmark/benchmark.h>

#include <string_view>

#include "bench/goals.h"
#include "bench/language.h"

int main(int argc, char **argv) {
  if (argc == 2 && std::string_view(argv[1]) == "--goals") return trovenu::bench::PrintGoals();
  trovenu::bench::RegisterLanguage();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
