#include "tools/trovenu/symbol_screen.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <limits>
#include <new>
#include <optional>
#include <thread>

#include "tools/trovenu/bars.h"
#include "tools/trovenu/failure.h"
#include "tools/trovenu/formula.h"
#include "tools/trovenu/indicator_lines.h"
#include "tools/trovenu/progress.h"
#include "tools/trovenu/sample_bars.h"
#include "tools/trovenu/shown.h"
#include "trovenu/formula/postfix/carried.h"
#include "trovenu/platform/code_page.h"

namespace trovenu::tool {

namespace {

// What `GetMinDataSize` gives for a formula that has no valid bar without data, for a sound one as well.
constexpr int kUnknownLeast = std::numeric_limits<int>::max();

std::string InUtf8(const SString &text) { return Utf8FromCodePage(text.c_str(), nullptr); }

// The formula with bars of its own, for one thread. The program is compiled once and runs on what the series
// hold.
class Worker {
 public:
  explicit Worker(const Screen &screen)
      : screen_(screen), functions_(screen.functions), index_(screen.condition) {
    bars_.BindTo(index_);
    index_.SetFunction(&functions_);
    index_.GetMinDataSize();
  }

  ScreenResult Look(const SymbolFile &file) {
    try {
      bars_ = ReadBars(file.path);
      if (bars_.Size() < screen_.leastBars) return {ScreenResult::Outcome::TooFewBars, 0.0, 0.0, ""};
      return NewestTrue(screen_.directReason.empty() ? RunProgram() : EvaluateDirectly());
    } catch (const Failure &failure) {
      return {ScreenResult::Outcome::Faulty, 0.0, 0.0, failure.what()};
    } catch (const std::bad_alloc &) {
      return {ScreenResult::Outcome::Faulty, 0.0, 0.0, file.path + ": out of memory"};
    }
  }

 private:
  const SVector &RunProgram() {
    index_.SearchCalc.columnsRead = 0;
    index_.SearchCalc.errorCount = 0;
    index_.CalcSrch();
    // A program does not mark its faults; the direct path tells what is the matter with these bars.
    if (index_.SearchCalc.errorCount > 0) return EvaluateDirectly();
    RequireColumns(bars_, index_.SearchCalc.columnsRead, screen_.formula);
    return index_.ExpData[0];
  }

  const SVector &EvaluateDirectly() {
    std::optional<FormulaFault> fault;
    index_.ExpData[0] = FormulaEngine(bars_, &functions_).Evaluate(screen_.formula, fault);
    if (fault) throw Failure(bars_.name + ": " + fault->OneLine());
    return index_.ExpData[0];
  }

  ScreenResult NewestTrue(const SVector &condition) const {
    const int oldest = std::max(bars_.Size() - screen_.within, 0);
    for (int bar = bars_.Size() - 1; bar >= oldest; --bar) {
      const Shown value = ShownAt(condition, bar);
      if (!value || *value == 0.0 || std::isnan(*value)) continue;
      const bool hasClose = (bars_.present >> static_cast<unsigned>(BarField::Close) & 1U) != 0;
      return {ScreenResult::Outcome::True, bars_[BarField::Date][bar],
              hasClose ? bars_[BarField::Close][bar] : std::numeric_limits<double>::quiet_NaN(), ""};
    }
    return {};
  }

  const Screen &screen_;
  SFunctionList functions_;
  Bars bars_;
  SIndex index_;
};

}  // namespace

void Prepare(Screen &screen) {
  Bars sample = SampleBars();
  SIndex &condition = screen.condition;
  RequireSound(condition, sample, screen.functions);
  if (condition.ConvExpression[0].IsEmpty()) throw Failure("the condition has no formula");
  screen.formula = InUtf8(condition.ConvExpression[0]);
  condition.SetFunction(&screen.functions);
  const int least = condition.GetMinDataSize();
  screen.leastBars = least == kUnknownLeast ? 0 : least;
  const NotCarried fault = FindNotCarried(condition.ConvExpression[0].c_str(), &screen.functions);
  if (fault.reason == nullptr) return;
  screen.directReason = (fault.word.IsEmpty() ? "" : InUtf8(fault.word) + " ") + fault.reason;
}

std::vector<ScreenResult> RunScreen(const Screen &screen, const std::vector<SymbolFile> &files, int jobs) {
  std::vector<ScreenResult> results(files.size());
  std::atomic<std::size_t> next = 0;
  Progress progress(files.size(), "symbols");
  const auto work = [&] {
    Worker worker(screen);
    for (std::size_t i = next++; i < files.size(); i = next++) {
      results[i] = worker.Look(files[i]);
      progress.Step();
    }
  };
  const std::size_t others = std::min(static_cast<std::size_t>(std::max(jobs, 1)), files.size()) - 1;
  std::vector<std::jthread> threads;
  for (std::size_t i = 0; i < others; ++i) threads.emplace_back(work);
  work();
  threads.clear();
  return results;
}

}  // namespace trovenu::tool
