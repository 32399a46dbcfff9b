#include <algorithm>
#include <cstring>

#include "trovenu/formula/calc.h"
#include "trovenu/formula/messages.h"
#include "trovenu/support/korean.h"

namespace trovenu {

Name *SCalc::Look(const char *name, int create) {
  if (name == nullptr) return nullptr;
  for (int i = 0; i < tableCount; ++i) {
    if (EqualNoCase(table[i]->string, name)) return table[i].get();
  }
  if (create == 0) return nullptr;
  if (std::strlen(name) >= kNameBytes) {
    Error(messages::kVariableNameTooLong);
    return nullptr;
  }
  if (tableCount >= kTableEntries) {
    Error(messages::kTooManyVariables);
    return nullptr;
  }
  NamePointer entry = std::make_shared<Name>();
  std::memcpy(entry->string, name, std::strlen(name) + 1);
  entry->formula = formula;
  table[tableCount] = std::move(entry);
  return table[tableCount++].get();
}

void SCalc::CopyTable(const NamePointer *from, NamePointer *to, int n) {
  for (int i = 0; i < n; ++i) {
    to[i] = std::make_shared<Name>(*from[i]);
    to[i]->link = 0;
  }
}

void SCalc::ClearNameTable() {
  for (NamePointer &entry : table) entry.reset();
  tableCount = 0;
}

}  // namespace trovenu
