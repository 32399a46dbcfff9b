#include "trovenu/formula/postfix/operations.h"

#include <array>

#include "trovenu/formula/functions/event_counters.h"
#include "trovenu/formula/functions/extremes.h"
#include "trovenu/formula/messages.h"
#include "trovenu/formula/postfix/stack.h"

namespace trovenu {
namespace {

using Moving = void (SVector::*)(const SVector &source, int n);

SVector Filled(Moving moving, const SVector &source, int n) {
  SVector result;
  (result.*moving)(source, n);
  return result;
}

// A period below 1 is no error here: the window then has no valid bar.
template <Moving kWindow>
Operand WindowRule(Call &call) {
  return Filled(kWindow, call.X(0), call.N(1));
}

// Without a period it runs over the bars of close, also where the argument has another size.
template <Moving kWindow, Moving kGrowing>
Operand WindowOrGrowingRule(Call &call) {
  if (call.Count() > 1) return WindowRule<kWindow>(call);
  return Filled(kGrowing, call.X(0), call.Bound(Column::Close).GetSize());
}

using Fold = void (*)(SVector &, const SVector &);

// Begins with the last argument. The direct path, which reads them one by one, begins with the first.
template <Fold kFold>
Operand FoldRule(Call &call) {
  const int last = call.Count() - 1;
  for (int i = last - 1; i >= 0; --i) kFold(call.Own(last), call.X(i));
  return call.Take(last);
}

// Required: three arguments, of which the last one counts.
Operand BarsSinceRule(Call &call) { return BarsSince(call.X(2)); }

constexpr int kFunctionPrecedence = 8;
constexpr int kAnyNumber = kStackItems;

constexpr Operation Item(int code, const char *mnemonic, int type, int precedence) {
  return {code,  mnemonic, precedence, type, FunctionId::None, FunctionId::None, 0, -1,
          false, nullptr,  nullptr,    -1,   Differs::Nowhere};
}

constexpr Operation Operator(int code, const char *mnemonic, int precedence) {
  return Item(code, mnemonic, kOperatorType, precedence);
}

// `from` to `to` arguments.
constexpr Operation Called(int code, FunctionId function, int from, int to) {
  Operation row = Item(code, nullptr, kFunctionType, kFunctionPrecedence);
  row.function = function;
  row.least = from;
  row.most = to;
  return row;
}

// One more argument shifts the result.
constexpr Operation Lagged(Operation row) {
  ++row.most;
  row.lagged = true;
  return row;
}

constexpr Operation Own(Operation row, Rule own, Differs differs = Differs::Nowhere) {
  row.own = own;
  row.differs = differs;
  return row;
}

constexpr Operation Period(Operation row, int period, const char *badPeriod = nullptr) {
  row.period = period;
  row.badPeriod = badPeriod;
  return row;
}

constexpr Operation Math(int code, FunctionId function) { return Called(code, function, 1, 1); }

template <Moving kWindow, Moving kGrowing>
constexpr Operation Average(int code, FunctionId function) {
  return Own(Period(Lagged(Called(code, function, 1, 2)), 1), WindowOrGrowingRule<kWindow, kGrowing>,
             Differs::Growing);
}

template <Moving kWindow>
constexpr Operation Extreme(int code, FunctionId function) {
  return Own(Period(Lagged(Called(code, function, 2, 2)), 1), WindowRule<kWindow>, Differs::PeriodOne);
}

// Compiled, and passed over when the program runs.
constexpr Operation Compressed(int code, FunctionId function) {
  Operation row = Item(code, nullptr, kNoType, 1);
  row.function = function;
  return row;
}

constexpr Operation User(int number) {
  // Required: a program can call the first four of a list.
  return Called(kFirstUserCode + number, FunctionId::None, 0, number < kCallableFunctions ? kAnyNumber : -1);
}

constexpr Operation Also(Operation row, FunctionId alias) {
  row.alias = alias;
  return row;
}

constexpr Operation Different(Operation row, Differs differs) {
  row.differs = differs;
  return row;
}

// Row i has the code i.
constexpr Operation kOperations[] = {
    Item(kNameCode, nullptr, kNameType, kFunctionPrecedence),
    Item(kNumberCode, "NUMBER", kNumberType, kFunctionPrecedence),
    Item(2, nullptr, kFunctionType, kFunctionPrecedence),
    Item(3, nullptr, 3, 1),
    Item(4, nullptr, 4, 1),
    Item(5, nullptr, kNoType, 1),
    Item(kOpenCode, "OPLP", kNoType, 9),
    Item(7, nullptr, kNoType, 10),
    Operator(kPlusSignCode, "UPLUS", 7),
    Operator(kMinusSignCode, "UMINUS", 7),
    Operator(kNotCode, "OPNOT", 7),
    Operator(kPlusCode, "PLUS", 5),
    Operator(kMinusCode, "MINUS", 5),
    Operator(kMultiplyCode, "MUL", 6),
    Operator(kDivideCode, "DIV", 6),
    Operator(kModCode, "MOD", 6),
    Operator(kLessCode, "OPLT", 4),
    Operator(kLessEqualCode, "OPLE", 4),
    Operator(kGreaterCode, "OPGT", 4),
    Operator(kGreaterEqualCode, "OPGE", 4),
    Operator(kEqualCode, "OPEQ", 4),
    Operator(kNotEqualCode, "OPNEQ", 4),
    Operator(kAndCode, "OPAND", 3),
    Operator(kOrCode, "OPOR", 3),
    Operator(kAssignCode, "OPASSIGN", 2),
    Item(kCommaCode, nullptr, kNoType, 1),
    Math(26, FunctionId::Abs),
    Math(27, FunctionId::Log),
    Math(28, FunctionId::Log10),
    Math(29, FunctionId::Sqrt),
    Math(30, FunctionId::Sin),
    Math(31, FunctionId::Cos),
    Math(32, FunctionId::Tan),
    Math(33, FunctionId::Asin),
    Math(34, FunctionId::Acos),
    Math(35, FunctionId::Atan),
    Math(36, FunctionId::Sinh),
    Math(37, FunctionId::Cosh),
    Math(38, FunctionId::Tanh),
    // Required: the number of arguments counts for nothing, since that of `^` is another call's.
    Different(Called(kPowerCode, FunctionId::Pow, 0, kAnyNumber), Differs::InPlace),
    Compressed(40, FunctionId::CompressClose),
    Compressed(41, FunctionId::CompressOpen),
    Compressed(42, FunctionId::CompressHigh),
    Compressed(43, FunctionId::CompressLow),
    Compressed(44, FunctionId::CompressVolume),
    Compressed(45, FunctionId::CompressDate),
    [] {
      Operation row = Called(kLagCode, FunctionId::None, 1, 1);
      row.mnemonic = "PREV";
      return row;
    }(),
    Average<&SVector::CalcSum, &SVector::CalcSumCum>(47, FunctionId::Sum),
    Average<&SVector::CalcAvg, &SVector::CalcAvgCum>(48, FunctionId::Avg),
    Extreme<&SVector::CalcLowest>(49, FunctionId::Lowest),
    Extreme<&SVector::CalcHighest>(50, FunctionId::Highest),
    Called(51, FunctionId::If, 3, 3),
    Average<&SVector::CalcESum, &SVector::CalcESumCum>(52, FunctionId::ESum),
    Average<&SVector::CalcEAvg, &SVector::CalcEAvgCum>(53, FunctionId::EAvg),
    Average<&SVector::CalcWAvg, &SVector::CalcWAvgCum>(54, FunctionId::WAvg),
    Lagged(Called(55, FunctionId::Stdev, 2, 2)),
    Period(Called(56, FunctionId::HighestSince, 3, 3), 0, messages::kHighestSinceCount),
    // Required: it names the other function.
    Period(Called(57, FunctionId::LowestSince, 3, 3), 0, messages::kHighestSinceCount),
    Own(Called(58, FunctionId::Min, 1, kAnyNumber), FoldRule<FoldMin>, Differs::Order),
    Own(Called(59, FunctionId::Max, 1, kAnyNumber), FoldRule<FoldMax>, Differs::Order),
    Different(Period(Called(60, FunctionId::Shift, 2, 2), 1, messages::kPeriodTooLarge), Differs::Distance),
    Called(61, FunctionId::Ref, 2, 2),
    Called(62, FunctionId::CrossDown, 2, 2),
    Called(63, FunctionId::CrossUp, 2, 2),
    Called(64, FunctionId::SwingHigh, 4, 4),
    Called(65, FunctionId::SwingLow, 4, 4),
    Period(Called(66, FunctionId::ValueWhen, 3, 3), 0, messages::kValueWhenCount),
    Own(Called(67, FunctionId::BarsSince, 3, 3), BarsSinceRule),
    Period(Lagged(Called(68, FunctionId::Cci, 1, 1)), 0, messages::kPositiveInteger),
    Called(69, FunctionId::Nvi, 1, 1),
    Called(70, FunctionId::Pvi, 1, 1),
    Called(71, FunctionId::Ad, 0, 0),
    // Required: three arguments, though it reads none of them.
    Called(72, FunctionId::Pvt, 3, 3),
    Period(Lagged(Called(73, FunctionId::LinearRegressionValue, 3, 3)), 1, messages::kPositiveInteger),
    Period(Lagged(Called(74, FunctionId::LinearRegressionSlope, 2, 2)), 1, messages::kPositiveInteger),
    Period(Lagged(Called(75, FunctionId::Correlation, 3, 3)), 2, messages::kPositiveInteger),
    Period(Lagged(Called(76, FunctionId::RSquared, 2, 2)), 1, messages::kPositiveInteger),
    Called(77, FunctionId::ZigZag, 1, 1),
    // Required: one code for both, which runs on highs and lows.
    Also(Lagged(Called(78, FunctionId::Sar, 2, 2)), FunctionId::CSar),
    Called(79, FunctionId::None, 0, -1),
    User(0),
    User(1),
    User(2),
    User(3),
    User(4),
    User(5),
    User(6),
    User(7),
    User(8),
    User(9),
};

static_assert([] {
  for (std::size_t i = 0; i < std::size(kOperations); ++i) {
    const Operation &row = kOperations[i];
    if (row.code != static_cast<int>(i)) return false;
    if (row.type <= kFunctionType && row.precedence != kFunctionPrecedence) return false;
  }
  return std::size(kOperations) == kLastUserCode + 1;
}());

constexpr auto kOfFunction = [] {
  std::array<unsigned char, kFunctionCount> codes{};
  for (const Operation &row : kOperations) {
    codes[static_cast<std::size_t>(row.function)] = static_cast<unsigned char>(row.code);
    codes[static_cast<std::size_t>(row.alias)] = static_cast<unsigned char>(row.code);
  }
  codes[static_cast<std::size_t>(FunctionId::None)] = 0;
  return codes;
}();

long long WholeNumber(double date) {
  const double x = date + 0.0001;
  return x > -9e18 && x < 9e18 ? static_cast<long long>(x) : 0;
}

// Required: what a program takes for the date of a bar. It fits no date number.
double ProgramDate(double date) { return static_cast<double>(WholeNumber(date) % 1000000 / 10000); }

// Required: the last six digits, also of a plain date.
double ProgramTime(double date) { return static_cast<double>(WholeNumber(date) % 1000000); }

constexpr DataOperand kDataOperands[] = {
    {FunctionId::Close, Column::Close, nullptr},   {FunctionId::Open, Column::Open, nullptr},
    {FunctionId::High, Column::High, nullptr},     {FunctionId::Low, Column::Low, nullptr},
    {FunctionId::Volume, Column::Volume, nullptr}, {FunctionId::OpenInterest, Column::OpenInterest, nullptr},
    {FunctionId::Amount, Column::Amount, nullptr}, {FunctionId::Date, Column::Date, ProgramDate},
    {FunctionId::Time, Column::Date, ProgramTime},
};

}  // namespace

const Operation *FindOperation(int code) {
  return code >= 0 && code <= kLastUserCode ? &kOperations[code] : nullptr;
}

const Operation *FindOperation(FunctionId function) {
  const int code = kOfFunction[static_cast<std::size_t>(function)];
  return code != 0 ? &kOperations[code] : nullptr;
}

const DataOperand *FindDataOperand(FunctionId function) {
  for (const DataOperand &operand : kDataOperands) {
    if (operand.function == function) return &operand;
  }
  return nullptr;
}

}  // namespace trovenu
