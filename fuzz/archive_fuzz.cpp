// Archives: any bytes are read and written again, and what is stored comes back.

#include <bit>
#include <cstdint>
#include <string>

#include "fuzz/check.h"
#include "fuzz/input.h"
#include "trovenu/support/archive.h"

namespace trovenu::fuzz {
namespace {

CKqArchive Reloaded(const CKqArchive &archive) {
  CMemFile file;
  Require(archive.Save(&file) != 0, "an archive goes into memory");
  CKqArchive loaded;
  Require(loaded.Load(&file) != 0, "what has been saved is loaded");
  CMemFile again;
  loaded.Save(&again);
  Require(again.View() == file.View(), "an archive is saved as it was loaded");
  return loaded;
}

void Run(Input input) {
  const std::string category = input.Text();
  const std::string key = input.Text();
  const std::string text = input.Text();
  const double number = input.Number();
  const int whole = TruncateToInt(input.Number());
  CMemFile bytes(input.Rest());
  CKqArchive archive;
  Require(archive.Load(&bytes) != 0, "any bytes are an archive");
  CMemFile same;
  archive.Save(&same);
  Require(same.View() == bytes.View(), "what is not understood stays");

  archive.SetCategory(category.c_str());
  archive.GetInt(key.c_str(), 1);
  archive.GetDbl(key.c_str(), 1);
  const std::string other = key + "'";
  const SString neighbour = archive.GetStr(other.c_str(), "absent");
  archive.SetStr(key.c_str(), text.c_str(), "");
  archive = Reloaded(archive);
  archive.SetCategory(category.c_str());
  Require(archive.GetStr(key.c_str(), "absent") == text.c_str(), "a text comes back");
  Require(archive.GetStr(other.c_str(), "absent") == neighbour, "other keys keep their values");
  archive.SetDbl(key.c_str(), number, 0);
  archive.SetInt(other.c_str(), whole, 0);
  archive = Reloaded(archive);
  archive.SetCategory(category.c_str());
  Require(IsSameNumber(archive.GetDbl(key.c_str(), 77), number), "a number comes back");
  Require(archive.GetInt(other.c_str(), 77) == whole, "a whole number comes back");
}

}  // namespace
}  // namespace trovenu::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  trovenu::fuzz::Run({data, size});
  return 0;
}
