#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tools/trovenu/command.h"
#include "tools/trovenu/failure.h"
#include "tools/trovenu/indicator_lines.h"
#include "tools/trovenu/path_text.h"
#include "tools/trovenu/report_folder.h"
#include "tools/trovenu/search_watch.h"
#include "tools/trovenu/simulation_setup.h"
#include "tools/trovenu/terminal_text.h"
#include "tools/trovenu/work_folder.h"
#include "trovenu/indicator/starter_set.h"
#include "trovenu/platform/code_page.h"
#include "trovenu/support/number_text.h"

namespace trovenu::tool {

namespace {

constexpr int kStoppedByUser = 130;

struct Options {
  SimulationOptions simulation;
  std::vector<std::string> ranges;
  std::string systems;
  std::string compressions;
  std::string sort = "profit";
  int top = 20;
  std::string report;
  FormatOption format;
  std::string out;
};

struct Range {
  std::string variable;
  double start;
  double end;
  double step;
};

Range RangeOf(const std::string &option, const std::string &text) {
  const auto fault = [&] {
    return CLI::ValidationError(option, "expected " + std::string(option == "--range" ? "VAR=" : "") +
                                            "START:END:STEP in numbers, found " + Quoted(text));
  };
  Range range{};
  std::string_view rest = text;
  if (option == "--range") {
    const std::size_t equals = text.find('=');
    if (equals == text.npos) throw fault();
    range.variable = TrimBlanks(rest.substr(0, equals));
    rest.remove_prefix(equals + 1);
    if (range.variable.empty()) throw fault();
  }
  double *const numbers[] = {&range.start, &range.end, &range.step};
  for (std::size_t i = 0; i < std::size(numbers); ++i) {
    const std::size_t colon = rest.find(':');
    if ((colon == rest.npos) != (i + 1 == std::size(numbers))) throw fault();
    const double none = std::numeric_limits<double>::quiet_NaN();
    *numbers[i] = AnsiStringToFloat(SString(rest.substr(0, colon)), none);
    if (!std::isfinite(*numbers[i])) throw fault();
    rest.remove_prefix(colon == rest.npos ? rest.size() : colon + 1);
  }
  return range;
}

// A column of the result, by which runs can be sorted.
struct Figure {
  const char *name;
  SString SSummaryInfo::*text;
};

constexpr Figure kFigures[] = {
    {"profit", &SSummaryInfo::TotalProfit},   {"trades", &SSummaryInfo::TransactionCount},
    {"factor", &SSummaryInfo::ProfitFactor},  {"wins", &SSummaryInfo::WinRatio},
    {"payoff", &SSummaryInfo::WinLossRatio},  {"average", &SSummaryInfo::AverageProfit},
    {"market", &SSummaryInfo::InMarketRatio},
};

const Figure &FigureOf(const std::string &name) {
  return *std::ranges::find_if(kFigures, [&](const Figure &figure) { return name == figure.name; });
}

// Runs without the figure stand behind all others.
void SortRuns(std::vector<FinishedRun> &runs, const Figure &figure) {
  const auto key = [&](const FinishedRun &run) {
    return AnsiStringToFloat(run.figures.*figure.text, -std::numeric_limits<double>::infinity());
  };
  std::ranges::stable_sort(runs, std::ranges::greater(), key);
}

// The systems that a search goes through, in formula tables that hold nothing else, so that settings of the
// command line reach it.
class SearchedSystems {
 public:
  SearchedSystems() : work_(std::filesystem::temp_directory_path()), folder_(TextOf(work_.Path())) {}

  void Add(SIndex system) {
    if (system.IndexName.IsEmpty()) system.IndexName = "rules";
    if (!WriteStarterEntry(system))
      throw Failure(ShownIndicator(system) + ": is too long for a formula table");
    names_.Add(system.IndexName);
  }
  SAnsiStringList *Names() { return &names_; }

 private:
  WorkFolder work_;
  FormulaFolder folder_;
  SAnsiStringList names_;
};

int CompressionBound(double value) {
  if (value != std::floor(value) || std::fabs(value) > 1e6) {
    throw CLI::ValidationError("--compress", "expected whole numbers of bars");
  }
  return static_cast<int>(value);
}

// What a search goes through, and in how many runs. A search over compressions has the bars of run 0 and the
// step to the next one.
struct Plan {
  SSimulationMain::Search search = SSimulationMain::Variables;
  long long runs = 1;
  long firstBars = 0;
  long barsStep = 0;
};

Table BestRuns(const std::vector<FinishedRun> &runs, const Plan &plan, std::size_t top) {
  const std::size_t rows = std::min(top, runs.size());
  TableColumn::Figures numbers;
  TableColumn::Texts names;
  for (std::size_t i = 0; i < rows; ++i) {
    numbers.values.push_back(std::to_string(runs[i].number));
    names.values.push_back(Utf8FromCodePage(runs[i].figures.IndicatorName.c_str(), nullptr));
  }
  Table table;
  table.columns.push_back({"run", numbers});
  table.columns.push_back({"system", names});
  if (plan.search == SSimulationMain::TimeFrames) {
    TableColumn::Figures bars;
    for (std::size_t i = 0; i < rows; ++i) {
      bars.values.push_back(std::to_string(plan.firstBars + runs[i].number * plan.barsStep));
    }
    table.columns.push_back({"bars in one", bars});
  }
  for (const Figure &figure : kFigures) {
    TableColumn::Figures texts;
    for (std::size_t i = 0; i < rows; ++i) texts.values.emplace_back((runs[i].figures.*figure.text).c_str());
    table.columns.push_back({figure.name, texts});
  }
  return table;
}

// Gives the variables their ranges; the others stay as they are.
Plan PlanVariables(SIndex &rules, const std::vector<Range> &ranges) {
  Plan plan;
  for (int k = 0; k < kVariables && !rules.VarName[k].IsEmpty(); ++k) {
    const std::string name = Utf8FromCodePage(rules.VarName[k].c_str(), nullptr);
    const auto range = std::ranges::find_if(ranges, [&](const Range &each) {
      return rules.VarName[k].CompareNoCase(CodePageFromUtf8(each.variable, nullptr).c_str()) == 0;
    });
    if (range == ranges.end()) {
      if (!std::isfinite(AnsiStringToFloat(rules.VarValue[k], std::numeric_limits<double>::quiet_NaN()))) {
        throw Failure("variable " + Quoted(name) + ": expected a number, which a search needs, found " +
                      Quoted(Utf8FromCodePage(rules.VarValue[k].c_str(), nullptr)) + " (see --set)");
      }
      rules.VarStart[k] = rules.VarEnd[k] = rules.VarValue[k];
      rules.VarIncrement[k] = "0";
      continue;
    }
    const auto text = [](double value) { return FormatValue("%.17g", value); };
    rules.VarStart[k] = text(range->start);
    rules.VarEnd[k] = text(range->end);
    rules.VarIncrement[k] = text(range->step);
    plan.runs *= GridSteps(range->start, range->end, range->step);
    if (plan.runs >= std::numeric_limits<int>::max()) throw Failure("--range: more than 2147483646 runs");
  }
  return plan;
}

Plan PlanCompressions(SSimulation &simulation, const Range &range) {
  simulation.CompressStart = CompressionBound(range.start);
  simulation.CompressEnd = CompressionBound(range.end);
  simulation.CompressIncrement = CompressionBound(range.step);
  if (simulation.CompressStart < 1 || simulation.CompressEnd < 1) {
    throw CLI::ValidationError("--compress", "expected 1 bar or more");
  }
  return {SSimulationMain::TimeFrames, GridSteps(range.start, range.end, range.step),
          simulation.CompressStart, simulation.CompressIncrement};
}

std::vector<std::string> SplitAtCommas(const std::string &text) {
  std::vector<std::string> parts;
  for (std::size_t begin = 0; begin <= text.size();) {
    const std::size_t end = std::min(text.find(',', begin), text.size());
    parts.emplace_back(TrimBlanks(std::string_view(text).substr(begin, end - begin)));
    begin = end + 1;
  }
  return parts;
}

std::vector<Range> CheckUsage(Options &options) {
  const int searches = (options.ranges.empty() ? 0 : 1) + (options.systems.empty() ? 0 : 1) +
                       (options.compressions.empty() ? 0 : 1);
  if (searches != 1) throw CLI::ValidationError("expected one of --range, --systems and --compress");
  if (options.systems.empty()) CheckRuleUsage(options.simulation.rules);
  std::vector<Range> ranges;
  for (const std::string &text : options.ranges) {
    const Range range = RangeOf("--range", text);
    if (std::ranges::find(ranges, range.variable, &Range::variable) != ranges.end())
      throw CLI::ValidationError("--range", "a second range of " + Quoted(range.variable));
    ranges.push_back(range);
    const std::string first = text.substr(0, text.find(':'));
    options.simulation.rules.settings.push_back(first);
  }
  if (!options.compressions.empty()) ranges.push_back(RangeOf("--compress", options.compressions));
  return ranges;
}

// The runs of a search are numbered from 0, in their order in the run table.
void RequireComplete(const std::vector<FinishedRun> &runs, long long done, const ReportFolder &folder) {
  for (long long i = 0; i < done; ++i) {
    const auto at = static_cast<std::size_t>(i);
    if (at < runs.size() && runs[at].number == i && runs[at].IsComplete()) continue;
    throw Failure(folder.Shown() + ": the tables of run " + std::to_string(i) +
                  " can't be written (is the disk full?); those of the runs before are complete");
  }
}

int Run(Options options) {
  const std::vector<Range> ranges = CheckUsage(options);
  const std::vector<std::string> systems = SplitAtCommas(options.systems);
  if (!options.systems.empty() && std::ranges::find(systems, "") != systems.end())
    throw CLI::ValidationError("--systems",
                               "expected names with commas between them, found " + Quoted(options.systems));
  if (!options.systems.empty()) options.simulation.rules.system = systems.front();
  Backtest backtest(options.simulation);
  SSimulation &simulation = backtest.Simulation();

  Plan plan;
  std::optional<SearchedSystems> searched;
  if (!options.systems.empty()) {
    std::vector<SIndex> rules;
    for (const std::string &system : systems) rules.push_back(backtest.Rules(system));
    searched.emplace();
    for (SIndex &each : rules) searched->Add(each);
    plan.search = SSimulationMain::Logics;
    plan.runs = searched->Names()->GetSize();
  } else if (!options.compressions.empty()) {
    plan = PlanCompressions(simulation, ranges.front());
    searched.emplace();
    searched->Add(simulation.Index);
  } else {
    plan = PlanVariables(simulation.Index, ranges);
  }

  std::optional<WorkFolder> unnamed;
  if (options.report.empty()) unnamed.emplace(std::filesystem::temp_directory_path());
  const ReportFolder folder(unnamed ? TextOf(unnamed->Path()) : options.report);
  folder.RequireReportsAlone();
  SSimulationMain search(&simulation, plan.search, folder.Path().c_str());
  folder.RequireRunTable();
  search.SetBigPointValue(options.simulation.pointValue);
  const SearchEnd end = WatchSearch(search, plan.runs, searched ? searched->Names() : nullptr);

  std::vector<FinishedRun> runs = folder.Runs();
  RequireComplete(runs, end.done, folder);
  SortRuns(runs, FigureOf(options.sort));
  WriteResult(BestRuns(runs, plan, static_cast<std::size_t>(options.top)), options.format, options.out);
  if (end.finished) return kDone;
  std::fprintf(stderr, "trovenu: stopped after %zu of %lld runs\n", runs.size(), plan.runs);
  return kStoppedByUser;
}

}  // namespace

Command AddOptimise(CLI::App &tool) {
  CLI::App *command = tool.add_subcommand("optimise", "Run a back-test many times, and print the best runs");
  const auto options = std::make_shared<Options>();
  AddSimulationOptions(*command, options->simulation);
  command
      ->add_option("--range", options->ranges,
                   "Values of a variable, both ends included; may be repeated for a grid.\nFor formulas it "
                   "also declares the variable")
      ->type_name("VAR=START:END:STEP");
  command->add_option("--systems", options->systems, "Trading systems to try one after the other")
      ->type_name("A,B,C");
  command
      ->add_option("--compress", options->compressions, "Numbers of bars that are made one before each run")
      ->type_name("START:END:STEP");
  std::vector<std::string> names;
  for (const Figure &figure : kFigures) names.emplace_back(figure.name);
  command->add_option("--sort", options->sort, "Figure to sort by, largest first")
      ->type_name("FIGURE")
      ->check(CLI::IsMember(names))
      ->capture_default_str();
  command->add_option("--top", options->top, "Runs to print")
      ->type_name("N")
      ->check(CLI::PositiveNumber)
      ->capture_default_str();
  command
      ->add_option("--report", options->report,
                   "Folder for the tables of all runs (see trovenu report); what earlier\nreports left there "
                   "is deleted")
      ->type_name("DIR");
  options->format.Add(*command, {Format::Table, Format::Csv, Format::Json});
  AddOutOption(*command, options->out);
  command->footer(
      "Ctrl-C pauses the search and asks whether to go on; a second one stops it after the run at hand,\n"
      "with exit code 130. Finished runs are printed and keep their tables. The figures: profit, trades,\n"
      "profit factor, share of winning trades, payoff (mean win by mean loss), average profit of a trade,\n"
      "and percent of bars in the market.");
  return {command, [options] { return Run(*options); }};
}

}  // namespace trovenu::tool
