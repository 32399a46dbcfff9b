#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tools/trovenu/at_least.h"
#include "tools/trovenu/formula_folder.h"
#include "tools/trovenu/formula_options.h"
#include "tools/trovenu/indicator_commands.h"
#include "tools/trovenu/indicator_lines.h"
#include "tools/trovenu/result_columns.h"

namespace trovenu::tool {

namespace {

struct Options : EntryOptions {
  std::vector<std::string> settings;
  std::string bars;
  int last = 0;
  FormatOption format;
  std::string out;
};

int Run(const Options &options) {
  const FormulaFolder folder(options.folder);
  SFunctionList functions = folder.Functions();
  SIndex indicator = folder.Read(KindOfWord(options.kind), NameInCodePage(options.name, "NAME"));
  SetVariables(indicator, options.settings);
  Bars bars = ReadBars(options.bars);
  RequireSound(indicator, bars, functions);
  bars.BindTo(indicator);
  indicator.SetFunction(&functions);
  indicator.Calc();
  ResultColumns results(bars, options.last);
  for (int line = 0; line < kExpressions; ++line) {
    if (indicator.ConvExpression[line].IsEmpty()) continue;
    results.Add(LineName(indicator, line), indicator.ExpData[line]);
  }
  WriteResult(std::move(results).Take(), options.format, options.out);
  return kDone;
}

}  // namespace

Command AddIndicatorRun(CLI::App &group) {
  CLI::App *command = group.add_subcommand("run", "Calculate a formula of the tables on bars");
  const auto options = std::make_shared<Options>();
  AddEntryOptions(*command, *options, KindChoice::Runnable);
  AddSetOption(*command, options->settings);
  AddBarsOption(*command, options->bars);
  command->add_option("--last", options->last, "Write the newest N bars only; all bars are calculated")
      ->type_name("N")
      ->check(AtLeast(1));
  options->format.Add(*command, {Format::Table, Format::Csv, Format::Json});
  AddOutOption(*command, options->out);
  command->footer(
      "One column for each line. Conditions and the rules of systems hold the close where they are true\n"
      "and 0 elsewhere.");
  return {command, [options] { return Run(*options); }};
}

}  // namespace trovenu::tool
