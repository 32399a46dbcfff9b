#pragma once

#include "trovenu/platform/export.h"
#include "trovenu/platform/string.h"
#include "trovenu/platform/theme.h"

namespace trovenu {

class CKqArchive;

/// The horizontal reference lines of one symbol and the alerts that its last price raises on them.
///
/// Arrays are indexed by line, 0 to 27. The host gives the values of the lines that have no formula, calls
/// `CalcAlarmLine`, and for each new price `SetClose`, `Calc` and `GetAlertMessage`.
class TROVENU_API SSRLines {
 public:
  static constexpr int kLines = 28;
  static constexpr int kFirstUserLine = 24;

  /// The lines. Those marked with * are computed by `CalcAlarmLine`, the others come from the host.
  enum Line : int {
    kPreviousOpen,
    kPreviousHigh,
    kPreviousLow,
    kPreviousClose,
    kTodayOpen,
    kTodayHigh,
    kTodayLow,
    kTodayAverage,  ///< * Mean of today's open, high and low.
    kUpperLimit,
    kLowerLimit,
    kWeekOpen,
    kWeekHigh,
    kWeekLow,
    kMonthOpen,
    kMonthHigh,
    kMonthLow,
    kPivot,             ///< *
    kPivotResistance1,  ///< *
    kPivotResistance2,  ///< *
    kPivotSupport1,     ///< *
    kPivotSupport2,     ///< *
    kDeMark,            ///< *
    kDeMarkHigh,        ///< *
    kDeMarkLow,         ///< *
    kUserLine1,
  };

  /// State of a line after `Calc`.
  enum Crossing : int { kCrossedDownward = -1, kNotCrossed = 0, kCrossedUpward = 1 };

  SSRLines();
  SSRLines(const SSRLines &other) = default;
  SSRLines &operator=(const SSRLines &other) = default;
  virtual ~SSRLines();

  /// The Korean name of a line, "전일 시가" for 0; empty outside 0 to 27.
  static const char *LineName(int index);

  /// The options and, for each line, `ShowLine`, `LineThick` and `LineColor`. Values and crossings stay.
  void SetToDefault();
  /// Both closes and all line values to 0.0.
  void Clear();
  /// Stores the value of a line; an index outside 0 to 27 is ignored.
  void SetValue(int index, double value);
  /// Makes `price` the last price; the last price so far becomes the one before.
  void SetClose(double price);

  /// Computes the mean of today, the pivot levels and the DeMark levels from the other lines.
  void CalcAlarmLine();
  /// Finds the shown lines that the price has crossed since the one before: `ShowAlert` becomes 1 for a line
  /// above that one and not above the last price, -1 for a line below that one and not below the last price,
  /// else 0. Without both prices nothing is crossed; a price of 0.0 counts as none.
  void Calc();
  /// The alert on a line after `Calc`, such as "피봇기준선 상향돌파". Empty if `ShowAlarmDlg` or the line's
  /// `ShowLine` is 0, if the line has not been crossed, and for an index outside 0 to 27.
  CString GetAlertMessage(int index) const;

  /// Reads the look of the lines from "alarmset.ini" in the folder of the formula tables; what the file lacks
  /// stays.
  /// Required: ShowAlarmLine and ShowAlarmDlg are written by `SaveSetting` and never read back.
  void ReadSetting();
  void SaveSetting() const;

  /// Reads or writes options and lines in the category "SSRLines", with `index` appended unless it is -1. The
  /// two closes are not kept.
  void Load(CKqArchive &archive, int index);
  void Store(CKqArchive &archive, int index) const;
  /// The same for the six options alone.
  void LoadTheme(CKqArchive &archive, int index);
  void StoreTheme(CKqArchive &archive, int index) const;

  /// Required: the values of the lines are not compared. Tables with the same look, closes and crossings are
  /// equal whatever their levels.
  TROVENU_API friend bool operator==(const SSRLines &a, const SSRLines &b);

  int ShowAlarmLine;
  int ShowAlarmDlg;
  int ShowTitle;
  int ShowValue;
  int LineStyle;
  int TextPos;
  /// The last price and the one before it.
  double close;
  double previousClose;
  double LineValue[kLines];
  int ShowLine[kLines];
  int LineThick[kLines];
  /// A `Crossing`.
  int ShowAlert[kLines] = {};
  Color LineColor[kLines];
};

}  // namespace trovenu
