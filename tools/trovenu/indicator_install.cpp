#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

#include "tools/trovenu/failure.h"
#include "tools/trovenu/formula_folder.h"
#include "tools/trovenu/formula_options.h"
#include "tools/trovenu/indicator_commands.h"
#include "tools/trovenu/indicator_lines.h"
#include "tools/trovenu/output_file.h"
#include "tools/trovenu/path_text.h"
#include "tools/trovenu/starter_texts.h"
#include "tools/trovenu/terminal_text.h"
#include "tools/trovenu/text_file.h"
#include "tools/trovenu/work_folder.h"
#include "trovenu/indicator/formula_tables.h"
#include "trovenu/indicator/starter_set.h"
#include "trovenu/platform/code_page.h"
#include "trovenu/platform/platform.h"
#include "trovenu/support/index_paths.h"

namespace trovenu::tool {

namespace fs = std::filesystem;

namespace {

struct Options {
  std::string folder;
  std::vector<std::string> from;
  std::string kind;
};

void ReadText(const std::string &name, std::string_view text, std::vector<SIndex> &entries) {
  bool ok = true;
  if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
  const std::string codePage = IsUtf8(text) ? CodePageFromUtf8(text, &ok) : std::string(text);
  if (!ok) throw Failure(name + ": has a character that is not in the Korean code page");
  StarterFault fault;
  if (!ParseStarterSet(codePage, &entries, &fault)) {
    throw FailureAt(name, fault.line, ToUtf8(fault.message));
  }
}

std::vector<SIndex> ReadTexts(const std::vector<std::string> &files) {
  std::vector<SIndex> entries;
  if (files.empty()) {
    for (const StarterText &text : StarterTexts()) ReadText(std::string(text.name), text.text, entries);
  }
  for (const std::string &file : files) ReadText(ShownName(file), ReadWholeFile(file), entries);
  return entries;
}

// All tables of a folder as they are called there.
std::vector<fs::path> TableNames() {
  std::vector<fs::path> names;
  for (const FormulaKind &kind : FormulaKinds()) {
    for (const SString &table : FormulaFolder::Tables(kind))
      names.push_back(PathOf(table.c_str()).filename());
  }
  return names;
}

void CreateTables() {
  for (const FormulaKind &kind : FormulaKinds()) {
    const SString candles = GetCandleTablePath();
    const bool isThere = kind.type != kCandleIndex ? CreateFormulaTables(kind.type)
                                                   : FileExist(candles.c_str()) != 0 ||
                                                         CreateFormulaTable(kCandleIndex, candles.c_str());
    if (!isThere) throw Failure(ToUtf8(getIndexDir().c_str()) + ": can't be written");
  }
}

// The tables are filled in a folder of their own, which begins with those that are there, and put in place
// when all of them are whole.
void Install(const Options &options, std::vector<SIndex> &entries) {
  const FormulaFolder target(options.folder);
  for (const FormulaKind &kind : FormulaKinds()) target.CheckTables(kind);
  const fs::path folder = PathOf(getIndexDir().c_str());
  if (!MakeFolder(options.folder)) throw Failure(TextOf(folder) + ": can't be made");
  const WorkFolder work(folder);
  std::error_code fault;
  for (const fs::path &name : TableNames()) {
    if (!fs::exists(folder / name, fault)) continue;
    fs::copy_file(folder / name, work.Path() / name, fault);
    if (fault) throw Failure(TextOf(folder / name) + ": can't be read (" + fault.message() + ")");
  }
  {
    const FormulaFolder filled(TextOf(work.Path()));
    CreateTables();
    for (SIndex &entry : entries) {
      if (!WriteStarterEntry(entry)) {
        throw Failure(ShownIndicator(entry) + ": can't be written; a text may be too long for its field");
      }
    }
  }
  for (const fs::path &name : TableNames()) {
    fs::rename(work.Path() / name, folder / name, fault);
    if (fault) throw Failure(TextOf(folder / name) + ": can't be written (" + fault.message() + ")");
  }
}

int Run(const Options &options, bool allKinds) {
  std::vector<SIndex> entries = ReadTexts(options.from);
  if (!allKinds) {
    const int type = KindOfWord(options.kind).type;
    std::erase_if(entries, [type](const SIndex &entry) { return entry.IndexType != type; });
  }
  Install(options, entries);
  std::string text;
  for (const FormulaKind &kind : FormulaKinds()) {
    const auto count = std::ranges::count(entries, kind.type, &SIndex::IndexType);
    if (count > 0)
      text += (text.empty() ? "" : ", ") + std::to_string(count) + " " + kind.word + (count > 1 ? "s" : "");
  }
  OutputFile out("");
  out.Write("installed: " + (text.empty() ? "nothing" : text) + "\n");
  out.Commit();
  return kDone;
}

}  // namespace

Command AddIndicatorInstall(CLI::App &group) {
  CLI::App *command = group.add_subcommand("install", "Write the starter set into the formula tables");
  const auto options = std::make_shared<Options>();
  AddFolderOption(*command, options->folder);
  command
      ->add_option("--from", options->from,
                   "Text to take the formulas from instead, again for others; the\n"
                   "notation is told at the head of data/indicators.txt")
      ->type_name("FILE");
  const CLI::Option *kind = AddKindOption(*command, options->kind, KindChoice::Any)
                                ->default_str("all")
                                ->description("Install this kind alone");
  command->footer(
      "Makes the folder and the tables of all kinds that are not there yet. Formulas go to the system's\n"
      "tables, in place of those of the same name; the user's stay as they are. All is written or nothing.");
  return {command, [options, kind] { return Run(*options, kind->count() == 0); }};
}

}  // namespace trovenu::tool
