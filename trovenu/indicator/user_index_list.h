#pragma once

#include <cstddef>

#include "trovenu/platform/array.h"

namespace trovenu {

class SIndex;

/// An array of indicators that it does not own, found by their `UserID`.
class TROVENU_API SUserIndexList : public CArray<SIndex *, SIndex *> {
 public:
  /// Position of the first element with that ID, or -1.
  int Find(int userId) const;
  /// Position of that object, or -1.
  int Find(const SIndex *index) const;
  /// The largest ID plus 1, 0 without one above -1.
  int GetNextID() const;
  /// Takes every element with that ID out of the array; the objects stay.
  void RemoveIndex(int userId);
  /// The last element with that ID, or null.
  /// Required: with an ID that stands twice this is another element than `Find` gives.
  SIndex *GetIndex(int userId) const;

 private:
  bool HasId(std::ptrdiff_t at, int userId) const;
};

}  // namespace trovenu
