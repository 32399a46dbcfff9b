#include "fuzz/stored_text.h"

#include <vector>

#include "trovenu/support/ini_notation.h"

namespace trovenu::fuzz {

CKqArchive ArchiveOf(std::string_view text) {
  CMemFile file(text);
  CKqArchive archive;
  archive.Load(&file);
  return archive;
}

std::string WithOtherValues(std::string_view text, Input &input) {
  std::vector<std::string> lines;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    lines.emplace_back(text.substr(0, end));
    text.remove_prefix(end == text.npos ? text.size() : end + 1);
  }
  // Each step goes on from the line of the one before.
  for (std::size_t at = 0; !input.IsEmpty() && !lines.empty();) {
    at = (at + static_cast<std::size_t>(input.Below(256))) % lines.size();
    const std::size_t equals = lines[at].find('=');
    const std::string value = input.NumberText();
    if (equals != std::string::npos) lines[at].replace(equals + 1, std::string::npos, IniValue(value));
  }
  std::string changed;
  for (const std::string &line : lines) changed += line + '\n';
  return changed;
}

}  // namespace trovenu::fuzz
