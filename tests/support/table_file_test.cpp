#include "trovenu/support/table_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <string>

#include "tests/platform/temp_folder.h"
#include "tests/platform/write_faults.h"
#include "tests/support/damage.h"
#include "tests/support/table_maker.h"
#include "trovenu/support/table_check.h"
#include "trovenu/support/table_reader.h"

namespace trovenu::tests {

namespace {

// A record is written with its end mark, and then counted.
constexpr std::size_t kWrittenBytes = kMadeRecordSize + 1;

TEST(TableFileTest, AppendStoppedAtAnyByteKeepsTheOldRecords) {
  if (!CanStopWrites()) GTEST_SKIP() << "writes can't be stopped here";
  const TempFolder folder(TempFolder::Place::InMemory);
  // 255 becomes 256: the bytes of the count change one after the other.
  for (const int before : {0, 3, 255}) {
    const std::string path = folder.Path("a.rpt");
    MakeTable(path, before);
    const std::string old = folder.Content("a.rpt");
    const auto append = [&] {
      DB table(path.c_str());
      AddRecord(&table, before);
    };
    bool finished = false;
    for (std::size_t stopAt = 0; !finished; ++stopAt) {
      ASSERT_LT(stopAt, 10u);
      const std::size_t step = stopAt == 0 ? 30 : 1;
      const std::size_t last = stopAt == 0 ? kWrittenBytes : TableFormat::kCountSize;
      for (std::size_t bytes = 0; bytes <= last && !finished; bytes += step) {
        folder.Put("a.rpt", old);
        finished = StopAtWrite(stopAt, bytes, append).finished;
        const int records = CountRecords(path);
        EXPECT_TRUE(records == before || records == before + 1) << stopAt << ' ' << bytes << ": " << records;
        // Whatever was left, the next record goes where it belongs.
        DB table(path.c_str());
        EXPECT_NE(AddRecord(&table, records), 0);
        EXPECT_EQ(CountRecords(path), records + 1);
        EXPECT_TRUE(CheckTable(path).IsWhole());
      }
    }
  }
}

TEST(TableFileTest, ChangeStoppedAnywhereLeavesTheOldTableOrTheNewOne) {
  if (!CanStopWrites()) GTEST_SKIP() << "writes can't be stopped here";
  const TempFolder folder;
  const std::string path = folder.Path("a.rpt");
  MakeTable(path, 5);
  const std::string old = folder.Content("a.rpt");
  const auto change = [&] {
    DDB table(path.c_str(), "", 1);
    table.FindFirst("Value", "2");
    table.InsField("Value", "changed");
    if (table.WriteRecord() == 0) std::abort();
  };
  bool finished = false;
  for (std::size_t stopAt = 0; !finished; ++stopAt) {
    ASSERT_LT(stopAt, 20u);
    folder.Put("a.rpt", old);
    finished = StopAtWrite(stopAt, 70, change).finished;
    EXPECT_TRUE(CheckTable(path).IsWhole());
    DDB table(path.c_str(), "", 1);
    EXPECT_NE(table.FindFirst("Name", "name 2"), 0);
    EXPECT_TRUE(folder.Content("a.rpt") == old || table.GetStr("Value") == "changed") << stopAt;
  }
  EXPECT_NE(folder.Content("a.rpt"), old);
}

TEST(TableFileTest, FullDiskLeavesTheTableAsItWas) {
  if (!CanStopWrites()) GTEST_SKIP() << "no limit can be set here";
  const TempFolder folder;
  const std::string path = folder.Path("a.rpt");
  MakeTable(path, 5);
  const std::string old = folder.Content("a.rpt");
  for (const std::size_t room : {0u, 1u, 100u, 330u}) {
    EXPECT_TRUE(RunOnFullDisk(old.size() + room, [&] {
      DDB table(path.c_str(), "", 1);
      table.Append("");
      table.InsField("Value", "5");
      if (table.WriteRecord() != 0) std::abort();
    })) << room;
    EXPECT_EQ(folder.Content("a.rpt"), old) << room;
  }
}

TEST(TableFileTest, ReadersSeeWholeRecordsWhileAProcessWrites) {
  const TempFolder folder;
  const std::string path = folder.Path("a.rpt");
  MakeTable(path, 1);
  constexpr int kRecords = 1500;
  const auto readUntilAllAreThere = [&] {
    int seen = 0;
    while (seen < kRecords) {
      const int records = CountRecords(path);
      if (records < seen) return false;
      seen = records;
      DDB table(path.c_str(), "", 1);
      if (table.FindFirst("Value", std::to_string(seen - 1).c_str()) == 0) return false;
    }
    return true;
  };
  const int first = StartProcess(readUntilAllAreThere);
  const int second = StartProcess(readUntilAllAreThere);
  {
    DB table(path.c_str());
    for (int i = 1; i < kRecords; ++i) {
      ASSERT_NE(AddRecord(&table, i), 0);
    }
  }
  EXPECT_TRUE(WaitFor(first));
  EXPECT_TRUE(WaitFor(second));
  EXPECT_EQ(CountRecords(path), kRecords);
}

TEST(TableFileTest, TwoWritersLoseNoRecord) {
  const TempFolder folder;
  const std::string path = folder.Path("a.rpt");
  MakeTable(path);
  constexpr int kRecords = 300;
  const auto write = [&](int from) {
    DB table(path.c_str());
    for (int i = from; i < from + kRecords; ++i) {
      if (AddRecord(&table, i) == 0) return false;
      // Changing a record makes a new file under the other's hands.
      if (i % 50 == 0 &&
          (table.InsField("Value", std::to_string(i).c_str()) == 0 || table.WriteRecord() == 0)) {
        return false;
      }
    }
    return true;
  };
  const int other = StartProcess([&] { return write(kRecords); });
  EXPECT_TRUE(write(0));
  EXPECT_TRUE(WaitFor(other));
  DB table(path.c_str());
  EXPECT_EQ(table.RecordCount, 2 * kRecords);
  for (int i = 0; i < 2 * kRecords; ++i) {
    ASSERT_NE(table.FindFirst("Value", std::to_string(i).c_str()), 0) << i;
    EXPECT_TRUE(IsRecord(table, i));
  }
  EXPECT_TRUE(CheckTable(path).IsWhole());
}

TEST(TableFileTest, CutTableShowsAllRecordsBeforeTheCut) {
  const TempFolder folder(TempFolder::Place::InMemory);
  MakeTable(folder.Path("good"), 3);
  const std::string good = folder.Content("good");
  for (std::size_t size = 0; size < good.size(); ++size) {
    const std::string path = folder.Put("cut", good.substr(0, size));
    const int whole = size < kMadeHeadSize ? -1 : static_cast<int>((size - kMadeHeadSize) / kMadeRecordSize);
    ASSERT_EQ(CountRecords(path), whole) << size;
    EXPECT_FALSE(CheckTable(path).IsWhole());
    EXPECT_EQ(CheckTable(path).records, static_cast<std::size_t>(whole < 0 ? 0 : whole));
  }
}

TEST(TableFileTest, DamagedTablesAreReadAsFarAsTheyGo) {
  const TempFolder folder(TempFolder::Place::InMemory);
  MakeTable(folder.Path("good"), 4);
  const std::string good = folder.Content("good");
  Damage damage;
  int records = 0;
  for (int i = 0; i < 4000; ++i) {
    const std::string path = folder.Put("bad", damage.Of(good));
    DDB table(path.c_str(), path.c_str(), 1);
    for (; table.Eof() == 0; table.MoveNext()) {
      for (const char *field : {"Name", "LongerFieldName", "Value", "None"}) table.GetStr(field);
      table.Deleted();
      ++records;
    }
    table.FindFirst("Value", "2");
    table.InsField("Value", "changed");
    table.WriteRecord();
    table.Append("");
    table.InsField("Value", "added");
    if (table.WriteRecord() != 0) {
      EXPECT_EQ(table.GetStr("Name"), "");
    }
    const TableReport report = CheckTable(path);
    if (!SaveReadableTable(path, folder.Path("saved"))) continue;
    const TableReport saved = CheckTable(folder.Path("saved"));
    EXPECT_TRUE(saved.IsWhole());
    EXPECT_EQ(saved.records, report.records + report.markFaults);
    EXPECT_EQ(saved.deleted, report.deleted + report.markFaults);
  }
  EXPECT_GT(records, 4000);
}

}  // namespace

}  // namespace trovenu::tests
