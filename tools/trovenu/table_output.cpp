#include "tools/trovenu/table_output.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <memory>
#include <nlohmann/json.hpp>
#include <utility>

#include "tools/trovenu/date_text.h"
#include "tools/trovenu/terminal_text.h"
#include "trovenu/support/number_text.h"

namespace trovenu::tool {

namespace {

constexpr double kExponentFrom = 1e15;
constexpr double kExponentBelow = 1e-5;
constexpr std::size_t kPiece = 1 << 16;

// std::visit over the kinds of cells.
template <class... Cases>
struct Overloaded : Cases... {
  using Cases::operator()...;
};
template <class... Cases>
Overloaded(Cases...) -> Overloaded<Cases...>;

bool AnySeconds(const TableColumn::Dates &dates) {
  return std::any_of(dates.values.begin(), dates.values.end(), HasSeconds);
}

bool IsText(const TableColumn &column) {
  return std::holds_alternative<TableColumn::Texts>(column.cells) ||
         std::holds_alternative<TableColumn::Lists>(column.cells);
}

std::string Joined(const std::vector<std::string> &texts) {
  std::string joined;
  for (const std::string &text : texts) {
    if (!joined.empty()) joined += ", ";
    joined += text;
  }
  return joined;
}

void AppendFixed(std::string &out, double value, int decimals) {
  char digits[64];
  const auto [end, fault] =
      std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed, decimals);
  if (fault != std::errc()) return;
  std::string_view text(digits, static_cast<std::size_t>(end - digits));
  if (text.find_first_not_of("-0.") == text.npos && text.front() == '-') text.remove_prefix(1);
  out += text;
}

// Decimals that a table needs to show a column: those of the values as far as they have any, but no more than
// four behind the first digit of the largest that counts.
int DecimalsOf(const std::vector<double> &values) {
  constexpr int kDecimals = 4;
  constexpr int kMostDecimals = 20;
  double largest = 0;
  for (const double value : values) {
    if (std::isfinite(value)) largest = std::max(largest, std::abs(value));
  }
  int most = kDecimals;
  for (double unit = 1; largest > 0 && largest < unit && most < kMostDecimals; unit /= 10) ++most;
  int needed = 0;
  std::string text;
  for (const double value : values) {
    if (!std::isfinite(value) || std::abs(value) >= kExponentFrom) continue;
    text.clear();
    AppendNumber(text, value);
    const std::size_t point = text.find('.');
    if (text.find('e') != text.npos) return most;
    if (point != text.npos) needed = std::max(needed, static_cast<int>(text.size() - point - 1));
    if (needed >= most) return most;
  }
  return needed;
}

// Writes the cells of one column, each as a plain text.
class CellWriter {
 public:
  enum class Numbers { Exact, Readable };

  CellWriter(const TableColumn &column, Numbers numbers)
      : column_(column), exact_(numbers == Numbers::Exact) {
    if (const auto *dates = std::get_if<TableColumn::Dates>(&column.cells)) seconds_ = AnySeconds(*dates);
    const auto *values = std::get_if<TableColumn::Numbers>(&column.cells);
    if (values != nullptr && !exact_) decimals_ = DecimalsOf(values->values);
  }

  void Append(std::string &out, std::size_t row) const {
    std::visit(
        Overloaded{[&](const TableColumn::Texts &texts) { out += texts.values[row]; },
                   [&](const TableColumn::Lists &lists) { out += Joined(lists.values[row]); },
                   [&](const TableColumn::Figures &figures) { out += figures.values[row]; },
                   [&](const TableColumn::Numbers &numbers) { AppendValue(out, numbers.values[row]); },
                   [&](const TableColumn::Dates &dates) { AppendDate(out, dates.values[row], seconds_); }},
        column_.cells);
  }

  const TableColumn &Of() const { return column_; }

 private:
  void AppendValue(std::string &out, double value) const {
    if (!std::isfinite(value)) return;
    if (exact_ || std::abs(value) >= kExponentFrom) {
      AppendNumber(out, value);
    } else {
      AppendFixed(out, value, decimals_);
    }
  }

  const TableColumn &column_;
  bool exact_;
  bool seconds_ = false;
  int decimals_ = 0;
};

std::vector<CellWriter> WritersOf(const Table &table, CellWriter::Numbers numbers) {
  std::vector<CellWriter> writers;
  for (const TableColumn &column : table.columns) writers.emplace_back(column, numbers);
  return writers;
}

// Hands the text over in large pieces.
void Pour(std::string &text, OutputFile &out, std::size_t from) {
  if (text.size() < from) return;
  out.Write(text);
  text.clear();
}

void AppendPadded(std::string &out, std::string_view cell, std::size_t width, bool left) {
  const std::size_t blanks = width - std::min(width, DisplayWidth(cell));
  if (!left) out.append(blanks, ' ');
  out += cell;
  if (left) out.append(blanks, ' ');
}

void EndAlignedLine(std::string &out) {
  while (!out.empty() && out.back() == ' ') out.pop_back();
  out += '\n';
}

void WriteAligned(const Table &table, OutputFile &out) {
  const std::vector<CellWriter> writers = WritersOf(table, CellWriter::Numbers::Readable);
  const std::size_t rows = table.Rows();
  std::vector<std::size_t> widths;
  std::string cell;
  for (const CellWriter &writer : writers) {
    std::size_t width = DisplayWidth(writer.Of().heading);
    for (std::size_t row = 0; row < rows; ++row) {
      cell.clear();
      writer.Append(cell, row);
      width = std::max(width, DisplayWidth(cell));
    }
    widths.push_back(width);
  }
  std::string text;
  const auto appendLine = [&](const auto &cellOf) {
    for (std::size_t i = 0; i < writers.size(); ++i) {
      if (i > 0) text += "  ";
      AppendPadded(text, cellOf(i), widths[i], IsText(writers[i].Of()));
    }
    EndAlignedLine(text);
  };
  appendLine([&](std::size_t i) -> const std::string & { return writers[i].Of().heading; });
  appendLine([&](std::size_t i) -> const std::string & { return cell.assign(widths[i], '-'); });
  for (std::size_t row = 0; row < rows; ++row) {
    appendLine([&](std::size_t i) -> const std::string & {
      cell.clear();
      writers[i].Append(cell, row);
      return cell;
    });
    Pour(text, out, kPiece);
  }
  Pour(text, out, 0);
}

void AppendCsvCell(std::string &out, std::string_view cell) {
  if (cell.find_first_of(",\"\r\n") == cell.npos) {
    out += cell;
    return;
  }
  out += '"';
  for (const char c : cell) {
    out += c;
    if (c == '"') out += '"';
  }
  out += '"';
}

void WriteCsv(const Table &table, OutputFile &out) {
  const std::vector<CellWriter> writers = WritersOf(table, CellWriter::Numbers::Exact);
  std::string text;
  for (std::size_t i = 0; i < writers.size(); ++i) {
    if (i > 0) text += ',';
    AppendCsvCell(text, writers[i].Of().heading);
  }
  text += '\n';
  std::string cell;
  for (std::size_t row = 0; row < table.Rows(); ++row) {
    for (std::size_t i = 0; i < writers.size(); ++i) {
      if (i > 0) text += ',';
      cell.clear();
      writers[i].Append(cell, row);
      AppendCsvCell(text, cell);
    }
    text += '\n';
    Pour(text, out, kPiece);
  }
  Pour(text, out, 0);
}

std::string JsonText(const std::string &text) { return nlohmann::json(text).dump(); }

void AppendJsonCell(std::string &out, const CellWriter &writer, std::size_t row) {
  const auto appendAsText = [&](const auto &) {
    std::string cell;
    writer.Append(cell, row);
    out += JsonText(cell);
  };
  const auto appendNumber = [&](const TableColumn::Numbers &numbers) {
    if (std::isfinite(numbers.values[row])) {
      writer.Append(out, row);
    } else {
      out += "null";
    }
  };
  const auto appendFigure = [&](const TableColumn::Figures &figures) {
    const std::string &text = figures.values[row];
    double value = 0.0;
    const bool isNumber = !text.empty() && ParseNumber(text, &value) == text.size() && std::isfinite(value);
    out += isNumber ? text : "null";
  };
  const auto appendList = [&](const TableColumn::Lists &lists) {
    out += nlohmann::json(lists.values[row]).dump();
  };
  std::visit(Overloaded{appendAsText, appendFigure, appendNumber, appendList}, writer.Of().cells);
}

void WriteJson(const Table &table, OutputFile &out) {
  const std::vector<CellWriter> writers = WritersOf(table, CellWriter::Numbers::Exact);
  std::vector<std::string> keys;
  keys.reserve(writers.size());
  for (const CellWriter &writer : writers) keys.push_back(JsonText(writer.Of().heading) + ":");
  std::string text = "[";
  for (std::size_t row = 0; row < table.Rows(); ++row) {
    text += row == 0 ? "\n{" : ",\n{";
    for (std::size_t i = 0; i < writers.size(); ++i) {
      if (i > 0) text += ',';
      text += keys[i];
      AppendJsonCell(text, writers[i], row);
    }
    text += '}';
    Pour(text, out, kPiece);
  }
  text += "\n]\n";
  Pour(text, out, 0);
}

void AppendMarkdownCell(std::string &out, std::string_view cell) {
  out += ' ';
  for (const char c : cell) {
    if (c == '|') out += '\\';
    out += c;
  }
  out += " |";
}

void WriteMarkdown(const Table &table, OutputFile &out) {
  const std::vector<CellWriter> writers = WritersOf(table, CellWriter::Numbers::Exact);
  std::string text = "|";
  for (const CellWriter &writer : writers) AppendMarkdownCell(text, writer.Of().heading);
  text += "\n|";
  for (const CellWriter &writer : writers) text += IsText(writer.Of()) ? " --- |" : " ---: |";
  text += '\n';
  std::string cell;
  for (std::size_t row = 0; row < table.Rows(); ++row) {
    text += '|';
    for (const CellWriter &writer : writers) {
      cell.clear();
      writer.Append(cell, row);
      AppendMarkdownCell(text, cell);
    }
    text += '\n';
    Pour(text, out, kPiece);
  }
  Pour(text, out, 0);
}

}  // namespace

std::size_t Table::Rows() const {
  if (columns.empty()) return 0;
  return std::visit([](const auto &cells) { return cells.values.size(); }, columns.front().cells);
}

void AppendNumber(std::string &out, double value) {
  char digits[64];
  const double size = std::abs(value);
  const bool plain = value == 0 || (size >= kExponentBelow && size < kExponentFrom);
  const auto format = plain ? std::chars_format::fixed : std::chars_format::scientific;
  const auto [end, fault] = std::to_chars(digits, digits + sizeof digits, value, format);
  if (fault == std::errc()) out.append(digits, end);
}

void WriteTable(const Table &table, Format format, OutputFile &out) {
  switch (format) {
    case Format::Table:
      return WriteAligned(table, out);
    case Format::Csv:
      return WriteCsv(table, out);
    case Format::Json:
      return WriteJson(table, out);
    case Format::Markdown:
      return WriteMarkdown(table, out);
  }
}

}  // namespace trovenu::tool
