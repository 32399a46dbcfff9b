#include "trovenu/formula/functions/event_counters.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>

#include "tests/formula/bars.h"

namespace trovenu::tests {
namespace {

class EventCounters : public testing::Test {
 protected:
  // A condition that is true at about every fourth bar; what is no number is true.
  SVector RandomCondition() {
    return Fill([this] {
      const auto choice = random_() % 12;
      return choice == 0 ? std::numeric_limits<double>::quiet_NaN() : choice < 3 ? 1.5 : 0.0;
    });
  }
  SVector RandomValues() {
    return Fill([this] { return static_cast<double>(random_() % 2001) - 1000.0; });
  }

  static testing::AssertionResult Same(const SVector &a, const SVector &b) {
    if (a.GetSize() != b.GetSize() || a.GetStartIndex() != b.GetStartIndex()) {
      return testing::AssertionFailure() << "size " << a.GetSize() << ", start " << a.GetStartIndex()
                                         << " and not " << b.GetSize() << ", " << b.GetStartIndex();
    }
    for (int i = a.GetStartIndex(); i < a.GetSize(); ++i) {
      if (!SameNumber(a[i], b[i])) return testing::AssertionFailure() << "bar " << i << ": " << a[i];
    }
    return testing::AssertionSuccess();
  }

 private:
  template <class Next>
  SVector Fill(Next next) {
    SVector series(static_cast<int>(random_() % 40));
    for (int i = 0; i < series.GetSize(); ++i) series[i] = next();
    series.SetStartIndex(static_cast<int>(random_() % 6));
    return series;
  }

  std::mt19937 random_{11};
};

bool IsTrue(double x) { return x != 0.0; }

int FirstTrue(const SVector &condition) {
  for (int i = condition.GetStartIndex(); i < condition.GetSize(); ++i) {
    if (IsTrue(condition[i])) return i;
  }
  return 0;
}

SVector SlowExtremeSince(bool isHighest, int n, const SVector &cond, const SVector &x) {
  const int f = std::max(FirstTrue(cond), x.GetStartIndex());
  const int e = std::min(cond.GetSize(), x.GetSize());
  SVector result(e);
  result.SetStartIndex(e + 1);
  int count = 0;
  for (int p = f; p < e; ++p) {
    if (!IsTrue(cond[p]) || ++count < n) continue;
    result.SetStartIndex(p);
    double extreme = 0.0;
    for (int i = f; i <= e + f - p - 1; ++i) {
      if (IsTrue(cond[i])) {
        extreme = x[i];
      } else {
        extreme = isHighest ? std::max(extreme, x[i]) : std::min(extreme, x[i]);
      }
      result[i + p - f] = extreme;
    }
    break;
  }
  return result;
}

SVector SlowValueWhen(int n, const SVector &cond, const SVector &x) {
  const int f = std::max(cond.GetStartIndex(), x.GetStartIndex());
  const int e = std::min(cond.GetSize(), x.GetSize());
  SVector result(e);
  result.SetStartIndex(kNoValidBar);
  for (int i = f; i < e; ++i) {
    // From i back, the bar of the n-th true condition.
    int count = 0;
    for (int p = i; p >= f; --p) {
      if (!IsTrue(cond[p]) || ++count < n) continue;
      if (result.GetStartIndex() == kNoValidBar) result.SetStartIndex(i);
      result[i] = x[p];
      break;
    }
  }
  return result;
}

TEST_F(EventCounters, AgreeWithLoopsThatStartAfreshAtEachBar) {
  for (int round = 0; round < 3000; ++round) {
    SCOPED_TRACE(round);
    const SVector cond = RandomCondition();
    const SVector x = RandomValues();
    for (const int n : {1, 2, 3, 7, std::numeric_limits<int>::max()}) {
      ASSERT_TRUE(Same(HighestSince(n, cond, x), SlowExtremeSince(true, n, cond, x))) << n;
      ASSERT_TRUE(Same(LowestSince(n, cond, x), SlowExtremeSince(false, n, cond, x))) << n;
      ASSERT_TRUE(Same(ValueWhen(n, cond, x), SlowValueWhen(n, cond, x))) << n;
    }
  }
}

}  // namespace
}  // namespace trovenu::tests
