#include <memory>
#include <optional>
#include <string>

#include "tools/trovenu/command.h"
#include "tools/trovenu/formula.h"
#include "tools/trovenu/output_file.h"
#include "tools/trovenu/sample_bars.h"

namespace trovenu::tool {

namespace {

int Run(const std::string &formula) {
  Bars bars = SampleBars();
  FormulaEngine engine(bars);
  std::optional<FormulaFault> fault;
  engine.Evaluate(formula, fault);
  OutputFile out("");
  if (!fault) {
    out.Write("sound\n");
  } else {
    out.Write(fault->OneLine() + "\n" + fault->line + "\n" + std::string(fault->column, ' ') + "^\n");
  }
  out.Commit();
  return fault ? kFailed : kDone;
}

}  // namespace

Command AddCheck(CLI::App &tool) {
  CLI::App *command =
      tool.add_subcommand("check", "Say whether a formula is sound, and if not, why and where");
  const auto formula = std::make_shared<std::string>();
  command->add_option("--formula,formula", *formula, "Formula to check; the option's name may be left out")
      ->type_name("TEXT")
      ->required();
  command->footer(
      "Prints \"sound\" (exit code 0), or the message, the line of the formula and a caret under the\n"
      "place where reading stopped (exit code 1).");
  return {command, [formula] { return Run(*formula); }};
}

}  // namespace trovenu::tool
