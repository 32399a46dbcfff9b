#include "tools/trovenu/chart_type.h"

#include <algorithm>
#include <limits>

#include "tools/trovenu/axis_marks.h"
#include "tools/trovenu/chart_drawings.h"
#include "tools/trovenu/failure.h"
#include "trovenu/price/price_data_list.h"
#include "trovenu/support/number_text.h"

namespace trovenu::tool {

namespace {

constexpr unsigned BitOf(BarField field) { return 1U << static_cast<unsigned>(field); }

constexpr unsigned kClose = BitOf(BarField::Close);
constexpr unsigned kVolume = BitOf(BarField::Volume);
constexpr unsigned kCandles = BitOf(BarField::Open) | BitOf(BarField::High) | BitOf(BarField::Low) | kClose;

constexpr auto kWhole = ChartParameter::Kind::Whole;
constexpr auto kReal = ChartParameter::Kind::Real;

constexpr ChartParameter kPointFigure[] = {{"reversal", kWhole}, {"box"}};
constexpr ChartParameter kWidth[] = {{"width"}};
constexpr ChartParameter kBrick[] = {{"brick"}};
constexpr ChartParameter kLines[] = {{"lines", kWhole}, {"reversal at", ChartParameter::Kind::Result}};
constexpr ChartParameter kPeriod[] = {{"period", kWhole}};
constexpr ChartParameter kBands[] = {{"bands", kWhole, 2}};
constexpr ChartParameter kMinutes[] = {{"minutes", kWhole}};
constexpr ChartParameter kRate[] = {{"rate", kReal}};

constexpr ChartColumn kLegs[] = {{"start", 2}, {"end", 3}};
constexpr ChartColumn kAverages[] = {{"price average", 2}, {"volume average", 3}};
constexpr ChartColumn kCandleWidth[] = {{"width", 0}};
constexpr ChartColumn kPriceBands[] = {
    {"lower", 0}, {"upper", 1}, {"volume", 2}, {"of largest", 3}, {"of total", 4}};
constexpr ChartColumn kLetters[] = {
    {"letter", 1, ChartColumn::Kind::Letter}, {"day start", 2}, {"volume", 3}, {"bars", 4}};
constexpr ChartColumn kTurns[] = {{"turn", 1}};
constexpr ChartColumn kSteps[] = {{"level", 2}, {"new leg", 3, ChartColumn::Kind::NumberUnlessZero}};

template <void (SIndex::*kCalculator)(int)>
void Calculate(SIndex &chart, int automatic, int /*bars*/) {
  (chart.*kCalculator)(automatic);
}

void CalculateBands(SIndex &chart, int automatic, int bars) {
  chart.CalcVolumeAtPrice(automatic, 0, bars - 1);
}

constexpr auto kAt = ChartType::Place::PositionSeries;
constexpr auto kOwn = ChartType::Place::OwnIndex;
constexpr int kAll = ChartType::kEveryIndex;

constexpr ChartType kTypes[] = {
    {"pnf", "Point and figure", "columns", kPointAndFigureChart, kPointFigure, kClose, kAt, kAll, kLegs,
     Calculate<&SIndex::CalcPnF>, DrawPointFigure},
    {"kagi", "Kagi", "lines", kKagiChart, kWidth, kClose, kAt, kAll, kLegs, Calculate<&SIndex::CalcKagi>,
     DrawKagi},
    {"renko", "Renko", "bricks", kRenkoChart, kBrick, kClose, kAt, kAll, kLegs, Calculate<&SIndex::CalcRenko>,
     DrawBricks},
    {"threeline", "Three-line break", "lines", kThreeLineBreakChart, kLines, kClose, kAt, kAll, kLegs,
     Calculate<&SIndex::CalcThreeLineBreak>, DrawThreeLineBreak},
    {"swing", "Swing", "lines", kSwingChart, kWidth, kClose, kAt, kAll, kLegs, Calculate<&SIndex::CalcSwing>,
     DrawSwing},
    {"counterclock", "Counter-clock", "points", kCounterClockChart, kPeriod, kClose | kVolume, kOwn, kAll,
     kAverages, Calculate<&SIndex::CalcCounterClock>, DrawCounterClock},
    {"candlevolume",
     "Candle volume",
     "candles",
     kCandleVolumeChart,
     {},
     kCandles | kVolume,
     kOwn,
     kAll,
     kCandleWidth,
     Calculate<&SIndex::CalcCandleVolume>,
     DrawCandleVolume},
    {"vap", "Volume at price", "bands", kVolumeAtPriceChart, kBands, kClose | kVolume, ChartType::Place::None,
     kAll, kPriceBands, CalculateBands, DrawVolumeAtPrice},
    {"profile", "Market profile", "letters", kMarketProfileChart, kMinutes, kClose | kVolume, kOwn, 1,
     kLetters, Calculate<&SIndex::CalcMarketProfile>, DrawMarketProfile},
    {"zigzag", "ZigZag", "turns", kZigZagChart, kRate, kClose, kOwn, 1, kTurns,
     Calculate<&SIndex::CalcZigZagLine>, DrawZigZag},
    {"zigzagsteps", "ZigZag steps", "steps", kZigZagChart, kRate, kClose, kAt, kAll, kSteps,
     Calculate<&SIndex::CalcZigZagOrgLine>, DrawZigZagSteps},
};

void CheckFields(const ChartType &type, const Bars &bars) {
  for (int i = 0; i < kSeriesFields; ++i) {
    if ((type.fields & ~bars.present & 1U << i) == 0) continue;
    throw FailureAt(bars.name, bars.headerLine,
                    "expected a column " + FieldName(static_cast<BarField>(i)) + ", which the chart " +
                        type.name + " is made of");
  }
}

// The options that the chart's settings offer for these prices.
void SetDefaults(SIndex &chart, const ChartType &type, const SVector &close) {
  SPriceProperty property;
  property.SetValue(close.GetFirstNonZeroValue());
  chart.VarValue[0] = property.Value1[type.priceType];
  chart.VarValue[1] = property.Value2[type.priceType];
}

std::vector<int> FindRows(const ChartType &type, const std::array<SVector, kExpressions> &series) {
  int first = 0;
  int end = std::numeric_limits<int>::max();
  for (const ChartColumn &column : type.columns) {
    const SVector &values = series[static_cast<std::size_t>(column.series)];
    first = std::max(first, values.GetStartIndex());
    end = std::min(end, values.GetSize());
  }
  std::vector<int> rows;
  for (int i = first; i < end; ++i) {
    const bool row = type.rowSeries == ChartType::kEveryIndex ||
                     series[static_cast<std::size_t>(type.rowSeries)][i] != 0.0;
    if (row) rows.push_back(i);
  }
  return rows;
}

}  // namespace

std::size_t ChartType::GivenParameters() const {
  return static_cast<std::size_t>(std::count_if(
      parameters.begin(), parameters.end(),
      [](const ChartParameter &parameter) { return parameter.kind != ChartParameter::Kind::Result; }));
}

std::span<const ChartType> ChartTypes() { return kTypes; }

std::string ProfileLetter(double code) {
  constexpr int kAlphabet = 26;
  const int number = std::max(0, static_cast<int>(code) - 'A');
  const int within = number % (2 * kAlphabet);
  const int lap = number / (2 * kAlphabet);
  std::string letter(1, static_cast<char>(within < kAlphabet ? 'A' + within : 'a' + within - kAlphabet));
  if (lap > 0) letter += std::to_string(lap + 1);
  return letter;
}

double ChartResult::At(int slot, int row) const {
  return series[static_cast<std::size_t>(slot)][rows[static_cast<std::size_t>(row)]];
}

int ChartResult::BarOf(int row) const {
  if (type.place == ChartType::Place::PositionSeries) return static_cast<int>(At(1, row));
  return rows[static_cast<std::size_t>(row)];
}

double ChartResult::DateOf(int row) const { return bars[BarField::Date][BarOf(row)]; }

std::string ChartResult::ParametersText() const {
  std::string text;
  for (std::size_t i = 0; i < parameters.size(); ++i) {
    if (!text.empty()) text += ", ";
    text += std::string(type.parameters[i].name) + ' ' + ShortNumber(parameters[i]);
  }
  return text;
}

ChartResult CalculateChart(const ChartType &type, const Bars &bars, const ChartSettings &settings) {
  CheckFields(type, bars);
  SPriceDataList prices;
  const int id = prices.Add();
  SPriceData &data = prices[0];
  data.close = bars[BarField::Close];
  data.open = bars[BarField::Open];
  data.high = bars[BarField::High];
  data.low = bars[BarField::Low];
  data.volume = bars[BarField::Volume];
  data.date = bars[BarField::Date];
  data.openInterest = bars[BarField::OpenInterest];
  data.amount = bars[BarField::Amount];
  data.TickSize = settings.tickSize;

  SIndex chart;
  chart.SetData(&prices, id);
  SetDefaults(chart, type, data.close);
  for (std::size_t i = 0; i < settings.parameters.size(); ++i) {
    chart.VarValue[i] = settings.parameters[i].c_str();
  }
  type.calculate(chart, settings.automatic ? 1 : 0, bars.Size());

  ChartResult result{type, bars, {}, {}, {}};
  std::move(std::begin(chart.ExpData), std::end(chart.ExpData), result.series.begin());
  for (std::size_t i = 0; i < type.parameters.size(); ++i) {
    result.parameters.push_back(AnsiStringToFloat(chart.VarValue[i]));
  }
  result.rows = FindRows(type, result.series);
  return result;
}

Table ChartTable(const ChartResult &result) {
  const ChartType &type = result.type;
  const int rows = result.Rows();
  Table table;
  const auto addNumbers = [&](const char *heading, const auto &valueOf) {
    TableColumn::Numbers numbers;
    for (int row = 0; row < rows; ++row) numbers.values.push_back(valueOf(row));
    table.columns.push_back({heading, std::move(numbers)});
  };
  if (type.place != ChartType::Place::None) {
    TableColumn::Dates dates;
    for (int row = 0; row < rows; ++row) dates.values.push_back(result.DateOf(row));
    table.columns.push_back({"date", std::move(dates)});
    addNumbers("bar", [&](int row) { return result.BarOf(row); });
  }
  for (const ChartColumn &column : type.columns) {
    if (column.kind == ChartColumn::Kind::Letter) {
      addNumbers("price", [&](int row) { return result.bars[BarField::Close][result.BarOf(row)]; });
      TableColumn::Texts letters;
      for (int row = 0; row < rows; ++row) {
        letters.values.push_back(ProfileLetter(result.At(column.series, row)));
      }
      table.columns.push_back({column.heading, std::move(letters)});
      continue;
    }
    addNumbers(column.heading, [&](int row) {
      const double value = result.At(column.series, row);
      const bool none = column.kind == ChartColumn::Kind::NumberUnlessZero && value == 0.0;
      return none ? std::numeric_limits<double>::quiet_NaN() : value;
    });
  }
  for (std::size_t i = 0; i < result.parameters.size(); ++i) {
    addNumbers(type.parameters[i].name, [&](int) { return result.parameters[i]; });
  }
  return table;
}

}  // namespace trovenu::tool
