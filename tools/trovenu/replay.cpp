#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "tools/trovenu/at_least.h"
#include "tools/trovenu/command.h"
#include "tools/trovenu/failure.h"
#include "tools/trovenu/formula_folder.h"
#include "tools/trovenu/formula_options.h"
#include "tools/trovenu/indicator_lines.h"
#include "tools/trovenu/live_replay.h"
#include "tools/trovenu/terminal_text.h"
#include "trovenu/indicator/formula_tables.h"
#include "trovenu/platform/code_page.h"

namespace trovenu::tool {

namespace {

constexpr double kMicroseconds = 1e6;
constexpr const char *kSame = "same";
constexpr const char *kScan = "candle patterns";

struct Options {
  std::string name;
  std::vector<std::string> formulas;
  bool all = false;
  std::string folder;
  std::string kind;
  std::vector<std::string> settings;
  std::string bars;
  int from = 0;
  FormatOption format;
  std::string out;
};

std::string DifferenceText(const Bars &bars, const SIndex &indicator, const ReplayDifference &difference) {
  return LineName(indicator, difference.line) + ", " + BarText(bars, difference.bar) + ": " +
         ShownText(difference.live) + " live, " + ShownText(difference.full) + " in full";
}

// One line for each indicator that was replayed.
class Report {
 public:
  bool AllAreSame() const { return allAreSame_; }

  void Add(const std::string &kind, const std::string &name, const ReplayResult &result,
           const std::string &text) {
    kinds_.values.push_back(kind);
    names_.values.push_back(name);
    updates_.values.push_back(static_cast<double>(result.updates));
    means_.values.push_back(result.mean * kMicroseconds);
    worsts_.values.push_back(result.worst * kMicroseconds);
    results_.values.push_back(text);
    allAreSame_ = allAreSame_ && text == kSame;
  }

  Table Columns() && {
    Table table;
    table.columns.push_back({"kind", std::move(kinds_)});
    table.columns.push_back({"name", std::move(names_)});
    table.columns.push_back({"updates", std::move(updates_)});
    table.columns.push_back({"mean us", std::move(means_)});
    table.columns.push_back({"worst us", std::move(worsts_)});
    table.columns.push_back({"result", std::move(results_)});
    return table;
  }

 private:
  TableColumn::Texts kinds_;
  TableColumn::Texts names_;
  TableColumn::Numbers updates_;
  TableColumn::Numbers means_;
  TableColumn::Numbers worsts_;
  TableColumn::Texts results_;
  bool allAreSame_ = true;
};

class Replayer {
 public:
  Replayer(Bars &bars, int from, SFunctionList &functions)
      : bars_(bars), from_(from), functions_(functions) {}

  void Add(const std::string &kind, const std::string &name, SIndex indicator) {
    RequireSound(indicator, bars_, functions_);
    const ReplayResult result = ReplayBars(bars_, from_, indicator, &functions_);
    report.Add(kind, name, result,
               result.difference ? DifferenceText(bars_, indicator, *result.difference) : kSame);
  }

  Report report;

 private:
  Bars &bars_;
  int from_;
  SFunctionList &functions_;
};

std::string InUtf8(const SString &text) { return Utf8FromCodePage(text.c_str(), nullptr); }

void ReplayAll(const FormulaFolder &folder, Replayer &replayer) {
  folder.RequireAny();
  for (const FormulaKind &kind : FormulaKinds()) {
    if (kind.type == kFunctionIndex) continue;
    std::vector<SString> done;
    for (const FormulaEntry &entry : folder.List(kind)) {
      // Of two records of a name the first one is read.
      if (std::ranges::find(done, entry.name) != done.end()) continue;
      done.push_back(entry.name);
      try {
        replayer.Add(kind.word, InUtf8(entry.name), folder.Read(kind, entry.name));
      } catch (const Failure &failure) {
        replayer.report.Add(kind.word, InUtf8(entry.name), {}, failure.what());
      }
    }
  }
}

// The patterns one by one are no scan, which marks a bar with the last of them that fits.
void ReplayScan(Replayer &replayer) {
  SFunctionList patterns;
  if (ReadCandlePatterns(GetCandleTablePath().c_str(), patterns) == 0) return;
  SIndex scan(kScan, kCandleIndex);
  scan.SetCandle(&patterns);
  replayer.Add("scan", kScan, scan);
}

int Run(const Options &options) {
  if (options.all + !options.formulas.empty() + !options.name.empty() != 1) {
    throw CLI::ValidationError("expected the name of an indicator, --formula or --all");
  }
  if (options.formulas.size() > kExpressions) throw CLI::ValidationError("expected at most five formulas");
  if (options.name.empty() && !options.settings.empty()) {
    throw CLI::ValidationError("--set needs the name of an indicator");
  }
  const FormulaFolder folder(options.folder);
  SFunctionList functions = folder.Functions();
  Bars bars = ReadBars(options.bars);
  if (options.from >= bars.Size()) {
    throw Failure("--from: expected a bar from 0 to " + std::to_string(bars.Size() - 1) + ", found " +
                  std::to_string(options.from));
  }
  Replayer replayer(bars, options.from, functions);
  if (options.all) {
    ReplayAll(folder, replayer);
    ReplayScan(replayer);
  } else if (!options.formulas.empty()) {
    replayer.Add("formula", OneLine(options.formulas.front()), IndicatorOf(options.formulas));
  } else {
    const FormulaKind &kind = KindOfWord(options.kind);
    SIndex indicator = folder.Read(kind, NameInCodePage(options.name, "NAME"));
    SetVariables(indicator, options.settings);
    replayer.Add(kind.word, options.name, indicator);
  }
  const bool allAreSame = replayer.report.AllAreSame();
  WriteResult(std::move(replayer.report).Columns(), options.format, options.out);
  return allAreSame ? kDone : kFailed;
}

}  // namespace

Command AddReplay(CLI::App &tool) {
  CLI::App *command =
      tool.add_subcommand("replay", "Feed bars to an indicator as a live feed would, and time the updates");
  const auto options = std::make_shared<Options>();
  command->add_option("name", options->name, "Indicator from the formula tables")->type_name("NAME");
  command
      ->add_option("--formula", options->formulas,
                   "Formula to replay instead, again for a further line of the same\nindicator")
      ->type_name("TEXT");
  command->add_flag(
      "--all", options->all,
      "Replay everything in the formula tables, one line each, and the scan for\nall candle patterns");
  AddFolderOption(*command, options->folder);
  AddKindOption(*command, options->kind, KindChoice::Runnable);
  AddSetOption(*command, options->settings);
  AddBarsOption(*command, options->bars);
  command
      ->add_option("--from", options->from,
                   "First bar, from 0, that arrives live; those before are on the chart\nwhen it opens")
      ->type_name("BAR")
      ->check(AtLeast(0))
      ->capture_default_str();
  options->format.Add(*command, {Format::Table, Format::Csv, Format::Json});
  AddOutOption(*command, options->out);
  command->footer(
      "A live bar appears with its open as all four prices; then its high, its low and its close come.\n"
      "The indicator is updated after each step and compared with a full calculation at the end. Prints\n"
      "the mean and the worst time of an update, and \"same\" or the first difference (exit code 1).");
  return {command, [options] { return Run(*options); }};
}

}  // namespace trovenu::tool
