#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "tests/platform/temp_folder.h"
#include "tests/price/stored_values.h"
#include "trovenu/backtest/simulation.h"
#include "trovenu/formula/user_function_list.h"
#include "trovenu/support/archive.h"
#include "trovenu/support/ini_file.h"

namespace trovenu::tests {
namespace {

// As a fresh object is saved; the colours stand for the theme's.
constexpr const char *kDefaults =
    "Position=2 OrderStart=0 SignalAction=0 DispSignalAction=1 OrderType=0 StopLossType=1 "
    "ModeOrderEntryPrice=2 ModeOrderExitPrice=2 ModeVolume=0 TradeVolume=1 BlUseAlarm=0 AlarmFileName= "
    "EntryCommission=1e-04 ModeEntryCommission=0 ExitCommission=1e-04 ModeExitCommission=0 "
    "Slippage=5e-04 ModeSlippage=0 BlMoneyManagementStop=0 MoneyManagementStop=0.02 "
    "ModeMoneyManagementStop=0 BlProfitTargetStop=0 ProfitTargetStop=0.02 ModeProfitTargetStop=0 "
    "BlRiskTrailingStop=0 RiskTrailingStop=0.6 ModeRiskTrailingStop=0 RiskTrailingStopStart=0.02 "
    "ModeRiskTrailingStopStart=0 BlRiskTrailingStop2=0 RiskTrailingStop2=0.025 ModeRiskTrailingStop2=0 "
    "BlMinVariationStop=0 MinVariationStop=0.02 ModeMinVariationStop=0 MinVariationStopCount=10 "
    "BlDayTradingStop=0 DayTradingStop=02:30 ModeDayTradingStop=1 BlMaxBarStop=0 MaxBarStop=30 "
    "MoneyManagementColor=367 RiskTrailingColor=369 RiskTrailing2Color=369 ProfitTargetColor=358 "
    "MinVariationColor=359 DayTradingColor=365";

constexpr const char *kArchiveKeys =
    "POS ORDSTART SACT ORDTYPE STOPLOSS ENTRY EXIT MODEVOL TRADEVOL UALARM ALARMFILE ENTRYCOMM "
    "MENTRYCOMM EXITCOMM MEXITCOMM SLIPPAGE MSLIPPAGE BMMS MMS MMMS BPTS PTS MPTS BRTS RTS MRS RTSS "
    "MSS BRTS2 RTS2 MRTS2 BMVS MVS MMVS MVSC BDTS DTS MDTS BMBS MBS MMCLR RTCLR RT2CLR PTCLR MVCLR "
    "DRCLR";

TEST(Setting, TheFileOfAFreshObject) {
  const TempFolder folder;
  for (int index = CThemeManager::kFirstColor; index <= CThemeManager::kLastColor; ++index) {
    CThemeManager::SetColor(index, static_cast<Color>(index));
  }
  SSimulation().SaveSetting(folder.Path("a.ini").c_str());
  CThemeManager::ResetColors();
  std::istringstream file(folder.Content("a.ini"));
  std::string line;
  file >> line;
  EXPECT_EQ(line, "[SimulationConfigure]");
  std::string found;
  while (file >> line) found += (found.empty() ? "" : " ") + line;
  EXPECT_EQ(found, kDefaults);
}

// Every stored value is another number, so that a value under the wrong key shows.
TEST(Setting, BothFormsBringEveryValueBack) {
  const TempFolder folder;
  CKqArchive numbered = Renumbered(StoredBy(SSimulation()));
  SSimulation test;
  test.Load(numbered);
  EXPECT_EQ(KeysOf(StoredBy(test), "Simulation"), kArchiveKeys);
  EXPECT_EQ(StoredBy(test), ValuesOf(numbered));
  test.SaveSetting(folder.Path("a.ini").c_str());
  SSimulation other;
  other.ReadSetting(folder.Path("a.ini").c_str());
  EXPECT_NE(test.Setting.SignalAction, 0);
  other.Setting.SignalAction = test.Setting.SignalAction;
  EXPECT_EQ(StoredBy(other), StoredBy(test));
}

TEST(Setting, RequiredAnIniFileNeverSwitchesSignalActionOn) {
  const TempFolder folder;
  const std::string path = folder.Put("a.ini", "[SimulationConfigure]\nSignalAction=1\nDispSignalAction=7\n");
  SSimulation test;
  test.Setting.SignalAction = 3;
  test.Setting.TradeVolume = 5;
  test.Setting.SymbolName = "name";
  test.ReadSetting(path.c_str());
  EXPECT_EQ(test.Setting.SignalAction, 0);
  EXPECT_EQ(test.Setting.DispSignalAction, 7);
  EXPECT_EQ(test.Setting.TradeVolume, 5);  // What the file lacks stays.
  // What the archive lacks gets its default, and these two are never in it.
  CKqArchive archive;
  archive.SetCategory("Simulation");
  archive.SetInt("SACT", 3, 0);
  test.Load(archive);
  EXPECT_EQ(test.Setting.SignalAction, 3);
  EXPECT_EQ(test.Setting.TradeVolume, 1);
  EXPECT_EQ(test.Setting.DispSignalAction, 7);
  EXPECT_STREQ(test.Setting.SymbolName.c_str(), "name");
  test.SetDefaultValue();
  EXPECT_EQ(test.Setting.DispSignalAction, 1);
}

// Series of the sizes 1 to 8, in the order of `SetVariable`.
struct Series {
  SVector at[8] = {SVector(1), SVector(2), SVector(3), SVector(4),
                   SVector(5), SVector(6), SVector(7), SVector(8)};
};

void Bind(SSimulation &test, Series &bars) {
  test.SetVariable(bars.at[0], bars.at[1], bars.at[2], bars.at[3], bars.at[4], bars.at[5], bars.at[6],
                   bars.at[7]);
}

TEST(Simulation, SetVariableCopiesAndBindsInTheOrderOfEachSide) {
  Series bars;
  SSimulation test;
  Bind(test, bars);
  SFunctionList functions;
  test.SetFunction(&functions);
  test.SetVariableToIndex();
  for (int i = 0; i < kInputSeries; ++i) EXPECT_EQ(test.Index.Variable[i]->GetSize(), i + 1);
  EXPECT_EQ(test.Index.FunctionList, &functions);
  EXPECT_EQ(test.Amount, test.WorkingBars + kAmountBars);
  EXPECT_EQ(test.Amount->GetSize(), 8);
  EXPECT_EQ(test.SourceOpenInterest, test.SourceBars + kOpenInterestBars);
  EXPECT_EQ(test.SourceOpenInterest->GetSize(), 7);
}

TEST(Simulation, RequiredACopyPointsAtTheOtherObject) {
  Series bars;
  SSimulation test;
  Bind(test, bars);
  const SSimulation copy(test);
  EXPECT_EQ(copy.Amount, &test.WorkingBars[kAmountBars]);
  EXPECT_EQ(copy.WorkingBars[kDateBars].GetSize(), 6);
  EXPECT_EQ(copy.SourceBars[kOpenInterestBars].GetSize(), 7);
}

TEST(Simulation, RequiredAnAssignmentIsNarrowerThanACopy) {
  Series bars;
  SSimulation test;
  Bind(test, bars);
  test.History[kTradeBarsHeld].Add(4.0);
  test.SummaryDetail.Text[13] = "last";
  test.SummaryRows[199].Value2 = "last";
  test.StopOnBarBeforeLast[3] = 1;
  test.SetMargin(0.0);
  SSimulation target;
  target = test;
  EXPECT_EQ(target.WorkingBars[kVolumeBars].GetSize(), 5);
  EXPECT_EQ(target.WorkingBars[kDateBars].GetSize(), 5);  // The volumes.
  EXPECT_EQ(target.SourceBars[kDateBars].GetSize(), 6);
  for (const BarSeries left : {kAmountBars, kOpenInterestBars}) {
    EXPECT_EQ(target.WorkingBars[left].GetSize() + target.SourceBars[left].GetSize(), 0);
  }
  EXPECT_EQ(target.Date, test.Date);
  EXPECT_EQ(target.SourceDate, test.SourceDate);
  EXPECT_EQ(target.Amount, nullptr);
  EXPECT_EQ(target.OpenInterest, nullptr);
  EXPECT_EQ(target.SourceAmount, nullptr);
  EXPECT_EQ(target.SourceOpenInterest, nullptr);
  EXPECT_EQ(target.History[kTradeBarsHeld].GetSize(), 1);
  EXPECT_STREQ(target.SummaryDetail.Text[13].c_str(), "last");
  EXPECT_STREQ(target.SummaryRows[199].Value2.c_str(), "last");
  EXPECT_EQ(target.StopOnBarBeforeLast[3], 1);
  EXPECT_EQ(target.BlMargin, 1);
}

}  // namespace
}  // namespace trovenu::tests
