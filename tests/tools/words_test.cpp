#include "tests/tools/tool_runner.h"

namespace trovenu::tests {

namespace {

class WordsTest : public ToolTest {
 protected:
  std::string List(const char *format) const {
    const ToolResult result = Run({"words", "--format", format});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    return result.out;
  }
};

bool Has(const std::string &text, const char *part) { return text.find(part) != std::string::npos; }

TEST_F(WordsTest, GroupsTheSpellingsOfAMeaning) {
  const std::string json = List("json");
  EXPECT_TRUE(
      Has(json, "\n{\"word\":[\"c\",\"close\"],\"korean\":[\"종가\"],\"arguments\":\"\",\"meaning\":\""));
  EXPECT_TRUE(Has(json, "{\"word\":[\"and\"],\"korean\":[\"그리고\"],"));
  EXPECT_TRUE(Has(json, "{\"word\":[\"day\"],\"korean\":[\"일\"],"));
  EXPECT_FALSE(Has(json, "\"meaning\":\"\""));
  const std::string markdown = List("markdown");
  EXPECT_TRUE(markdown.starts_with("| word | korean | arguments | meaning |\n| --- | --- | --- | --- |\n"));
  EXPECT_TRUE(Has(markdown, "\n| c, close | 종가 |"));
  EXPECT_TRUE(Has(markdown, "\\|\\|"));
}

TEST_F(WordsTest, AlignsKoreanAsTwoColumns) {
  const std::string table = List("table");
  const auto columnsBefore = [&](const char *word, const char *meaning) {
    const size_t begin = table.find(std::string("\n") + word) + 1;
    const std::string line = table.substr(begin, table.find('\n', begin) - begin);
    size_t columns = 0;
    for (const char c : line.substr(0, line.find(meaning))) {
      const auto byte = static_cast<unsigned char>(c);
      // Each Korean character here is three bytes of UTF-8.
      if (byte < 0x80) ++columns;
      if (byte >= 0xE0) columns += 2;
    }
    return columns;
  };
  EXPECT_EQ(columnsBefore("and ", "1 where"), columnsBefore("hour ", "unit of"));
  EXPECT_EQ(columnsBefore("and ", "1 where"), columnsBefore("word ", "meaning"));
}

TEST_F(WordsTest, OffersItsOwnFormats) {
  const ToolResult result = Run({"words", "--format", "csv"});
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_EQ(result.err, "trovenu: --format: csv not in {table,markdown,json} (see trovenu words --help)\n");
}

}  // namespace

}  // namespace trovenu::tests
