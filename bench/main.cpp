// Runs all benchmarks. Those that come from the function table are registered here and not by their own
// static objects, since the table must exist before them.

#include <benchmark/benchmark.h>

#include "bench/language.h"

int main(int argc, char **argv) {
  trovenu::bench::RegisterLanguage();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
