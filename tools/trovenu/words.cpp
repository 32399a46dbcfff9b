#include <algorithm>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "tools/trovenu/command.h"
#include "tools/trovenu/terminal_text.h"
#include "trovenu/formula/function_table.h"
#include "trovenu/formula/words.h"
#include "trovenu/platform/code_page.h"

namespace trovenu::tool {

namespace {

struct Options {
  FormatOption format;
  std::string out;
};

struct Meaning {
  FunctionId id;
  const char *arguments;
  const char *help;
};

// Words that the reader of formulas takes itself and that therefore have no row in the function table.
constexpr Meaning kMeanings[] = {
    {FunctionId::And, "a and b", "1 where both are true; also &&"},
    {FunctionId::Or, "a or b", "1 where one of them is true; also ||"},
    {FunctionId::Not, "not a", "1 where a is 0; also !"},
    {FunctionId::MethodSimple, "", "method of ma: simple average"},
    {FunctionId::MethodExponential, "", "method of ma: exponential average"},
    {FunctionId::MethodWeighted, "", "method of ma: weighted average"},
    {FunctionId::MethodGeometric, "", "method of ma: geometric average"},
    {FunctionId::MethodHarmonic, "", "method of ma: harmonic average"},
    {FunctionId::UnitHour, "", "unit of the Compress functions: hours"},
    {FunctionId::UnitDay, "", "unit of the Compress functions: days"},
    {FunctionId::UnitMonth, "", "unit of the Compress functions: months"},
    {FunctionId::UnitYear, "", "unit of the Compress functions: years"},
};

Meaning MeaningOf(FunctionId id) {
  if (const Function *function = FindFunction(id)) return {id, function->arguments, function->help};
  const auto *known =
      std::find_if(std::begin(kMeanings), std::end(kMeanings), [&](const Meaning &m) { return m.id == id; });
  return known == std::end(kMeanings) ? Meaning{id, "", "reserved, has no calculation"} : *known;
}

bool IsKorean(const char *text) {
  return std::any_of(text, text + std::string_view(text).size(),
                     [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
}

// All spellings of what a word stands for.
struct Entry {
  WordFamily family;
  FunctionId function;
  std::vector<std::string> english;
  std::vector<std::string> korean;
};

std::vector<Entry> ListEntries() {
  std::vector<Entry> entries;
  for (const Word &word : Words()) {
    // Formulas can't reach these.
    if (word.family == WordFamily::UnlistedVector) continue;
    auto entry = std::find_if(entries.begin(), entries.end(), [&](const Entry &e) {
      return e.family == word.family && e.function == word.function && word.function != FunctionId::None;
    });
    if (entry == entries.end()) entry = entries.insert(entries.end(), {word.family, word.function, {}, {}});
    std::vector<std::string> &spellings = IsKorean(word.text) ? entry->korean : entry->english;
    spellings.push_back(Utf8FromCodePage(word.text, nullptr));
  }
  return entries;
}

int Run(const Options &options) {
  TableColumn::Lists english;
  TableColumn::Lists korean;
  TableColumn::Texts arguments;
  TableColumn::Texts meanings;
  for (Entry &entry : ListEntries()) {
    const Meaning meaning = MeaningOf(entry.function);
    english.values.push_back(std::move(entry.english));
    korean.values.push_back(std::move(entry.korean));
    arguments.values.emplace_back(meaning.arguments);
    meanings.values.emplace_back(meaning.help);
  }
  Table table;
  table.columns.push_back({"word", std::move(english)});
  table.columns.push_back({"korean", std::move(korean)});
  table.columns.push_back({"arguments", std::move(arguments)});
  table.columns.push_back({"meaning", std::move(meanings)});
  WriteResult(table, options.format, options.out);
  return kDone;
}

}  // namespace

Command AddWords(CLI::App &tool) {
  CLI::App *command = tool.add_subcommand("words", "List the words of the formula language");
  const auto options = std::make_shared<Options>();
  options->format.Add(*command, {Format::Table, Format::Markdown, Format::Json});
  AddOutOption(*command, options->out);
  command->footer(
      "Words of one row mean the same; the case of ASCII letters has no meaning. The functions down to\n"
      "rsi take one more argument, a shift by that many bars; a data word takes it in parentheses: c(1).");
  return {command, [options] { return Run(*options); }};
}

}  // namespace trovenu::tool
