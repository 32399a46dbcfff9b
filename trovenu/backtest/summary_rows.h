#pragma once

#include "trovenu/platform/export.h"
#include "trovenu/support/text.h"

namespace trovenu {

/// One row of the summary of a back-test: two labelled figures. All members are texts in the code page, ready
/// to be shown; their names are those of the columns of the summary table.
struct TROVENU_API SSummary {
  /// 0 all trades, 1 long, 2 short.
  SString GroupID;
  SString GroupName;
  /// Number of the block within the group, from 0, and its title.
  SString SubGroupID;
  SString SubGroupName;
  /// Number of the row within the group, from 0.
  SString Sequence;
  SString Name1;
  SString Value1;
  SString Name2;
  SString Value2;
};

/// The record of one run of a back-test; texts as in `SSummary`.
struct TROVENU_API SSummaryInfo {
  SString SumFileName;
  SString TradeListFileName;
  SString SymbolName;
  SString IndicatorName;
  SString IndicatorVariable;
  SString Term;
  SString Status;
  SString EntryCommission;
  SString ExitCommission;
  SString Slippage;
  SString TotalProfit;
  SString TransactionCount;
  SString WinLossRatio;
  SString WinRatio;
  SString ProfitFactor;
  SString AverageProfit;
  SString InMarketRatio;
};

/// A second record of a run, the host's.
struct TROVENU_API SSummaryDetail {
  static constexpr int kTexts = 14;

  SString Text[kTexts];
};

}  // namespace trovenu
