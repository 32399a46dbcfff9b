#include "trovenu/indicator/formula_fields.h"

#include <cmath>
#include <cstring>
#include <limits>
#include <span>
#include <type_traits>
#include <utility>
#include <variant>

#include "trovenu/formula/calc.h"
#include "trovenu/indicator/index.h"
#include "trovenu/support/number_text.h"
#include "trovenu/support/table_reader.h"

namespace trovenu {

struct FormulaColumn {
  using Member = std::variant<int SIndex::*, double SIndex::*, Color SIndex::*, SString SIndex::*,
                              int (SIndex::*)[kExpressions], Color (SIndex::*)[kExpressions],
                              SString (SIndex::*)[kExpressions], SString (SIndex::*)[kVariables]>;
  enum Use : unsigned { Kept = 0, Read = 1, Written = 2, Both = Read | Written };
  // Where the value is anything but its own text.
  enum class Form { Plain, Flag };

  const char *name;
  Member member;
  int width;
  Use use = Both;
  Form form = Form::Plain;
};

namespace {

using I = SIndex;

// Bytes. A formula as long as the longest that can be evaluated has room.
constexpr int kTitle = 80;
constexpr int kVariable = kNameBytes;
constexpr int kValue = 250;
constexpr int kThreshold = 50;
constexpr int kWhole = 12;
constexpr int kDecimal = 24;
constexpr int kFormula = kExpressionBytes;
constexpr int kSecret = 50;
constexpr int kPeriod = 50;
constexpr int kText = 4000;

// Fields that stand together for each of `count` elements: VarName0, VarValue0, VarName1 and so on. Those of
// 0 elements stand once and without a number.
struct Group {
  int count;
  FormulaColumn columns[5];
};

constexpr Group kKey = {0, {{kFormulaKey, &I::IndexName, kTitle, FormulaColumn::Written}}};
constexpr Group kKeyReadBack = {0, {{kFormulaKey, &I::IndexName, kTitle}}};
constexpr Group kEnd = {0, {{"Password", &I::Password, kSecret}, {"Description", &I::Description, kText}}};
constexpr Group kVariables2 = {kVariables,
                               {{"VarName", &I::VarName, kVariable}, {"VarValue", &I::VarValue, kValue}}};

constexpr Group kIndicator[] = {
    kKey,
    kVariables2,
    {kExpressions, {{"ShowLine", &I::BlShowLine, kWhole}}},
    {kExpressions, {{"Expression", &I::Expression, kFormula}}},
    {kExpressions, {{"ExpName", &I::ExpName, kTitle}}},
    {kExpressions, {{"LineType", &I::DisplayType, kWhole}}},
    {kExpressions,
     {{"LineColor", &I::LineColor, kWhole},
      {"LineUpColor", &I::LineUpColor, kWhole},
      {"LineDnColor", &I::LineDnColor, kWhole}}},
    {kExpressions,
     {{"LineUpValue", &I::LineUpValue, kThreshold}, {"LineDnValue", &I::LineDnValue, kThreshold}}},
    {kExpressions,
     {{"LineCompMethod", &I::LineCompMethod, kWhole},
      {"LineStyle", &I::LineStyle, kWhole},
      {"LineWidth", &I::LineWidth, kWhole}}},
    {kExpressions, {{"YValue", &I::YValue, kThreshold}}},
    {0,
     {{"YValueColor", &I::YValueColor, kWhole},
      {"YValueStyle", &I::YValueStyle, kWhole},
      {"YValueWidth", &I::YValueWidth, kWhole},
      {"MinMaxY", &I::MinMaxY, kWhole}}},
    {0, {{"UserMin", &I::UserMin, kDecimal}, {"UserMax", &I::UserMax, kDecimal}}},
    {0,
     {{"LogY", &I::LogY, kWhole, FormulaColumn::Both, FormulaColumn::Form::Flag},
      {"InvertY", &I::InvertY, kWhole, FormulaColumn::Both, FormulaColumn::Form::Flag}}},
    kEnd,
};

constexpr Group kSystem[] = {
    kKey,
    {kVariables,
     {{"VarName", &I::VarName, kVariable},
      {"VarValue", &I::VarValue, kValue},
      {"VarStart", &I::VarStart, kValue},
      {"VarEnd", &I::VarEnd, kValue},
      {"VarIncrement", &I::VarIncrement, kValue}}},
    {4,
     {{"Expression", &I::Expression, kFormula},
      {"LineColor", &I::LineColor, kWhole},
      {"LineType", &I::DisplayType, kWhole},
      {"LineWidth", &I::LineWidth, kWhole}}},
    kEnd,
};

// Required: the ranges of the variables are written and not read back.
constexpr Group kPattern[] = {
    kKey,
    kVariables2,
    {kVariables,
     {{"VarStart", &I::VarStart, kValue, FormulaColumn::Written},
      {"VarEnd", &I::VarEnd, kValue, FormulaColumn::Written},
      {"VarIncrement", &I::VarIncrement, kValue, FormulaColumn::Written}}},
    {2,
     {{"Expression", &I::Expression, kFormula},
      {"LineColor", &I::LineColor, kWhole},
      {"LineType", &I::DisplayType, kWhole},
      {"LineWidth", &I::LineWidth, kWhole}}},
    kEnd,
};

// The values are there for the list of functions, which reads them.
constexpr Group kFunction[] = {
    kKey,
    {kVariables,
     {{"VarName", &I::VarName, kVariable}, {"VarValue", &I::VarValue, kValue, FormulaColumn::Kept}}},
    {1, {{"Expression", &I::Expression, kFormula}}},
    kEnd,
};

constexpr Group kCandle[] = {
    kKey,
    kVariables2,
    {1, {{"Expression", &I::Expression, kFormula}}},
    kEnd,
};

// Required: the style is read and not written, and the name is read back, which no other kind does.
constexpr Group kCondition[] = {
    kKeyReadBack,
    kVariables2,
    {1,
     {{"Expression", &I::Expression, kFormula},
      {"LineType", &I::DisplayType, kWhole},
      {"LineColor", &I::LineColor, kWhole},
      {"LineWidth", &I::LineWidth, kWhole},
      {"LineStyle", &I::LineStyle, kWhole, FormulaColumn::Read}}},
    kEnd,
    {0, {{"Period", &I::Period, kPeriod}}},
};

std::vector<FormulaField> FieldsOf(std::span<const Group> groups) {
  std::vector<FormulaField> fields;
  const auto add = [&fields](const Group &group, int element) {
    for (const FormulaColumn &column : group.columns) {
      if (column.name == nullptr) return;
      const std::string number = group.count > 0 ? std::to_string(element) : "";
      fields.emplace_back(column, column.name + number, element);
    }
  };
  for (const Group &group : groups) {
    for (int i = 0; i == 0 || i < group.count; ++i) add(group, i);
  }
  return fields;
}

// Calls `use` with the element of the member that a field keeps.
template <class Index, class Use>
auto WithElement(const FormulaColumn &column, int element, Index &index, Use use) {
  return std::visit(
      [&](auto member) {
        if constexpr (std::is_array_v<std::remove_reference_t<decltype(index.*member)>>) {
          return use((index.*member)[element]);
        } else {
          return use(index.*member);
        }
      },
      column.member);
}

}  // namespace

FormulaField::FormulaField(const FormulaColumn &column, std::string name, int element)
    : column_(&column), name_(std::move(name)), element_(element) {}

int FormulaField::Width() const { return column_->width; }
bool FormulaField::IsRead() const { return (column_->use & FormulaColumn::Read) != 0; }
bool FormulaField::IsWritten() const { return (column_->use & FormulaColumn::Written) != 0; }

SString FormulaField::Get(const SIndex &index) const {
  const bool isFlag = column_->form == FormulaColumn::Form::Flag;
  return WithElement(*column_, element_, index, [isFlag](const auto &value) {
    if constexpr (std::is_same_v<decltype(value), const int &>)
      return SString(isFlag ? int{value != 0} : value);
    return SString(value);
  });
}

void FormulaField::Set(SIndex &index, const SString &text) const {
  const bool isFlag = column_->form == FormulaColumn::Form::Flag;
  WithElement(*column_, element_, index, [&](auto &value) {
    using Value = std::remove_reference_t<decltype(value)>;
    if constexpr (std::is_same_v<Value, SString>) {
      value = text;
    } else if constexpr (std::is_same_v<Value, double>) {
      value = AnsiStringToFloat(text, value);
    } else if (isFlag) {
      value = AnsiStringToInt(text) == 1 ? 1 : 0;
    } else {
      value = static_cast<Value>(AnsiStringToInt(text, static_cast<long>(value)));
    }
  });
}

bool FormulaField::Accepts(const SString &text) const {
  const double number = AnsiStringToFloat(text, std::numeric_limits<double>::quiet_NaN());
  const bool isFlag = column_->form == FormulaColumn::Form::Flag;
  return std::visit(
      [&](auto member) {
        using Members = std::remove_reference_t<decltype(std::declval<SIndex &>().*member)>;
        using Value = std::remove_extent_t<Members>;
        if constexpr (std::is_same_v<Value, SString>) {
          return true;
        } else if constexpr (std::is_same_v<Value, double>) {
          return !std::isnan(number);
        } else if (isFlag) {
          return number == 0.0 || number == 1.0;
        } else {
          return number == static_cast<double>(AnsiStringToInt(text));
        }
      },
      column_->member);
}

const std::vector<FormulaField> &FormulaFields(int kind) {
  static const std::vector<FormulaField> none;
  static const std::vector<FormulaField> indicator = FieldsOf(kIndicator);
  static const std::vector<FormulaField> condition = FieldsOf(kCondition);
  static const std::vector<FormulaField> pattern = FieldsOf(kPattern);
  static const std::vector<FormulaField> system = FieldsOf(kSystem);
  static const std::vector<FormulaField> function = FieldsOf(kFunction);
  static const std::vector<FormulaField> candle = FieldsOf(kCandle);
  switch (kind) {
    case kIndicatorIndex:
      return indicator;
    case kConditionIndex:
      return condition;
    case kPatternIndex:
      return pattern;
    case kSystemIndex:
      return system;
    case kFunctionIndex:
      return function;
    case kCandleIndex:
      return candle;
    default:
      return none;
  }
}

bool SetFormulaFields(DDB &table, const SIndex &index, int kind, const char *kept) {
  for (const FormulaField &field : FormulaFields(kind)) {
    const char *const name = field.Name().c_str();
    if (!field.IsWritten() || (kept != nullptr && std::strcmp(name, kept) == 0)) continue;
    const SString text = field.Get(index);
    if (table.InsField(name, text.c_str()) != 0 && table.GetStr(name) != text) return false;
  }
  return true;
}

}  // namespace trovenu
