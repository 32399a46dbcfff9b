#include "trovenu/backtest/html_page.h"

#include "trovenu/support/korean.h"

namespace trovenu {
namespace {

constexpr const char *kLessThan = "&lt;&lt;&lt;&lt;&lt;&lt;&lt; ";
constexpr const char *kGreaterThan = "&gt;&gt;&gt;&gt;&gt;&gt;&gt;";

constexpr std::size_t kPiece = 1 << 16;

struct Fact {
  const char *leftLabel;
  const char *leftField;
  const char *rightLabel;
  const char *rightField;
};

const Fact kFacts[] = {
    {"종목"_kr, "SymbolName", "진입수수료"_kr, "EntryCommission"},
    {"지표"_kr, "IndicatorName", "청산수수료"_kr, "ExitCommission"},
    {"기간"_kr, "Term", "주문 편차"_kr, "Slippage"},
};

std::string Value(const DB &runs, const char *field) { return EscapeHtml(runs.GetStr(field).View()); }

}  // namespace

const PageHead kScreenHead = {"", "", {":", ":", " :"}};
const PageHead kPrintHead = {kLessThan, kGreaterThan, {" :", " :", " :"}};

std::string EscapeHtml(std::string_view value) {
  std::string escaped;
  for (const char c : value) {
    switch (c) {
      case '<':
        escaped += "&lt;";
        break;
      case '>':
        escaped += "&gt;";
        break;
      case '&':
        escaped += "&amp;";
        break;
      case '"':
        escaped += "&quot;";
        break;
      default:
        escaped += c;
    }
  }
  return escaped;
}

std::string HtmlRule(int width) {
  const std::string size = std::to_string(width);
  return "<table width=" + size +
         " height=1 border=0 cellspacing=0 cellpadding=0 bgcolor=#8CA9FF>\n<tr><td></td></tr>\n</table>\n";
}

HtmlPage &HtmlPage::operator<<(std::string_view text) {
  for (;;) {
    const std::size_t end = text.find('\n');
    piece_ += text.substr(0, end);
    if (end == text.npos) break;
    piece_ += kLineEnd;
    text.remove_prefix(end + 1);
  }
  if (piece_.size() >= kPiece) {
    file_.Write(piece_);
    piece_.clear();
  }
  return *this;
}

void HtmlPage::WriteHead(const PageHead &head, const DB &runs) {
  *this << "<html>\n<head>\n<title>"
        << "시스템"_kr
        << "거래"_kr
        << "내역"_kr
        << "</title>\n"
        << "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=euc-kr\">\n</head>\n"
        << "<body bgcolor=#FFFFFF text=#000000>\n<div align=left>\n"
        << HtmlRule(640) << "<table width=640 height=30>\n<tr><td align=center><b>" << head.beforeTitle
        << "시스템 매매전략 보고서"_kr << head.behindTitle << "</b></td></tr>\n</table>\n"
        << HtmlRule(640) << "<table width=640 height=80>\n<tr><td align=center>\n"
        << "<table width=500 cellspacing=0 cellpadding=3>\n";
  const char *const *leftColon = head.leftColon;
  for (const Fact &fact : kFacts) {
    *this << "<tr>\n<td width=37><font size=2>" << fact.leftLabel << *leftColon++ << "</font></td>\n"
          << "<td width=194><font size=2>" << Value(runs, fact.leftField) << "</font></td>\n"
          << "<td width=4 bgcolor=#CCCCCC></td>\n"
          << "<td width=94 align=right><font size=2>" << fact.rightLabel << " :</font></td>\n"
          << "<td width=141><font size=2>" << Value(runs, fact.rightField) << "</font></td>\n</tr>\n";
  }
  *this << "</table>\n</td></tr>\n</table>\n";
}

void HtmlPage::Finish() {
  *this << "</div>\n</body>\n</html>\n";
  file_.Write(piece_);
  file_.Commit(Flush::ToSystem);
}

}  // namespace trovenu
