#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tools/trovenu/at_least.h"
#include "tools/trovenu/bars.h"
#include "tools/trovenu/command.h"
#include "tools/trovenu/formula.h"
#include "tools/trovenu/formula_folder.h"
#include "tools/trovenu/formula_options.h"
#include "tools/trovenu/result_columns.h"
#include "tools/trovenu/terminal_text.h"

namespace trovenu::tool {

namespace {

struct Options {
  std::string bars;
  std::vector<std::string> formulas;
  std::string folder;
  int last = 0;
  FormatOption format;
  std::string out;
};

int Run(const Options &options) {
  SFunctionList functions = FormulaFolder(options.folder).Functions();
  Bars bars = ReadBars(options.bars);
  ResultColumns results(bars, options.last);
  FormulaEngine engine(bars, &functions);
  for (const std::string &formula : options.formulas) {
    results.Add(OneLine(formula), engine.Evaluate(formula));
  }
  WriteResult(std::move(results).Take(), options.format, options.out);
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
  AddFolderOption(*command, options->folder);
  command->add_option("--last", options->last, "Write the newest N bars only; all bars are evaluated")
      ->type_name("N")
      ->check(AtLeast(1));
  options->format.Add(*command, {Format::Table, Format::Csv, Format::Json});
  AddOutOption(*command, options->out);
  command->footer(
      "A bar before a formula's first valid one has no value, nor has one whose value is no finite\n"
      "number: an empty cell in table and csv, null in json. csv and json give the fewest digits that\n"
      "read back as the same number; table rounds.");
  return {command, [options] { return Run(*options); }};
}

}  // namespace trovenu::tool
