// Writes what fuzzing begins with, made from the tables and the writers of the library: `seeds FOLDER`. The
// file words.dict is a dictionary with the words of the formula language; below it stand a folder of first
// inputs for each target that reads a stored form.

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>

#include "fuzz/functions.h"
#include "fuzz/stored_text.h"
#include "trovenu/formula/words.h"
#include "trovenu/price/price_data_list.h"

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
  // Behind the zero byte stands the choice of the form.
  const std::string symbols = fuzz::StoredText(list);
  fuzz::Put(folder / "settings/settings", std::string(settings.View()));
  fuzz::Put(folder / "settings/symbols", symbols + '\0' + '\1');
  fuzz::Put(folder / "settings/indicator", fuzz::StoredText(SIndex(), -1) + '\0' + '\2');
  const std::string entry = std::string("0_x") + '\0' + "key" + '\0' + "value" + '\0';
  fuzz::Put(folder / "archive/symbols", entry + '\0' + '\0' + symbols.substr(0, 1500));
  fuzz::Put(folder / "ini/settings", entry + '\0' + std::string(settings.View().substr(0, 1500)));
  return 0;
}
