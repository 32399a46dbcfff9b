#include "tests/chart_types/chart_case.h"

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <sstream>

namespace trovenu::tests {
namespace {

using Calculator = void (SIndex::*)(int);

const std::map<std::string, Calculator> &Table() {
  static const std::map<std::string, Calculator> table = {{"CalcPnF", &SIndex::CalcPnF},
                                                          {"CalcKagi", &SIndex::CalcKagi},
                                                          {"CalcRenko", &SIndex::CalcRenko},
                                                          {"CalcThreeLineBreak", &SIndex::CalcThreeLineBreak},
                                                          {"CalcSwing", &SIndex::CalcSwing},
                                                          {"CalcCounterClock", &SIndex::CalcCounterClock},
                                                          {"CalcCandleVolume", &SIndex::CalcCandleVolume},
                                                          {"CalcMarketProfile", &SIndex::CalcMarketProfile},
                                                          {"CalcZigZagLine", &SIndex::CalcZigZagLine},
                                                          {"CalcZigZagOrgLine", &SIndex::CalcZigZagOrgLine},
                                                          {"CalcVolumeAtPrice", nullptr}};
  return table;
}

struct Case {
  int line = 0;
  std::map<std::string, std::vector<std::string>> words;

  bool Has(const std::string &key) const { return words.contains(key); }
  std::vector<double> Numbers(const std::string &key) const {
    std::vector<double> numbers;
    if (!Has(key)) return numbers;
    for (const std::string &word : words.at(key)) {
      if (word != "-") numbers.push_back(std::stod(word));
    }
    return numbers;
  }
  double Number(const std::string &key, double defaultValue) const {
    return Has(key) ? Numbers(key).at(0) : defaultValue;
  }
};

void Check(const Case &expected) {
  Chart chart(expected.Numbers("closes"), static_cast<int>(expected.Number("start", 0)),
              expected.Number("tick", 1.0));
  SIndex &index = chart.index;
  int i = 0;
  for (double volume : expected.Numbers("volumes")) chart.Data().volume[i++] = volume;
  i = 0;
  for (double date : expected.Numbers("dates")) chart.Data().date[i++] = date;
  const auto text = [](const std::string &word) { return word == "-" ? std::string() : word; };
  i = 0;
  if (expected.Has("variables")) {
    for (const std::string &word : expected.words.at("variables")) index.VarValue[i++] = text(word).c_str();
  }
  const std::vector<double> range = expected.Has("range") ? expected.Numbers("range") : std::vector{0.0, 1e9};
  // The dates of the host, which stand behind the results.
  index.ExpDate.Add(20231231);
  for (int run = 0; run < expected.Number("runs", 1); ++run) {
    chart.Run(expected.words.at("chart").at(0), static_cast<int>(expected.Number("automatic", 0)),
              static_cast<int>(range.at(0)), static_cast<int>(range.at(1)));
  }
  EXPECT_EQ(Elements(index.ExpDate), std::vector<double>{20231231});
  i = 0;
  if (expected.Has("reads")) {
    for (const std::string &word : expected.words.at("reads"))
      EXPECT_STREQ(index.VarValue[i++].c_str(), text(word).c_str());
  }
  for (i = 0; i < kExpressions; ++i) {
    const std::string number = std::to_string(i);
    EXPECT_EQ(index.ExpData[i].GetStartIndex(), expected.Number("starts " + number, 0)) << "series " << i;
    std::vector<double> values = expected.Numbers("series " + number);
    if (i == 0 && !expected.Has("series 0") && expected.Has("series 1")) {
      for (double position : expected.Numbers("series 1"))
        values.push_back(chart.Data().date[static_cast<int>(position)]);
    }
    EXPECT_EQ(Elements(index.ExpData[i]), values) << "series " << i;
  }
}

}  // namespace

Chart::Chart(const std::vector<double> &closes, int start, double tick) {
  list.Add();
  SPriceData &data = Data();
  data.TickSize = tick;
  int day = 20240101;
  for (double close : closes) {
    data.AddData(SPriceData::kClose, close);
    data.AddData(SPriceData::kVolume, 1.0);
    data.AddData(SPriceData::kDate, day++);
  }
  data.close.SetStartIndex(start);
  index.SetData(&list, list[0].GetID());
}

void Chart::Run(const std::string &calculator, int automatic, int first, int last) {
  const auto found = Table().at(calculator);
  if (found != nullptr) {
    (index.*found)(automatic);
  } else {
    index.CalcVolumeAtPrice(automatic, first, last);
  }
}

const std::vector<std::string> &Calculators() {
  static const std::vector<std::string> names = [] {
    std::vector<std::string> all;
    for (const auto &[name, calculator] : Table()) all.push_back(name);
    return all;
  }();
  return names;
}

int RunChartCases(std::istream &in, const std::string &file) {
  std::vector<Case> cases;
  int number = 0;
  for (std::string line; std::getline(in, line);) {
    ++number;
    std::istringstream words(line);
    std::string key, word;
    if (!(words >> key) || key.starts_with("#")) continue;
    if ((key == "series" || key == "starts") && words >> word) key += " " + word;
    if (key == "chart") cases.push_back({number, {}});
    if (cases.empty()) continue;
    while (words >> word) cases.back().words[key].push_back(word);
  }
  for (const Case &expected : cases) {
    const testing::ScopedTrace trace(file.c_str(), expected.line, expected.words.at("chart").at(0));
    Check(expected);
  }
  return static_cast<int>(cases.size());
}

}  // namespace trovenu::tests
