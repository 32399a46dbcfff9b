#pragma once

#include <atomic>

#include "trovenu/backtest/simulation.h"
#include "trovenu/platform/export.h"
#include "trovenu/platform/host.h"
#include "trovenu/support/string_list.h"

namespace trovenu {

/// The message that the optimiser posts to the host's window after each run, without parameters.
inline constexpr unsigned kRunDoneMessage = 32212;

/// What `tagOPVARTHREADINFO::State` asks of the optimiser when its present run ends.
enum OptimiserState : int {
  kOptimiserRun = 0,
  /// To suspend its thread. The state stays until the host changes it.
  kOptimiserPause = 2,
  /// To end, and to set the state to 0.
  kOptimiserCancel = 3,
};

/// What host and optimiser share during a search. `Result` and `Current` are written under `Lock` and are to
/// be read under it; `State` may be read and written at any time. A pointer that is null is left out.
struct TROVENU_API tagOPVARTHREADINFO {
  /// The thread that the search runs on, which it suspends; not owned.
  HostThread *Thread = nullptr;
  /// Receives `kRunDoneMessage`; not owned.
  HostWindow *Window = nullptr;
  /// Guards `Result` and `Current`; not owned.
  HostLock *Lock = nullptr;
  std::atomic<int> State = kOptimiserRun;
  /// Figures of the last run: name with values, total profit, trades, profit factor, share of wins, mean win
  /// by mean loss, mean profit, percent of bars in the market, status, term, and the paths of the run table,
  /// the summary table and the trade table. A search over compressions puts the number of bars in front.
  SAnsiStringList Result;
  /// Number of the last finished run, from 0.
  int Current = 0;
  /// The host's.
  int Reserved = 0;
  /// Names of trading systems for the searches 1 and 2; not owned.
  SAnsiStringList *FormulaNames = nullptr;
};

/// Runs one back-test many times, on a thread of the host, and leaves the tables of every run: one record a
/// run in the run table "SumInfo.rpt", and for run r "Summary%ld.rpt" and "TradeList%ld.rpt" beside it.
///
/// The host must leave the back-test and its series alone while a search runs. A table that can't be written
/// gives a run without a file.
class TROVENU_API SSimulationMain {
 public:
  /// Values of `SimType`.
  enum Search : int {
    /// Every combination of the values from `VarStart` to `VarEnd` by `VarIncrement` of the variables of the
    /// rules.
    Variables = 0,
    /// Every trading system of `FormulaNames`.
    Logics = 1,
    /// Every bar compression from `CompressStart` to `CompressEnd` by `CompressIncrement`, with the systems
    /// of `FormulaNames`.
    TimeFrames = 2,
  };

  /// Prepares the report folder, as `PrepareDB`, which deletes what is in it. `simulation` is not owned; null
  /// searches nothing.
  SSimulationMain(SSimulation *simulation, int simType);
  /// The same with reports in a folder of that path, whose parent must be there.
  SSimulationMain(SSimulation *simulation, int simType, const SString &reportDir);
  SSimulationMain(const SSimulationMain &) = default;
  SSimulationMain &operator=(const SSimulationMain &) = default;

  void SetSimType(int simType);
  void SetSimulation(SSimulation *simulation);
  /// Money per point of price, given to the back-test before each run.
  void SetBigPointValue(double value);
  /// Capital per trade, given to the back-test before each run.
  void SetMargin(double margin);
  /// Kept for the host.
  void SetGroupDB(SString name);
  /// Required: does nothing.
  void SetGroup(SString name);

  /// Makes the report folder, deletes every file in it, and makes an empty run table there.
  void PrepareDB();

  /// Searches. Returns 1 when all runs are done, 0 after `kOptimiserCancel`; a `SimType` that is no `Search`
  /// gives 1 at once. Null counts as a record whose pointers are null.
  unsigned int Calc(tagOPVARTHREADINFO *info);

  int SimType;
  double BigPointValue = 1.0;
  /// Whether `Margin` is given to the back-test.
  int BlMargin = 0;
  double Margin = 1.0;
  /// Folder of the reports, with a separator at its end.
  SString ReportDir;
  /// Not owned.
  SSimulation *Simulation;
  SString GroupDB;

 private:
  unsigned int CalcVariable(tagOPVARTHREADINFO *info);
  unsigned int CalcLogic(tagOPVARTHREADINFO *info);
  unsigned int CalcTime(tagOPVARTHREADINFO *info);

  void NameRunTables(long number);
  void BeginRun();
  void FinishRun();
  bool Report(tagOPVARTHREADINFO *info, int number, const SString &front);
};

/// How many values a variable takes from `start` to `end` by `step`, both ends included; 1 where the step
/// does not lead from one to the other.
TROVENU_API int GridSteps(double start, double end, double step);

}  // namespace trovenu
