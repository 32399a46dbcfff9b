#include "tests/formula/bars.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <string>

namespace trovenu::tests {

SVector Series(const std::vector<double> &values, int start) {
  SVector series(static_cast<int>(values.size()));
  for (int i = 0; i < series.GetSize(); ++i) series[i] = values[static_cast<std::size_t>(i)];
  series.SetStartIndex(start);
  return series;
}

SVector *Bars::Column(std::string_view name) {
  constexpr std::string_view kNames[] = {"close",  "open", "high",         "low",
                                         "volume", "date", "openinterest", "amount"};
  const std::vector<SVector *> columns = Columns();
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (kNames[i] == name) return columns[i];
  }
  return nullptr;
}

Bars DailyBars() {
  Bars bars;
  std::ifstream file(TROVENU_DATA_DIR "/daily.csv");
  std::string line;
  std::getline(file, line);
  EXPECT_EQ(line, "date,open,high,low,close,volume");
  while (std::getline(file, line)) {
    int year = 0, month = 0, day = 0;
    double open = 0, high = 0, low = 0, close = 0, volume = 0;
    if (std::sscanf(line.c_str(), "%d-%d-%d,%lf,%lf,%lf,%lf,%lf", &year, &month, &day, &open, &high, &low,
                    &close, &volume) != 8) {
      ADD_FAILURE() << "a bar was expected: " << line;
      continue;
    }
    bars.date.Add(year * 10000.0 + month * 100.0 + day);
    bars.open.Add(open);
    bars.high.Add(high);
    bars.low.Add(low);
    bars.close.Add(close);
    bars.volume.Add(volume);
  }
  return bars;
}

SVector Evaluate(Bars &bars, const char *formula) {
  SCalc calc;
  bars.Bind(calc);
  calc.SetExpression(formula);
  SVector result = calc.Calculate();
  EXPECT_EQ(calc.errorCount, 0) << formula;
  return result;
}

bool SameNumber(double a, double b) {
  if (a != a && b != b) return true;
  return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

}  // namespace trovenu::tests
