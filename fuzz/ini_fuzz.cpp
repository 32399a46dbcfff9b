// INI texts in memory and on disk: any bytes are kept, and what is written comes back.

#include <filesystem>
#include <optional>
#include <string>

#include "fuzz/check.h"
#include "fuzz/input.h"
#include "fuzz/stored_text.h"
#include "tests/platform/temp_folder.h"
#include "trovenu/backtest/simulation.h"
#include "trovenu/platform/platform.h"
#include "trovenu/price/sr_lines.h"
#include "trovenu/support/index_paths.h"
#include "trovenu/support/ini_file.h"
#include "trovenu/support/ini_mem_file.h"
#include "trovenu/support/ini_text.h"

namespace trovenu::fuzz {
namespace {

struct Entry {
  std::string section, key, value;
};

void CheckText(const std::string &text, const Entry &entry, IniText::LetterCase letterCase) {
  IniText ini(letterCase);
  ini.Parse(text);
  Require(ini.Text() == text, "a text stays as it is");
  const std::string other = entry.key + "'";
  const std::optional<std::string> neighbour = ini.Find(entry.section, other);
  ini.GetInt(entry.section, entry.key, 1);
  ini.GetDouble(entry.section, entry.key, 1);
  ini.Set(entry.section, entry.key, entry.value);
  Require(ini.Find(entry.section, entry.key) == entry.value, "a value is set");
  IniText again(letterCase);
  again.Parse(ini.Text());
  Require(again.Find(entry.section, entry.key) == entry.value, "a value is read back");
  Require(again.Find(entry.section, other) == neighbour, "other keys keep their values");
  IniText merged(letterCase);
  merged.Merge(ini);
  Require(merged.Find(entry.section, entry.key) == entry.value, "a merged value is there");
  Require(merged.Find(entry.section, other) == neighbour, "merged neighbours are there");
}

void CheckFiles(const std::string &text, const Entry &entry) {
  static const tests::TempFolder folder;
  const char *const section = entry.section.c_str();
  const char *const key = entry.key.c_str();
  const std::string path = folder.Put("a.ini", text);
  CIniMemFile loaded;
  Require(loaded.LoadIniFile(path.c_str(), 1) != 0, "a file is loaded");
  {
    CIniFile file(path.c_str());
    Require(file.GetString(section, key, "absent") == loaded.GetString(section, key, "absent"),
            "both classes read alike");
    file.WriteString(section, key, entry.value.c_str());
  }
  CIniMemFile content;
  content.LoadIniFile(path.c_str(), 1);
  Require(content.GetString(section, key, "absent") == entry.value.c_str(), "a file holds what was written");
  Require(loaded.SaveIniFile(path.c_str()) != 0, "a text is saved over a file");
  const SString old = loaded.GetString(section, key, entry.value.c_str());
  Require(CIniFile(path.c_str()).GetString(section, key, "absent") == old, "the saved values count");
}

// Settings that are read from any file and saved over it are read alike.
void CheckReaders(const std::string &text) {
  static const tests::TempFolder folder;
  const std::string path = folder.Put("simulation.ini", text);
  SSimulation test, testAgain;
  test.ReadSetting(path.c_str());
  Require(test.Setting.SignalAction == 0, "no file chooses the action on a signal");
  test.SaveSetting(path.c_str());
  testAgain.ReadSetting(path.c_str());
  Require(testAgain.Setting.SymbolName == test.Setting.SymbolName, "a symbol's name is read as it was saved");
  Require(StoredText(testAgain) == StoredText(test), "settings of a back-test are read as they were saved");

  folder.Put("alarmset.ini", text);
  setIndexDir(folder.Path().c_str());
  SSRLines lines, linesAgain;
  lines.ReadSetting();
  lines.SaveSetting();
  linesAgain.ReadSetting();
  setIndexDir(nullptr);
  Require(linesAgain == lines, "the look of the lines is read as it was saved");
}

void Run(Input input) {
  Entry entry;
  entry.section = input.Text();
  entry.key = input.Text();
  entry.value = input.Text();
  const int onDisk = input.Below(32);
  const std::string text = input.Rest();
  CheckText(text, entry, IniText::LetterCase::Ignored);
  CheckText(text, entry, IniText::LetterCase::Matters);
  if (onDisk == 31) CheckFiles(text, entry);
  if (onDisk == 30) CheckReaders(text);
}

}  // namespace
}  // namespace trovenu::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  trovenu::fuzz::Run({data, size});
  return 0;
}
