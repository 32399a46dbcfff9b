#include "tests/formula/random_formula.h"

#include <algorithm>
#include <initializer_list>

#include "trovenu/formula/function_table.h"
#include "trovenu/formula/words.h"
#include "trovenu/platform/code_page_text.h"
#include "trovenu/support/korean.h"

namespace trovenu::tests {
namespace {

// The arguments of a call, where S stands for a series, N for a number, P for a period from 1, K for a shift
// from 0, B for 1 to 3, F for a small factor, U for a unit, M for a method and W for a bound series without
// flat windows. At ">" one more argument may shift the result; with "!" the call needs all bars.
struct Form {
  FunctionId function;
  const char *arguments;
};

constexpr Form kForms[] = {
    {FunctionId::If, "S,S,S>"},
    {FunctionId::If, "S,N,S>"},
    {FunctionId::If, "S,N,N>"},
    {FunctionId::If, "N,S,N>"},
    {FunctionId::Sum, "S!"},
    {FunctionId::Sum, "S,P>"},
    {FunctionId::ESum, "S"},
    {FunctionId::ESum, "S,P>"},
    {FunctionId::Ma, "S,P"},
    {FunctionId::Ma, "S,P,M>"},
    {FunctionId::Ma, "S,P,B>"},
    {FunctionId::Avg, "S!"},
    {FunctionId::Avg, "S,P>"},
    {FunctionId::EAvg, "S"},
    {FunctionId::EAvg, "S,P>"},
    {FunctionId::WAvg, "S!"},
    {FunctionId::WAvg, "S,P>"},
    {FunctionId::TAvg, "S,P>"},
    {FunctionId::GAvg, "S,P>"},
    {FunctionId::HAvg, "S,P>"},
    {FunctionId::Stdev, "S,P>"},
    {FunctionId::Highest, "S,P>"},
    {FunctionId::Lowest, "S,P>"},
    {FunctionId::Min, "S"},
    {FunctionId::Min, "S,S"},
    {FunctionId::Max, "S,S"},
    {FunctionId::Max, "S,S,S"},
    {FunctionId::Shift, "S,K>"},
    {FunctionId::Ref, "S,K>"},
    {FunctionId::CrossDown, "S,S>"},
    {FunctionId::CrossUp, "S,S>"},
    {FunctionId::CrossUp, "S,N>"},
    {FunctionId::Rsi, "P>"},
    {FunctionId::Cci, "P>"},
    {FunctionId::Sar, "F,F>"},
    {FunctionId::CSar, "F,F>"},
    {FunctionId::Ad, ""},
    {FunctionId::Pvt, ""},
    {FunctionId::Pvi, "S>"},
    {FunctionId::Nvi, "S>"},
    {FunctionId::LinearRegressionValue, "S,P,K>"},
    {FunctionId::LinearRegressionSlope, "S,P>"},
    {FunctionId::Correlation, "S,S,P>"},
    {FunctionId::RSquared, "W,6>"},
    {FunctionId::DayOpen, ""},
    {FunctionId::DayHigh, ""},
    {FunctionId::DayLow, ""},
    {FunctionId::PreDayOpen, ""},
    {FunctionId::PreDayHigh, ""},
    {FunctionId::PreDayLow, ""},
    {FunctionId::PreDayClose, ""},
    {FunctionId::DayIndex, ""},
    {FunctionId::BarsSince, "S>"},
    {FunctionId::CountSince, "S,S>"},
    {FunctionId::HighestSince, "B,S,S>"},
    {FunctionId::LowestSince, "B,S,S>"},
    {FunctionId::ValueWhen, "B,S,S>"},
    {FunctionId::SwingHigh, "B,S,B,P>"},
    {FunctionId::SwingLow, "B,S,B,P>"},
    {FunctionId::ZigZag, "B>"},
    {FunctionId::Pow, "abs((S)%100)+1,(S)%3"},
    {FunctionId::Pow, "S,B"},
    {FunctionId::Pow, "2,(S)%5"},
    {FunctionId::Abs, "S"},
    {FunctionId::Log, "abs(S)+1"},
    {FunctionId::Log10, "abs(S)+1"},
    {FunctionId::Sqrt, "abs(S)"},
    {FunctionId::Sin, "(S)%1000"},
    {FunctionId::Cos, "(S)%1000"},
    {FunctionId::Tan, "(S)%1000"},
    {FunctionId::Asin, "sin((S)%1000)"},
    {FunctionId::Acos, "sin((S)%1000)"},
    {FunctionId::Atan, "S"},
    {FunctionId::Sinh, "(S)%50"},
    {FunctionId::Cosh, "(S)%50"},
    {FunctionId::Tanh, "S"},
    {FunctionId::CompressClose, "U"},
    {FunctionId::CompressOpen, "U"},
    {FunctionId::CompressHigh, "U"},
    {FunctionId::CompressLow, "U"},
    {FunctionId::CompressVolume, "U"},
    {FunctionId::CompressDate, "U"},
    // With dates that are no compressed ones it looks ahead.
    {FunctionId::DeCompress, "S,d!"},
    {FunctionId::DeCompress, "CompressC(day),CompressD(day)!"},
    {FunctionId::DeCompress, "CompressH(3),CompressD(3)!"},
};

constexpr std::size_t kLongText = 1500;
constexpr int kMostCalls = 12;

bool NeedsAllBars(const Form &form) {
  return std::string(form.arguments).ends_with('!') || FindFunction(form.function)->full == FullCalc::Always;
}

}  // namespace

std::string RandomFormula::Pick(std::initializer_list<const char *> texts) {
  return texts.begin()[UpTo(static_cast<int>(texts.size()))];
}

// Any of the words for a function, with some letters in the other case.
std::string RandomFormula::Spelling(FunctionId function) {
  std::vector<const char *> words;
  for (const Word &word : trovenu::Words()) {
    if (word.function == function && word.family != WordFamily::UnlistedVector) words.push_back(word.text);
  }
  std::string text = words[static_cast<std::size_t>(UpTo(static_cast<int>(words.size())))];
  for (char &c : text) {
    if (OneIn(6)) c = ToUpperAscii(c);
  }
  used_.insert(function);
  return text;
}

std::string RandomFormula::Number() {
  if (!numberNames_.empty() && OneIn(4)) {
    return numberNames_[static_cast<std::size_t>(UpTo(static_cast<int>(numberNames_.size())))];
  }
  return Pick({"0", "1", "2", "5", "100", "0.1", "3.75", "12.5", "(1+2)", "-4", "!1", "2000"});
}

std::string RandomFormula::Period() {
  if (OneIn(8)) {
    if (numberNames_.empty() || OneIn(4)) {
      const std::string name = Pick({"n1", "n2", "기간"_kr});
      if (std::ranges::find(numberNames_, name) == numberNames_.end()) numberNames_.push_back(name);
      return "(" + name + "=" + std::to_string(1 + UpTo(5)) + ")";
    }
    return numberNames_[static_cast<std::size_t>(UpTo(static_cast<int>(numberNames_.size())))];
  }
  return OneIn(8) ? Pick({"2.7", "(1+2)", "1"}) : std::to_string(1 + UpTo(12));
}

std::string RandomFormula::Unit() {
  return OneIn(2) ? std::to_string(1 + UpTo(6))
                  : Pick({"day", "일"_kr, "hour", "시"_kr, "month", "월"_kr, "year", "년"_kr, "other"});
}

std::string RandomFormula::Leaf() {
  std::string text;
  if (!seriesNames_.empty() && OneIn(3)) {
    text = seriesNames_[static_cast<std::size_t>(UpTo(static_cast<int>(seriesNames_.size())))];
  } else {
    const FunctionId kColumns[] = {
        FunctionId::Close,  FunctionId::Open,   FunctionId::High, FunctionId::Low,          FunctionId::Close,
        FunctionId::Volume, FunctionId::Amount, FunctionId::Date, FunctionId::OpenInterest, FunctionId::Time};
    text = Spelling(kColumns[UpTo(10)]);
  }
  if (OneIn(6)) text += "(" + Pick({"0", "1", "2", "4", "1.9999999"}) + ")";
  return text;
}

std::string RandomFormula::Binary(int depth) {
  const bool startsWithNumber = OneIn(6);
  const std::string left = startsWithNumber ? Number() : Series(depth);
  const std::string sign = Pick({"+",  "-",     "*",    "/",           "%",         "+",   "-",          "*",
                                 "<",  "<=",    ">",    ">=",          "==",        "!=",  "<>",         "&&",
                                 "||", " and ", " or ", " 그리고 "_kr, " 또는 "_kr, " + ", " - // why\n"});
  // One of the two is a series.
  return left + sign + (!startsWithNumber && OneIn(6) ? Number() : Series(depth));
}

std::string RandomFormula::Assignment(int depth) {
  const std::string name = Pick({"x", "y_1", "값"_kr, "Long_Name_2"});
  const std::string value = Series(depth);
  if (std::ranges::find(seriesNames_, name) == seriesNames_.end()) seriesNames_.push_back(name);
  return name + "=" + value;
}

std::string RandomFormula::Filled(const std::string &form, int depth) {
  std::string text;
  for (const char c : form) {
    switch (c) {
      case 'S':
        text += Series(depth);
        break;
      case 'N':
        text += Number();
        break;
      case 'P':
        text += Period();
        break;
      case 'K':
        text += std::to_string(UpTo(5));
        break;
      case 'B':
        text += std::to_string(1 + UpTo(3));
        break;
      case 'F':
        text += Pick({"0.02", "0.05", "0.2"});
        break;
      case 'U':
        text += Unit();
        break;
      case 'W':
        text += Pick({"h", "l", "v"});
        break;
      case 'M':
        text += words_ == Words::AllCalls && OneIn(4) ? "지수"_kr
                                                      : Pick({"단순"_kr, "가중"_kr, "기하"_kr, "조화"_kr});
        break;
      case '>':
        if (OneIn(5)) text += "," + std::to_string(UpTo(5));
        break;
      case '!':
        break;
      default:
        text += c;
    }
  }
  return text;
}

// They share names with the formulas, and one calls another.
SFunctionList RandomFormula::UserFunctions() {
  const struct {
    const char *name;
    const char *body;
    const char *first;
    const char *second;
  } kFunctions[] = {
      {"Mid", "(a_1+b_1)/2", "a_1", "b_1"},
      {"step", "값=x(1); // the bar before\nx-값"_kr, "x", ""},
      {"수준"_kr, "ma(x,n_1)-mid(h,l)", "x", "n_1"},
      {"swap", "swapped=y_1;y_1=x;swapped+step(y_1)", "x", "y_1"},
  };
  SFunctionList list;
  for (const auto &entry : kFunctions) {
    SFunction function;
    function.IndexName = entry.name;
    function.Expression = entry.body;
    function.VarName[0] = entry.first;
    function.VarName[1] = entry.second;
    list.Add(function);
  }
  return list;
}

std::string RandomFormula::UserCall(int depth) {
  ++calls_;
  return Filled(Pick({"mid(S,S>)", "miD(S,S>)", "step(S>)", "수준(S,P>)"_kr, "swap(S,S>)"}), depth);
}

std::string RandomFormula::CallOf(int depth) {
  const Form *form = nullptr;
  do {
    form = &kForms[UpTo(static_cast<int>(std::size(kForms)))];
  } while (words_ != Words::AllCalls && NeedsAllBars(*form));
  ++calls_;
  const std::string word = Spelling(form->function);
  return word + "(" + Filled(form->arguments, depth) + ")";
}

std::string RandomFormula::Series(int depth) {
  if (depth <= 0) return Leaf();
  const int kind = UpTo(20);
  if (kind < 3) return Leaf();
  if (kind < 8) return Binary(depth - 1);
  if (kind < 10) return "(" + Binary(depth - 1) + ")";
  if (kind < 11) return Pick({"-", "!", "+", "not ", "부정 "_kr}) + Series(depth - 1);
  if (kind < 13) return "(" + Assignment(depth - 1) + ")";
  if (words_ == Words::Operators || calls_ > kMostCalls) return "(" + Binary(depth - 1) + ")";
  return OneIn(12) ? UserCall(depth - 1) : CallOf(depth - 1);
}

std::string RandomFormula::Next() {
  for (;;) {
    seriesNames_.clear();
    numberNames_.clear();
    calls_ = 0;
    std::string text;
    for (int statements = UpTo(4); statements > 0; --statements) {
      text += Assignment(1 + UpTo(3)) + Pick({";", "; ", ";\n", "; /* and */ "});
    }
    text += Series(1 + UpTo(4));
    if (text.size() <= kLongText) return text;
  }
}

}  // namespace trovenu::tests
