#include "tools/trovenu/formula_options.h"

#include "tools/trovenu/formula_folder.h"

namespace trovenu::tool {

void AddFolderOption(CLI::App &command, std::string &folder) {
  folder = "Index";
  command.add_option("--index-dir", folder, "Folder of the formula tables, user functions among them")
      ->type_name("DIR")
      ->capture_default_str();
}

CLI::Option *AddKindOption(CLI::App &command, std::string &kind, KindChoice choice) {
  std::vector<std::string> words;
  for (const FormulaKind &known : FormulaKinds()) {
    if (choice == KindChoice::Any || known.type != kFunctionIndex) words.emplace_back(known.word);
  }
  kind = words.front();
  return command.add_option("--kind", kind, "What it is")
      ->type_name("NAME")
      ->check(CLI::IsMember(words))
      ->capture_default_str();
}

void AddEntryOptions(CLI::App &command, EntryOptions &entry, KindChoice choice) {
  command.add_option("name", entry.name, "Its name")->type_name("NAME")->required();
  AddFolderOption(command, entry.folder);
  AddKindOption(command, entry.kind, choice);
}

void AddSetOption(CLI::App &command, std::vector<std::string> &settings) {
  command.add_option("--set", settings, "Value of a variable in place of the table's, again for others")
      ->type_name("VAR=VALUE");
}

}  // namespace trovenu::tool
