#pragma once

#include <memory>

#include "trovenu/indicator/index.h"
#include "trovenu/platform/export.h"
#include "trovenu/price/base_data.h"
#include "trovenu/price/base_info.h"
#include "trovenu/price/price_property.h"
#include "trovenu/price/sr_lines.h"
#include "trovenu/support/text.h"

namespace trovenu {

class CKqArchive;

/// The bars of one symbol and all that belongs to the symbol in a chart.
///
/// The host fills the series field by field and reads them in place; nothing here computes from bars, and
/// prices come already adjusted. Positions are bars, 0 the oldest; `back` counts from the newest bar, which
/// is 0. Formulas hold pointers to the series, so an object must not move while they do. One thread at a
/// time.
class TROVENU_API SPriceData : public SBaseData {
 public:
  /// Codes of `AddData`, `InsertData`, `UpdateData` and `GetData`. The events are for the first two only.
  enum FieldCode : int {
    kClose,
    kOpen,
    kHigh,
    kLow,
    kDate,
    kVolume,
    kAmount,
    kOpenInterest,
    kEventDate,
    kEventValue1,
    kEventValue2,
  };
  static constexpr int kBarFields = 8;
  static constexpr int kFieldCodes = 11;
  static constexpr int kOverlays = 4;

  SPriceData();
  /// Copies are deep.
  /// Required: as the property is assigned, its `ShowBaseLine` becomes 0.
  SPriceData(const SPriceData &other);
  SPriceData &operator=(const SPriceData &other);
  ~SPriceData() override;

  /// Marks, the host's values and the line colours of the overlays to their defaults. ID, texts, series and
  /// tick size stay.
  void SetToDefault();
  /// For another symbol: `SetToDefault`, all bars, events and overlay series gone, base info back to -1.0,
  /// and a scale mode `MinMaxY` of 2 becomes 0. ID, texts, period, tick size and lines stay.
  void ClearData();
  /// Empties insert buffers and events and leaves the bars alone.
  void ClearTempData();

  /// \name Filling
  /// A code outside its range is ignored.
  /// @{

  /// Appends to the series of the code.
  void AddData(int code, double value);
  /// Appends to the insert buffer of the code: a batch of older bars, oldest first.
  void InsertData(int code, double value);
  /// Puts the batch of `InsertData` in front of the bars.
  void InsertDataEnd();
  /// Overwrites one value of codes 0 to 7; nothing if `back` is negative or past the oldest bar.
  /// Required: what the series remember of their extremes stays as it is; `InitTemp` makes them look anew.
  void UpdateData(int code, double value, int back);
  /// One value of codes 0 to 7; 0.0 for other codes and where there is no bar.
  double GetData(int code, int back) const;
  /// @}

  /// Writes slot 0 to 9 of the base info, which is made on first use; another index is ignored.
  void SetBaseInfoValue(int index, double value);
  /// Writes the value of line 0 to 27; another index is ignored.
  void SetSRLineValue(int index, double value);

  /// Required: does nothing; the call is part of the interface.
  void CompressData(int count);
  /// Finds the bar of each event: `eventPosition` holds its position, -1.0 for a date without a bar. Event
  /// dates are expected in ascending order. Changes no price; the arguments are ignored.
  void CalcCorrectedPrice(int unused1, int unused2);

  void SetChartCycle(double cycle) { ChartCycle = cycle; }
  void SetChartPeriod(int period) { ChartPeriod = period; }
  void ShowCandle(int show) { showCandle = show; }
  void SetID(int id) { ID = id; }
  int GetID() const { return ID; }
  /// The display name.
  SString GetSymbolInfo() const { return SymbolName; }

  /// \name State of the eight bar series
  /// @{

  /// Makes the series forget the extremes that they remember.
  void InitTemp();
  void SetDrawRange(int first, int last);
  void SetMinMaxChanged(int flag);
  /// Ask every series for its extreme over the bars from `first` to `last` and drop the results.
  void GetMax(int first, int last);
  void GetMin(int first, int last);
  /// @}

  /// \name Extremes of the price over the bars from `first` to `last`, or over all
  /// Of close and high, or close and low; of close alone in a close line chart. Those that end in `Temp`
  /// answer from what the series remember and don't look at the chart type. Without a bar -1e38 and 1e38.
  /// @{
  double GetPriceMax(int first, int last) const;
  double GetPriceMin(int first, int last) const;
  double GetPriceMax() const;
  double GetPriceMin() const;
  double GetPriceMaxTemp(int first, int last) const;
  double GetPriceMinTemp(int first, int last) const;
  /// @}

  /// Reads or writes what the symbol is, its lines and its property, but none of its data. The category is
  /// "PriceData", with `index` appended unless it is -1, and likewise for lines and property.
  void Load(CKqArchive &archive, int index);
  void Store(CKqArchive &archive, int index) const;
  /// The same without the lines.
  void LoadTheme(CKqArchive &archive, int index);
  void StoreTheme(CKqArchive &archive, int index) const;

  /// Identity within the list, which assigns it; -1 for none.
  int ID = -1;
  /// The host's.
  int hostMark = 0;
  /// Kind of market, as the host has it.
  int MarketType = 0;
  SString SymbolName;
  SString SymbolCode;
  /// A further text of the host's; copied, never stored.
  SString symbolText;
  /// Underlying or real symbol.
  SString RealSymbol;
  /// Units in one bar.
  double ChartCycle = 1.0;
  /// Unit of a bar. 0 is a trade; the host gives the others their meaning.
  int ChartPeriod = 2;
  /// 1 once a close has been added or inserted.
  int dataFlag = 0;
  /// Older bars until `InsertDataEnd`: close, open, low, high, volume, date, open interest, amount, event
  /// date and the two event values. The order is not that of the codes.
  SVector insertBuffer[kFieldCodes];
  /// Corporate events: date, the host's two values, and the position that `CalcCorrectedPrice` finds.
  SVector eventDate;
  SVector eventValue1;
  SVector eventValue2;
  SVector eventPosition;
  /// 1 once an event has come or a batch has been inserted.
  int eventFlag = 0;
  /// Smallest price step.
  double TickSize = 1.0;
  /// How the price chart looks; never null.
  std::unique_ptr<SPriceProperty> property;
  /// What the net chart draws over the prices. Their series are emptied with the bars; the host binds them.
  SIndex overlays[kOverlays];
  /// Set by `ShowCandle`.
  int showCandle = 1;
  /// The host's.
  int hostInts[2] = {};
  double hostValue = 0.0;
  /// Null until `SetBaseInfoValue`.
  std::unique_ptr<SBaseInfo> baseInfo;
  std::unique_ptr<SSRLines> lines;
};

}  // namespace trovenu
