#pragma once

#include <string>
#include <vector>

#include "trovenu/support/archive.h"

namespace trovenu::tests {

/// One value of an archive, as text.
struct StoredValue {
  std::string category;
  std::string key;
  std::string value;

  bool operator==(const StoredValue &other) const = default;
};

/// Everything that an archive holds, in the order of storing.
std::vector<StoredValue> ValuesOf(const CKqArchive &archive);

/// An archive with the same keys in which every value is another number, no two of them alike.
CKqArchive Renumbered(const std::vector<StoredValue> &values);

/// The keys of one category, in order, with a blank between them.
std::string KeysOf(const std::vector<StoredValue> &values, const std::string &category);

/// What `object` stores.
template <class Object, class... Index>
std::vector<StoredValue> StoredBy(const Object &object, Index... index) {
  CKqArchive archive;
  object.Store(archive, index...);
  return ValuesOf(archive);
}

}  // namespace trovenu::tests
