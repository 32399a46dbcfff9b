#pragma once

#include <vector>

#include "trovenu/platform/export.h"
#include "trovenu/support/text.h"

namespace trovenu {

/// A list of texts, copied by value.
class TROVENU_API SAnsiStringList {
 public:
  /// Adds to the end.
  void Add(const SString &text) { texts_.push_back({text}); }
  /// Removes all texts.
  void Clear() { texts_.clear(); }

  long GetSize() const { return static_cast<long>(texts_.size()); }

  /// The text at `index`, from 0. Outside the list an empty text, which is of no list: what is written to it
  /// is lost.
  SString &operator[](long index);
  const SString &operator[](long index) const;

 private:
  bool Has(long index) const { return index >= 0 && index < GetSize(); }

  // Compilers warn of a vector of what has virtual functions and no virtual destructor, in every program that
  // has a list.
  struct Item {
    SString text;
  };

  std::vector<Item> texts_;
  SString none_;
};

}  // namespace trovenu
