// Writes what fuzzing begins with, made from the tables and the writers of the library: `seeds FOLDER`. The
// file words.dict is a dictionary with the words of the formula language; below it stand a folder of first
// inputs for each target that reads a stored form.

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <random>
#include <set>
#include <string>

#include "fuzz/functions.h"
#include "fuzz/stored_text.h"
#include "tests/platform/temp_folder.h"
#include "trovenu/backtest/simulation.h"
#include "trovenu/formula/words.h"
#include "trovenu/indicator/index.h"
#include "trovenu/price/chart_pane.h"
#include "trovenu/price/chart_property.h"
#include "trovenu/price/price_data_list.h"
#include "trovenu/support/index_paths.h"

namespace trovenu::fuzz {
namespace {

void Put(const std::filesystem::path &path, const std::string &content) {
  std::filesystem::create_directories(path.parent_path());
  std::ofstream(path, std::ios::binary) << content;
}

std::string Quoted(std::string_view word) {
  std::string text = "\"";
  for (const char c : word) {
    char code[8];
    std::snprintf(code, sizeof code, "\\x%02X", static_cast<unsigned>(static_cast<unsigned char>(c)));
    text += code;
  }
  return text + "\"\n";
}

std::string Dictionary() {
  std::set<std::string> words;
  for (const Word &word : Words()) {
    words.insert(word.text);
    if (word.family == WordFamily::Vector || word.family == WordFamily::Math)
      words.insert(std::string(word.text) + "(");
  }
  for (const char *name : kFunctionNames) words.insert(std::string(name) + "(");
  for (const char *sign : {"==", "!=", "<=", ">=", "<>", "&&", "||", "//", "/*", "*/"}) words.insert(sign);
  std::string text;
  for (const std::string &word : words) text += Quoted(word);
  return text;
}

// One text for each kind of the target, the kind behind the zero byte. The first is a settings text.
void PutSettings(const std::filesystem::path &folder, const std::string &settings,
                 const std::string &symbols) {
  const std::string texts[] = {settings,
                               symbols,
                               StoredText(SIndex(), -1),
                               StoredText(SChartProperty()),
                               StoredText(SChartProp(), 3),
                               StoredText(SSRLines(), -1),
                               StoredText(SSimulation())};
  for (char kind = 0; const std::string &text : texts) {
    Put(folder / ("settings/kind" + std::to_string(kind)), text + '\0' + kind);
    ++kind;
  }
}

// What a target makes its choices of.
std::string Choices(std::uint32_t seed) {
  std::mt19937 random(seed);
  std::string bytes(300, '\0');
  for (char &byte : bytes) byte = static_cast<char>(random());
  return bytes;
}

// Files with other values than the defaults, behind the choice of their readers.
void PutIniFiles(const std::filesystem::path &folder, const std::string &entry) {
  const tests::TempFolder files;
  setIndexDir(files.Path().c_str());
  SSRLines().SaveSetting();
  setIndexDir(nullptr);
  SSimulation().SaveSetting(files.Path("simulation").c_str());
  for (const char *name : {"alarmset.ini", "simulation"}) {
    const std::string bytes = Choices(4);
    Input choices(reinterpret_cast<const std::uint8_t *>(bytes.data()), bytes.size());
    Put(folder / "ini" / name, entry + '\x1e' + WithOtherValues(files.Content(name), choices));
  }
}

}  // namespace
}  // namespace trovenu::fuzz

int main(int argc, char **argv) {
  using namespace trovenu;
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s FOLDER\n", argv[0]);
    return 2;
  }
  const std::filesystem::path folder = argv[1];
  fuzz::Put(folder / "words.dict", fuzz::Dictionary());
  SPriceDataList list;
  list.Add();
  CMemFile settings;
  list.SaveSetting(&settings);
  const std::string symbols = fuzz::StoredText(list);
  fuzz::PutSettings(folder, std::string(settings.View()), symbols);
  const std::string entry = std::string("0_x") + '\0' + "key" + '\0' + "value" + '\0';
  fuzz::Put(folder / "archive/symbols", entry + '\0' + '\0' + symbols.substr(0, 1500));
  fuzz::Put(folder / "ini/settings", entry + '\0' + std::string(settings.View().substr(0, 1500)));
  fuzz::PutIniFiles(folder, entry);
  // An empty text has the formula made.
  for (const std::uint32_t seed : {1U, 2U, 3U})
    fuzz::Put(folder / ("formula/made" + std::to_string(seed)), '\0' + fuzz::Choices(seed));
  return 0;
}
