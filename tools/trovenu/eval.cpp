#include <algorithm>
#include <limits>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "tools/trovenu/bars.h"
#include "tools/trovenu/command.h"
#include "tools/trovenu/formula.h"
#include "tools/trovenu/terminal_text.h"

namespace trovenu::tool {

namespace {

constexpr double kNoValue = std::numeric_limits<double>::quiet_NaN();

struct Options {
  std::string bars;
  std::vector<std::string> formulas;
  int last = 0;
  FormatOption format;
  std::string out;
};

// The formula as a heading; a second one of the same text gets a number behind it.
std::string HeadingOf(const std::string &formula, std::set<std::string> &taken) {
  const std::string text = OneLine(formula);
  std::string heading = text;
  for (int i = 2; !taken.insert(heading).second; ++i) heading = text + " (" + std::to_string(i) + ")";
  return heading;
}

// The values of the bars from `first` to `bars` - 1, with none below the start index and behind the end.
std::vector<double> ValuesOf(const SVector &result, int first, int bars) {
  std::vector<double> values(static_cast<std::size_t>(bars - first), kNoValue);
  const int end = std::min(bars, result.GetSize());
  for (int i = std::max(first, result.GetStartIndex()); i < end; ++i) {
    values[static_cast<std::size_t>(i - first)] = result[i];
  }
  return values;
}

int Run(const Options &options) {
  Bars bars = ReadBars(options.bars);
  const int count = bars.Size();
  const int first = options.last > 0 ? std::max(0, count - options.last) : 0;
  Table table;
  std::set<std::string> taken = {"date"};
  table.columns.push_back({"date", TableColumn::Dates{ValuesOf(bars[BarField::Date], first, count)}});
  FormulaEngine engine(bars);
  for (const std::string &formula : options.formulas) {
    const SVector result = engine.Evaluate(formula);
    table.columns.push_back(
        {HeadingOf(formula, taken), TableColumn::Numbers{ValuesOf(result, first, count)}});
  }
  WriteResult(table, options.format, options.out);
  return kDone;
}

}  // namespace

Command AddEval(CLI::App &tool) {
  CLI::App *command = tool.add_subcommand("eval", "Evaluate formulas on bars, one column for each");
  const auto options = std::make_shared<Options>();
  AddBarsOption(*command, options->bars);
  command
      ->add_option("--formula,formula", options->formulas,
                   "Formula to evaluate, again for a further one; variables live on\n"
                   "from formula to formula; the option's name may be left out")
      ->type_name("TEXT")
      ->required();
  command->add_option("--last", options->last, "Write the newest N bars only; all bars are evaluated")
      ->type_name("N")
      ->check(CLI::PositiveNumber);
  options->format.Add(*command, {Format::Table, Format::Csv, Format::Json});
  AddOutOption(*command, options->out);
  command->footer(
      "A bar before a formula's first valid one has no value, nor has one whose value is no finite\n"
      "number: an empty cell in table and csv, null in json. csv and json give the fewest digits that\n"
      "read back as the same number; table rounds.");
  return {command, [options] { return Run(*options); }};
}

}  // namespace trovenu::tool
