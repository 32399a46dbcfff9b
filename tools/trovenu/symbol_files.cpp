#include "tools/trovenu/symbol_files.h"

#include <algorithm>
#include <string_view>

#include "tools/trovenu/failure.h"
#include "tools/trovenu/terminal_text.h"
#include "trovenu/platform/platform.h"

namespace trovenu::tool {

namespace {

bool Matches(std::string_view pattern, std::string_view name) {
  // Where the last "*" stands, and up to where it has reached in the name.
  std::size_t star = pattern.npos;
  std::size_t reached = 0;
  std::size_t p = 0;
  std::size_t n = 0;
  while (n < name.size()) {
    if (p < pattern.size() && pattern[p] == '*') {
      star = p++;
      reached = n;
    } else if (p < pattern.size() && (pattern[p] == '?' || pattern[p] == name[n])) {
      ++p;
      ++n;
    } else if (star != pattern.npos) {
      p = star + 1;
      n = ++reached;
    } else {
      return false;
    }
  }
  return std::all_of(pattern.begin() + static_cast<std::ptrdiff_t>(p), pattern.end(),
                     [](char c) { return c == '*'; });
}

}  // namespace

std::vector<SymbolFile> FindSymbolFiles(const std::string &pattern) {
  std::size_t begin = pattern.size();
  while (begin > 0 && !IsPathSeparator(pattern[begin - 1])) --begin;
  const std::string folder = pattern.substr(0, begin);
  const std::string_view namePattern = std::string_view(pattern).substr(begin);
  std::vector<SymbolFile> files;
  for (const std::string &name : FilesIn(folder.empty() ? "." : folder)) {
    if (Matches(namePattern, name)) files.push_back({folder + name, name.substr(0, name.rfind('.'))});
  }
  if (files.empty()) throw Failure(Quoted(pattern) + ": no such files");
  std::ranges::sort(files, {}, &SymbolFile::path);
  return files;
}

}  // namespace trovenu::tool
