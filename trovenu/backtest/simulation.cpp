#include "trovenu/backtest/simulation.h"

#include <algorithm>
#include <string>
#include <utility>

#include "trovenu/platform/platform.h"
#include "trovenu/support/index_paths.h"

namespace trovenu {
namespace {

SString InFolder(const std::string &name) { return SString((getIndexDir().c_str() + name).c_str()); }

// A table of results below the folder of the formula tables.
SString ReportPath(const char *name) { return InFolder(std::string("Rpt") + kPathSeparator + name); }

}  // namespace

SSimulation::SSimulation()
    : SettingFileName(InFolder("Sim.dat")),
      SummaryInfoFileName(ReportPath("SumInfo.rpt")),
      IndividualSummaryFileName(ReportPath("Summary0.rpt")),
      TradingHistoryFileName(ReportPath("TradeList0.rpt")) {}

SSimulation &SSimulation::operator=(const SSimulation &other) {
  if (this == &other) return *this;
  TickSize = other.TickSize;
  FunctionList = other.FunctionList;
  Close = other.Close;
  Open = other.Open;
  High = other.High;
  Low = other.Low;
  Volume = other.Volume;
  Date = other.Date;
  SourceClose = other.SourceClose;
  SourceOpen = other.SourceOpen;
  SourceHigh = other.SourceHigh;
  SourceLow = other.SourceLow;
  SourceVolume = other.SourceVolume;
  SourceDate = other.SourceDate;
  // Required: amount and open interest are left alone, and the working dates are the other's volumes.
  std::copy_n(other.WorkingBars, static_cast<int>(kDateBars), WorkingBars);
  WorkingBars[kDateBars] = other.WorkingBars[kVolumeBars];
  std::copy_n(other.SourceBars, static_cast<int>(kAmountBars), SourceBars);
  Index = other.Index;
  BlPointUnit = other.BlPointUnit;
  BigPointValue = other.BigPointValue;
  BlMargin = other.BlMargin;
  Margin = other.Margin;
  CompressStart = other.CompressStart;
  CompressEnd = other.CompressEnd;
  CompressIncrement = other.CompressIncrement;
  Setting = other.Setting;
  SettingFileName = other.SettingFileName;
  SummaryInfo = other.SummaryInfo;
  SummaryDetail = other.SummaryDetail;
  Name = other.Name;
  SummaryCount = other.SummaryCount;
  std::ranges::copy(other.SummaryRows, SummaryRows);
  SummaryTitle = other.SummaryTitle;
  std::ranges::copy(other.History, History);
  std::ranges::copy(other.StopOnLastBar, StopOnLastBar);
  std::ranges::copy(other.StopOnBarBeforeLast, StopOnBarBeforeLast);
  SummaryInfoFileName = other.SummaryInfoFileName;
  IndividualSummaryFileName = other.IndividualSummaryFileName;
  TradingHistoryFileName = other.TradingHistoryFileName;
  return *this;
}

void SSimulation::SetVariable(SVector &close, SVector &open, SVector &high, SVector &low, SVector &volume,
                              SVector &date, SVector &openInterest, SVector &amount) {
  const SVector *const given[kBarSeries] = {&close,  &open, &high,   &low,
                                            &volume, &date, &amount, &openInterest};
  // The arguments may be series of this object, in any order.
  SVector bars[kBarSeries];
  for (int i = 0; i < kBarSeries; ++i) bars[i] = *given[i];
  std::ranges::copy(bars, SourceBars);
  std::ranges::move(bars, WorkingBars);
  SVector *const working = WorkingBars;
  SetVariablePointer(working + kCloseBars, working + kOpenBars, working + kHighBars, working + kLowBars,
                     working + kVolumeBars, working + kDateBars, working + kOpenInterestBars,
                     working + kAmountBars);
  SourceClose = SourceBars + kCloseBars;
  SourceOpen = SourceBars + kOpenBars;
  SourceHigh = SourceBars + kHighBars;
  SourceLow = SourceBars + kLowBars;
  SourceVolume = SourceBars + kVolumeBars;
  SourceDate = SourceBars + kDateBars;
  SourceAmount = SourceBars + kAmountBars;
  SourceOpenInterest = SourceBars + kOpenInterestBars;
}

void SSimulation::SetVariablePointer(SVector *close, SVector *open, SVector *high, SVector *low,
                                     SVector *volume, SVector *date, SVector *openInterest, SVector *amount) {
  Close = SourceClose = close;
  Open = SourceOpen = open;
  High = SourceHigh = high;
  Low = SourceLow = low;
  Volume = SourceVolume = volume;
  Date = SourceDate = date;
  Amount = SourceAmount = amount;
  OpenInterest = SourceOpenInterest = openInterest;
}

void SSimulation::SetVariableToIndex() {
  SVector *const bars[] = {Close, Open, High, Low, Volume, Date, OpenInterest, Amount};
  std::ranges::copy(bars, Index.Variable);
  Index.SetFunction(FunctionList);
}

void SSimulation::SetIndex(SIndex &index) { Index = index; }

void SSimulation::SetFunction(SFunctionList *list) { FunctionList = list; }

void SSimulation::TradeRules() {
  SummaryCount = 0;
  SetHistoryToZero();
  ProcessStop(nullptr);
  Index.PreProcess();
  SetHistory();
  SetSummary();
}

void SSimulation::SetSymbolName(SString name) { Setting.SymbolName = std::move(name); }

void SSimulation::SetName(SString name) { Name = std::move(name); }

void SSimulation::SetBigPointValue(double value) { BigPointValue = value; }

void SSimulation::SetMargin(double margin) {
  Margin = margin;
  BlMargin = 1;
}

}  // namespace trovenu
