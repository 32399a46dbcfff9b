#include "tools/trovenu/live_replay.h"

#include <algorithm>
#include <chrono>

#include "trovenu/price/price_data_list.h"

namespace trovenu::tool {

namespace {

// The first part of a bar is its open, the last its close.
constexpr int kParts = 4;

// The bars of one symbol as a host keeps them.
class LiveChart {
 public:
  explicit LiveChart(const Bars &bars) : bars_(bars), id_(prices_.Add()) {}

  void Bind(SIndex &indicator) { indicator.SetData(&prices_, id_); }

  void AddWhole(int bar) {
    SPriceData &data = prices_[0];
    data.AddData(SPriceData::kClose, At(BarField::Close, bar));
    data.AddData(SPriceData::kOpen, At(BarField::Open, bar));
    data.AddData(SPriceData::kHigh, At(BarField::High, bar));
    data.AddData(SPriceData::kLow, At(BarField::Low, bar));
    data.AddData(SPriceData::kVolume, At(BarField::Volume, bar));
    data.AddData(SPriceData::kAmount, At(BarField::Amount, bar));
    AddRest(bar);
  }

  void AddPart(int bar) {
    SPriceData &data = prices_[0];
    const double open = At(BarField::Open, bar);
    for (const int price : {SPriceData::kClose, SPriceData::kOpen, SPriceData::kHigh, SPriceData::kLow}) {
      data.AddData(price, open);
    }
    data.AddData(SPriceData::kVolume, At(BarField::Volume, bar) / kParts);
    data.AddData(SPriceData::kAmount, At(BarField::Amount, bar) / kParts);
    AddRest(bar);
  }

  void UpdatePart(int bar, int part) {
    SPriceData &data = prices_[0];
    if (part == 1) {
      Trade(SPriceData::kHigh, At(BarField::High, bar));
    } else if (part == 2) {
      Trade(SPriceData::kLow, At(BarField::Low, bar));
    } else {
      Trade(SPriceData::kClose, At(BarField::Close, bar));
    }
    data.UpdateData(SPriceData::kVolume, At(BarField::Volume, bar) * (part + 1) / kParts, 0);
    data.UpdateData(SPriceData::kAmount, At(BarField::Amount, bar) * (part + 1) / kParts, 0);
  }

 private:
  double At(BarField field, int bar) const { return bars_[field][bar]; }

  void AddRest(int bar) {
    prices_[0].AddData(SPriceData::kDate, At(BarField::Date, bar));
    prices_[0].AddData(SPriceData::kOpenInterest, At(BarField::OpenInterest, bar));
  }

  // The price of the newest trade is the close.
  void Trade(int code, double price) {
    prices_[0].UpdateData(code, price, 0);
    prices_[0].UpdateData(SPriceData::kClose, price, 0);
  }

  const Bars &bars_;
  SPriceDataList prices_;
  int id_;
};

class Stopwatch {
 public:
  void Update(SIndex &indicator) {
    const auto begin = std::chrono::steady_clock::now();
    indicator.CalcLast();
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - begin;
    ++updates_;
    sum_ += seconds.count();
    worst_ = std::max(worst_, seconds.count());
  }

  void Tell(ReplayResult &result) const {
    result.updates = updates_;
    result.mean = updates_ > 0 ? sum_ / static_cast<double>(updates_) : 0.0;
    result.worst = worst_;
  }

 private:
  long long updates_ = 0;
  double sum_ = 0.0;
  double worst_ = 0.0;
};

// A bar without a pattern is 0 after a live update of a scan and -1 after a full one; the first pattern has
// the number 0, too.
void ShowNoPatternAsZero(SIndex &indicator) {
  if (indicator.IndexType != kCandleIndex) return;
  SVector &marks = indicator.ExpData[0];
  for (int bar = 0; bar < marks.GetSize(); ++bar) marks[bar] = std::max(marks[bar], 0.0);
}

std::optional<ReplayDifference> FindDifference(const SIndex &live, const SIndex &full) {
  std::optional<ReplayDifference> first;
  for (int line = 0; line < kExpressions; ++line) {
    const SVector &a = live.ExpData[line];
    const SVector &b = full.ExpData[line];
    const int size = std::max(a.GetSize(), b.GetSize());
    const int end = first ? std::min(first->bar, size) : size;
    for (int bar = 0; bar < end; ++bar) {
      if (IsSame(ShownAt(a, bar), ShownAt(b, bar))) continue;
      first = ReplayDifference{line, bar, ShownAt(a, bar), ShownAt(b, bar)};
      break;
    }
  }
  return first;
}

}  // namespace

ReplayResult ReplayBars(const Bars &bars, int from, const SIndex &indicator, SFunctionList *functions) {
  LiveChart chart(bars);
  SIndex live = indicator;
  chart.Bind(live);
  live.SetFunction(functions);
  for (int bar = 0; bar < from; ++bar) chart.AddWhole(bar);
  if (from > 0) {
    live.Calc();
    // The first update after a full calculation is a full one, too: it lays the base of the next ones.
    live.CalcLast();
  }
  Stopwatch watch;
  for (int bar = from; bar < bars.Size(); ++bar) {
    chart.AddPart(bar);
    watch.Update(live);
    for (int part = 1; part < kParts; ++part) {
      chart.UpdatePart(bar, part);
      watch.Update(live);
    }
  }
  SIndex full = indicator;
  chart.Bind(full);
  full.SetFunction(functions);
  full.Calc();
  ShowNoPatternAsZero(live);
  ShowNoPatternAsZero(full);
  ReplayResult result;
  watch.Tell(result);
  result.difference = FindDifference(live, full);
  return result;
}

}  // namespace trovenu::tool
