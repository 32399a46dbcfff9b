#include <span>

#include "trovenu/backtest/html_page.h"
#include "trovenu/backtest/simulation.h"
#include "trovenu/support/korean.h"

namespace trovenu {
namespace {

// One cell of both rows of a trade and of the head above. A second row without a field belongs to the cell of
// the first.
struct TradeCell {
  int width;
  const char *firstLabel;
  const char *secondLabel;
  const char *firstField;
  const char *secondField;
};

const TradeCell kScreenCells[] = {
    {60, "진입구분"_kr, "청산구분"_kr, "EntryType", "ExitType"},
    {60, "진입일자"_kr, "청산일자"_kr, "EntryDate", "ExitDate"},
    {60, "진입시간"_kr, "청산시간"_kr, "EntryTime", "ExitTime"},
    {60, "진입가격"_kr, "청산가격"_kr, "EntryPrice", "ExitPrice"},
    {68, "Runup", "Drawdown", "Runup", "Drawdown"},
    {68, "진입효율성"_kr, "청산효율성"_kr, "EntryEff", "ExitEff"},
    {68, "전체효율성"_kr, "수량"_kr, "TotalEff", "Quantity"},
    {68, "수익률"_kr, "누적수익률"_kr, "ProfitLossRatio", "CumProfitLossRatio"},
    {80, "수익금액"_kr, "누적손익금액"_kr, "ProfitLoss", "CumProfitLoss"},
};

// Required: the last label differs from that of the other page.
const TradeCell kPrintCells[] = {
    {78, "거래번호"_kr, "매매구분"_kr, "TradeNo", "EntryType"},
    {88, "진입일자"_kr, "청산일자"_kr, "EntryDate", "ExitDate"},
    {83, "진입시간"_kr, "청산시간"_kr, "EntryTime", "ExitTime"},
    {83, "진입가격"_kr, "청산가격"_kr, "EntryPrice", "ExitPrice"},
    {83, "수량"_kr, nullptr, "Quantity", nullptr},
    {83, "수익률"_kr, "누적수익률"_kr, "ProfitLossRatio", "CumProfitLossRatio"},
    {86, "수익금액"_kr, "누적수익금액"_kr, "ProfitLoss", "CumProfitLoss"},
};

// The first cell that is aligned right.
constexpr std::size_t kFirstNumber = 3;

struct TradeForm {
  const PageHead &head;
  std::span<const TradeCell> cells;
  const char *outerWidth;
  const char *tableWidth;
};

const TradeForm kScreenForm = {kScreenHead, kScreenCells, "", ""};
const TradeForm kPrintForm = {kPrintHead, kPrintCells, " width=640", " width=634"};

// A table of the two rows; `first` and `second` give what the cells hold, and nothing where there is none.
template <class First, class Second>
void WriteRows(const TradeForm &form, const char *color, bool numbersRight, HtmlPage *page, First first,
               Second second) {
  *page << "<table" << form.tableWidth << " cellspacing=1 cellpadding=3 bgcolor=#CCCCCC>\n";
  const auto row = [&](auto content, bool upper) {
    *page << "<tr align=center bgcolor=" << color << ">\n";
    for (std::size_t i = 0; i < form.cells.size(); ++i) {
      const TradeCell &cell = form.cells[i];
      const bool spans = cell.secondField == nullptr;
      if (spans && !upper) continue;
      *page << "<td width=" << std::to_string(cell.width) << (spans ? " rowspan=2" : "")
            << (numbersRight && i >= kFirstNumber ? " align=right" : "") << "><font size=2>" << content(cell)
            << "</font></td>\n";
    }
    *page << "</tr>\n";
  };
  row(first, true);
  row(second, false);
  *page << "</table>\n";
}

void WriteTrades(const TradeForm &form, const SString &runTable, const SString &tradeTable,
                 const SString &outputFile) {
  DB runs(runTable.c_str(), 1);
  runs.MoveFirst(1);
  if (runs.FindFirst("TradeListFileName", tradeTable.c_str()) == 0) return;
  DB trades(tradeTable.c_str(), 1);
  if (trades.State != DB::Open) return;
  HtmlPage page(outputFile);
  page.WriteHead(form.head, runs);
  page << HtmlRule(640) << "<br>\n<table" << form.outerWidth
       << " cellspacing=1 cellpadding=2 bgcolor=#333399>\n<tr><td align=center bgcolor=#FFFFFF>\n";
  WriteRows(
      form, "#EDF5FA", false, &page, [](const TradeCell &cell) { return cell.firstLabel; },
      [](const TradeCell &cell) { return cell.secondLabel; });
  for (trades.MoveFirst(1); trades.Eof() == 0; trades.MoveNext(1)) {
    const auto value = [&](const char *field) { return EscapeHtml(trades.GetStr(field).View()); };
    WriteRows(
        form, "#FFFFFF", true, &page, [&](const TradeCell &cell) { return value(cell.firstField); },
        [&](const TradeCell &cell) { return value(cell.secondField); });
  }
  page << "</td></tr>\n</table>\n";
  page.Finish();
}

}  // namespace

void SSimulation::SaveTradeHistoryToHTML(SString runTable, SString tradeTable, SString outputFile) {
  WriteTrades(kScreenForm, runTable, tradeTable, outputFile);
}

void SSimulation::SaveTradeHistoryToHTML2(SString runTable, SString tradeTable, SString outputFile) {
  WriteTrades(kPrintForm, runTable, tradeTable, outputFile);
}

}  // namespace trovenu
