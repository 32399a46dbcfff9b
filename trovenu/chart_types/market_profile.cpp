#include "trovenu/chart_types/market_profile.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>

#include "trovenu/support/date_number.h"
#include "trovenu/support/number_text.h"

namespace trovenu {
namespace {

constexpr long kShortestBlock = 15;
constexpr double kFirstLetter = 65.0;

// The places where blocks open, counted from the first bar; none where memory is exhausted.
SVector BlockOpenings(const ChartBars &bars, int minutes) {
  const int count = bars.End() - bars.First();
  SVector openings(count);
  if (openings.GetSize() != count) return SVector();
  int blocks = 0;
  double next = 0.0;
  for (int i = 0; i < count; ++i) {
    const double date = bars.date[bars.First() + i];
    if (i > 0 && !(next <= date)) continue;
    openings[blocks++] = i;
    next = GetNextTime(date, minutes);
  }
  openings.SetSize(blocks);
  return openings;
}

// Goes through the openings one after the other, with -1 behind the last one and the first one after that.
class OpeningPointer {
 public:
  explicit OpeningPointer(const SVector &openings) : openings_(openings) { Advance(); }
  void Advance() { place_ = place_ < openings_.GetSize() ? place_ + 1 : 0; }
  bool IsAt(int bar) const { return place_ < openings_.GetSize() && openings_[place_] == bar; }

 private:
  const SVector &openings_;
  int place_ = 0;
};

// The first bar of each close of a block.
class FirstBars {
 public:
  explicit FirstBars(int bars) {
    const auto places = std::bit_ceil(static_cast<unsigned>(std::max(bars, 1)) * 2U);
    shift_ = 64 - std::countr_zero(places);
    places_ = SVector(static_cast<int>(places));
  }

  // False where memory is exhausted.
  bool HasRoom() const { return places_.GetSize() > 1; }

  // The place of a close, which is a number: 0 in it for a new one, else the position of its first bar
  // plus 1.
  double &At(const SVector &closes, double close) {
    const int last = places_.GetSize() - 1;
    int place = static_cast<int>(Mixed(close) >> shift_);
    while (places_[place] != 0.0 && closes[static_cast<int>(places_[place]) - 1] != close) {
      place = place < last ? place + 1 : 0;
    }
    return places_[place];
  }

 private:
  static std::uint64_t Mixed(double close) {
    constexpr std::uint64_t kGoldenRatio = 0x9e3779b97f4a7c15ULL;
    // The addition makes -0.0, which equals 0.0, have its bits.
    return std::bit_cast<std::uint64_t>(close + 0.0) * kGoldenRatio;
  }

  SVector places_;
  int shift_;
};

// Leaves each close of a block one entry, its first, which counts volume and bars. Required: entries stand
// at the positions of bars, in results that are as long as there are valid bars.
bool GroupBlock(const ChartBars &bars, int begin, int end, SVector *results) {
  SVector &letters = results[1];
  SVector &volumes = results[3];
  SVector &counts = results[4];
  FirstBars firstBars(end - begin);
  if (!firstBars.HasRoom()) return false;
  for (int i = begin; i < end; ++i) {
    const double close = bars.close[i];
    double noPlace = 0.0;
    double &place = std::isnan(close) ? noPlace : firstBars.At(bars.close, close);
    const int entry = place != 0.0 ? static_cast<int>(place) - 1 : i;
    if (entry != i) {
      letters[i] = 0.0;
    } else if (i < letters.GetSize()) {
      place = i + 1;
    }
    volumes[entry] += bars.volume[i];
    counts[entry] += 1.0;
  }
  return true;
}

bool Group(const ChartBars &bars, const SVector &openings, SVector *results) {
  int next = 0;
  for (int begin = bars.First(); begin < bars.End();) {
    while (next < openings.GetSize() && openings[next] <= begin) ++next;
    const int end = next < openings.GetSize() ? static_cast<int>(openings[next]) : bars.End();
    if (!GroupBlock(bars, begin, end, results)) return false;
    begin = end;
  }
  return true;
}

// Required: the letter moves on at the bar that opens the next block alone, and a new day moves the pointer
// to the next block by one, so that letters may lag behind the blocks of a day.
void SetLetters(const ChartBars &bars, const SVector &openings, SVector *results) {
  SVector &letters = results[1];
  SVector &days = results[2];
  OpeningPointer nextBlock(openings);
  double letter = kFirstLetter;
  letters[0] = letter;
  days[0] = 1.0;
  for (int i = bars.First() + 1; i < letters.GetSize(); ++i) {
    if (letters[i] == 0.0) continue;
    const int previous = letters.FindPrevNonZeroIndex(i - 1);
    if (GetLongDate(bars.date[previous]) < GetLongDate(bars.date[i])) {
      letter = kFirstLetter;
      nextBlock.Advance();
      days[i] = 1.0;
    } else if (nextBlock.IsAt(i)) {
      letter += 1.0;
      nextBlock.Advance();
    }
    letters[i] = letter;
  }
}

}  // namespace

void MakeMarketProfile(const ChartBars &bars, int minutes, SVector *results) {
  results[0] = bars.date;
  const int count = bars.End() - bars.First();
  if (count <= 0) return;
  for (int i = 1; i < kExpressions; ++i) {
    results[i].BeginResult(count, 0);
    if (results[i].GetSize() != count) return ClearResults(results);
    results[i].InitValue(i == 1 ? 1.0 : 0.0);
  }
  const SVector openings = BlockOpenings(bars, minutes);
  if (openings.GetSize() == 0 || !Group(bars, openings, results)) return ClearResults(results);
  SetLetters(bars, openings, results);
}

void SIndex::CalcMarketProfile(int) {
  const ChartBars bars(*this);
  const long minutes = std::max(AnsiStringToInt(VarValue[0], kShortestBlock), kShortestBlock);
  ClearResults(ExpData);
  MakeMarketProfile(bars, static_cast<int>(minutes), ExpData);
}

}  // namespace trovenu
