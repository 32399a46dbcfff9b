#pragma once

#include <string>
#include <string_view>

#include "trovenu/platform/mem_file.h"
#include "trovenu/support/ini_text.h"

// INI text to and from files. Everything gives false, and has changed nothing, where it could not be done.

namespace trovenu {

/// A text handed over by a host; null counts as empty.
inline std::string_view ViewOf(const char *text) { return text == nullptr ? std::string_view() : text; }
inline std::string PathOf(const char *path) { return std::string(ViewOf(path)); }

/// Replace the content of `text`.
bool LoadIniText(const std::string &path, IniText *text);
bool LoadIniText(CMemFile *file, IniText *text);

/// Replaces the content of `file` and leaves it at its begin.
bool SaveIniText(const IniText &text, CMemFile *file);

/// Sets the values of `changes` in the file: all else that stands in it stays, also what others have written
/// to it since it was read. A file that is not there is made, and has the text of `fresh`.
bool MergeIntoIniFile(const std::string &path, const IniText &changes, const IniText &fresh);

}  // namespace trovenu
