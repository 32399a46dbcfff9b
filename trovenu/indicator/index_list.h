#pragma once

#include <memory>

#include "trovenu/indicator/index.h"

namespace trovenu {

/// A list of indicators, held by value.
///
/// Invariant: `Data` holds `MaxSize` elements, of which the first `Size` are in use. The part that is an
/// `SIndex` stays an empty indicator: it stands for the elements outside the list.
class TROVENU_API SIndexList : public SIndex {
 public:
  /// An empty list with room for 20, growing by 20.
  SIndexList();
  SIndexList(const SIndexList &other);
  /// `Clear`, then `Add` of each element.
  SIndexList &operator=(const SIndexList &other);
  ~SIndexList() override;

  /// Appends a copy.
  void Add(const SIndex &index);
  /// Moves the elements after `i` down. Required: any index lowers the size, though never below 0.
  void Delete(int i);
  /// Removes all elements. Required: the list then has room for 200 and grows by 200.
  void Clear();
  /// Makes room for `n` elements; never shrinks.
  void SetMaxSize(long n);
  /// Element `i`, or the list itself, an empty indicator, outside 0 to `Size` - 1.
  SIndex &operator[](long i);
  const SIndex &operator[](long i) const;

  std::unique_ptr<SIndex[]> Data;
  int MaxSize = 0;
  int GrowBy = 0;
  int Size = 0;

 private:
  void Reset(int room);
};

}  // namespace trovenu
