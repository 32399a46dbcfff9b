#pragma once

#include <memory>

#include "trovenu/formula/user_function.h"

namespace trovenu {

/// The user functions that an engine may call, or the patterns of a candle scan.
///
/// Invariant: `Data` holds `MaxSize` elements, of which the first `Size` are in use. The part that is an
/// `SFunction` stays empty: it stands for the elements outside the list.
class TROVENU_API SFunctionList : public SFunction {
 public:
  /// An empty list with room for 100, growing by 100.
  SFunctionList();
  SFunctionList(const SFunctionList &other);
  /// `Clear`, then `Add` of each element.
  SFunctionList &operator=(const SFunctionList &other);
  ~SFunctionList() override;

  /// Appends a copy.
  void Add(const SFunction &function);
  /// Moves the elements after `i` down. Required: any index lowers the size, though never below 0.
  void Delete(int i);
  /// Removes all elements. Required: the list then has room for 20 and grows by 20.
  void Clear();
  /// Makes room for `n` elements; never shrinks.
  void SetMaxSize(long n);
  /// Element `i`, or the list itself, an empty function, outside 0 to `Size` - 1.
  SFunction &operator[](long i);
  const SFunction &operator[](long i) const;
  /// Position of the first function of that name, whatever its case, or -1.
  int Find(const char *name) const;

  /// Adds a function from one text, "name|body|parameter|parameter". The text is changed: its escape
  /// characters go and its fields are cut off. Null is ignored.
  void SetExpressionWithVariable(char *text);
  /// Replaces the list by the user functions of the function tables, the system's first. 1 when at least one
  /// was added, else 0.
  int ReadFunction();

  std::unique_ptr<SFunction[]> Data;
  int MaxSize = 0;
  int GrowBy = 0;
  int Size = 0;

 private:
  void Reset(int room);
};

}  // namespace trovenu
