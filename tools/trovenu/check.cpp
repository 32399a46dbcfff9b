#include <memory>
#include <optional>
#include <string>

#include "tools/trovenu/at_least.h"
#include "tools/trovenu/command.h"
#include "tools/trovenu/formula.h"
#include "tools/trovenu/formula_folder.h"
#include "tools/trovenu/formula_options.h"
#include "tools/trovenu/output_file.h"
#include "tools/trovenu/repaint.h"
#include "tools/trovenu/sample_bars.h"
#include "tools/trovenu/terminal_text.h"
#include "trovenu/platform/code_page.h"

namespace trovenu::tool {

namespace {

struct Options {
  std::string formula;
  std::string folder;
  std::string bars;
  bool repaint = false;
  int samples = 0;
};

struct Report {
  std::string text;
  int exitCode;
};

std::string FaultText(const FormulaFault &fault) { return fault.OneLine() + "\n" + fault.place.Shown(); }

std::string Counted(long long count, const char *one, const char *many) {
  return std::to_string(count) + " " + (count == 1 ? one : many);
}

std::string LooksText(const Bars &bars, const RepaintSearch &search) {
  return Counted(bars.Size(), "bar", "bars") + ", looked at " + Counted(search.Looks(), "time", "times");
}

std::string RepaintText(const Repaint &repaint, const Bars &bars, const RepaintSearch &search) {
  return "repaints: " + BarText(bars, repaint.bar) + " changed from " + ShownText(repaint.before) + " to " +
         ShownText(repaint.after) + " when " + BarText(bars, repaint.arrived) + " came\n" +
         Counted(repaint.changes, "change", "changes") + " on " + std::to_string(repaint.changedBars) +
         " of " + LooksText(bars, search) + "\n";
}

std::string CauseText(const RepaintCause &cause, const std::string &formula, const std::string &codePage) {
  const FormulaPlace place = PlaceIn(formula, codePage, cause.position);
  std::string text = "cause: ";
  text += cause.word.empty() ? "this part" : Utf8FromCodePage(cause.word.c_str(), nullptr);
  if (!cause.reason.empty()) text += ", " + cause.reason;
  if (!cause.function.empty()) text += ", in " + Utf8FromCodePage(cause.function.c_str(), nullptr);
  return text + " " + place.InWords() + "\n" + place.Shown();
}

Report Check(const Options &options) {
  Bars bars = options.repaint ? ReadBars(options.bars) : SampleBars();
  SFunctionList functions = FormulaFolder(options.folder).Functions();
  std::optional<FormulaFault> fault;
  FormulaEngine(bars, &functions).Evaluate(options.formula, fault);
  if (fault) return {FaultText(*fault), kFailed};
  if (!options.repaint) return {"sound\n", kDone};

  const RepaintSearch search(bars, &functions, options.samples);
  const std::string codePage = FormulaInCodePage(options.formula);
  const std::optional<Repaint> repaint = search.Find(codePage);
  if (!repaint) return {"does not repaint: " + LooksText(bars, search) + "\n", kDone};
  return {
      RepaintText(*repaint, bars, search) + CauseText(search.FindCause(codePage), options.formula, codePage),
      kFailed};
}

int Run(const Options &options) {
  const Report report = Check(options);
  OutputFile out("");
  out.Write(report.text);
  out.Commit();
  return report.exitCode;
}

}  // namespace

Command AddCheck(CLI::App &tool) {
  CLI::App *command =
      tool.add_subcommand("check", "Say whether a formula is sound, and if not, why and where");
  const auto options = std::make_shared<Options>();
  command
      ->add_option("--formula,formula", options->formula,
                   "Formula to check; the option's name may be left out")
      ->type_name("TEXT")
      ->required();
  AddFolderOption(*command, options->folder);
  CLI::Option *repaint =
      command->add_flag("--repaint", options->repaint,
                        "Say whether values change when later bars arrive, and which word\nmakes them");
  CLI::Option *bars = AddBarsOption(*command, options->bars)->required(false)->needs(repaint);
  repaint->needs(bars);
  command
      ->add_option("--samples", options->samples,
                   "Look N times as the bars arrive, not after each (for long files)")
      ->type_name("N")
      ->check(AtLeast(1))
      ->needs(repaint);
  command->footer(
      "Prints \"sound\" (exit code 0), or the message, the line of the formula and a caret under the\n"
      "place where reading stopped (exit code 1). With --repaint: \"does not repaint\" (exit code 0), or\n"
      "the first bar that changed, how often bars changed, and the word that causes it (exit code 1).");
  return {command, [options] { return Run(*options); }};
}

}  // namespace trovenu::tool
