#pragma once

#include <string>

#include "trovenu/platform/export.h"
#include "trovenu/platform/mem_file.h"
#include "trovenu/support/ini_text.h"
#include "trovenu/support/text.h"

namespace trovenu {

/// INI text in memory, loaded from and saved to a file or a file in memory. Names and values are those of
/// `CIniFile`.
class TROVENU_API CIniMemFile {
 public:
  CIniMemFile();
  /// Loads the file; one that is not there counts as empty. With `writeBack` not 0, what is written goes to
  /// the file, as with `CIniFile`, when the object goes.
  explicit CIniMemFile(const char *fileName, int writeBack = 0);
  ~CIniMemFile();
  CIniMemFile(const CIniMemFile &) = delete;
  CIniMemFile &operator=(const CIniMemFile &) = delete;

  int GetInt(const char *section, const char *key, int defaultValue) const;
  double GetDouble(const char *section, const char *key, double defaultValue) const;
  SString GetString(const char *section, const char *key, const char *defaultValue) const;

  void WriteInt(const char *section, const char *key, int value);
  /// Required: a value that equals its default is stored too, so that no older value comes back.
  void WriteInt(const char *section, const char *key, int value, int defaultValue);
  void WriteDouble(const char *section, const char *key, double value, double defaultValue);
  void WriteString(const char *section, const char *key, const char *value, const char *defaultValue);

  /// Replace the content by that of a file, which is read from its begin. `mode` changes nothing. Nonzero if
  /// that is done; 0, with the content as it was, if there is no such file.
  int LoadIniFile(CMemFile *file, int mode);
  int LoadIniFile(const char *fileName, int mode);

  /// Writes everything to a file, in one step. Of a file that is there, its comments, the order of its lines
  /// and the keys that the object lacks stay. Nonzero if that is done; 0, with the file as it was, if not.
  int SaveIniFile(const char *fileName) const;

  /// Replaces the content of a file in memory, which is left at its begin. Nonzero if that is done.
  int GetMemFile(CMemFile *file) const;

 private:
  std::string writeBackTo_;
  IniText text_;
  IniText changes_;
};

}  // namespace trovenu
