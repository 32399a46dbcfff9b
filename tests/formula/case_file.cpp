#include "tests/formula/case_file.h"

#include <gtest/gtest.h>

#include <charconv>
#include <optional>
#include <sstream>
#include <string_view>

namespace trovenu::tests {
namespace {

struct Line {
  int number = 0;
  std::string key;
  std::string text;
};

using Block = std::vector<Line>;

// The lines of each case, without comments.
std::vector<Block> SplitIntoBlocks(std::istream &in) {
  std::vector<Block> blocks(1);
  std::string line;
  for (int number = 1; std::getline(in, line); ++number) {
    line.erase(line.find_last_not_of(" \t\r") + 1);
    if (line.empty() && !blocks.back().empty()) blocks.emplace_back();
    if (line.empty() || line[0] == '#') continue;
    const std::size_t space = line.find(' ');
    const std::size_t text = line.find_first_not_of(' ', space);
    blocks.back().push_back(
        {number, line.substr(0, space), text == std::string::npos ? "" : line.substr(text)});
  }
  if (blocks.back().empty()) blocks.pop_back();
  return blocks;
}

std::vector<std::string> SplitIntoWords(const std::string &text) {
  std::istringstream in(text);
  std::vector<std::string> words;
  for (std::string word; in >> word;) words.push_back(word);
  return words;
}

template <class Number>
std::optional<Number> ParseNumber(std::string_view text) {
  Number value{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

std::optional<double> ParseValue(std::string_view text) {
  const std::size_t slash = text.find('/');
  if (slash == std::string_view::npos) return ParseNumber<double>(text);
  const auto above = ParseNumber<double>(text.substr(0, slash));
  const auto below = ParseNumber<double>(text.substr(slash + 1));
  if (!above || !below) return std::nullopt;
  return *above / *below;
}

class CaseReader {
 public:
  CaseReader(const BarSets &sets, std::vector<std::string> &problems) : sets_(sets), problems_(problems) {}

  Case Read(const Block &block) {
    result_ = Case{};
    result_.line = block.front().number;
    from_ = 0;
    hasStart_ = hasValues_ = false;
    // The set comes first, since single series take the place of its own.
    for (const Line &line : block) {
      if (line.key == "bars") TakeSet(line);
    }
    for (const Line &line : block) Take(line);
    for (SVector *series : result_.bars.Columns()) series->SetStartIndex(from_);
    Check(block.front());
    return std::move(result_);
  }

 private:
  void Refuse(const Line &line, std::string_view why) {
    problems_.push_back(std::to_string(line.number) + ": " + std::string(why) + ": " + line.key + " " +
                        line.text);
  }

  void TakeSet(const Line &line) {
    const auto set = sets_.find(line.text);
    if (set == sets_.end()) return Refuse(line, "no such bars");
    result_.bars = set->second;
  }

  template <class Number>
  void TakeNumber(const Line &line, Number &out) {
    const auto number = ParseNumber<Number>(line.text);
    if (!number) return Refuse(line, "a number is expected");
    out = *number;
  }

  void Take(const Line &line) {
    if (line.key == "bars") return;
    if (SVector *series = result_.bars.Column(line.key)) return TakeSeries(line, *series);
    if (line.key == "formula") return result_.formulas.push_back(line.text);
    if (line.key == "from") return TakeNumber(line, from_);
    if (line.key == "size") return TakeNumber(line, result_.size);
    if (line.key == "tolerance") return TakeNumber(line, result_.tolerance);
    if (line.key == "values") return TakeValues(line);
    if (line.key == "message") {
      result_.message = line.text;
    } else if (line.key == "full" && (line.text == "0" || line.text == "1")) {
      result_.full = line.text == "1";
    } else if (line.key == "start") {
      hasStart_ = true;
      if (line.text != "none") TakeNumber(line, result_.start);
    } else {
      Refuse(line, "not understood");
    }
  }

  void TakeSeries(const Line &line, SVector &series) {
    series.ClearData();
    for (const std::string &word : SplitIntoWords(line.text)) {
      const auto value = ParseValue(word);
      if (!value) return Refuse(line, "numbers are expected");
      series.Add(*value);
    }
  }

  void TakeValues(const Line &line) {
    hasValues_ = true;
    dashes_ = 0;
    for (const std::string &word : SplitIntoWords(line.text)) {
      const auto value = ParseValue(word);
      if (value) {
        result_.values.push_back(*value);
      } else if (word == "-" && result_.values.empty()) {
        ++dashes_;
      } else {
        return Refuse(line, "numbers are expected");
      }
    }
  }

  void Check(const Line &first) {
    if (result_.formulas.empty()) Refuse(first, "a case without a formula");
    if (!result_.message.empty()) {
      if (hasStart_ || hasValues_) Refuse(first, "a message goes without start and values");
      return;
    }
    if (!hasStart_) Refuse(first, "a case without start");
    const int written = dashes_ + static_cast<int>(result_.values.size());
    if (hasValues_ && result_.size < 0) result_.size = written;
    if (hasValues_ ? result_.size != written : result_.size > result_.start || result_.size < 0) {
      Refuse(first, "as many values as the size are expected");
    }
    if (!result_.values.empty() && dashes_ != result_.start) Refuse(first, "a - for each bar before start");
  }

  const BarSets &sets_;
  std::vector<std::string> &problems_;
  Case result_;
  int from_ = 0;
  int dashes_ = 0;
  bool hasStart_ = false;
  bool hasValues_ = false;
};

}  // namespace

BarSets ReadBarSets(std::istream &in) {
  BarSets sets;
  for (const Block &block : SplitIntoBlocks(in)) {
    EXPECT_EQ(block.front().key, "bars") << "line " << block.front().number;
    Bars &bars = sets[block.front().text];
    for (const Line &line : block) {
      if (line.key == "bars") continue;
      SVector *series = bars.Column(line.key);
      EXPECT_NE(series, nullptr) << "line " << line.number << ": " << line.key;
      for (const std::string &word : SplitIntoWords(line.text)) {
        const auto value = ParseValue(word);
        EXPECT_TRUE(value) << "line " << line.number << ": " << word;
        if (series != nullptr) series->Add(value.value_or(0.0));
      }
    }
  }
  return sets;
}

CaseFile ReadCases(std::istream &in, const BarSets &sets) {
  CaseFile file;
  CaseReader reader(sets, file.problems);
  for (const Block &block : SplitIntoBlocks(in)) file.cases.push_back(reader.Read(block));
  return file;
}

}  // namespace trovenu::tests
