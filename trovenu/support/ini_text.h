#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace trovenu {

/// INI text: sections with keys and their values. What a person wrote into it survives: comments, blank
/// lines, the order and whatever is not understood. Only the values that are set change, and keys that are
/// new are added behind the last key of their section.
///
/// Any bytes can be stored. Reading never fails: a line that is neither section, key nor comment is kept and
/// stepped over. Of keys that stand twice the first counts. Lines before the first section belong to the
/// section "". docs/formats.md tells the notation.
class IniText {
 public:
  /// Whether names of sections and keys that differ in the case of ASCII letters alone are the same.
  enum class LetterCase { Matters, Ignored };

  explicit IniText(LetterCase letterCase) : letterCase_(letterCase) { Parse({}); }

  /// Replaces the content.
  void Parse(std::string_view text);
  /// The whole text; that which was parsed, if nothing has been set since.
  std::string Text() const;

  /// The value; nothing if there is no such key.
  std::optional<std::string> Find(std::string_view section, std::string_view key) const;
  void Set(std::string_view section, std::string_view key, std::string_view value);

  /// The number in a value. `defaultValue` if there is no such key or its value is no number. A fraction is
  /// dropped, and what is too large counts as the nearest int.
  int GetInt(std::string_view section, std::string_view key, int defaultValue) const;
  /// As `GetInt`. Every double comes back bit for bit, infinities too; NaN as some NaN.
  double GetDouble(std::string_view section, std::string_view key, double defaultValue) const;
  void SetInt(std::string_view section, std::string_view key, int value);
  void SetDouble(std::string_view section, std::string_view key, double value);

  /// Sets every value that `other` has.
  void Merge(const IniText &other);

  bool IsEmpty() const { return places_.empty(); }

 private:
  struct Line {
    std::string text;  // with its line end
    bool isKey = false;
    std::size_t valueAt = 0;  // the place of the value in the text
    std::size_t valueSize = 0;

    std::string Value() const;
  };
  struct Section {
    std::string name;
    std::vector<Line> lines;  // the first one is the head, except in the first section
    std::size_t behindKeys = 0;
  };
  struct Place {
    std::size_t section;
    std::size_t line;
  };

  std::string Folded(std::string_view name) const;
  std::string PlaceName(std::string_view section, std::string_view key) const;
  void AddLine(std::string_view text);
  void AddSection(std::string_view name, std::string head);
  const Line *LineOf(std::string_view section, std::string_view key) const;
  void AddKey(Section &section, std::size_t sectionIndex, std::string_view key, std::string_view value);
  void EndLastLine();

  LetterCase letterCase_;
  std::string mark_;  // what an editor may have put before the text
  std::string lineEnd_;
  std::vector<Section> sections_;
  std::unordered_map<std::string, std::size_t> sectionIndexes_;
  std::unordered_map<std::string, Place> places_;
};

}  // namespace trovenu
