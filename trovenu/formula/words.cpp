#include "trovenu/formula/words.h"

#include <array>
#include <cstdint>

#include "trovenu/support/korean.h"

namespace trovenu {
namespace {

// clang-format off
constexpr Word kWords[] = {
    {"if", WordFamily::Vector, FunctionId::If},
    {"만일"_kr, WordFamily::Vector, FunctionId::If},
    {"sum", WordFamily::Vector, FunctionId::Sum},
    {"합계"_kr, WordFamily::Vector, FunctionId::Sum},
    {"esum", WordFamily::Vector, FunctionId::ESum},
    {"ma", WordFamily::Vector, FunctionId::Ma},
    {"avg", WordFamily::Vector, FunctionId::Avg},
    {"평균"_kr, WordFamily::Vector, FunctionId::Avg},
    {"eavg", WordFamily::Vector, FunctionId::EAvg},
    {"지수평균"_kr, WordFamily::Vector, FunctionId::EAvg},
    {"wavg", WordFamily::Vector, FunctionId::WAvg},
    {"가중평균"_kr, WordFamily::Vector, FunctionId::WAvg},
    {"tavg", WordFamily::Vector, FunctionId::TAvg},
    {"삼각평균"_kr, WordFamily::Vector, FunctionId::TAvg},
    {"gavg", WordFamily::Vector, FunctionId::GAvg},
    {"기하평균"_kr, WordFamily::Vector, FunctionId::GAvg},
    {"havg", WordFamily::Vector, FunctionId::HAvg},
    {"조화평균"_kr, WordFamily::Vector, FunctionId::HAvg},
    {"stdev", WordFamily::Vector, FunctionId::Stdev},
    {"표준편차"_kr, WordFamily::Vector, FunctionId::Stdev},
    {"highest", WordFamily::Vector, FunctionId::Highest},
    {"최고값"_kr, WordFamily::Vector, FunctionId::Highest},
    {"lowest", WordFamily::Vector, FunctionId::Lowest},
    {"최저값"_kr, WordFamily::Vector, FunctionId::Lowest},
    {"CountSince", WordFamily::Vector, FunctionId::CountSince},
    {"DayIndex", WordFamily::Vector, FunctionId::DayIndex},
    {"HighestSince", WordFamily::Vector, FunctionId::HighestSince},
    {"LowestSince", WordFamily::Vector, FunctionId::LowestSince},
    {"min", WordFamily::Vector, FunctionId::Min},
    {"최소값"_kr, WordFamily::Vector, FunctionId::Min},
    {"max", WordFamily::Vector, FunctionId::Max},
    {"최대값"_kr, WordFamily::Vector, FunctionId::Max},
    {"shift", WordFamily::Vector, FunctionId::Shift},
    // Required: a word of the family without a rule; a call of it stops at its first argument.
    {"좌우이동"_kr, WordFamily::Vector, FunctionId::None},
    {"ref", WordFamily::Vector, FunctionId::Ref},
    {"crossdown", WordFamily::Vector, FunctionId::CrossDown},
    {"하향돌파"_kr, WordFamily::Vector, FunctionId::CrossDown},
    {"crossup", WordFamily::Vector, FunctionId::CrossUp},
    {"상향돌파"_kr, WordFamily::Vector, FunctionId::CrossUp},
    {"swinghigh", WordFamily::Vector, FunctionId::SwingHigh},
    {"swinglow", WordFamily::Vector, FunctionId::SwingLow},
    {"valuewhen", WordFamily::Vector, FunctionId::ValueWhen},
    {"BarsSince", WordFamily::Vector, FunctionId::BarsSince},
    {"DayOpen", WordFamily::Vector, FunctionId::DayOpen},
    {"DayHigh", WordFamily::Vector, FunctionId::DayHigh},
    {"DayLow", WordFamily::Vector, FunctionId::DayLow},
    {"PreDayOpen", WordFamily::Vector, FunctionId::PreDayOpen},
    {"PreDayHigh", WordFamily::Vector, FunctionId::PreDayHigh},
    {"PreDayLow", WordFamily::Vector, FunctionId::PreDayLow},
    {"PreDayClose", WordFamily::Vector, FunctionId::PreDayClose},
    {"cci", WordFamily::Vector, FunctionId::Cci},
    {"nvi", WordFamily::Vector, FunctionId::Nvi},
    {"pvi", WordFamily::Vector, FunctionId::Pvi},
    {"ad", WordFamily::Vector, FunctionId::Ad},
    {"PVT", WordFamily::Vector, FunctionId::Pvt},
    {"LinearRegressionValue", WordFamily::Vector, FunctionId::LinearRegressionValue},
    {"LinearRegressionSlope", WordFamily::Vector, FunctionId::LinearRegressionSlope},
    {"Correlation", WordFamily::Vector, FunctionId::Correlation},
    {"RSquared", WordFamily::Vector, FunctionId::RSquared},
    {"ZigZag", WordFamily::Vector, FunctionId::ZigZag},
    {"sar", WordFamily::Vector, FunctionId::Sar},
    {"파라볼릭"_kr, WordFamily::Vector, FunctionId::Sar},
    {"csar", WordFamily::Vector, FunctionId::CSar},
    {"c파라볼릭"_kr, WordFamily::Vector, FunctionId::CSar},
    {"rsi", WordFamily::Vector, FunctionId::Rsi},

    {"c", WordFamily::Data, FunctionId::Close},
    {"close", WordFamily::Data, FunctionId::Close},
    {"종가"_kr, WordFamily::Data, FunctionId::Close},
    {"o", WordFamily::Data, FunctionId::Open},
    {"open", WordFamily::Data, FunctionId::Open},
    {"시가"_kr, WordFamily::Data, FunctionId::Open},
    {"h", WordFamily::Data, FunctionId::High},
    {"high", WordFamily::Data, FunctionId::High},
    {"고가"_kr, WordFamily::Data, FunctionId::High},
    {"l", WordFamily::Data, FunctionId::Low},
    {"low", WordFamily::Data, FunctionId::Low},
    {"저가"_kr, WordFamily::Data, FunctionId::Low},
    {"v", WordFamily::Data, FunctionId::Volume},
    {"volume", WordFamily::Data, FunctionId::Volume},
    {"거래량"_kr, WordFamily::Data, FunctionId::Volume},
    {"oi", WordFamily::Data, FunctionId::OpenInterest},
    {"openInterest", WordFamily::Data, FunctionId::OpenInterest},
    {"미결제약정"_kr, WordFamily::Data, FunctionId::OpenInterest},
    {"amount", WordFamily::Data, FunctionId::Amount},
    {"거래대금"_kr, WordFamily::Data, FunctionId::Amount},
    {"d", WordFamily::Data, FunctionId::Date},
    {"date", WordFamily::Data, FunctionId::Date},
    {"일자"_kr, WordFamily::Data, FunctionId::Date},
    {"Time", WordFamily::Data, FunctionId::Time},
    {"시간"_kr, WordFamily::Data, FunctionId::Time},
    {"Year", WordFamily::Data, FunctionId::Year},
    {"년"_kr, WordFamily::Data, FunctionId::Year},
    {"Month", WordFamily::Data, FunctionId::Month},
    {"월"_kr, WordFamily::Data, FunctionId::Month},

    {"pow", WordFamily::Math, FunctionId::Pow},
    {"누승"_kr, WordFamily::Math, FunctionId::Pow},
    // Required: a word that no name can spell; its call reads two arguments and gives an empty series.
    {"^", WordFamily::Math, FunctionId::Caret},
    {"abs", WordFamily::Math, FunctionId::Abs},
    {"절대값"_kr, WordFamily::Math, FunctionId::Abs},
    {"log", WordFamily::Math, FunctionId::Log},
    {"로그"_kr, WordFamily::Math, FunctionId::Log},
    {"log10", WordFamily::Math, FunctionId::Log10},
    {"상용로그"_kr, WordFamily::Math, FunctionId::Log10},
    {"sqrt", WordFamily::Math, FunctionId::Sqrt},
    {"제곱근"_kr, WordFamily::Math, FunctionId::Sqrt},
    {"sin", WordFamily::Math, FunctionId::Sin},
    {"사인"_kr, WordFamily::Math, FunctionId::Sin},
    {"cos", WordFamily::Math, FunctionId::Cos},
    {"코사인"_kr, WordFamily::Math, FunctionId::Cos},
    {"tan", WordFamily::Math, FunctionId::Tan},
    {"탄젠트"_kr, WordFamily::Math, FunctionId::Tan},
    {"asin", WordFamily::Math, FunctionId::Asin},
    {"아크사인"_kr, WordFamily::Math, FunctionId::Asin},
    {"acos", WordFamily::Math, FunctionId::Acos},
    {"아크코사인"_kr, WordFamily::Math, FunctionId::Acos},
    {"atan", WordFamily::Math, FunctionId::Atan},
    {"아크탄젠트"_kr, WordFamily::Math, FunctionId::Atan},
    {"sinh", WordFamily::Math, FunctionId::Sinh},
    {"하이퍼사인"_kr, WordFamily::Math, FunctionId::Sinh},
    {"cosh", WordFamily::Math, FunctionId::Cosh},
    {"하이퍼코사인"_kr, WordFamily::Math, FunctionId::Cosh},
    {"tanh", WordFamily::Math, FunctionId::Tanh},
    {"하이퍼탄젠트"_kr, WordFamily::Math, FunctionId::Tanh},

    {"CompressC", WordFamily::Time, FunctionId::CompressClose},
    {"종가압축"_kr, WordFamily::Time, FunctionId::CompressClose},
    {"CompressO", WordFamily::Time, FunctionId::CompressOpen},
    {"시가압축"_kr, WordFamily::Time, FunctionId::CompressOpen},
    {"CompressH", WordFamily::Time, FunctionId::CompressHigh},
    {"고가압축"_kr, WordFamily::Time, FunctionId::CompressHigh},
    {"CompressL", WordFamily::Time, FunctionId::CompressLow},
    {"저가압축"_kr, WordFamily::Time, FunctionId::CompressLow},
    {"CompressV", WordFamily::Time, FunctionId::CompressVolume},
    {"거래량압축"_kr, WordFamily::Time, FunctionId::CompressVolume},
    {"CompressD", WordFamily::Time, FunctionId::CompressDate},
    {"일시압축"_kr, WordFamily::Time, FunctionId::CompressDate},
    {"DeCompress", WordFamily::Time, FunctionId::DeCompress},
    {"분해"_kr, WordFamily::Time, FunctionId::DeCompress},

    {"단순"_kr, WordFamily::Method, FunctionId::MethodSimple},
    {"지수"_kr, WordFamily::Method, FunctionId::MethodExponential},
    {"가중"_kr, WordFamily::Method, FunctionId::MethodWeighted},
    {"기하"_kr, WordFamily::Method, FunctionId::MethodGeometric},
    {"조화"_kr, WordFamily::Method, FunctionId::MethodHarmonic},

    {"hour", WordFamily::Unit, FunctionId::UnitHour},
    {"시"_kr, WordFamily::Unit, FunctionId::UnitHour},
    {"day", WordFamily::Unit, FunctionId::UnitDay},
    {"일"_kr, WordFamily::Unit, FunctionId::UnitDay},
    {"month", WordFamily::Unit, FunctionId::UnitMonth},
    {"월"_kr, WordFamily::Unit, FunctionId::UnitMonth},
    {"year", WordFamily::Unit, FunctionId::UnitYear},
    {"년"_kr, WordFamily::Unit, FunctionId::UnitYear},

    {"and", WordFamily::Operator, FunctionId::And},
    {"그리고"_kr, WordFamily::Operator, FunctionId::And},
    {"or", WordFamily::Operator, FunctionId::Or},
    {"또는"_kr, WordFamily::Operator, FunctionId::Or},
    {"not", WordFamily::Operator, FunctionId::Not},
    {"부정"_kr, WordFamily::Operator, FunctionId::Not},

    // Required: a synonym of `ma` that no formula reaches, since the list of names leaves it out.
    {"이평"_kr, WordFamily::UnlistedVector, FunctionId::Ma},
};
// clang-format on

constexpr std::size_t kWordCount = std::size(kWords);

constexpr std::uint32_t Hash(const char *text) {
  std::uint32_t hash = 2166136261U;
  for (; *text != '\0'; ++text) {
    hash = (hash ^ static_cast<unsigned char>(ToLowerAscii(*text))) * 16777619U;
  }
  return hash ^ (hash >> 15);
}

constexpr bool SameWord(const char *a, const char *b) {
  for (; *a != '\0' && ToLowerAscii(*a) == ToLowerAscii(*b); ++a, ++b) {
  }
  return *a == *b;
}

// Open addressing: an index into kWords plus 1, or 0 for a free place.
constexpr std::size_t kPlaces = 512;
static_assert(kWordCount < kPlaces / 2 && kWordCount < 256);

constexpr std::array<std::uint8_t, kPlaces> kIndex = [] {
  std::array<std::uint8_t, kPlaces> index{};
  for (std::size_t i = 0; i < kWordCount; ++i) {
    std::size_t place = Hash(kWords[i].text) % kPlaces;
    while (index[place] != 0) place = (place + 1) % kPlaces;
    index[place] = static_cast<std::uint8_t>(i + 1);
  }
  return index;
}();

constexpr bool IsName(WordFamily family) { return family <= WordFamily::Method; }

template <class Accept>
constexpr const Word *Find(const char *text, Accept accept) {
  for (std::size_t place = Hash(text) % kPlaces; kIndex[place] != 0; place = (place + 1) % kPlaces) {
    const Word &word = kWords[kIndex[place] - 1];
    if (accept(word.family) && SameWord(word.text, text)) return &word;
  }
  return nullptr;
}

// Every spelling finds its own row again: no spelling stands twice in a family, nor in two families of names.
static_assert([] {
  for (const Word &word : kWords) {
    if (Find(word.text, [&](WordFamily family) { return family == word.family; }) != &word) return false;
    if (IsName(word.family) && Find(word.text, IsName) != &word) return false;
  }
  return true;
}());

}  // namespace

std::span<const Word> Words() { return kWords; }

const Word *FindWord(const char *text, WordFamily family) {
  return text == nullptr ? nullptr : Find(text, [family](WordFamily other) { return other == family; });
}

const Word *FindName(const char *text) { return text == nullptr ? nullptr : Find(text, IsName); }

}  // namespace trovenu
