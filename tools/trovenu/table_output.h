#pragma once

#include <string>

#include "tools/trovenu/output_file.h"
#include "tools/trovenu/table.h"

namespace trovenu::tool {

enum class Format { Table, Csv, Json, Markdown };

/// Writes a table.
///
/// - Table: columns aligned for a terminal, numbers with the decimals that the column needs, at most four
/// behind
///   the first digits that count.
/// - Csv: a header and one line a row, separated by commas, quoted where needed.
/// - Json: an array of one object a row.
/// - Markdown: a table between bars.
///
/// Csv and Json write the fewest digits that read back as the same number. No value is an empty cell, and
/// null in Json. Lines end in LF on every platform.
void WriteTable(const Table &table, Format format, OutputFile &out);

/// Appends the fewest digits that read back as the same number, with an exponent from 1e15 and below 1e-5
/// only.
void AppendNumber(std::string &out, double value);

}  // namespace trovenu::tool
