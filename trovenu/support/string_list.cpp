#include "trovenu/support/string_list.h"

#include <cstddef>

namespace trovenu {

SString &SAnsiStringList::operator[](long index) {
  if (Has(index)) return texts_[static_cast<std::size_t>(index)].text;
  none_ = "";
  return none_;
}

const SString &SAnsiStringList::operator[](long index) const {
  static const SString kNone;
  return Has(index) ? texts_[static_cast<std::size_t>(index)].text : kNone;
}

}  // namespace trovenu
