#pragma once

/// \file
/// The fields of a formula's record in a formula table.

#include <string>
#include <vector>

#include "trovenu/platform/export.h"
#include "trovenu/support/text.h"

namespace trovenu {

class DDB;
class SIndex;
struct FormulaColumn;

/// The key of every record.
inline constexpr const char *kFormulaKey = "IndexName";

/// One field of a record, and the member that it keeps.
class TROVENU_API FormulaField {
 public:
  FormulaField(const FormulaColumn &column, std::string name, int element);

  const std::string &Name() const { return name_; }
  /// Bytes of the longest value.
  int Width() const;
  bool IsRead() const;
  bool IsWritten() const;

  /// The member as text.
  SString Get(const SIndex &index) const;
  /// Sets the member. A text that is no number leaves a number as it was.
  void Set(SIndex &index, const SString &text) const;
  /// Whether `Set` takes the text as it is: any text, a number, a whole number of 32 bits, or 0 and 1.
  bool Accepts(const SString &text) const;

 private:
  const FormulaColumn *column_;
  std::string name_;
  int element_;
};

/// The fields of a kind in the order of writing, for 0 to 4 and for candle patterns, 30; none for other
/// kinds.
TROVENU_API const std::vector<FormulaField> &FormulaFields(int kind);

/// Sets the written fields of the record at the place, except `kept`, which may be null, and those that the
/// table lacks. False if a text is too long for its field.
bool SetFormulaFields(DDB &table, const SIndex &index, int kind, const char *kept);

}  // namespace trovenu
