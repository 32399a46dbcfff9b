#pragma once

#include <string>

#include "trovenu/platform/array.h"
#include "trovenu/platform/export.h"
#include "trovenu/platform/mem_file.h"
#include "trovenu/support/ini_text.h"
#include "trovenu/support/text.h"

namespace trovenu {

/// A keyed store of named values, divided into categories, in which objects keep what they are.
///
/// Names of categories and keys are compared byte by byte. A value is stored as its text, so a number can be
/// read as a text and, where it is one, a text as a number. Null counts as an empty name or text.
class TROVENU_API CKqArchive {
 public:
  CKqArchive() : text_(IniText::LetterCase::Matters) {}

  /// Selects the category of the following calls. That of a fresh archive is "".
  void SetCategory(const char *category) { category_ = category == nullptr ? "" : category; }

  /// The stored value, or the default if the key is absent or its text is no number. An int read from a
  /// number with a fraction drops it, and one too large counts as the nearest int.
  int GetInt(const char *key, int defaultValue) const;
  double GetDbl(const char *key, double defaultValue) const;
  SString GetStr(const char *key, const char *defaultValue) const;

  /// Store the value. Doubles and texts come back byte for byte.
  ///
  /// Required: a value that equals its default is stored too, so that no older value comes back.
  void SetInt(const char *key, int value, int defaultValue);
  void SetDbl(const char *key, double value, double defaultValue);
  void SetStr(const char *key, const char *value, const char *defaultValue);

  /// Removes everything; the category stays selected.
  void Clear();
  bool IsEmpty() const { return text_.IsEmpty(); }

  /// \name Keeping an archive
  /// The form is INI text, one section for each category. `Save` replaces a file whole or not at all, and the
  /// content of a file in memory, which is left at its begin. `Load` replaces the content of the archive and
  /// reads a file in memory from its begin. Each returns nonzero if it has done so; otherwise 0, and nothing
  /// has changed.
  /// @{
  int Save(const char *fileName) const;
  int Save(CMemFile *file) const;
  int Load(const char *fileName);
  int Load(CMemFile *file);
  /// @}

 private:
  std::string category_;
  IniText text_;
};

/// An array of archives that it does not own.
class TROVENU_API CKqArchiveArray : public CArray<CKqArchive *, CKqArchive *> {};

}  // namespace trovenu
