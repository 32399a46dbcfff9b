#include <algorithm>
#include <limits>
#include <span>

#include "trovenu/backtest/optimiser.h"
#include "trovenu/support/number_text.h"
#include "trovenu/support/series.h"

namespace trovenu {
namespace {

constexpr long long kMostRuns = std::numeric_limits<int>::max();

// Keeps a number of steps whole that rounding has brought just below.
constexpr double kRoundingGuard = 1.00001;

// The values that one variable takes.
struct Axis {
  double start;
  double step;
  int count;
};

Axis AxisOf(const SIndexProp &index, int variable) {
  const double start = AnsiStringToFloat(index.VarStart[variable], 0.0);
  const double end = AnsiStringToFloat(index.VarEnd[variable], 0.0);
  const double step = AnsiStringToFloat(index.VarIncrement[variable], 0.0);
  return {start, step, GridSteps(start, end, step)};
}

}  // namespace

int GridSteps(double start, double end, double step) {
  const bool leads = (step > 0.0 && end > start) || (step < 0.0 && end < start);
  return leads ? TruncateToInt((end - start) / step + kRoundingGuard) : 1;
}

unsigned int SSimulationMain::CalcVariable(tagOPVARTHREADINFO *info) {
  SIndex &index = Simulation->Index;
  Axis axes[kVariables];
  int variables = 0;
  long long total = 1;
  for (; variables < kVariables && !index.VarName[variables].IsEmpty(); ++variables) {
    axes[variables] = AxisOf(index, variables);
    total = std::min(total * axes[variables].count, kMostRuns);
  }
  for (int run = 0; run < total; ++run) {
    int digits = run;
    for (int k = 0; k < variables; ++k) {
      const Axis &axis = axes[k];
      index.VarValue[k] = axis.start + digits % axis.count * axis.step;
      digits /= axis.count;
    }
    NameRunTables(run);
    BeginRun();
    index.Calc();
    FinishRun();
    if (!Report(info, run, "")) return 0;
  }
  return 1;
}

}  // namespace trovenu
