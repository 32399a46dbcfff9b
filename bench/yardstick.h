#pragma once

/// \file
/// What times are compared with, measured in the same run on the same data.

#include <chrono>

#include "trovenu/support/series.h"

namespace trovenu::bench {

/// R: reads one series and writes another.
void CopySeries(const SVector &in, SVector &out);

/// T: the textbook running sum of 20 elements divided by 20: add the new element, take off the old one.
void RunningMean(const SVector &in, SVector &out);

/// The seconds that `work` takes.
template <class Work>
double Seconds(Work work) {
  const auto begin = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

}  // namespace trovenu::bench
