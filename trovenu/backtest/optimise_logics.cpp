#include "trovenu/backtest/optimiser.h"
#include "trovenu/backtest/system_table.h"

namespace trovenu {

unsigned int SSimulationMain::CalcLogic(tagOPVARTHREADINFO *info) {
  SIndex &index = Simulation->Index;
  SystemTable systems;
  const long count = info->FormulaNames == nullptr ? 0 : info->FormulaNames->GetSize();
  int done = 0;
  for (long b = 0; b < count; ++b) {
    const SString name = systems.Find((*info->FormulaNames)[b]);
    if (name.IsEmpty()) continue;
    NameRunTables(b);
    BeginRun();
    // Tables of systems leave the name alone, and the figures of a run are told apart by it.
    index.IndexName = name;
    index.ReadExpression(name.c_str(), "", "");
    index.SetCalcInit();
    index.Calc();
    FinishRun();
    if (!Report(info, done++, "")) return 0;
  }
  return 1;
}

}  // namespace trovenu
