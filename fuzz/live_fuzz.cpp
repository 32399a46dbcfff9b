// A live feed. Whole bars and updates of the newest one, with an update of the lines after any of them: the
// lines are always those of one full calculation. Or fields in any order, where nothing but safety is
// promised.

#include <algorithm>
#include <string>

#include "fuzz/check.h"
#include "fuzz/input.h"
#include "tests/formula/random_formula.h"
#include "trovenu/indicator/index.h"
#include "trovenu/price/price_data_list.h"

namespace trovenu::fuzz {
namespace {

using tests::RandomFormula;

constexpr int kMostSteps = 200;
constexpr int kMostBars = 300;

class Feed {
 public:
  explicit Feed(int id) : id_(id) {}

  static void AddBar(SPriceData &data, int place, int price, Input &input, bool isOlder) {
    const auto put = [&](int code, double value) {
      isOlder ? data.InsertData(code, value) : data.AddData(code, value);
    };
    const int close = price + input.Below(41) - 20;
    put(SPriceData::kClose, close * kTick);
    put(SPriceData::kOpen, price * kTick);
    put(SPriceData::kHigh, Alternating(std::max(price, close) + input.Below(9), place) * kTick);
    put(SPriceData::kLow, Alternating(std::min(price, close) - input.Below(9), place) * kTick);
    put(SPriceData::kVolume, Alternating(input.Below(200), place));
    put(SPriceData::kAmount, close * 3);
    put(SPriceData::kOpenInterest, 100 + input.Below(9));
    put(SPriceData::kDate, DateOf(place));
  }

  void Add(Input &input) {
    SPriceData &data = list_[0];
    if (data.close.GetSize() < kMostBars) AddBar(data, next_++, 1500 + input.Below(256) * 4, input, false);
  }

  // A batch of an even number of older bars.
  void InsertOlder(Input &input) {
    SPriceData &data = list_[0];
    const int count = 2 * input.Below(4);
    if (data.close.GetSize() + count > kMostBars) return;
    first_ -= count;
    for (int i = 0; i < count; ++i) AddBar(data, first_ + i, 1500 + input.Below(256) * 4, input, true);
    data.InsertDataEnd();
  }

  void Update(Input &input, int back) {
    SPriceData &data = list_[0];
    const int code = input.Below(SPriceData::kBarFields);
    if (code == SPriceData::kDate) return;
    double value = 500 + input.Below(8000);
    if (code == SPriceData::kHigh || code == SPriceData::kLow || code == SPriceData::kVolume)
      value = Alternating(static_cast<int>(value), next_ - 1 - back);
    data.UpdateData(code, code == SPriceData::kVolume ? value : value * kTick, back);
  }

  void Bind(SIndex &index) { index.SetData(&list_, id_); }
  static SPriceDataList Empty() {
    SPriceDataList list;
    list.Add();
    return list;
  }

 private:
  static constexpr double kTick = 0.05;

  // Neighbours are never alike: the determination of a flat window is carried over from the bar before, which
  // a tail doesn't see.
  static int Alternating(int value, int place) { return (value & ~1) + (place & 1); }

  // Four bars a day.
  static double DateOf(int place) {
    const int bar = place + 4 * 336;
    const int day = bar / 4;
    const int date = (2020 + day / 336) * 10000 + (day / 28 % 12 + 1) * 100 + day % 28 + 1;
    return date * 1e6 + (9 + bar % 4) * 1e4;
  }

  SPriceDataList list_ = Empty();
  int id_;
  int first_ = 0;
  int next_ = 0;
};

void CheckLines(Feed &feed, const SIndex &live) {
  SIndex whole(live);
  feed.Bind(whole);
  whole.Calc();
  // Without bars a formula may have the one value of its numbers.
  if (whole.Variable[0]->GetSize() == 0) return;
  for (int i = 0; i < kExpressions; ++i) {
    const SVector &a = live.ExpData[i];
    const SVector &b = whole.ExpData[i];
    Require(a.GetSize() == b.GetSize(), "live lines are as long as calculated ones");
    for (int bar = std::max(b.GetStartIndex(), 0); bar < b.GetSize(); ++bar)
      Require(IsSameNumber(a[bar], b[bar]), "live lines have the values of calculated ones");
  }
}

// The newest `fresh` bars are not in the lines yet.
void RunFeed(Input &input) {
  static SFunctionList functions = RandomFormula::UserFunctions();
  const int choice = input.Below(4);
  SIndex live("", choice % 2);
  live.SetFunction(&functions);
  RandomFormula formulas([&input] { return std::uint_fast32_t{input.Byte()}; },
                         choice < 2 ? RandomFormula::Words::TailCalls : RandomFormula::Words::AllCalls);
  for (int i = input.Below(3); i >= 0; --i) live.SetExpression(2 - i, formulas.Next().c_str());
  // Of such a call the bars before the newest ones change too, which an update of the lines leaves as they
  // are.
  const bool looksAhead = formulas.Used().contains(FunctionId::DeCompress);
  const auto update = [&live, looksAhead] {
    if (looksAhead) live.SetCalcInit();
    live.CalcLast();
  };
  Feed feed(0);
  feed.Bind(live);
  int fresh = 0;
  for (int step = 0; step < kMostSteps && !input.IsEmpty(); ++step) {
    switch (input.Below(16)) {
      case 0:
        feed.InsertOlder(input);
        live.ClearData();
        live.SetCalcInit();
        live.Calc();
        fresh = 0;
        break;
      case 1: {
        const int back = input.Below(20);
        feed.Update(input, back);
        // Of the bars that it had, an update of the lines looks at the newest one again.
        if (back > fresh) live.SetCalcInit();
        if (back > fresh) live.ClearData();
        break;
      }
      case 2:
      case 3:
      case 4:
      case 5:
        feed.Update(input, 0);
        break;
      case 6:
      case 7:
      case 8:
        update();
        fresh = 0;
        CheckLines(feed, live);
        break;
      default:
        feed.Add(input);
        ++fresh;
    }
  }
  update();
  CheckLines(feed, live);
}

// Formulas, patterns and fields as they come.
void RunAnything(Input &input) {
  SPriceDataList list;
  list.Add();
  SFunctionList patterns;
  SIndex index("", input.Below(2) == 0 ? kCandleIndex : input.Below(6));
  for (int i = 0; i < 3; ++i) {
    const std::string text = input.Text().substr(0, 60);
    index.SetExpression(i, text.c_str());
    SFunction pattern;
    pattern.Expression = text.c_str();
    patterns.Add(pattern);
  }
  index.SetData(&list, list[0].GetID());
  index.SetFunction(&patterns);
  index.SetCandle(&patterns);
  SPriceData &data = list[0];
  for (int step = 0; step < kMostSteps && !input.IsEmpty(); ++step) {
    const int code = input.Below(SPriceData::kFieldCodes + 2) - 1;
    switch (input.Below(16)) {
      case 0:
        data.InsertDataEnd();
        break;
      case 1:
        data.InsertData(code, input.Number());
        break;
      case 2:
      case 3:
        data.UpdateData(code, input.Number(), input.Below(20) - 2);
        break;
      case 4:
        index.Calc();
        break;
      case 5:
      case 6:
        index.CalcLast();
        break;
      case 7:
        data.close.SetStartIndex(input.Below(256) - 20);
        break;
      case 8:
        index.AddData(code, input.Number());
        index.UpdateData(code, input.Number());
        break;
      case 9:
        data.CalcCorrectedPrice(0, 0);
        data.GetPriceMax(input.Below(20) - 2, input.Below(40) - 2);
        data.GetPriceMinTemp(input.Below(20) - 2, input.Below(40) - 2);
        index.GetMax(0, input.Below(40), 0);
        break;
      case 10:
        index.SetCalcInit();
        break;
      case 11:
        if (input.Below(8) == 0) data.ClearData();
        break;
      default:
        data.AddData(code, input.Number());
    }
  }
  index.CalcLast();
}

}  // namespace
}  // namespace trovenu::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  trovenu::fuzz::Input input(data, size);
  if (input.Below(4) < 3) {
    trovenu::fuzz::RunFeed(input);
  } else {
    trovenu::fuzz::RunAnything(input);
  }
  return 0;
}
