#include <benchmark/benchmark.h>

#include <cstdint>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "trovenu/support/archive.h"
#include "trovenu/support/table_reader.h"
#include "trovenu/support/table_writer.h"

namespace trovenu {

namespace {

constexpr int kRecords = 100'000;
constexpr int kFields = 20;
constexpr int kWidth = 50;

std::string FieldName(int field) { return "TradeListField" + std::to_string(field); }

void CreateTable(DB *table, const std::string &path) {
  table->SkipFlush();
  table->CreateDB(path.c_str());
  table->ClearField();
  for (int i = 0; i < kFields; ++i) table->InsertField(FieldName(i).c_str(), 'c', kWidth);
  table->WriteHead();
  table->WriteField();
  table->WriteEof();
}

void AppendRecords(DB *table, int from, int count) {
  for (int i = from; i < from + count; ++i) {
    table->Append("");
    const std::string value = std::to_string(i) + ".25";
    for (int k = 0; k < kFields; ++k) table->InsField(FieldName(k).c_str(), value.c_str());
    table->WriteRecord();
  }
}

/// A table of 100,000 records of 20 fields, about 100 MB, for the run of the program.
class LargeTable {
 public:
  LargeTable() {
    std::random_device random;
    folder_ = std::filesystem::temp_directory_path() / ("trovenu-bench-" + std::to_string(random()));
    std::filesystem::create_directories(folder_);
    DB table;
    CreateTable(&table, Path());
    AppendRecords(&table, 0, kRecords);
  }
  ~LargeTable() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }
  LargeTable(const LargeTable &) = delete;
  LargeTable &operator=(const LargeTable &) = delete;

  std::string Path() const { return (folder_ / "large.rpt").string(); }
  std::string Beside(const char *name) const { return (folder_ / name).string(); }

 private:
  std::filesystem::path folder_;
};

const LargeTable &Large() {
  static const LargeTable table;
  return table;
}

void TableWalk(benchmark::State &state) {
  std::vector<std::string> names;
  for (int i = 0; i < kFields; ++i) names.push_back(FieldName(i));
  const std::string path = Large().Path();
  for (auto _ : state) {
    int bytes = 0;
    DDB table(path.c_str(), "", 1);
    for (table.MoveFirst(); table.Eof() == 0; table.MoveNext()) {
      if (table.Deleted() != 0) continue;
      for (const std::string &name : names) bytes += table.GetStr(name.c_str()).Length();
    }
    benchmark::DoNotOptimize(bytes);
  }
  state.SetItemsProcessed(state.iterations() * kRecords);
}
BENCHMARK(TableWalk)->Unit(benchmark::kMillisecond);

void TableFindLast(benchmark::State &state) {
  const std::string path = Large().Path();
  const std::string last = std::to_string(kRecords - 1) + ".25";
  const std::string field = FieldName(kFields - 1);
  for (auto _ : state) {
    DDB table(path.c_str(), "", 1);
    if (table.FindFirst(field.c_str(), last.c_str()) == 0) state.SkipWithError("not found");
  }
  state.SetItemsProcessed(state.iterations() * kRecords);
}
BENCHMARK(TableFindLast)->Unit(benchmark::kMillisecond);

void TableAppend(benchmark::State &state) {
  constexpr int kBatch = 1000;
  for (auto _ : state) {
    DB table;
    CreateTable(&table, Large().Beside("append.rpt"));
    AppendRecords(&table, 0, kBatch);
  }
  state.SetItemsProcessed(state.iterations() * kBatch);
}
BENCHMARK(TableAppend)->Unit(benchmark::kMillisecond);

void FillArchive(CKqArchive *archive, std::int64_t keys) {
  for (std::int64_t i = 0; i < keys; ++i) {
    if (i % 100 == 0) archive->SetCategory(("Index" + std::to_string(i / 100)).c_str());
    archive->SetDbl((std::to_string(i % 100) + ".LineValue").c_str(), 0.1 * static_cast<double>(i), 0);
  }
}

void ArchiveLoad(benchmark::State &state) {
  CKqArchive archive;
  FillArchive(&archive, state.range(0));
  CMemFile file;
  archive.Save(&file);
  for (auto _ : state) {
    CKqArchive loaded;
    loaded.Load(&file);
    benchmark::DoNotOptimize(loaded.IsEmpty());
  }
  state.SetComplexityN(state.range(0));
}
BENCHMARK(ArchiveLoad)
    ->RangeMultiplier(10)
    ->Range(1000, 100'000)
    ->Complexity(benchmark::oN)
    ->Unit(benchmark::kMillisecond);

void ArchiveStore(benchmark::State &state) {
  for (auto _ : state) {
    CKqArchive archive;
    FillArchive(&archive, state.range(0));
    CMemFile file;
    archive.Save(&file);
    benchmark::DoNotOptimize(file.GetLength());
  }
  state.SetComplexityN(state.range(0));
}
BENCHMARK(ArchiveStore)
    ->RangeMultiplier(10)
    ->Range(1000, 100'000)
    ->Complexity(benchmark::oN)
    ->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace trovenu
