#include <algorithm>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "tools/trovenu/at_least.h"
#include "tools/trovenu/bars.h"
#include "tools/trovenu/command.h"
#include "tools/trovenu/failure.h"
#include "tools/trovenu/terminal_text.h"
#include "trovenu/price/sr_lines.h"
#include "trovenu/support/date_number.h"

namespace trovenu::tool {

namespace {

constexpr int kFirstLevel = SSRLines::kPivot;
constexpr int kLastLevel = SSRLines::kDeMarkLow;
constexpr int kDefaultDays = 2;
constexpr double kNoValue = std::numeric_limits<double>::quiet_NaN();

struct Options {
  std::string bars;
  int days = kDefaultDays;
  FormatOption format;
  std::string out;
};

// The bars of one day, from `first` up to `end`.
struct Day {
  int first;
  int end;
};

std::vector<Day> DaysOf(const SVector &dates) {
  std::vector<Day> days;
  for (int i = 0; i < dates.GetSize(); ++i) {
    if (i == 0 || GetCompDate(dates[i]) != GetCompDate(dates[i - 1])) days.push_back({i, i});
    days.back().end = i + 1;
  }
  return days;
}

// The rows of the result, oldest first.
class LevelTable {
 public:
  void AddLevel(double date, const SSRLines &lines, int line) { Add(date, lines, line, kNoValue, ""); }

  void AddAlert(double date, const SSRLines &lines, int line) {
    const CString message = lines.GetAlertMessage(line);
    if (!message.IsEmpty()) Add(date, lines, line, lines.close, message);
  }

  Table Take() {
    return {{{"date", std::move(dates_)},
             {"line", std::move(names_)},
             {"level", std::move(levels_)},
             {"close", std::move(closes_)},
             {"alert", std::move(alerts_)}}};
  }

 private:
  void Add(double date, const SSRLines &lines, int line, double close, const char *alert) {
    dates_.values.push_back(date);
    names_.values.push_back(ToUtf8(SSRLines::LineName(line)));
    levels_.values.push_back(lines.LineValue[line]);
    closes_.values.push_back(close);
    alerts_.values.push_back(ToUtf8(alert));
  }

  TableColumn::Dates dates_;
  TableColumn::Texts names_;
  TableColumn::Numbers levels_;
  TableColumn::Numbers closes_;
  TableColumn::Texts alerts_;
};

// Makes the day the one before the next bars.
void SetDay(SSRLines &lines, const Bars &bars, const Day &day) {
  const SVector &high = bars[BarField::High];
  const SVector &low = bars[BarField::Low];
  lines.SetValue(SSRLines::kPreviousOpen, bars[BarField::Open][day.first]);
  lines.SetValue(SSRLines::kPreviousHigh, high.GetMax(day.first, day.end - 1, 0));
  lines.SetValue(SSRLines::kPreviousLow, low.GetMin(day.first, day.end - 1, 0));
  lines.SetValue(SSRLines::kPreviousClose, bars[BarField::Close][day.end - 1]);
  lines.CalcAlarmLine();
}

void CheckColumns(const Bars &bars) {
  for (const BarField field : {BarField::Open, BarField::High, BarField::Low, BarField::Close}) {
    if ((bars.present & 1U << static_cast<unsigned>(field)) != 0) continue;
    throw FailureAt(bars.name, bars.headerLine,
                    "expected a column " + FieldName(field) + ", which the levels are made of");
  }
}

int Run(const Options &options) {
  const Bars bars = ReadBars(options.bars);
  CheckColumns(bars);
  const SVector &dates = bars[BarField::Date];
  const std::vector<Day> days = DaysOf(dates);
  const std::size_t shown = std::min(days.size(), static_cast<std::size_t>(options.days));

  SSRLines lines;
  lines.ShowAlarmDlg = 1;
  std::fill(lines.ShowLine + kFirstLevel, lines.ShowLine + kLastLevel + 1, 1);
  LevelTable table;
  for (std::size_t i = days.size() - shown; i < days.size(); ++i) {
    SetDay(lines, bars, days[i]);
    for (int line = kFirstLevel; line <= kLastLevel; ++line) {
      table.AddLevel(GetCompDate(dates[days[i].first]), lines, line);
    }
    if (i + 1 == days.size()) break;
    lines.SetClose(bars[BarField::Close][days[i].end - 1]);
    for (int bar = days[i + 1].first; bar < days[i + 1].end; ++bar) {
      lines.SetClose(bars[BarField::Close][bar]);
      lines.Calc();
      for (int line = kFirstLevel; line <= kLastLevel; ++line) table.AddAlert(dates[bar], lines, line);
    }
  }
  WriteResult(table.Take(), options.format, options.out);
  return kDone;
}

}  // namespace

Command AddLevels(CLI::App &tool) {
  CLI::App *command =
      tool.add_subcommand("levels", "Pivot and DeMark levels of the last days, and the alerts on them");
  const auto options = std::make_shared<Options>();
  AddBarsOption(*command, options->bars);
  command
      ->add_option("--days", options->days, "Days that make levels, the newest N; 1 for the last day alone")
      ->type_name("N")
      ->check(AtLeast(1))
      ->capture_default_str();
  options->format.Add(*command, {Format::Table, Format::Csv, Format::Json});
  AddOutOption(*command, options->out);
  command->footer(
      "Behind the levels that a day makes stand the alerts that the bars of the day after it raise: a\n"
      "close that reaches a level or passes it, seen from the close before.");
  return {command, [options] { return Run(*options); }};
}

}  // namespace trovenu::tool
