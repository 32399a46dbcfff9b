#pragma once

namespace trovenu::bench {

/// Registers the benchmarks of the formula language.
void RegisterLanguage();

}  // namespace trovenu::bench
