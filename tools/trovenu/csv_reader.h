#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace trovenu::tool {

/// Splits a text into rows of fields, in one pass and without copying: fields point into the text, except
/// quoted ones that hold a doubled quote.
///
/// The separator is the one of comma, semicolon and tab that the first row has most of. Lines end in LF or
/// CRLF; lines without any text are stepped over. Fields lose the blanks around them; one in double quotes
/// may hold separators, line breaks and doubled quotes.
class CsvReader {
 public:
  /// `name` stands for the text in failures. Both texts must outlive the reader.
  CsvReader(const std::string &name, std::string_view text);

  /// Reads the next row into `fields`, which stay valid until the next call. False at the end of the text.
  /// Throws `Failure` on a quote without end or with text behind it.
  bool NextRow(std::vector<std::string_view> &fields);

  /// The line on which the row begins that was read last, from 1; behind the last row, the line of the end.
  int Line() const { return rowLine_; }

 private:
  std::string_view ReadField();
  std::string_view ReadQuoted();
  bool AtFieldEnd() const;
  void SkipBlanks();

  const std::string &name_;
  std::string_view text_;
  std::size_t at_ = 0;
  char separator_ = ',';
  int line_ = 1;
  int rowLine_ = 1;
  std::deque<std::string> unquoted_;
};

}  // namespace trovenu::tool
