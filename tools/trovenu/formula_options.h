#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace trovenu::tool {

/// \name Options of commands that work on formula tables
/// @{

/// `--index-dir DIR`.
void AddFolderOption(CLI::App &command, std::string &folder);

enum class KindChoice { Any, Runnable };

/// `--kind NAME`, an indicator if none is given. Runnable ones are all but user functions.
CLI::Option *AddKindOption(CLI::App &command, std::string &kind, KindChoice choice);

/// The formula of a table that a command works on.
struct EntryOptions {
  std::string name;
  std::string folder;
  std::string kind;
};

/// NAME, `--index-dir DIR` and `--kind NAME`.
void AddEntryOptions(CLI::App &command, EntryOptions &entry, KindChoice choice);

/// `--set VAR=VALUE`, any number of them.
void AddSetOption(CLI::App &command, std::vector<std::string> &settings);
/// @}

}  // namespace trovenu::tool
