#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>
#include <vector>

#include "tests/tools/tool_runner.h"
#include "trovenu/platform/platform.h"

namespace trovenu::tests {

namespace {

class ChartTest : public ToolTest {};

struct TypeCase {
  const char *name;
  std::vector<std::string> parameters;
};

const TypeCase kTypes[] = {
    {"pnf", {"3", "2"}}, {"kagi", {"4"}},         {"renko", {"3"}},        {"threeline", {"3"}},
    {"swing", {"4"}},    {"counterclock", {"5"}}, {"candlevolume", {}},    {"vap", {"8"}},
    {"profile", {"20"}}, {"zigzag", {"3"}},       {"zigzagsteps", {"10"}},
};

std::vector<std::string> Arguments(const TypeCase &type, const std::vector<std::string> &more) {
  std::vector<std::string> arguments = {"chart", "--type", type.name};
  if (!type.parameters.empty()) arguments.emplace_back("--param");
  arguments.insert(arguments.end(), type.parameters.begin(), type.parameters.end());
  arguments.insert(arguments.end(), more.begin(), more.end());
  return arguments;
}

// Two days of minutes whose closes swing by whole numbers around 100.
std::string WavyBars() {
  std::string text = "date,time,open,high,low,close,volume\n";
  for (int i = 0; i < 120; ++i) {
    const int close = 100 + static_cast<int>(std::lround(9 * std::sin(i * 0.17) + 4 * std::sin(i * 0.61)));
    const std::string minute = std::to_string(100 + i % 60).substr(1);
    text += (i < 60 ? "2024-01-02,09:" : "2024-01-03,09:") + minute + ",100,120,80," + std::to_string(close) +
            ',' + std::to_string(100 + i % 7) + '\n';
  }
  return text;
}

std::size_t Count(std::string_view text, std::string_view part) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != text.npos; at = text.find(part, at + 1)) ++count;
  return count;
}

// The marks of a picture are the shapes with a hint; the picture has a title of its own.
std::size_t Marks(std::string_view svg) { return Count(svg, "<title>") - 1; }

// What keeps a text from being well-formed XML, without a document type: tags that don't match, attributes
// without quotes or given twice, stray markup and control characters. Empty if nothing does.
std::string XmlFault(std::string_view text) {
  std::vector<std::string_view> open;
  std::size_t roots = 0;
  for (std::size_t at = 0; at < text.size();) {
    if (static_cast<unsigned char>(text[at]) < ' ' && text[at] != '\n') return "control character";
    if (text[at] == '&') {
      const std::string_view entity = text.substr(at, text.find(';', at) - at + 1);
      const std::string_view known[] = {"&amp;", "&lt;", "&gt;", "&quot;"};
      if (std::find(std::begin(known), std::end(known), entity) == std::end(known)) return "stray &";
    }
    if (text[at] == '>') return "stray >";
    if (text[at] != '<') {
      ++at;
      continue;
    }
    const std::size_t end = text.find('>', at);
    if (end == text.npos) return "unfinished tag";
    std::string_view tag = text.substr(at + 1, end - at - 1);
    at = end + 1;
    if (tag.starts_with('?')) continue;
    if (tag.starts_with('/')) {
      if (open.empty() || open.back() != tag.substr(1)) return "unexpected </" + std::string(tag.substr(1));
      open.pop_back();
      continue;
    }
    const bool empty = tag.ends_with('/');
    if (empty) tag.remove_suffix(1);
    const std::string_view name = tag.substr(0, tag.find(' '));
    if (open.empty() && ++roots > 1) return "second root";
    std::vector<std::string_view> attributes;
    for (tag.remove_prefix(name.size()); !tag.empty();) {
      const std::size_t equals = tag.find("=\"");
      const std::size_t quote = equals == tag.npos ? tag.npos : tag.find('"', equals + 2);
      if (tag.front() != ' ' || quote == tag.npos) return "attributes of " + std::string(name);
      const std::string_view attribute = tag.substr(1, equals - 1);
      if (std::find(attributes.begin(), attributes.end(), attribute) != attributes.end()) return "twice";
      if (tag.substr(equals + 2, quote - equals - 2).find('<') != tag.npos) return "< in an attribute";
      attributes.push_back(attribute);
      tag.remove_prefix(quote + 1);
    }
    if (!empty) open.push_back(name);
  }
  return open.empty() && roots == 1 ? "" : "unfinished";
}

TEST_F(ChartTest, EveryTypeInEveryFormWithAMarkForEachRow) {
  // Names of files have no "<" on Windows.
  const std::string name = kPathSeparator == '/' ? "wavy & <odd>.csv" : "wavy & odd.csv";
  const std::string shown = kPathSeparator == '/' ? "wavy &amp; &lt;odd&gt;.csv" : "wavy &amp; odd.csv";
  const std::string bars = File(name, WavyBars());
  for (const TypeCase &type : kTypes) {
    SCOPED_TRACE(type.name);
    const ToolResult csv = Run(Arguments(type, {"--bars", bars, "--format", "csv", "--svg", Path("c.svg")}));
    ASSERT_EQ(csv.exitCode, 0) << csv.err;
    const std::size_t rows = Count(csv.out, "\n") - 1;
    EXPECT_GE(rows, 5U) << csv.out;
    EXPECT_EQ(Count(Run(Arguments(type, {"--bars", bars, "--format", "json"})).out, "\n{"), rows);
    EXPECT_EQ(Count(Run(Arguments(type, {"--bars", bars})).out, "\n"), rows + 2);
    const std::string svg = Content("c.svg");
    EXPECT_EQ(XmlFault(svg), "");
    EXPECT_EQ(Marks(svg), rows);
    EXPECT_NE(svg.find(shown), std::string::npos);
    // Without a form or a file the picture is all.
    EXPECT_EQ(Run(Arguments(type, {"--bars", bars, "--svg", Path("c.svg")})).out, "");
    EXPECT_EQ(Content("c.svg"), svg);
    for (const char *broken : {"nan", "inf"}) EXPECT_EQ(Count(svg, std::string(" ") + broken), 0U);
  }
}

// Bricks of 2 from 10: 14.5 makes 12 and 14; 11 is not down to 10; 10 makes 12 and, on the level, 10.
TEST_F(ChartTest, RowsHaveDatesPricesAndTheParametersThatWereUsed) {
  const char *bars = "date,close\n20240102,10\n20240103,14.5\n20240104,11\n20240105,10\n";
  const std::string bricks =
      "date,bar,start,end,brick\n"
      "2024-01-03,1,10,12,2\n"
      "2024-01-03,1,12,14,2\n"
      "2024-01-05,3,12,10,2\n";
  const auto renko = [&](std::vector<std::string> more) {
    more.insert(more.begin(), {"chart", "--type", "renko", "--bars", "-", "--format", "csv"});
    return Run(more, bars).out;
  };
  EXPECT_EQ(renko({"--param", "2"}), bricks);
  // A brick as high as the tick stands; below it, it becomes 100 ticks, 4 here.
  EXPECT_EQ(renko({"--param", "2", "--tick", "2"}), bricks);
  EXPECT_EQ(renko({"--param", "0.01", "--tick", "0.04"}), "date,bar,start,end,brick\n2024-01-03,1,10,14,4\n");
  // 4 % of the first close, whatever --param says.
  EXPECT_NE(renko({"--auto", "--param", "2"}).find(",10,10.4,0.4\n"), std::string::npos);
  EXPECT_EQ(renko({"--auto"}), renko({"--auto", "--param", "2"}));
}

// Kagi lines of width 2 over 10, 14, 11, 16, 8: the third passes the shoulder 14, the fourth the waist 11.
TEST_F(ChartTest, KagiLinesAreThickAboveTheShoulderAndThinBelowTheWaist) {
  const char *bars =
      "date,close\n20240102,10\n20240103,14\n20240104,11\n20240105,16\n20240108,8\n20240109,8\n";
  ASSERT_EQ(
      Run({"chart", "--type", "kagi", "--bars", "-", "--param", "2", "--svg", Path("k.svg")}, bars).exitCode,
      0);
  const std::string svg = Content("k.svg");
  const std::size_t thin = svg.find("stroke-width=\"1.4\"");
  const std::size_t thick = svg.find("stroke-width=\"3.6\"");
  ASSERT_TRUE(thin < thick && thick != svg.npos);
  const std::string yin = svg.substr(thin, svg.find("</g>", thin) - thin);
  const std::string yang = svg.substr(thick, svg.find("</g>", thick) - thick);
  EXPECT_EQ(Count(yin, "<path"), 1U) << yin;
  EXPECT_EQ(Count(yang, "<path"), 4U) << yang;
  EXPECT_NE(yin.find("16 to 10"), std::string::npos) << yin;
}

TEST_F(ChartTest, PictureShowsTheNewestThatFitAndSaysSo) {
  const std::string bars = File("wavy.csv", WavyBars());
  const ToolResult result = Run({"chart", "--type", "renko", "--bars", bars, "--param", "0.2", "--format",
                                 "csv", "--svg", Path("r.svg")});
  const std::size_t rows = Count(result.out, "\n") - 1;
  const std::string svg = Content("r.svg");
  const std::size_t marks = Marks(svg);
  EXPECT_LT(marks, rows);
  EXPECT_NE(svg.find(">last " + std::to_string(marks) + " of " + std::to_string(rows) + " bricks, "),
            std::string::npos);
  EXPECT_NE(svg.find("prefers-color-scheme: dark"), std::string::npos);
}

TEST_F(ChartTest, OddBarsGiveSoundPictures) {
  const std::string head = "date,open,high,low,close,volume\n";
  const std::string inputs[] = {
      head + "20240102,5,5,5,5,0\n",
      head + "20240102,5,5,5,5,0\n20240103,5,5,5,5,0\n20240104,5,5,5,5,0\n",
      head + "20240102,0,0,0,0,7\n20240103,0,0,0,0,7\n",
      head + "20240102,0,0,0,0,7\n20240103,-3,-1,-5,-4,7\n20240104,-3,-1,-5,-1,-7\n",
      head + "20240102,1,1,1,1,1e300\n20240103,1e300,1e300,1e300,1e300,1e300\n20240104,1,1,1,1,1e300\n",
      head + "20240102,1e-9,2e-9,1e-9,1e-9,1\n20240103,1e-9,2e-9,1e-9,2e-9,1\n20240104,1e-9,1,1e-9,9e-10,1\n",
  };
  for (const TypeCase &type : kTypes) {
    for (const std::string &bars : inputs) {
      for (const std::vector<std::string> &more :
           {std::vector<std::string>{"--auto"}, {"--param", "1e300"}}) {
        if (more.size() > 1 && type.parameters.empty()) continue;
        std::vector<std::string> arguments = {"chart", "--type", type.name,    "--bars",
                                              "-",     "--svg",  Path("o.svg")};
        arguments.insert(arguments.end(), more.begin(), more.end());
        const ToolResult result = Run(arguments, bars);
        ASSERT_EQ(result.exitCode, 0) << type.name << ' ' << bars << result.err;
        ASSERT_EQ(XmlFault(Content("o.svg")), "") << type.name << ' ' << bars;
      }
    }
  }
}

TEST_F(ChartTest, BadUsageIsOneLineAndLeavesFilesAlone) {
  struct Fault {
    std::vector<std::string> arguments;
    int exitCode;
    const char *message;
  };
  const std::string old = File("old.svg", "old");
  const std::string bars = "date,close\n20240102,1\n20240103,2\n";
  for (const Fault &fault : std::vector<Fault>{
           {{}, 2, "--type is required"},
           {{"--type", "heikin"}, 2, "--type"},
           {{"--type", "kagi", "--param", "1", "2"}, 2, "expected at most 1 for kagi (width), found 2"},
           {{"--type", "candlevolume", "--param", "1"}, 2, "expected at most 0 for candlevolume, found 1"},
           {{"--type", "threeline", "--param", "3", "99"}, 2, "expected at most 1 for threeline (lines)"},
           {{"--type", "pnf", "--param", "2.5"},
            2,
            "reversal: expected a whole number of 0 or more, found \"2.5\""},
           {{"--type", "pnf", "--param", "3", "-1"}, 2, "box: expected a number of 0 or more, found \"-1\""},
           {{"--type", "vap", "--param", "1"}, 2, "bands: expected a whole number of 2 or more, found \"1\""},
           {{"--type", "renko", "--param", "abc"}, 2, "found \"abc\""},
           {{"--type", "renko", "--tick", "nan"}, 2, "--tick: expected a number of 0 or more"},
           {{"--type", "renko", "--out", old}, 2, "names the same file as --out"},
           {{"--type", "vap"}, 1, "expected a column volume (거래량), which the chart vap is made of"},
       }) {
    std::vector<std::string> arguments = {"chart", "--bars", "-", "--svg", old};
    arguments.insert(arguments.end(), fault.arguments.begin(), fault.arguments.end());
    const ToolResult result = Run(arguments, bars);
    EXPECT_EQ(result.exitCode, fault.exitCode) << result.err;
    EXPECT_NE(result.err.find(fault.message), std::string::npos) << result.err;
    EXPECT_EQ(Count(result.err, "\n"), 1U) << result.err;
    EXPECT_EQ(result.out, "");
  }
  EXPECT_EQ(Content("old.svg"), "old");
  EXPECT_EQ(Files(), std::vector<std::string>{"old.svg"});
}

}  // namespace

}  // namespace trovenu::tests
