#include "trovenu/indicator/starter_set.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include "trovenu/indicator/formula_fields.h"
#include "trovenu/indicator/formula_tables.h"
#include "trovenu/platform/platform.h"
#include "trovenu/support/index_paths.h"
#include "trovenu/support/korean.h"

namespace trovenu {
namespace {

struct KindWord {
  std::string_view word;
  int kind;
};

constexpr KindWord kKinds[] = {
    {"indicator", kIndicatorIndex}, {"condition", kConditionIndex}, {"pattern", kPatternIndex},
    {"system", kSystemIndex},       {"function", kFunctionIndex},   {"candle", kCandleIndex},
};

// The word that gives a formula, the kinds it is for and the slot it fills.
struct SlotWord {
  std::string_view word;
  int kind;
  int slot;
};

constexpr SlotWord kSlots[] = {
    {"formula", kConditionIndex, 0}, {"formula", kFunctionIndex, 0},  {"formula", kCandleIndex, 0},
    {"bull", kPatternIndex, 0},      {"bear", kPatternIndex, 1},      {"open-long", kSystemIndex, 0},
    {"close-long", kSystemIndex, 1}, {"open-short", kSystemIndex, 2}, {"close-short", kSystemIndex, 3},
};

constexpr StarterField kFields[] = {
    {"show", "ShowLine", true},
    {"form", "LineType", true},
    {"width", "LineWidth", true},
    {"style", "LineStyle", true},
    {"color", "LineColor", true},
    {"compare", "LineCompMethod", true},
    {"up-color", "LineUpColor", true},
    {"up-value", "LineUpValue", true},
    {"down-color", "LineDnColor", true},
    {"down-value", "LineDnValue", true},
    {"base-color", "YValueColor", false},
    {"base-style", "YValueStyle", false},
    {"base-width", "YValueWidth", false},
    {"scale", "MinMaxY", false},
    {"least", "UserMin", false},
    {"most", "UserMax", false},
    {"log", "LogY", false},
    {"invert", "InvertY", false},
    {"period", "Period", false},
    {"password", "Password", false},
};

constexpr bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r'; }

std::string_view Trimmed(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

// Takes the first word off a text.
std::string_view TakeWord(std::string_view *text) {
  const auto end =
      static_cast<std::size_t>(std::find_if(text->begin(), text->end(), IsBlank) - text->begin());
  const std::string_view word = text->substr(0, end);
  *text = Trimmed(text->substr(end));
  return word;
}

SString Text(std::string_view text) { return SString(text); }

// One line of the text, with those that continue it.
struct Statement {
  int line;
  std::string word;
  std::string value;
};

class StarterReader {
 public:
  bool Read(std::string_view text) {
    for (const Statement &statement : Split(text)) {
      line_ = statement.line;
      const auto *const kind =
          std::ranges::find_if(kKinds, [&](const KindWord &k) { return k.word == statement.word; });
      if (kind != std::end(kKinds)) {
        if (!Finish() || !Begin(kind->kind, statement)) return false;
      } else if (entries_.empty()) {
        return Fail("an entry begins with its kind, such as \"indicator\"");
      } else if (!Add(statement.word, statement.value)) {
        return false;
      }
    }
    return Finish();
  }

  std::vector<SIndex> &Entries() { return entries_; }
  const StarterFault &Fault() const { return fault_; }

 private:
  static std::vector<Statement> Split(std::string_view text) {
    std::vector<Statement> statements;
    for (int number = 1; !text.empty(); ++number) {
      const std::size_t end = std::min(text.find('\n'), text.size());
      const std::string_view line = text.substr(0, end);
      text.remove_prefix(std::min(end + 1, text.size()));
      std::string_view rest = Trimmed(line);
      if (rest.empty() || line.front() == '#') continue;
      if (IsBlank(line.front()) && !statements.empty()) {
        statements.back().value += ' ';
        statements.back().value += rest;
        continue;
      }
      const std::string_view word = TakeWord(&rest);
      statements.push_back({number, std::string(word), std::string(rest)});
    }
    return statements;
  }

  bool Fail(const std::string &message) {
    fault_ = {line_, message};
    return false;
  }

  bool Begin(int kind, const Statement &statement) {
    if (statement.value.empty()) return Fail("a name is expected behind \"" + statement.word + "\"");
    const bool isThere = std::ranges::any_of(entries_, [&](const SIndex &entry) {
      return entry.IndexType == kind && entry.IndexName.View() == statement.value;
    });
    if (isThere) return Fail("this name is there already");
    entries_.emplace_back(statement.value.c_str(), kind);
    korean_.clear();
    english_.clear();
    about_.clear();
    source_.clear();
    variables_ = 0;
    lines_ = 0;
    slot_ = -1;
    beginLine_ = line_;
    return true;
  }

  // Ends the entry that is being read.
  bool Finish() {
    if (entries_.empty()) return true;
    SIndex &entry = entries_.back();
    const bool hasFormula =
        std::ranges::any_of(entry.Expression, [](const SString &text) { return !text.IsEmpty(); });
    if (!hasFormula) {
      line_ = beginLine_;
      return Fail("the entry has no formula");
    }
    std::string text = korean_;
    const auto add = [&text](const std::string &more) { text += (text.empty() ? "" : " | ") + more; };
    if (!english_.empty()) add(english_ + (about_.empty() ? "" : ": " + about_));
    if (!source_.empty()) add("출처: "_kr + source_);
    entry.Description = Text(text);
    return true;
  }

  bool Add(const std::string &word, const std::string &value) {
    if (value.empty()) return Fail("a value is expected behind \"" + word + "\"");
    if (word == "korean") return Take(&korean_, value);
    if (word == "english") return Take(&english_, value);
    if (word == "about") return Take(&about_, value);
    if (word == "source") return Take(&source_, value);
    if (word == "variable") return AddVariable(value);
    SIndex &entry = entries_.back();
    if (entry.IndexType == kIndicatorIndex) {
      if (word == "line") return BeginLine(value);
      if (word == "base") return AddBaseLines(value);
      if (word == "formula") return AddFormula(slot_, value);
    }
    const auto *const slot = std::ranges::find_if(
        kSlots, [&](const SlotWord &s) { return s.kind == entry.IndexType && s.word == word; });
    if (slot != std::end(kSlots)) return AddFormula(slot->slot, value);
    const auto *const field =
        std::ranges::find_if(kFields, [&](const StarterField &f) { return f.word == word; });
    if (field != std::end(kFields)) return SetField(*field, value);
    return FailPlace(word);
  }

  bool FailPlace(const std::string &word) {
    return Fail("\"" + word + "\" has no place in an entry of this kind");
  }

  static bool Take(std::string *text, const std::string &value) {
    *text = value;
    return true;
  }

  bool AddVariable(std::string_view value) {
    if (variables_ == kVariables) return Fail("there are ten variables at most");
    SIndex &entry = entries_.back();
    const std::array<SString *, 5> texts = {entry.VarName, entry.VarValue, entry.VarStart, entry.VarEnd,
                                            entry.VarIncrement};
    const bool hasRange = entry.IndexType == kSystemIndex;
    const bool hasValue = entry.IndexType != kFunctionIndex;
    const std::size_t wanted = hasRange ? 5 : hasValue ? 2 : 1;
    for (std::size_t i = 0; i < wanted; ++i) {
      const std::string_view word = TakeWord(&value);
      if (word.empty()) return Fail("the variable lacks its value, or start, end and step of a system's");
      texts[i][variables_] = Text(word);
    }
    if (!value.empty()) return Fail("something stands behind the variable");
    ++variables_;
    return true;
  }

  bool BeginLine(const std::string &name) {
    if (lines_ == kExpressions) return Fail("there are five lines at most");
    slot_ = lines_++;
    entries_.back().ExpName[slot_] = Text(name);
    return true;
  }

  bool AddFormula(int slot, const std::string &formula) {
    if (slot < 0) return Fail("\"line\" and a name come before a formula");
    if (formula.size() >= kExpressionBytes) return Fail("the formula is too long");
    SString &expression = entries_.back().Expression[slot];
    if (!expression.IsEmpty()) return Fail("there is a formula already");
    expression = Text(formula);
    slot_ = slot;
    return true;
  }

  bool AddBaseLines(std::string_view values) {
    for (SString &base : entries_.back().YValue) {
      if (!values.empty()) base = Text(TakeWord(&values));
    }
    return values.empty() || Fail("there are five base lines at most");
  }

  bool SetField(const StarterField &word, const std::string &value) {
    SIndex &entry = entries_.back();
    const FormulaField *const field = FindStarterField(word, entry.IndexType, std::max(slot_, 0));
    if (field == nullptr) return FailPlace(word.word);
    if (word.isOfFormula && slot_ < 0) return Fail("a line or a formula comes before its look");
    if (!field->Accepts(Text(value))) {
      return Fail(
          "a whole number is expected; 0 or 1 for \"log\" and \"invert\"; any for \"least\" and \"most\"");
    }
    field->Set(entry, Text(value));
    return true;
  }

  std::vector<SIndex> entries_;
  StarterFault fault_;
  int line_ = 0;
  // Of the entry that is being read.
  int beginLine_ = 0;
  int variables_ = 0;
  int lines_ = 0;
  // The line or formula that came last, or -1.
  int slot_ = -1;
  std::string korean_;
  std::string english_;
  std::string about_;
  std::string source_;
};

enum WriteMode : int { kUpdate = 0, kAppend = 1 };
constexpr int kToSystem = 1;

bool HasCandleTable(const SString &path) {
  return FileExist(path.c_str()) != 0 || CreateFormulaTable(kCandleIndex, path.c_str());
}

}  // namespace

std::span<const StarterField> StarterFields() { return kFields; }

const FormulaField *FindStarterField(const StarterField &word, int kind, int slot) {
  const std::string name = word.field + (word.isOfFormula ? std::to_string(slot) : "");
  const std::vector<FormulaField> &fields = FormulaFields(kind);
  const auto found = std::ranges::find_if(
      fields, [&](const FormulaField &field) { return field.IsWritten() && field.Name() == name; });
  return found != fields.end() ? &*found : nullptr;
}

bool ParseStarterSet(std::string_view text, std::vector<SIndex> *entries, StarterFault *fault) {
  StarterReader reader;
  const bool good = reader.Read(text);
  if (fault != nullptr) *fault = reader.Fault();
  if (good) std::ranges::move(reader.Entries(), std::back_inserter(*entries));
  return good;
}

bool WriteStarterEntry(SIndex &entry) {
  if (entry.IndexType == kCandleIndex) {
    const SString path = GetCandleTablePath();
    return HasCandleTable(path) && WriteCandlePattern(path.c_str(), entry);
  }
  const char *const name = entry.IndexName.c_str();
  return CreateFormulaTables(entry.IndexType) && (entry.WriteExpression(name, kUpdate, kToSystem) != 0 ||
                                                  entry.WriteExpression(name, kAppend, kToSystem) != 0);
}

}  // namespace trovenu
