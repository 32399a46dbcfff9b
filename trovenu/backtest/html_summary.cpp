#include "trovenu/backtest/html_page.h"
#include "trovenu/backtest/simulation.h"
#include "trovenu/support/korean.h"

namespace trovenu {
namespace {

// How the two pages of a summary differ.
struct SummaryForm {
  const PageHead &head;
  bool ruleBehindHead;
  // What follows the labels of a row, and whether it does so where the label and its value are empty.
  const char *firstColon;
  const char *secondColon;
  bool colonWithoutValue;
};

const SummaryForm kScreenForm = {kScreenHead, true, ":", ":", false};
const SummaryForm kPrintForm = {kPrintHead, false, ":", " :", true};

constexpr const char *kSpacer =
    "<table width=600 cellspacing=0 cellpadding=0 height=10>\n<tr><td></td></tr>\n</table>\n";
constexpr const char *kGroupEnd = "</td></tr>\n</table>\n";

// The records of a summary as blocks in groups.
class SummaryBody {
 public:
  SummaryBody(const SummaryForm &form, HtmlPage *page) : form_(form), page_(*page) {}

  void Write(const DB &rows) {
    const SString group = rows.GetStr("GroupID");
    const SString block = rows.GetStr("SubGroupID");
    const bool newBlock = block != block_;
    if (newBlock && block_ != kNone) page_ << kSpacer;
    if (group != group_) {
      if (group_ != kNone) page_ << kGroupEnd << "<br>\n";
      group_ = group;
      page_ << "<table width=634 cellspacing=1 cellpadding=2 bgcolor=#3D72D3>\n"
            << "<tr bgcolor=#D1E2F8 height=30><td>&nbsp;&nbsp;&nbsp;<font size=2>"
            << "▦"_kr << Value(rows, "GroupName") << " ▦"_kr
            << "</font></td></tr>\n"
            << "<tr bgcolor=#FFFFFF align=center><td>\n";
    }
    if (newBlock) {
      block_ = block;
      page_ << "<table width=600 cellspacing=0 cellpadding=3>\n<tr><td><font size=2 class=test>"
            << "▒ "_kr << Value(rows, "SubGroupName") << "</font></td></tr>\n</table>\n"
            << HtmlRule(600) << "<table width=600 cellspacing=0 cellpadding=3>\n";
    }
    const std::string name1 = Value(rows, "Name1");
    const std::string value1 = Value(rows, "Value1");
    const std::string name2 = Value(rows, "Name2");
    const std::string value2 = Value(rows, "Value2");
    page_ << "<tr align=right>\n";
    Cell(150, name1 + Colon(form_.firstColon, name1, value1));
    Cell(100, value1);
    Cell(100, "&nbsp;");
    Cell(150, name2 + Colon(form_.secondColon, name2, value2));
    Cell(100, value2);
    page_ << "</tr>\n";
  }

  void Finish() {
    if (block_ != kNone) page_ << "</table>\n";
    page_ << kSpacer;
    if (group_ != kNone) page_ << kGroupEnd;
  }

 private:
  static constexpr const char *kNone = "-1";

  static std::string Value(const DB &rows, const char *field) {
    return EscapeHtml(rows.GetStr(field).View());
  }

  const char *Colon(const char *colon, const std::string &name, const std::string &value) const {
    return form_.colonWithoutValue || !name.empty() || !value.empty() ? colon : "";
  }

  void Cell(int width, const std::string &content) {
    page_ << "<td width=" << std::to_string(width) << "><font size=2>" << content << "</font></td>\n";
  }

  const SummaryForm &form_;
  HtmlPage &page_;
  SString group_ = kNone;
  SString block_ = kNone;
};

void WriteSummaryPage(const SummaryForm &form, const SString &runTable, const SString &summaryTable,
                      const SString &outputFile) {
  DB runs(runTable.c_str(), 1);
  runs.MoveFirst(1);
  if (runs.FindFirst("SumFileName", summaryTable.c_str()) == 0) return;
  DB rows(summaryTable.c_str(), 1);
  if (rows.State != DB::Open) return;
  HtmlPage page(outputFile);
  page.WriteHead(form.head, runs);
  if (form.ruleBehindHead) page << HtmlRule(640) << "<br>\n";
  SummaryBody body(form, &page);
  for (rows.MoveFirst(1); rows.Eof() == 0; rows.MoveNext(1)) body.Write(rows);
  body.Finish();
  page.Finish();
}

}  // namespace

void SSimulation::SaveSummaryToHTML(SString runTable, SString summaryTable, SString outputFile) {
  WriteSummaryPage(kScreenForm, runTable, summaryTable, outputFile);
}

void SSimulation::SaveSummaryToHTML2(SString runTable, SString summaryTable, SString outputFile) {
  WriteSummaryPage(kPrintForm, runTable, summaryTable, outputFile);
}

}  // namespace trovenu
