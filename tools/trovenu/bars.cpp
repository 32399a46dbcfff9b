#include "tools/trovenu/bars.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <system_error>
#include <vector>

#include "tools/trovenu/csv_reader.h"
#include "tools/trovenu/date_text.h"
#include "tools/trovenu/failure.h"
#include "tools/trovenu/terminal_text.h"
#include "tools/trovenu/text_file.h"

namespace trovenu::tool {

namespace {

// Takes off a byte-order mark. Two-byte encodings are told apart from a file without a header.
std::string_view WithoutMark(const std::string &name, std::string_view text) {
  if (text.starts_with("\xEF\xBB\xBF")) return text.substr(3);
  if (text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF")) {
    throw FailureAt(name, 1, "expected UTF-8 or CP949, found UTF-16");
  }
  return text;
}

std::string Found(std::string_view field) {
  return field.empty() ? "found nothing" : "found " + Quoted(field);
}

// Reads the rows below the header.
class BarRows {
 public:
  BarRows(Bars &bars, const BarColumns &columns, CsvReader &csv)
      : bars_(bars), columns_(columns), csv_(csv) {}

  void Read(int mostRows) {
    for (int i = 0; i < kSeriesFields; ++i) {
      bars_.series[static_cast<std::size_t>(i)].SetSize(mostRows);
      if (!columns_.Has(static_cast<BarField>(i))) continue;
      bars_.present |= 1U << i;
      if (static_cast<BarField>(i) != BarField::Date) numbers_.push_back(static_cast<BarField>(i));
    }
    int count = 0;
    while (csv_.NextRow(row_)) {
      CheckLength();
      bars_[BarField::Date][count] = ReadDate();
      for (const BarField field : numbers_) bars_[field][count] = ReadNumber(field);
      ++count;
    }
    if (count == 0) throw FailureAt(bars_.name, csv_.Line(), "expected bars below the header, found none");
    for (SVector &series : bars_.series) series.SetSize(count);
  }

 private:
  std::string_view FieldText(BarField field) const {
    return row_[static_cast<std::size_t>(columns_.position[static_cast<int>(field)])];
  }

  Failure FailureIn(BarField field, const std::string &what) const {
    const int position = columns_.position[static_cast<int>(field)];
    const std::string &heading = columns_.headings[static_cast<std::size_t>(position)];
    return FailureAt(bars_.name, csv_.Line(), "column " + OneLine(heading) + ": " + what);
  }

  // A row may end in further separators.
  void CheckLength() const {
    const std::size_t columns = columns_.headings.size();
    if (row_.size() == columns) return;
    const std::size_t common = std::min(columns, row_.size());
    const bool restIsEmpty = std::all_of(row_.begin() + static_cast<std::ptrdiff_t>(common), row_.end(),
                                         [](std::string_view field) { return field.empty(); });
    if (row_.size() > columns && restIsEmpty) return;
    const std::string &heading = columns_.headings[common < columns ? common : columns - 1];
    throw FailureAt(bars_.name, csv_.Line(),
                    std::string("column ") + OneLine(heading) + ": expected " + std::to_string(columns) +
                        " fields as in the header, found " + std::to_string(row_.size()));
  }

  double ReadDate() {
    const std::string_view text = FieldText(BarField::Date);
    DateTime dateTime;
    if (!ReadDateTime(text, dateTime)) {
      throw FailureIn(BarField::Date, "expected a date such as 2024-01-02 or 20240102, " + Found(text));
    }
    if (columns_.Has(BarField::Time)) TakeTime(dateTime);
    const double number = dateTime.Number();
    CheckDateForm(dateTime);
    CheckOrder(number);
    return number;
  }

  void TakeTime(DateTime &dateTime) const {
    const std::string_view text = FieldText(BarField::Time);
    if (text.empty()) return;
    if (dateTime.time != DateTime::kNoTime) {
      throw FailureIn(BarField::Time, "expected no time beside a date that has one, " + Found(text));
    }
    if (!ReadTime(text, dateTime.time)) {
      throw FailureIn(BarField::Time, "expected a time such as 09:01 or 0901, " + Found(text));
    }
  }

  // All bars have a time, or none has.
  void CheckDateForm(const DateTime &dateTime) {
    const bool withTime = dateTime.time != DateTime::kNoTime;
    if (!hasLast_) intraday_ = withTime;
    if (withTime == intraday_) return;
    const BarField field = columns_.Has(BarField::Time) ? BarField::Time : BarField::Date;
    throw FailureIn(field, intraday_ ? "expected a time as in the bars before, found none"
                                     : "expected no time as in the bars before, " + Found(FieldText(field)));
  }

  void CheckOrder(double number) {
    if (hasLast_ && number <= lastDate_) {
      std::string what = "expected a date after ";
      AppendDate(what, lastDate_, HasSeconds(lastDate_));
      what += ", found ";
      AppendDate(what, number, HasSeconds(number));
      throw FailureIn(BarField::Date, what);
    }
    hasLast_ = true;
    lastDate_ = number;
  }

  double ReadNumber(BarField field) const {
    const std::string_view text = FieldText(field);
    const char *begin = text.data();
    const char *const end = begin + text.size();
    if (text.size() > 1 && text[0] == '+' && text[1] != '-') ++begin;
    double value = 0;
    const auto [stop, fault] = std::from_chars(begin, end, value);
    // Words such as "nan" and "inf" are read, too, but are no prices.
    if (fault != std::errc() || stop != end || !std::isfinite(value)) {
      throw FailureIn(field, "expected a number, " + Found(text));
    }
    return value;
  }

  Bars &bars_;
  const BarColumns &columns_;
  CsvReader &csv_;
  std::vector<BarField> numbers_;
  std::vector<std::string_view> row_;
  double lastDate_ = 0;
  bool hasLast_ = false;
  bool intraday_ = false;
};

// Rows that a text can hold at most.
int CountLines(std::string_view text) {
  constexpr std::ptrdiff_t kMost = 0x7fffffff - 1000;
  return static_cast<int>(std::min(std::count(text.begin(), text.end(), '\n') + 1, kMost));
}

}  // namespace

Bars ReadBars(const std::string &path) {
  const std::string text = ReadWholeFile(path);
  return ReadBarsText(ShownName(path), text);
}

Bars ReadBarsText(const std::string &name, std::string_view text) {
  Bars bars;
  bars.name = name;
  text = WithoutMark(name, text);
  CsvReader csv(bars.name, text);
  std::vector<std::string_view> header;
  if (!csv.NextRow(header))
    throw FailureAt(name, 1, "expected a header with a column date (일자), the file is empty");
  bars.headerLine = csv.Line();
  const BarColumns columns = FindBarColumns(name, csv.Line(), header);
  BarRows(bars, columns, csv).Read(CountLines(text));
  return bars;
}

}  // namespace trovenu::tool
