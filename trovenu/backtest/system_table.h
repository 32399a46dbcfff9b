#pragma once

#include "trovenu/support/index_paths.h"
#include "trovenu/support/table_reader.h"

namespace trovenu {

/// The formula tables of the trading systems, as long as a search goes through them.
class SystemTable {
 public:
  SystemTable() : table_(getIndexDBFileName(kKind).c_str(), getUserDBFileName(kKind).c_str(), 1) {
    table_.SetExtension("sys");
    table_.MoveFirst();
  }

  /// The name of a system as its record has it; empty if there is none.
  SString Find(const SString &name) {
    return table_.FindFirst("IndexName", name.c_str()) != 0 ? table_.GetStr("IndexName") : SString();
  }

 private:
  static constexpr int kKind = 3;
  DDB table_;
};

}  // namespace trovenu
