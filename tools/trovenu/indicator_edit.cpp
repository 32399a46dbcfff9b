#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tools/trovenu/failure.h"
#include "tools/trovenu/formula.h"
#include "tools/trovenu/formula_folder.h"
#include "tools/trovenu/formula_options.h"
#include "tools/trovenu/indicator_commands.h"
#include "tools/trovenu/indicator_lines.h"
#include "tools/trovenu/output_file.h"
#include "tools/trovenu/sample_bars.h"
#include "tools/trovenu/terminal_text.h"
#include "trovenu/formula/words.h"
#include "trovenu/indicator/formula_fields.h"
#include "trovenu/indicator/formula_tables.h"
#include "trovenu/platform/platform.h"
#include "trovenu/support/index_paths.h"
#include "trovenu/support/table_delete.h"
#include "trovenu/support/text_edit.h"

namespace trovenu::tool {

namespace {

struct Options : EntryOptions {
  std::vector<std::string> formulas;
  std::vector<std::string> lines;
  std::vector<std::string> variables;
  std::string description;
  bool replace = false;
};

enum WriteMode : int { kUpdate = 0, kAppend = 1 };

void Say(const std::string &line) {
  OutputFile out("");
  out.Write(line + "\n");
  out.Commit();
}

void CheckCounts(const Options &options, const FormulaKind &kind) {
  const auto slots = static_cast<std::size_t>(kind.slots);
  if (options.formulas.size() > slots) {
    throw CLI::ValidationError(std::string("--formula: expected at most ") + std::to_string(slots) +
                               " for --kind " + kind.word);
  }
  if (std::ranges::all_of(options.formulas, [](const std::string &f) { return TrimBlanks(f).empty(); })) {
    throw CLI::ValidationError("--formula: expected a formula, found nothing");
  }
  if (options.lines.size() > options.formulas.size()) {
    throw CLI::ValidationError("--line: expected at most one for each formula");
  }
  if (options.variables.size() > static_cast<std::size_t>(kVariables)) {
    throw CLI::ValidationError("--var: expected at most ten");
  }
}

// Formulas can call and read only what the language takes for a name.
void RequireName(const SString &name, const std::string &what) {
  if (static_cast<int>(NameLength(name.c_str())) == name.Length()) return;
  throw Failure(what + ": expected letters, digits and _, a letter first");
}

void AddVariable(SIndex &entry, int i, const std::string &variable) {
  const std::size_t equals = std::min(variable.find('='), variable.size());
  const std::string option = "--var " + variable.substr(0, equals);
  const SString name = NameInCodePage(variable.substr(0, equals), "--var");
  RequireName(name, option);
  for (int k = 0; k < i; ++k) {
    if (entry.VarName[k].CompareNoCase(name.c_str()) == 0) throw Failure(option + ": is there twice");
  }
  entry.VarName[i] = name;
  if (entry.IndexType != kFunctionIndex) {
    const std::string value = equals < variable.size() ? variable.substr(equals + 1) : "";
    entry.VarValue[i] = NameInCodePage(value, option.c_str());
  } else if (equals < variable.size()) {
    throw Failure(option + ": expected no value, which a call of the function gives");
  }
}

// What is longer than its field in a new table would not be written.
void RequireRoom(const SIndex &entry) {
  for (const FormulaField &field : FormulaFields(entry.IndexType)) {
    const int length = field.IsWritten() ? field.Get(entry).Length() : 0;
    if (length <= field.Width()) continue;
    throw Failure(ShownIndicator(entry) + ": " + field.Name() + ": expected at most " +
                  std::to_string(field.Width()) + " bytes, found " + std::to_string(length));
  }
}

SIndex EntryOf(const Options &options, const FormulaKind &kind) {
  SIndex entry(NameInCodePage(options.name, "NAME").c_str(), kind.type);
  for (std::size_t i = 0; i < options.formulas.size(); ++i) {
    entry.Expression[i] = SString(std::string_view(FormulaInCodePage(options.formulas[i])));
  }
  for (std::size_t i = 0; i < options.lines.size(); ++i) {
    entry.ExpName[i] = NameInCodePage(options.lines[i], "--line");
  }
  for (std::size_t i = 0; i < options.variables.size(); ++i) {
    AddVariable(entry, static_cast<int>(i), options.variables[i]);
  }
  if (!options.description.empty()) entry.Description = NameInCodePage(options.description, "--description");
  RequireRoom(entry);
  return entry;
}

// Evaluates the body and a call, with the close for each parameter.
void RequireSoundFunction(const SIndex &entry, Bars &bars, SFunctionList &functions) {
  const std::string name = ToUtf8(entry.IndexName.c_str());
  RequireName(entry.IndexName, ShownIndicator(entry));
  const Word *const word = FindName(entry.IndexName.c_str());
  if (word != nullptr && word->family < WordFamily::Time) {
    throw Failure("function " + Quoted(name) + ": is a word of the language, which goes before it");
  }
  const int old = functions.Find(entry.IndexName.c_str());
  if (old >= 0) functions.Delete(old);
  SFunction function;
  function.IndexName = entry.IndexName;
  function.Expression = entry.Expression[0];
  std::ranges::copy(entry.VarName, function.VarName);
  functions.Add(function);
  FormulaEngine engine(bars, &functions);
  std::string call = name + "(";
  for (int i = 0; i < kParameters && !entry.VarName[i].IsEmpty(); ++i) {
    engine.Evaluate(ToUtf8(entry.VarName[i].c_str()) + " = close");
    call += i > 0 ? ", close" : "close";
  }
  const std::string body = ToUtf8(entry.Expression[0].c_str());
  std::optional<FormulaFault> fault;
  engine.Evaluate(body, fault);
  if (fault) {
    throw Failure(ShownIndicator(entry) + ", formula " + Quoted(OneLine(body)) + ": " + fault->OneLine());
  }
  FormulaEngine(bars, &functions).Evaluate(call + ")");
}

// Where the formula of that name stands: none, the system's or the user's table.
enum class Place { None, System, User };

Place PlaceOf(const FormulaFolder &folder, const FormulaKind &kind, const SString &name) {
  for (const FormulaEntry &entry : folder.List(kind)) {
    if (entry.name == name) return entry.isUsers ? Place::User : Place::System;
  }
  return Place::None;
}

bool Write(SIndex &entry, Place old) {
  if (entry.IndexType == kCandleIndex) {
    const SString path = GetCandleTablePath();
    const bool isThere = FileExist(path.c_str()) != 0 || CreateFormulaTable(kCandleIndex, path.c_str());
    return isThere && WriteCandlePattern(path.c_str(), entry);
  }
  const int mode = old == Place::None ? kAppend : kUpdate;
  return CreateFormulaTables(entry.IndexType) &&
         entry.WriteExpression(entry.IndexName.c_str(), mode, old == Place::System ? 1 : 0) != 0;
}

int Add(const Options &options) {
  const FormulaKind &kind = KindOfWord(options.kind);
  CheckCounts(options, kind);
  const FormulaFolder folder(options.folder);
  SIndex entry = EntryOf(options, kind);
  SFunctionList functions = folder.Functions();
  const Place old = PlaceOf(folder, kind, entry.IndexName);
  if (old != Place::None && !options.replace) {
    throw Failure(ShownIndicator(entry) + ": is there already (--replace puts the new one in its place)");
  }
  Bars bars = SampleBars();
  if (kind.type == kFunctionIndex) {
    RequireSoundFunction(entry, bars, functions);
  } else {
    RequireSound(entry, bars, functions);
  }
  const std::string path = ToUtf8(getIndexDir().c_str());
  if (!MakeFolder(options.folder)) throw Failure(path + ": can't be made");
  if (!Write(entry, old)) {
    throw Failure(ShownIndicator(entry) + ": can't be written to " + path +
                  "; the folder is not writable, or a field of its table is too narrow");
  }
  Say((old == Place::None ? "added " : "replaced ") + ShownIndicator(entry));
  return kDone;
}

int Remove(const Options &options) {
  const FormulaKind &kind = KindOfWord(options.kind);
  const FormulaFolder folder(options.folder);
  const SIndex entry = folder.Read(kind, NameInCodePage(options.name, "NAME"));
  int removed = 0;
  for (const SString &table : FormulaFolder::Tables(kind)) {
    removed += DeleteRecords(table.c_str(), "IndexName", entry.IndexName.c_str());
  }
  if (PlaceOf(folder, kind, entry.IndexName) != Place::None) {
    throw Failure(ShownIndicator(entry) + ": can't be removed from " + ToUtf8(getIndexDir().c_str()));
  }
  Say(std::string("removed ") + kind.word + " " + Quoted(options.name) + ", " + std::to_string(removed) +
      (removed == 1 ? " record" : " records"));
  return kDone;
}

}  // namespace

Command AddIndicatorAdd(CLI::App &group) {
  CLI::App *command = group.add_subcommand("add", "Add a formula to the user's table");
  const auto options = std::make_shared<Options>();
  AddEntryOptions(*command, *options, KindChoice::Any);
  command
      ->add_option("--formula", options->formulas,
                   "Formula, again for a further line. A pattern has two, bull and bear;\n"
                   "a system four: open long, close long, open short, close short; an\n"
                   "empty text stands for none")
      ->type_name("TEXT")
      ->required();
  command->add_option("--line", options->lines, "Name of an indicator's line, in the order of the formulas")
      ->type_name("NAME");
  command
      ->add_option("--var", options->variables,
                   "Variable and its value, again for others; a parameter of a\nfunction has none")
      ->type_name("VAR=VALUE");
  command->add_option("--description", options->description, "What it shows")->type_name("TEXT");
  command->add_flag("--replace", options->replace, "Replace the one of that name");
  command->footer("The formulas are evaluated on made-up bars first; with a fault nothing is written.");
  return {command, [options] { return Add(*options); }};
}

Command AddIndicatorRemove(CLI::App &group) {
  CLI::App *command = group.add_subcommand("remove", "Remove a formula from the tables");
  const auto options = std::make_shared<Options>();
  AddEntryOptions(*command, *options, KindChoice::Any);
  command->footer(
      "Its records get the deletion mark, in the system's table and in the user's, and stay in the files.");
  return {command, [options] { return Remove(*options); }};
}

}  // namespace trovenu::tool
