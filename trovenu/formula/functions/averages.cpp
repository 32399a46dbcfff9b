#include "trovenu/formula/functions/averages.h"

#include "trovenu/formula/messages.h"

namespace trovenu {
namespace {

using Moving = void (SVector::*)(const SVector &source, int n);

SVector Filled(Moving moving, const SVector &source, int n) {
  SVector result;
  (result.*moving)(source, n);
  return result;
}

// An average over n bars, or over all bars so far.
template <Moving kWindow, Moving kGrowing>
Operand AverageRule(Call &call) {
  if (call.Count() == 1) return Filled(kGrowing, call.X(0), call.GrowingBars(0));
  if (call.N(1) < 1) return call.FailPeriod();
  return Filled(kWindow, call.X(0), call.N(1));
}

template <Moving kWindow>
Operand WindowRule(Call &call) {
  if (call.N(1) < 1) return call.FailPeriod();
  return Filled(kWindow, call.X(0), call.N(1));
}

Operand StdevRule(Call &call) { return Filled(&SVector::CalcStdev, call.X(0), call.N(1)); }

Operand MaRule(Call &call) {
  // Required: the period is checked only where no method is given.
  switch (call.method) {
    case -1:
      return WindowRule<&SVector::CalcAvg>(call);
    case 1:
      return Filled(&SVector::CalcEAvg, call.X(0), call.N(1));
    case 2:
      return Filled(&SVector::CalcWAvg, call.X(0), call.N(1));
    case 3:
      return Filled(&SVector::CalcGAvg, call.X(0), call.N(1));
    case 4:
      return Filled(&SVector::CalcHAvg, call.X(0), call.N(1));
    default:
      return Filled(&SVector::CalcAvg, call.X(0), call.N(1));
  }
}

constexpr Function Average(FunctionId id, FullCalc full, Rule rule, const char *help) {
  return {id,
          Reading::OptionalPeriod,
          1,
          2,
          full,
          messages::kAveragePeriod,
          messages::kUnknownError,
          rule,
          "x[, n]",
          help};
}

constexpr Function Window(FunctionId id, Rule rule, const char *help) {
  return {id,
          Reading::RequiredPeriod,
          2,
          2,
          FullCalc::Never,
          messages::kAveragePeriod,
          messages::kUnknownError,
          rule,
          "x, n",
          help};
}

constexpr Function kRows[] = {
    Average(FunctionId::Avg, FullCalc::WithoutPeriod, AverageRule<&SVector::CalcAvg, &SVector::CalcAvgCum>,
            "Simple average of the last n bars; without n of all bars so far"),
    Average(FunctionId::EAvg, FullCalc::Always, AverageRule<&SVector::CalcEAvg, &SVector::CalcEAvgCum>,
            "Exponential average with factor 2 / (n + 1); without n, n grows with the bars"),
    Average(
        FunctionId::WAvg, FullCalc::WithoutPeriod, AverageRule<&SVector::CalcWAvg, &SVector::CalcWAvgCum>,
        "Linearly weighted average of the last n bars, the newest heaviest; without n of all bars so far"),
    Window(FunctionId::TAvg, WindowRule<&SVector::CalcTAvg>, "Triangular average over n bars"),
    Window(FunctionId::GAvg, WindowRule<&SVector::CalcGAvg>, "Geometric average of the last n bars"),
    Window(FunctionId::HAvg, WindowRule<&SVector::CalcHAvg>, "Harmonic average of the last n bars"),
    {FunctionId::Ma, Reading::MethodWord, 2, 3, FullCalc::ByMethod, messages::kAveragePeriod,
     messages::kUnknownError, MaRule, "x, n[, method]",
     "Average of the last n bars by a method word, simple without one"},
    {FunctionId::Stdev, Reading::Plain, 2, 2, FullCalc::Never, nullptr, nullptr, StdevRule, "x, n",
     "Standard deviation of the last n bars"},
};

}  // namespace

FunctionRows AverageRows() { return kRows; }

}  // namespace trovenu
