#include <algorithm>

#include "trovenu/backtest/optimiser.h"
#include "trovenu/backtest/system_table.h"
#include "trovenu/support/korean.h"
#include "trovenu/support/number_text.h"

namespace trovenu {
namespace {

// Bars that one bar is made of, from `first` on by `step`.
struct Compressions {
  long long first;
  long long step;
  long long count;
};

Compressions CompressionsOf(const SSimulation &simulation) {
  const long long first = std::max(simulation.CompressStart, 1);
  const long long last = std::max(simulation.CompressEnd, 1);
  const long long step = simulation.CompressIncrement;
  const bool leads = (step > 0 && first < last) || (step < 0 && first > last);
  return {first, step, leads ? (last - first) / step + 1 : 1};
}

}  // namespace

// Required: all systems of one compression write the tables of the same names, so those of the last one stay.
unsigned int SSimulationMain::CalcTime(tagOPVARTHREADINFO *info) {
  SSimulation &simulation = *Simulation;
  const Compressions bars = CompressionsOf(simulation);
  SystemTable systems;
  const long count = info->FormulaNames == nullptr ? 0 : info->FormulaNames->GetSize();
  int done = 0;
  for (long long a = 0; a < bars.count; ++a) {
    const int compression = static_cast<int>(bars.first + a * bars.step);
    simulation.CompressData(compression);
    for (long b = 0; b < count; ++b) {
      const SString name = systems.Find((*info->FormulaNames)[b]);
      if (name.IsEmpty()) continue;
      NameRunTables(static_cast<long>(a));
      BeginRun();
      // Tables of systems leave the name alone, and the figures of a run are told apart by it.
      simulation.Index.IndexName = name;
      simulation.Index.ReadExpression(name.c_str(), "", "");
      simulation.Index.Calc();
      simulation.SummaryInfo.IndicatorName += FormatValue(" (봉개수:%d)"_kr, compression);
      FinishRun();
      if (!Report(info, done++, FormatValue("%ld", static_cast<long>(compression)))) return 0;
    }
  }
  return 1;
}

}  // namespace trovenu
