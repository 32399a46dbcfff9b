#pragma once

#include <cstddef>
#include <string>
#include <variant>
#include <vector>

namespace trovenu::tool {

/// One column of a result.
struct TableColumn {
  struct Texts {
    std::vector<std::string> values;
  };
  /// Several texts in a cell.
  struct Lists {
    std::vector<std::vector<std::string>> values;
  };
  /// Numbers as texts, with the decimals that they are to show; an empty one stands for no value.
  struct Figures {
    std::vector<std::string> values;
  };
  /// NaN and the infinities stand for no value.
  struct Numbers {
    std::vector<double> values;
  };
  /// Date numbers.
  struct Dates {
    std::vector<double> values;
  };

  std::string heading;
  std::variant<Texts, Lists, Figures, Numbers, Dates> cells;
};

/// A result as columns of equal length; headings differ. All text is UTF-8.
struct Table {
  std::vector<TableColumn> columns;

  std::size_t Rows() const;
};

}  // namespace trovenu::tool
