#include "trovenu/backtest/trade_order.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <utility>
#include <vector>

namespace trovenu {
namespace {

std::vector<int> SortedByExchanges(std::vector<double> keys) {
  std::vector<int> order(keys.size());
  for (std::size_t i = 0; i < order.size(); ++i) order[i] = static_cast<int>(i);
  for (std::size_t i = 0; i + 1 < keys.size(); ++i) {
    for (std::size_t j = i + 1; j < keys.size(); ++j) {
      if (!(keys[j] < keys[i])) continue;
      std::swap(keys[i], keys[j]);
      std::swap(order[i], order[j]);
    }
  }
  return order;
}

TEST(TradeOrder, IsThatOfTheExchangesTiesIncluded) {
  std::mt19937 random(7);
  for (int round = 0; round < 20000; ++round) {
    const auto distinct = 1 + random() % 12;
    std::vector<double> keys(random() % 40);
    for (double &key : keys) key = random() % 20 == 0 ? NAN : static_cast<double>(random() % distinct);
    ASSERT_EQ(ExchangeSortOrder(keys), SortedByExchanges(keys)) << "round " << round;
  }
}

// Long trades stand before short ones, each side in order of its dates.
TEST(TradeOrder, TwoSidesWithEqualDates) {
  std::mt19937 random(8);
  for (int round = 0; round < 200; ++round) {
    std::vector<double> keys;
    for (int side = 0; side < 2; ++side) {
      double date = 0;
      for (int i = 0; i < 100; ++i) keys.push_back(date += static_cast<double>(random() % 3));
    }
    ASSERT_EQ(ExchangeSortOrder(keys), SortedByExchanges(keys)) << "round " << round;
  }
}

}  // namespace
}  // namespace trovenu
