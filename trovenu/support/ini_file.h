#pragma once

#include <string>

#include "trovenu/platform/export.h"
#include "trovenu/support/ini_text.h"
#include "trovenu/support/text.h"

namespace trovenu {

/// An INI file on disk. It is read when it gets its name; what is written goes to the file, in one step, when
/// the object goes or gets another name. Comments, the order of lines and all that is not written stay, also
/// what others have written to the file meanwhile.
///
/// Letters A to Z and a to z are alike in names of sections and keys. Null counts as an empty name or text. A
/// file that is not there counts as empty and is made by the first write.
class TROVENU_API CIniFile {
 public:
  CIniFile();
  explicit CIniFile(const char *fileName);
  ~CIniFile();
  CIniFile(const CIniFile &) = delete;
  CIniFile &operator=(const CIniFile &) = delete;

  /// Writes what has been written to the file so far, and goes over to another one.
  void SetFileName(const char *fileName);

  /// The value, or the default if there is no such key or its text is no number. An int read from a number
  /// with a fraction drops it, and one too large counts as the nearest int.
  int GetInt(const char *section, const char *key, int defaultValue) const;
  double GetDouble(const char *section, const char *key, double defaultValue) const;
  SString GetString(const char *section, const char *key, const char *defaultValue) const;

  /// Doubles and texts come back byte for byte.
  void WriteInt(const char *section, const char *key, int value);
  void WriteDouble(const char *section, const char *key, double value);
  void WriteString(const char *section, const char *key, const char *value);

  /// Writes to the file now. Nonzero if it holds everything afterwards; 0 if it could not be written and is
  /// as it was, in which case it is tried again when the object goes.
  int Save();

 private:
  std::string fileName_;
  IniText text_;
  IniText changes_;
};

}  // namespace trovenu
