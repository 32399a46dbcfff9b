#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tools/trovenu/formula_folder.h"
#include "tools/trovenu/formula_options.h"
#include "tools/trovenu/formula_text.h"
#include "tools/trovenu/indicator_commands.h"
#include "tools/trovenu/output_file.h"
#include "tools/trovenu/terminal_text.h"
#include "trovenu/platform/code_page.h"

namespace trovenu::tool {

namespace {

struct Options : EntryOptions {
  FormatOption format;
  std::string out;
};

std::string InUtf8(const SString &text) { return OneLine(Utf8FromCodePage(text.c_str(), nullptr)); }

int List(const Options &options, bool allKinds) {
  const FormulaFolder folder(options.folder);
  folder.RequireAny();
  TableColumn::Texts kinds;
  TableColumn::Texts names;
  TableColumn::Texts tables;
  TableColumn::Texts descriptions;
  for (const FormulaKind &kind : FormulaKinds()) {
    if (!allKinds && options.kind != kind.word) continue;
    for (const FormulaEntry &entry : folder.List(kind)) {
      kinds.values.emplace_back(kind.word);
      names.values.push_back(InUtf8(entry.name));
      tables.values.emplace_back(entry.isUsers ? "user" : "system");
      descriptions.values.push_back(InUtf8(entry.description));
    }
  }
  Table table;
  table.columns.push_back({"kind", std::move(kinds)});
  table.columns.push_back({"name", std::move(names)});
  table.columns.push_back({"table", std::move(tables)});
  table.columns.push_back({"description", std::move(descriptions)});
  WriteResult(table, options.format, options.out);
  return kDone;
}

int Show(const Options &options) {
  const FormulaFolder folder(options.folder);
  const FormulaKind &kind = KindOfWord(options.kind);
  SIndex entry = folder.Read(kind, NameInCodePage(options.name, "NAME"));
  entry.IndexType = kind.type;
  OutputFile out(options.out);
  out.Write(FormulaText(entry));
  out.Commit();
  return kDone;
}

}  // namespace

Command AddIndicatorList(CLI::App &group) {
  CLI::App *command = group.add_subcommand("list", "List what is in the formula tables");
  const auto options = std::make_shared<Options>();
  AddFolderOption(*command, options->folder);
  const CLI::Option *kind = AddKindOption(*command, options->kind, KindChoice::Any)
                                ->default_str("all")
                                ->description("List this kind alone");
  options->format.Add(*command, {Format::Table, Format::Csv, Format::Json});
  AddOutOption(*command, options->out);
  return {command, [options, kind] { return List(*options, kind->count() == 0); }};
}

Command AddIndicatorShow(CLI::App &group) {
  CLI::App *command = group.add_subcommand("show", "Print one formula of the tables as text");
  const auto options = std::make_shared<Options>();
  AddEntryOptions(*command, *options, KindChoice::Any);
  AddOutOption(*command, options->out);
  command->footer("Prints the notation that indicator install --from reads.");
  return {command, [options] { return Show(*options); }};
}

}  // namespace trovenu::tool
