#pragma once

/// \file
/// Compiled formulas: items in the order in which they run, on a stack of a fixed size.

#include <memory>

#include "trovenu/platform/export.h"
#include "trovenu/support/series.h"
#include "trovenu/support/text.h"

namespace trovenu {

/// What an `SStack` holds at most.
inline constexpr int kStackItems = 100;

/// One step of a program, or one value while a program runs.
struct TROVENU_API SStackItem {
  /// The operation, one of `OperationCode`.
  int OpCode = 0;
  /// Arguments of a function.
  int ParamCount = 0;
  /// The name of a series, a variable or a function, or the mnemonic of an operator; code page.
  SString Name;
  /// The number of a constant, or what a slot has been computed to.
  SVector Value;
};

/// A stack of items with room for 100.
///
/// As a program it is read from the top down: the top item runs first. The items above the top keep what they
/// last held.
class TROVENU_API SStack {
 public:
  SStack();
  /// As the assignment.
  SStack(const SStack &other);
  /// Copies the items. Required: `Top` of the copy is -1, so a copied program doesn't run until it is
  /// compiled again.
  SStack &operator=(const SStack &other);

  /// Copies the item to the top. A full stack drops it.
  void Push(const SStackItem &item);
  /// Takes the top item off into `item`, which an empty stack leaves as it was.
  void Pop(SStackItem &item);
  /// Copies the top item; an empty stack leaves `item` as it was.
  void Peek(SStackItem &item) const;
  bool IsFull() const { return Top >= MaxSize - 1; }

  /// Index of the top item, -1 when empty. A running program's is the item that runs.
  int Top = -1;
  /// Items pushed less items popped.
  int Count = 0;
  int MaxSize = kStackItems;
  SString Name;
  std::unique_ptr<SStackItem[]> Items;
};

}  // namespace trovenu
