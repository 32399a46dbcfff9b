#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <vector>

#include "tests/platform/temp_folder.h"
#include "trovenu/backtest/simulation.h"
#include "trovenu/platform/code_page.h"
#include "trovenu/platform/platform.h"
#include "trovenu/support/korean.h"
#include "trovenu/support/table_format.h"
#include "trovenu/support/table_writer.h"

namespace trovenu::tests {
namespace {

// A long trade from 09:05 to 15:00 of two days that gained 2 percent, and a short one that is still open.
void FillHistory(SSimulation *simulation) {
  const double trades[][kTradeColumns] = {
      {0, 20240102090500, 100, 100.06, 20240103150000, 102, 101.94, 3, 5.64, 1.02, 5.64, 1.02, 4, -1.5, 80,
       75, 55, 7},
      {1, 20240104, 98.125, 98, 0, 99, 99, 3, -3, 0.97, 2.64, 0.9894, 0.5, -2, 20, 30, -50, 2},
  };
  for (const auto &trade : trades) {
    for (int column = 0; column < kTradeColumns; ++column) simulation->History[column].Add(trade[column]);
  }
}

void FillSummary(SSimulation *simulation) {
  simulation->InsertSummary({"0", "전체 거래"_kr, "0", "손익 요약"_kr, "0", "총손익"_kr, "2.64", "", ""});
  simulation->InsertSummary({"0", "전체 거래"_kr, "1", "최대 손익"_kr, "1", "a", "1", "b", "2"});
  simulation->InsertSummary({"1", "매수 거래"_kr, "0", "손익 요약"_kr, "0", "", "", "c", ""});
}

// Tables of one run whose texts hold the characters that mean something in a page.
struct RunTables {
  RunTables()
      : runs(folder.Path("SumInfo.rpt")),
        summary(folder.Path("Summary0.rpt")),
        trades(folder.Path("T0.rpt")) {
    SSimulation simulation;
    simulation.CreateSummaryDB(runs.c_str());
    SSummaryInfo info;
    info.SumFileName = summary.c_str();
    info.TradeListFileName = trades.c_str();
    info.SymbolName = "A<B>&\"C\"";
    info.IndicatorName = "ma(5,20)";
    info.Term = "2024.01.02 ~ 2024.01.04";
    info.EntryCommission = "0.01%";
    info.ExitCommission = "0.02%";
    info.Slippage = "0.05%";
    info.Status = SString('x', 60);
    simulation.InsertSummaryDB(runs.c_str(), info);
    FillSummary(&simulation);
    simulation.CreateIndividualSummaryDB(summary.c_str());
    simulation.InsertIndividualSummaryDB(summary.c_str());
    FillHistory(&simulation);
    simulation.CreateTradingHistoryDB(trades.c_str());
    simulation.InsertTradingHistoryDB(trades.c_str());
  }

  TempFolder folder;
  std::string runs;
  std::string summary;
  std::string trades;
};

std::string Utf8(const SString &text) {
  bool ok;
  return Utf8FromCodePage(text.View(), &ok);
}

TEST(ResultTables, HoldTheirFieldsInOrder) {
  const RunTables run;
  DB runs(run.runs.c_str());
  EXPECT_EQ(runs.RecordCount, 1);
  EXPECT_EQ(runs.FieldCount, 17);
  EXPECT_EQ(runs.RecordSize, 1 + 2 * 200 + 15 * 50);
  EXPECT_EQ(runs.GetStr("SymbolName"), "A<B>&\"C\"");
  EXPECT_EQ(runs.GetStr("Status"), SString('x', 50));
  DB summary(run.summary.c_str());
  EXPECT_EQ(summary.RecordCount, 3);
  EXPECT_EQ(summary.RecordSize, 1 + 9 * 50);
  EXPECT_EQ(Utf8(summary.GetStr("Name1")), "총손익");

  const char *const fields[] = {
      "TradeNo",         "EntryType",          "ExitType",   "EntryDate",    "ExitDate",
      "EntryTime",       "ExitTime",           "EntryPrice", "ExitPrice",    "Quantity",
      "Runup",           "Drawdown",           "EntryEff",   "ExitEff",      "TotalEff",
      "ProfitLossRatio", "CumProfitLossRatio", "ProfitLoss", "CumProfitLoss"};
  const char *const expected[][19] = {
      {"1", "매수진입", "매수청산", "20240102", "20240103", "09:05", "15:00", "100.00", "102.00", "3", "4.00",
       "-1.50", "80.00", "75.00", "55.00", "2.00", "2.00", "5.64", "5.64"},
      {"2", "매도진입", "매도유지", "20240104", "00000000", "00:00", "00:00", "98.12", "99.00", "3", "0.50",
       "-2.00", "20.00", "30.00", "-50.00", "-3.00", "-1.06", "-3.00", "2.64"}};
  DB trades(run.trades.c_str());
  EXPECT_EQ(trades.FieldCount, 19);
  for (const auto &record : expected) {
    for (int i = 0; i < 19; ++i) EXPECT_EQ(Utf8(trades.GetStr(fields[i])), record[i]) << fields[i];
    trades.MoveNext();
  }
  EXPECT_NE(trades.Eof(), 0);
}

TEST(ResultTables, OneWriteMakesWhatCreatingAndInsertingMake) {
  const RunTables run;
  const std::string before = run.folder.Content("Summary0.rpt") + run.folder.Content("T0.rpt");
  SSimulation simulation;
  FillSummary(&simulation);
  FillHistory(&simulation);
  simulation.IndividualSummaryFileName = run.summary.c_str();
  simulation.TradingHistoryFileName = run.trades.c_str();
  simulation.WriteRunTables();
  EXPECT_EQ(run.folder.Content("Summary0.rpt") + run.folder.Content("T0.rpt"), before);
}

// A table that another program has made keeps its own fields.
TEST(ResultTables, ValuesAreCutToTheFieldsThatAreThere) {
  const TempFolder folder;
  const std::string path = folder.Path("a.rpt");
  DB table;
  table.CreateDB(path.c_str());
  for (const char *field : {"ExitDate", "Other", "TOTALEFF", "EntryTime", "EntryType"})
    table.InsertField(field, 'c', 3);
  table.WriteHead();
  table.WriteField();
  table.WriteEof();
  SSimulation simulation;
  FillHistory(&simulation);
  simulation.InsertTradingHistoryDB(path.c_str());
  DB trades(path.c_str());
  EXPECT_EQ(trades.RecordCount, 2);
  EXPECT_EQ(std::string(trades.Record, 13), " 202   55.09:");
  EXPECT_EQ(Utf8(trades.GetStr("EntryType")), "매");
}

TEST(ResultTables, APathThatTakesNoFileStillGives1) {
  const TempFolder folder;
  const SString nowhere = folder.Path("none/a.rpt").c_str();
  SSimulation simulation;
  SSummaryInfo info;
  EXPECT_EQ(simulation.CreateSummaryDB(nowhere), 1);
  EXPECT_EQ(simulation.InsertSummaryDB(nowhere, info), 1);
  EXPECT_EQ(simulation.InsertTradingHistoryDB(folder.Path("absent.rpt").c_str()), 1);
  EXPECT_FALSE(FileExist(folder.Path("absent.rpt").c_str()));
}

// What a reader sees, cell by cell, without the facts of the run.
std::string Texts(const std::string &page) {
  bool ok;
  std::string text = std::regex_replace(Utf8FromCodePage(page, &ok), std::regex("<[^>]*>|&nbsp;"), "|");
  text = std::regex_replace(text, std::regex("[|\\r\\n]+"), "|");
  const std::string lastFact = "|주문 편차 :|0.05%|";
  const std::size_t body = text.find(lastFact);
  return body == text.npos ? text : text.substr(body + lastFact.size());
}

std::string Widths(const std::string &page) {
  std::string widths;
  const std::regex cell("<t(?:d|able) width=(\\d+)");
  for (std::sregex_iterator i(page.begin(), page.end(), cell), end; i != end; ++i)
    widths += (*i)[1].str() + ' ';
  return widths;
}

using SavePage = void (*)(SString, SString, SString);

TEST(Pages, ShowTheTablesOfTheRunCellByCell) {
  const std::string head = "640 640 640 640 500 37 194 4 94 141 37 194 4 94 141 37 194 4 94 141 ";
  const std::string blockTop = "600 600 600 ";
  const std::string row = "150 100 100 150 100 ";
  const std::string spacer = "600 ";
  const std::string summaryBody =
      "634 " + blockTop + row + spacer + blockTop + row + spacer + "634 " + blockTop + row + spacer;
  const std::string cells9 = "60 60 60 60 68 68 68 68 80 ";
  const std::string upper7 = "78 88 83 83 83 83 86 ";
  const std::string lower7 = "78 88 83 83 83 86 ";
  const struct {
    const char *name;
    SavePage save;
    bool ofTrades;
    std::string widths;
    std::string texts;
  } pages[] = {
      {"summary", SSimulation::SaveSummaryToHTML, false, head + "640 " + summaryBody,
       "▦전체 거래 ▦|▒ 손익 요약|총손익:|2.64|▒ 최대 손익|a:|1|b:|2|▦매수 거래 ▦|▒ 손익 요약|c:|"},
      {"summary for print", SSimulation::SaveSummaryToHTML2, false, head + summaryBody,
       "▦전체 거래 ▦|▒ 손익 요약|총손익:|2.64| :|▒ 최대 손익|a:|1|b :|2|▦매수 거래 ▦|▒ 손익 요약|:|c :|"},
      {"trades", SSimulation::SaveTradeHistoryToHTML, true,
       head + "640 " + cells9 + cells9 + cells9 + cells9 + cells9 + cells9,
       "진입구분|진입일자|진입시간|진입가격|Runup|진입효율성|전체효율성|수익률|수익금액|"
       "청산구분|청산일자|청산시간|청산가격|Drawdown|청산효율성|수량|누적수익률|누적손익금액|"
       "매수진입|20240102|09:05|100.00|4.00|80.00|55.00|2.00|5.64|"
       "매수청산|20240103|15:00|102.00|-1.50|75.00|3|2.00|5.64|"
       "매도진입|20240104|00:00|98.12|0.50|20.00|-50.00|-3.00|-3.00|"
       "매도유지|00000000|00:00|99.00|-2.00|30.00|3|-1.06|2.64|"},
      {"trades for print", SSimulation::SaveTradeHistoryToHTML2, true,
       head + "640 640 634 " + upper7 + lower7 + "634 " + upper7 + lower7 + "634 " + upper7 + lower7,
       "거래번호|진입일자|진입시간|진입가격|수량|수익률|수익금액|"
       "매매구분|청산일자|청산시간|청산가격|누적수익률|누적수익금액|"
       "1|20240102|09:05|100.00|3|2.00|5.64|매수진입|20240103|15:00|102.00|2.00|5.64|"
       "2|20240104|00:00|98.12|3|-3.00|-3.00|매도진입|00000000|00:00|99.00|-1.06|2.64|"},
  };
  const RunTables run;
  for (const auto &page : pages) {
    SCOPED_TRACE(page.name);
    const std::string table = page.ofTrades ? run.trades : run.summary;
    page.save(run.runs.c_str(), table.c_str(), run.folder.Path("page.html").c_str());
    const std::string html = run.folder.Content("page.html");
    EXPECT_EQ(Texts(html), page.texts);
    EXPECT_EQ(Widths(html), page.widths);
    EXPECT_NE(html.find("charset=euc-kr"), html.npos);
    EXPECT_NE(html.find("A&lt;B&gt;&amp;&quot;C&quot;"), html.npos);
    EXPECT_TRUE(std::regex_search(html, std::regex("</div>\\s*</body>\\s*</html>\\s*$")));
    page.save(run.runs.c_str(), "unknown", run.folder.Path("none.html").c_str());
    EXPECT_FALSE(FileExist(run.folder.Path("none.html").c_str()));
  }
}

TEST(Pages, LabelsOfTheHeadAndTheirColons) {
  const RunTables run;
  const auto head = [&](SavePage save) {
    save(run.runs.c_str(), run.summary.c_str(), run.folder.Path("page.html").c_str());
    bool ok;
    const std::string text = std::regex_replace(Utf8FromCodePage(run.folder.Content("page.html"), &ok),
                                                std::regex("<[^>]*>|[\\r\\n]"), "|");
    return std::regex_replace(text.substr(0, text.find("주문")), std::regex("[|]+"), "|");
  };
  const std::string values[] = {"A&lt;B&gt;&amp;&quot;C&quot;", "0.01%", "ma(5,20)", "0.02%"};
  EXPECT_EQ(head(SSimulation::SaveSummaryToHTML),
            "|시스템거래내역|시스템 매매전략 보고서|종목:|" + values[0] + "|진입수수료 :|" + values[1] +
                "|지표:|" + values[2] + "|청산수수료 :|" + values[3] + "|기간 :|2024.01.02 ~ 2024.01.04|");
  EXPECT_EQ(head(SSimulation::SaveSummaryToHTML2),
            "|시스템거래내역|&lt;&lt;&lt;&lt;&lt;&lt;&lt; 시스템 매매전략 보고서&gt;&gt;&gt;&gt;&gt;&gt;&gt;|"
            "종목 :|" +
                values[0] + "|진입수수료 :|" + values[1] + "|지표 :|" + values[2] + "|청산수수료 :|" +
                values[3] + "|기간 :|2024.01.02 ~ 2024.01.04|");
}

}  // namespace
}  // namespace trovenu::tests
