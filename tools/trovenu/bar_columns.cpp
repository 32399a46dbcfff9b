#include "tools/trovenu/bar_columns.h"

#include <algorithm>
#include <iterator>

#include "tools/trovenu/failure.h"
#include "tools/trovenu/terminal_text.h"

namespace trovenu::tool {

namespace {

struct Heading {
  std::string_view text;
  BarField field;
};

// The first English and the first Korean heading of a field are the ones that messages name.
constexpr Heading kHeadings[] = {
    {"date", BarField::Date},
    {"일자", BarField::Date},
    {"datetime", BarField::Date},
    {"timestamp", BarField::Date},
    {"tradedate", BarField::Date},
    {"tradingdate", BarField::Date},
    {"day", BarField::Date},
    {"dt", BarField::Date},
    {"날짜", BarField::Date},
    {"일시", BarField::Date},
    {"time", BarField::Time},
    {"시간", BarField::Time},
    {"tradetime", BarField::Time},
    {"시각", BarField::Time},
    {"체결시간", BarField::Time},
    {"open", BarField::Open},
    {"시가", BarField::Open},
    {"openprice", BarField::Open},
    {"o", BarField::Open},
    {"high", BarField::High},
    {"고가", BarField::High},
    {"highprice", BarField::High},
    {"h", BarField::High},
    {"low", BarField::Low},
    {"저가", BarField::Low},
    {"lowprice", BarField::Low},
    {"l", BarField::Low},
    {"close", BarField::Close},
    {"종가", BarField::Close},
    {"closeprice", BarField::Close},
    {"last", BarField::Close},
    {"lastprice", BarField::Close},
    {"c", BarField::Close},
    {"현재가", BarField::Close},
    {"volume", BarField::Volume},
    {"거래량", BarField::Volume},
    {"vol", BarField::Volume},
    {"v", BarField::Volume},
    {"amount", BarField::Amount},
    {"거래대금", BarField::Amount},
    {"turnover", BarField::Amount},
    {"tradingvalue", BarField::Amount},
    {"value", BarField::Amount},
    {"openinterest", BarField::OpenInterest},
    {"미결제약정", BarField::OpenInterest},
    {"openint", BarField::OpenInterest},
    {"oi", BarField::OpenInterest},
    {"미결제", BarField::OpenInterest},
};

std::string Plain(std::string_view heading) {
  constexpr std::string_view kIgnored = " \t_-.<>/";
  std::string plain;
  for (const char c : heading) {
    if (kIgnored.find(c) != kIgnored.npos) continue;
    plain += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  }
  return plain;
}

}  // namespace

std::string FieldName(BarField field) {
  const auto *english = std::find_if(std::begin(kHeadings), std::end(kHeadings),
                                     [&](const Heading &h) { return h.field == field; });
  if (english == std::end(kHeadings)) return "";
  return std::string(english->text) + " (" + std::string(english[1].text) + ")";
}

BarField FieldOfHeading(std::string_view heading) {
  const std::string plain = Plain(heading);
  for (const Heading &known : kHeadings) {
    if (known.text == plain) return known.field;
  }
  return BarField::None;
}

BarColumns FindBarColumns(const std::string &name, int line, const std::vector<std::string_view> &header) {
  BarColumns columns;
  std::fill(std::begin(columns.position), std::end(columns.position), BarColumns::kMissing);
  for (const std::string_view text : header) {
    const int at = static_cast<int>(columns.headings.size());
    const std::string &heading = columns.headings.emplace_back(ToUtf8(text));
    const BarField field = FieldOfHeading(heading);
    if (field == BarField::None) continue;
    int &position = columns.position[static_cast<int>(field)];
    if (position != BarColumns::kMissing) {
      throw FailureAt(name, line,
                      "columns " + Quoted(columns.headings[static_cast<std::size_t>(position)]) + " and " +
                          Quoted(heading) + " both hold the " + FieldName(field));
    }
    position = at;
  }
  int &date = columns.position[static_cast<int>(BarField::Date)];
  int &time = columns.position[static_cast<int>(BarField::Time)];
  if (date == BarColumns::kMissing) std::swap(date, time);
  if (date == BarColumns::kMissing) {
    throw FailureAt(name, line,
                    "expected a header with a column " + FieldName(BarField::Date) + ", found " +
                        Quoted(columns.headings.front()) + (header.size() > 1 ? ", ..." : ""));
  }
  return columns;
}

}  // namespace trovenu::tool
