// What a chart stores: any text is read, and what was read is the same after it has been stored and read
// again. The text of the input counts, or else the defaults with other values.

#include <memory>
#include <string>

#include "fuzz/check.h"
#include "fuzz/stored_text.h"
#include "trovenu/backtest/simulation.h"
#include "trovenu/indicator/index.h"
#include "trovenu/price/chart_pane.h"
#include "trovenu/price/chart_property.h"
#include "trovenu/price/price_data_list.h"

namespace trovenu::fuzz {
namespace {

// More symbols take long and show nothing new.
constexpr int kMostSymbols = 4;

// Made new for each look, for objects that can't be copied.
template <class Object, class... Arguments>
void CheckStored(const std::string &given, Input &input, Arguments... arguments) {
  static const std::string defaults = StoredText(Object(), arguments...);
  const std::string text = given.empty() ? WithOtherValues(defaults, input) : given;
  CKqArchive archive = ArchiveOf(text);
  const auto first = std::make_unique<Object>();
  first->Load(archive, arguments...);
  const std::string stored = StoredText(*first, arguments...);
  CKqArchive again = ArchiveOf(stored);
  const auto second = std::make_unique<Object>();
  second->Load(again, arguments...);
  Require(StoredText(*second, arguments...) == stored, "what was stored is read and stored alike");
}

bool HasManySymbols(const std::string &text) {
  CKqArchive archive = ArchiveOf(text);
  archive.SetCategory("PriceDataList");
  const int stored = archive.GetInt("size", 0);
  archive.SetCategory("-1");
  return stored > kMostSymbols || archive.GetInt("COUNT", 1) > kMostSymbols;
}

SPriceDataList OneSymbol() {
  SPriceDataList list;
  list.Add();
  return list;
}

void CheckSymbols(const std::string &given, Input &input) {
  static const std::string defaults = StoredText(OneSymbol());
  const std::string text = given.empty() ? WithOtherValues(defaults, input) : given;
  if (HasManySymbols(text)) return;
  CKqArchive archive = ArchiveOf(text);
  SPriceDataList list;
  list.Load(archive);
  const std::string stored = StoredText(list);
  CKqArchive again = ArchiveOf(stored);
  SPriceDataList second;
  second.Load(again);
  Require(StoredText(second) == stored, "what was stored of symbols is read and stored alike");
}

std::string SettingsOf(const SPriceDataList &list) {
  CMemFile file;
  list.SaveSetting(&file);
  return std::string(file.View());
}

void CheckSettingsText(const std::string &given, Input &input) {
  static const std::string defaults = SettingsOf(OneSymbol());
  const std::string text = given.empty() ? WithOtherValues(defaults, input) : given;
  if (HasManySymbols(text)) return;
  CMemFile file(text);
  SPriceDataList list;
  list.ReadSetting(&file);
  CMemFile written(SettingsOf(list));
  SPriceDataList second;
  second.ReadSetting(&written);
  Require(SettingsOf(second) == written.View(), "a settings text is read and written alike");
}

void Run(Input input) {
  const std::string text = input.Text();
  switch (input.Below(7)) {
    case 0:
      return CheckSettingsText(text, input);
    case 1:
      return CheckSymbols(text, input);
    case 2:
      return CheckStored<SIndex>(text, input, -1);
    case 3:
      return CheckStored<SChartProperty>(text, input);
    case 4:
      return CheckStored<SChartProp>(text, input, 3);
    case 5:
      return CheckStored<SSRLines>(text, input, -1);
    default:
      return CheckStored<SSimulation>(text, input);
  }
}

}  // namespace
}  // namespace trovenu::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  trovenu::fuzz::Run({data, size});
  return 0;
}
