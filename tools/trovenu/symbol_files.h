#pragma once

#include <string>
#include <vector>

namespace trovenu::tool {

/// One symbol: its file of bars and its name, the file's without the folder and what follows the last point.
struct SymbolFile {
  std::string path;
  std::string name;
};

/// The files that a pattern means, by name: "*" stands for any characters of the file's name and "?" for one.
/// Throws `Failure` if there is none.
std::vector<SymbolFile> FindSymbolFiles(const std::string &pattern);

}  // namespace trovenu::tool
