#include "tools/trovenu/report_folder.h"

#include <cstdlib>
#include <filesystem>
#include <regex>

#include "tools/trovenu/failure.h"
#include "tools/trovenu/path_text.h"
#include "tools/trovenu/terminal_text.h"
#include "trovenu/backtest/simulation.h"
#include "trovenu/platform/platform.h"
#include "trovenu/support/table_writer.h"

namespace trovenu::tool {

namespace {

namespace fs = std::filesystem;

// Width of the fields of the run table that hold paths.
constexpr std::size_t kLongestPath = 200;
constexpr std::size_t kLongestName = 24;

bool IsReportName(const std::string &name) {
  static const std::regex kReport(
      R"(SumInfo\.rpt(\.new)?|(Summary|TradeList)\d+(\.rpt|(-print)?\.html)(\.new)?)");
  return std::regex_match(name, kReport);
}

// The number in "Summary12.rpt"; -1 for another name.
long RunNumberOf(const std::string &path) {
  static const std::regex kTable(R"((?:.*[/\\])?Summary(\d{1,9})\.rpt)");
  std::smatch match;
  return std::regex_match(path, match, kTable) ? std::strtol(match[1].str().c_str(), nullptr, 10) : -1;
}

std::string NumberText(const SString &count) { return count.IsEmpty() ? "0" : count.c_str(); }

using SavePage = void (*)(SString runTable, SString table, SString page);

void WritePage(SavePage save, const std::string &runs, const SString &table, const char *ending) {
  std::string page = table.c_str();
  page.replace(page.rfind(".rpt"), page.npos, ending);
  RemoveFile(page);
  save(runs.c_str(), table, page.c_str());
  if (FileExist(page.c_str()) == 0) throw Failure(page + ": can't be written");
}

}  // namespace

bool FinishedRun::IsComplete() const {
  return summaryRecords > 0 && std::to_string(tradeRecords) == NumberText(figures.TransactionCount);
}

ReportFolder::ReportFolder(const std::string &path)
    : shown_(path), path_(TextOf((fs::absolute(PathOf(path.empty() ? "." : path)) / "").lexically_normal())) {
  if (path.empty()) throw Failure("expected a folder of reports, found an empty path");
  if (path_.size() + kLongestName > kLongestPath) {
    throw Failure(Quoted(path) + ": expected a folder of at most " +
                  std::to_string(kLongestPath - kLongestName) + " bytes, its whole path counted");
  }
}

std::string ReportFolder::RunTable() const { return path_ + "SumInfo.rpt"; }

std::string ReportFolder::SummaryTable(long run) const {
  return path_ + "Summary" + std::to_string(run) + ".rpt";
}

std::string ReportFolder::TradeTable(long run) const {
  return path_ + "TradeList" + std::to_string(run) + ".rpt";
}

void ReportFolder::RequireReportsAlone() const {
  std::error_code fault;
  if (!fs::exists(PathOf(path_), fault)) {
    const fs::path parent = PathOf(path_).parent_path().parent_path();
    if (!fs::is_directory(parent, fault)) throw Failure(shown_ + ": there is no folder to make it in");
    return;
  }
  for (fs::directory_iterator i(PathOf(path_), fault), end; !fault && i != end; i.increment(fault)) {
    const std::string name = TextOf(i->path().filename());
    if (i->is_regular_file() && IsReportName(name)) continue;
    throw Failure(shown_ +
                  ": expected a folder with nothing but earlier reports, which are deleted, but it " +
                  "holds " + Quoted(name));
  }
  if (fault) throw Failure(shown_ + ": can't be read as a folder (" + fault.message() + ")");
}

void ReportFolder::RequireRunTable() const {
  if (FileExist(RunTable().c_str()) == 0) throw Failure(shown_ + ": no report can be written there");
}

std::vector<FinishedRun> ReportFolder::Runs() const {
  DB table(RunTable().c_str());
  if (table.State != DB::Open) throw Failure(RunTable() + ": expected a run table, which a search leaves");
  std::vector<FinishedRun> runs;
  for (table.MoveFirst(); table.Eof() == 0; table.MoveNext()) {
    FinishedRun run;
    SSummaryInfo &figures = run.figures;
    const struct {
      const char *field;
      SString *text;
    } fields[] = {
        {"SumFileName", &figures.SumFileName},
        {"TradeListFileName", &figures.TradeListFileName},
        {"IndicatorName", &figures.IndicatorName},
        {"TotalProfit", &figures.TotalProfit},
        {"TransactionCount", &figures.TransactionCount},
        {"WinLossRatio", &figures.WinLossRatio},
        {"WinRatio", &figures.WinRatio},
        {"ProfitFactor", &figures.ProfitFactor},
        {"AverageProfit", &figures.AverageProfit},
        {"InMarketRatio", &figures.InMarketRatio},
        {"Status", &figures.Status},
    };
    for (const auto &field : fields) *field.text = table.GetStr(field.field);
    run.number = RunNumberOf(figures.SumFileName.c_str());
    run.summaryRecords = DB(figures.SumFileName.c_str()).RecordCount;
    run.tradeRecords = DB(figures.TradeListFileName.c_str()).RecordCount;
    runs.push_back(std::move(run));
  }
  return runs;
}

void ReportFolder::WritePages(const FinishedRun &run) const {
  for (const SString *table : {&run.figures.SumFileName, &run.figures.TradeListFileName}) {
    if (run.number < 0 || FileExist(table->c_str()) == 0) {
      throw Failure(RunTable() + ": names the table " + Quoted(table->c_str()) +
                    ", which is not there (has the folder been moved?)");
    }
  }
  const std::string runs = RunTable();
  WritePage(SSimulation::SaveSummaryToHTML, runs, run.figures.SumFileName, ".html");
  WritePage(SSimulation::SaveSummaryToHTML2, runs, run.figures.SumFileName, "-print.html");
  WritePage(SSimulation::SaveTradeHistoryToHTML, runs, run.figures.TradeListFileName, ".html");
  WritePage(SSimulation::SaveTradeHistoryToHTML2, runs, run.figures.TradeListFileName, "-print.html");
}

}  // namespace trovenu::tool
