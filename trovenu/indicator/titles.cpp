#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>

#include "trovenu/indicator/index.h"
#include "trovenu/indicator/line_names.h"
#include "trovenu/platform/code_page_text.h"
#include "trovenu/price/price_data_list.h"

namespace trovenu {
namespace {

// A kind of price title, beside that of series fed from outside.
constexpr int kPriceTitleIndex = 9;

SString Text(const std::string &text) { return SString(std::string_view(text)); }

// Names of the lines of a pair or a system: the first line of each side bears the name of the object.
SString SideName(const SIndex &index, int line, const char *const (&names)[kExpressions]) {
  if (index.Expression[line].IsEmpty()) return {};
  const bool isSystem = index.IndexType == kSystemIndex;
  const bool bearsName = line == 0 || (isSystem && line == 2 && index.Expression[0].IsEmpty());
  return bearsName ? index.IndexName + " " + names[line] : SString(names[line]);
}

SString NameOf(const SIndex &index, int line, const char *const (&systemNames)[kExpressions]) {
  switch (index.IndexType) {
    case kIndicatorIndex:
      if (!index.ExpName[line].IsEmpty()) return index.GetExpTitleName(line);
      return index.IndexName + "[" + SString(line) + "]";
    case kPatternIndex:
      return SideName(index, line, kPatternNames);
    case kSystemIndex:
      return SideName(index, line, systemNames);
    case kEquityIndex:
      return line == 0 ? kEquityName : "";
    case kFedIndicatorIndex:
      return index.ExpName[line];
    case kConditionIndex:
    case kCandleIndex:
      return index.IndexName;
    default:
      return {};
  }
}

// Position of the variable of that name, or -1. The list of variables ends at the first one without a name.
int FindVariable(const SIndex &index, const std::string &name) {
  for (int i = 0; i < kVariables && !index.VarName[i].IsEmpty(); ++i) {
    if (EqualNoCase(index.VarName[i].c_str(), name.c_str())) return i;
  }
  return -1;
}

// The list of a call, "c,Period", with the values of its variables.
std::string WithValues(const SIndex &index, std::string_view list) {
  std::string text;
  for (std::size_t begin = 0; begin <= list.size();) {
    const std::size_t end = std::min(list.find(',', begin), list.size());
    const std::string item(list.substr(begin, end - begin));
    const auto *const name = std::find_if(
        std::begin(index.VarName), std::end(index.VarName),
        [&](const SString &varName) { return !item.empty() && EqualNoCase(varName.c_str(), item.c_str()); });
    if (begin > 0) text += ',';
    text += name == std::end(index.VarName) ? item : index.VarValue[name - index.VarName].c_str();
    begin = end + 1;
  }
  return text;
}

SString ConditionName(const SIndex &index, int line) {
  const std::string_view name = index.ExpName[line].View();
  if (name.empty()) return index.IndexName;
  const std::size_t open = name.find('(');
  const std::size_t close = open == name.npos ? name.npos : name.find(')', open);
  if (close == name.npos) return index.ExpName[line];
  std::string text(name.substr(0, open + 1));
  text += WithValues(index, name.substr(open + 1, close - open - 1));
  text += name.substr(close);
  return Text(text);
}

// What of a chart type's options a price name shows.
struct Options {
  enum Shown { Never, IfOffered, Always };

  Shown first;
  Shown second;
};

constexpr Options kNoOptions = {Options::Never, Options::Never};
constexpr Options kBothOptions = {Options::IfOffered, Options::IfOffered};

Options OptionsOf(int chartType) {
  switch (chartType) {
    case kVolumeAtPriceChart:
    case kPointAndFigureChart:
    case kSwingChart:
    case kKagiChart:
    case kRenkoChart:
    case kCounterClockChart:
    case kZigZagChart:
      return kBothOptions;
    case kThreeLineBreakChart:
      return {Options::IfOffered, Options::Always};
    case kMarketProfileChart:
      return {Options::IfOffered, Options::Never};
    default:
      return kNoOptions;
  }
}

SString OptionText(Options::Shown shown, int offered, const SString &name, const SString &value) {
  if (shown == Options::Never || (shown == Options::IfOffered && offered == 0)) return {};
  return name + "(" + value + ") ";
}

}  // namespace

SString SIndex::GetExpTitleName(int line) const {
  if (!IsLine(line)) return {};
  const std::string_view name = ExpName[line].View();
  std::string text;
  std::size_t at = 0;
  for (;;) {
    const std::size_t first = name.find('%', at);
    const std::size_t second = first == name.npos ? name.npos : name.find('%', first + 1);
    if (second == name.npos) break;
    text += name.substr(at, first - at);
    const std::string word(name.substr(first + 1, second - first - 1));
    const int variable = FindVariable(*this, word);
    if (word.empty()) {
      text += '%';
    } else if (variable >= 0) {
      text += VarValue[variable].View();
    } else {
      text += name.substr(first, second + 1 - first);
    }
    at = second + 1;
  }
  text += name.substr(at);
  return Text(text);
}

SString SIndex::GetExpName(int line) const {
  return IsLine(line) ? NameOf(*this, line, kSignalNames) : SString();
}

SString SIndex::GetExpNameWithVariable(int line) const {
  if (!IsLine(line)) return {};
  if (IndexType == kIndicatorIndex && Expression[line].IsEmpty()) return {};
  if (IndexType == kConditionIndex) return ConditionName(*this, line);
  return NameOf(*this, line, kOrderNames);
}

SString SIndex::GetIndexVariable() const {
  SString text;
  for (int i = 0; i < kVariables; ++i) {
    if (VarName[i].IsEmpty()) continue;
    text += text.IsEmpty() ? "(" : ",";
    text += VarValue[i];
  }
  return text.IsEmpty() ? text : text + ")";
}

int SIndex::GetMaxExpNameLength() const {
  int longest = 0;
  for (int line = 0; line < kExpressions; ++line) {
    longest = std::max(longest, GetExpNameWithVariable(line).Length());
  }
  return longest;
}

SString SIndex::GetExpTitle(int showName, int showValue, int showSymbol, int line, int position) const {
  if (!IsLine(line)) return {};
  SString text;
  if (showName != 0) {
    const SPriceData *data = GetCurPriceData();
    if (line == 0 && showSymbol != 0 && IndexType < kFedIndex) {
      text = " " + (data != nullptr ? data->GetSymbolInfo() : SString());
    }
    text += " " + GetExpName(line);
  }
  const SString value = showValue != 0 ? GetExpValue(line, position) : SString();
  if (!value.IsEmpty()) text += text.IsEmpty() ? value : "(" + value + ")";
  const bool isSignal = IndexType >= kConditionIndex && IndexType <= kSystemIndex;
  if (text.IsEmpty()) return isSignal ? GetExpName(line) + " " : text;
  return text + " ";
}

SString SIndex::GetPriceName() const {
  const SPriceData *data = GetCurPriceData();
  if (data == nullptr) return {};
  const SPriceProperty &property = *data->property;
  const int type = property.PriceChartType;
  SString text = data->SymbolName;
  if (text.IsEmpty()) text = PriceChartTypeName(type);
  const Options options = OptionsOf(type);
  if (options.first == Options::Never) return text;
  text += " ";
  text += OptionText(options.first, property.BlName1[type], property.Name1[type], property.Value1[type]);
  text += OptionText(options.second, property.BlName2[type], property.Name2[type], property.Value2[type]);
  return text;
}

SString SIndex::GetPriceTitle(int showName, int showValue, int position) const {
  SString text;
  if (showName != 0) {
    const bool isPrice = IndexType == kPriceTitleIndex || IndexType == kFedIndicatorIndex;
    const SPriceData *data = GetCurPriceData();
    const bool isAlone = data == nullptr || PriceDataList->GetSize() < 2;
    text = " " + (isPrice || isAlone ? GetPriceName() : data->GetSymbolInfo());
  }
  if (showValue != 0) {
    if (!text.IsEmpty()) text += " ";
    text += GetPriceValue(position);
  }
  if (text.IsEmpty()) text = IndexName;
  return text + " ";
}

}  // namespace trovenu
