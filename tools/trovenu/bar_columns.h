#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace trovenu::tool {

/// What a column of a bars file holds. The first eight are the input series of a formula in the order of
/// `SCalc::SetVariable`, so that a field's number is its bit in `SCalc::columnsRead`.
enum class BarField { Close, Open, High, Low, Volume, Date, OpenInterest, Amount, Time, None };

inline constexpr int kSeriesFields = 8;
inline constexpr int kBarFields = 9;

/// The English and the Korean heading of a field, for messages: "volume (거래량)".
std::string FieldName(BarField field);

/// The field that a heading in UTF-8 names, `None` for a column that is no part of a bar. The case of
/// letters, blanks and the characters `_-.<>/` make no difference.
BarField FieldOfHeading(std::string_view heading);

/// The columns of a bars file, from its header row.
struct BarColumns {
  static constexpr int kMissing = -1;

  /// Position of each field's column in the row, or `kMissing`.
  int position[kBarFields];
  /// All headings as the file writes them, in UTF-8.
  std::vector<std::string> headings;

  bool Has(BarField field) const { return position[static_cast<int>(field)] != kMissing; }
};

/// Finds the columns in the header row, which stands on `line` of the file `name`. A file without a date
/// column whose time column is left has its dates there. Throws `Failure` if two columns hold the same field
/// or none holds the date.
BarColumns FindBarColumns(const std::string &name, int line, const std::vector<std::string_view> &header);

}  // namespace trovenu::tool
