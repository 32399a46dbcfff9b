#include "trovenu/backtest/optimiser.h"

#include <mutex>
#include <utility>

#include "trovenu/platform/platform.h"
#include "trovenu/support/index_paths.h"
#include "trovenu/support/number_text.h"

namespace trovenu {
namespace {

SString WithSeparator(const SString &folder) {
  const std::string_view path = folder.View();
  if (!path.empty() && IsPathSeparator(path.back())) return folder;
  return folder + kPathSeparator;
}

}  // namespace

SSimulationMain::SSimulationMain(SSimulation *simulation, int simType)
    : SSimulationMain(simulation, simType, getIndexDir() + "Rpt") {}

SSimulationMain::SSimulationMain(SSimulation *simulation, int simType, const SString &reportDir)
    : SimType(simType), ReportDir(WithSeparator(reportDir)), Simulation(simulation) {
  PrepareDB();
}

void SSimulationMain::SetSimType(int simType) { SimType = simType; }

void SSimulationMain::SetSimulation(SSimulation *simulation) { Simulation = simulation; }

void SSimulationMain::SetBigPointValue(double value) { BigPointValue = value; }

void SSimulationMain::SetMargin(double margin) {
  Margin = margin;
  BlMargin = 1;
}

void SSimulationMain::SetGroupDB(SString name) { GroupDB = std::move(name); }

void SSimulationMain::SetGroup(SString /*name*/) {}

void SSimulationMain::PrepareDB() {
  const std::string folder = ReportDir.c_str();
  MakeFolder(folder);
  for (const std::string &file : FilesIn(folder)) RemoveFile(folder + file);
  if (Simulation == nullptr) return;
  Simulation->SummaryInfoFileName = ReportDir + "SumInfo.rpt";
  Simulation->CreateSummaryDB(Simulation->SummaryInfoFileName);
}

unsigned int SSimulationMain::Calc(tagOPVARTHREADINFO *info) {
  if (Simulation == nullptr) return 1;
  tagOPVARTHREADINFO nobody;
  if (info == nullptr) info = &nobody;
  Simulation->SetVariableToIndex();
  switch (SimType) {
    case Variables:
      return CalcVariable(info);
    case Logics:
      return CalcLogic(info);
    case TimeFrames:
      return CalcTime(info);
    default:
      return 1;
  }
}

void SSimulationMain::NameRunTables(long number) {
  Simulation->IndividualSummaryFileName = ReportDir + FormatValue("Summary%ld.rpt", number);
  Simulation->TradingHistoryFileName = ReportDir + FormatValue("TradeList%ld.rpt", number);
}

// What comes before the rules are calculated.
void SSimulationMain::BeginRun() {
  Simulation->SetBigPointValue(BigPointValue);
  if (BlMargin != 0) Simulation->SetMargin(Margin);
}

// What comes afterwards.
void SSimulationMain::FinishRun() {
  Simulation->TradeRules();
  Simulation->WriteSummary();
  Simulation->WriteRunTables();
}

// Hands the figures of a run to the host and does what it asks for. False if the search is to end.
bool SSimulationMain::Report(tagOPVARTHREADINFO *info, int number, const SString &front) {
  const SSummaryInfo &figures = Simulation->SummaryInfo;
  SAnsiStringList result;
  if (!front.IsEmpty()) result.Add(front);
  for (const SString *text :
       {&figures.IndicatorName, &figures.TotalProfit, &figures.TransactionCount, &figures.ProfitFactor,
        &figures.WinRatio, &figures.WinLossRatio, &figures.AverageProfit, &figures.InMarketRatio,
        &figures.Status, &figures.Term, &std::as_const(Simulation->SummaryInfoFileName), &figures.SumFileName,
        &figures.TradeListFileName})
    result.Add(*text);
  {
    std::unique_lock<HostLock> guard;
    if (info->Lock != nullptr) guard = std::unique_lock(*info->Lock);
    info->Result = std::move(result);
    info->Current = number;
  }
  if (info->Window != nullptr) info->Window->Post({.number = kRunDoneMessage});
  switch (info->State.load()) {
    case kOptimiserPause:
      if (info->Thread != nullptr) info->Thread->SuspendSelf();
      return true;
    case kOptimiserCancel:
      info->State = kOptimiserRun;
      return false;
    default:
      return true;
  }
}

}  // namespace trovenu
