#include "tests/price/stored_values.h"

#include <sstream>

namespace trovenu::tests {

std::vector<StoredValue> ValuesOf(const CKqArchive &archive) {
  CMemFile file;
  archive.Save(&file);
  std::istringstream text{std::string(file.View())};
  std::vector<StoredValue> values;
  std::string category;
  for (std::string line; std::getline(text, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    const std::size_t equals = line.find('=');
    if (line.size() > 1 && line.front() == '[') category = line.substr(1, line.size() - 2);
    if (equals != std::string::npos) {
      values.push_back({category, line.substr(0, equals), line.substr(equals + 1)});
    }
  }
  return values;
}

CKqArchive Renumbered(const std::vector<StoredValue> &values) {
  CKqArchive archive;
  int number = 1000;
  for (const StoredValue &stored : values) {
    archive.SetCategory(stored.category.c_str());
    archive.SetInt(stored.key.c_str(), ++number, 0);
  }
  return archive;
}

std::string KeysOf(const std::vector<StoredValue> &values, const std::string &category) {
  std::string keys;
  for (const StoredValue &stored : values) {
    if (stored.category == category) keys += (keys.empty() ? "" : " ") + stored.key;
  }
  return keys;
}

}  // namespace trovenu::tests
