#include "trovenu/backtest/trade_order.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace trovenu {
namespace {

// Counts of places up to a given one, each place marked at most once.
class Marks {
 public:
  explicit Marks(std::size_t count) : sums_(count + 1) {}

  void Mark(int place) {
    for (auto i = static_cast<std::size_t>(place) + 1; i < sums_.size(); i += i & (~i + 1)) ++sums_[i];
  }

  int CountBefore(int place) const {
    int count = 0;
    for (auto i = static_cast<std::size_t>(place); i > 0; i &= i - 1) count += sums_[i];
    return count;
  }

 private:
  std::vector<int> sums_;
};

// Brings rows of one key, which stand in order of their places, into the order of the exchange sort.
//
// Pass t of the sort takes the smallest row out. Seen from this key, rows are either smaller or not, and the
// pass puts the first row that is not smaller where the first smaller one stood (the later smaller ones only
// change places among themselves). So pass t frees the place of the t-th smaller row of the original order.
// Of the rows of this key that stand before that place the first one is moved there, behind all the others:
// each pass turns the queue of those rows by one, and the rows that lie between this freed place and the next
// one join at its end. When no smaller row is left, the queue comes out as it stands.
void TurnTies(std::span<int> ties, const Marks &smaller, int smallerCount) {
  const auto turn = [](std::span<int> queue, int passes) {
    if (queue.empty()) return;
    const auto first = queue.begin() + passes % static_cast<std::ptrdiff_t>(queue.size());
    std::rotate(queue.begin(), first, queue.end());
  };
  int passes = 0;
  for (std::size_t i = 0; i < ties.size(); ++i) {
    const int before = smaller.CountBefore(ties[i]);
    turn(ties.first(i), before - passes);
    passes = before;
  }
  turn(ties, smallerCount - passes);
}

}  // namespace

std::vector<int> ExchangeSortOrder(std::span<const double> keys) {
  const auto key = [keys](int place) { return keys[static_cast<std::size_t>(place)]; };
  std::vector<int> places;
  for (std::size_t i = 0; i < keys.size(); ++i) {
    if (!std::isnan(keys[i])) places.push_back(static_cast<int>(i));
  }
  std::vector<int> sorted = places;
  std::ranges::stable_sort(sorted, {}, key);

  Marks smaller(keys.size());
  for (auto begin = sorted.begin(); begin != sorted.end();) {
    const auto end = std::find_if(begin, sorted.end(), [&](int place) { return key(place) != key(*begin); });
    if (end - begin > 1) TurnTies({begin, end}, smaller, static_cast<int>(begin - sorted.begin()));
    for (; begin != end; ++begin) smaller.Mark(*begin);
  }

  std::vector<int> order(keys.size());
  for (std::size_t i = 0; i < keys.size(); ++i) order[i] = static_cast<int>(i);
  for (std::size_t i = 0; i < places.size(); ++i) order[static_cast<std::size_t>(places[i])] = sorted[i];
  return order;
}

}  // namespace trovenu
