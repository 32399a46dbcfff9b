#pragma once

#include <memory>

#include "trovenu/platform/export.h"
#include "trovenu/price/price_data.h"

namespace trovenu {

class CIniMemFile;
class CKqArchive;
class CMemFile;

/// The symbols of one chart.
///
/// A symbol's position in the list is its number; its ID is a separate value that stays with it. Positions at
/// or past `count` are allocated up to `capacity` and keep what they last held. When the list grows, the
/// symbols move: pointers to their series end, and whoever holds some binds anew.
///
/// Required: symbols move by assignment, so whatever an assignment of `SPriceData` loses is lost when the
/// list grows, also while it is read: `ShowBaseLine` of the symbols before.
class TROVENU_API SPriceDataList {
 public:
  /// No symbols, with room for one.
  SPriceDataList();
  SPriceDataList(const SPriceDataList &other);
  /// Required: symbols that find room keep their ID, one for which the list has to grow gets a fresh one. The
  /// selection stays that of this list.
  SPriceDataList &operator=(const SPriceDataList &other);
  virtual ~SPriceDataList();

  /// Appends a symbol with a fresh ID and gives the ID, or -1 if memory is exhausted. The symbol has no bars.
  /// Required: where an earlier symbol stood at that position, its texts, property and lines are still there.
  int Add();
  /// Appends a copy under a fresh ID.
  int Add(const SPriceData &symbol);
  /// Removes a symbol. An index outside 0 to `capacity` - 1 is ignored.
  /// Required: an index from `count` to `capacity` - 1 removes the last symbol.
  void Delete(int index);
  /// Empties the list.
  /// Required: clears the first symbol only; the others keep their contents until `Add` reaches them.
  void Clear();
  /// Makes room for so many symbols in all; never less than there is.
  void SetMaxSize(long size);
  int GetSize() const { return count; }
  /// The symbol at a position, or `fallback` outside 0 to `count` - 1.
  SPriceData &operator[](long index);
  const SPriceData &operator[](long index) const;

  /// The largest ID plus 1, 0 for an empty list.
  int GetNextID() const;
  /// The position of the first symbol with that ID, or -1.
  int GetSymbolNoFromID(int id) const;
  /// The ID at that position, or -1 outside 0 to `count` - 1.
  int GetSymbolIDFromNo(int no) const;
  /// The symbol with that ID, the selected one for an ID below 0. `fallback` if there is none; never null.
  SPriceData *GetCurData(int id);
  /// The selected symbol. If it has gone away, the first one becomes the selected one. `fallback` in an empty
  /// list.
  SPriceData *GetCurSlectedData();
  /// The selected ID, after the same repair.
  int GetCurSelecedID();

  /// Reads or writes all symbols; "size" in the category "PriceDataList" is their number.
  void Load(CKqArchive &archive);
  void Store(CKqArchive &archive) const;
  /// The same without the lines of the symbols.
  void LoadTheme(CKqArchive &archive);
  void StoreTheme(CKqArchive &archive) const;

  /// \name Settings text
  /// The look of all symbols as an INI text with Korean names.
  /// Required: Value1 and Value2 of a chart type share the key "변수값1"; writing leaves Value2 there,
  /// reading sets both from it. Lines are taken from the text only if they differ from the defaults in more
  /// than their values.
  /// @{

  /// Null reads the empty text, which means one symbol with its defaults, and is nothing to write to.
  void ReadSetting(CMemFile *file);
  void ReadSetting(const char *path);
  void SaveSetting(CMemFile *file) const;
  void SaveSetting(const char *path) const;
  /// @}

  /// What an index outside the list gives.
  SPriceData fallback;
  std::unique_ptr<SPriceData[]> data;
  /// Symbols in use.
  int count = 0;
  int capacity = 1;
  /// Added to `capacity` when the list is full.
  int growStep = 5;
  int selectedId = 0;

 protected:
  void _ReadSetting(CIniMemFile *file);        // NOLINT(bugprone-reserved-identifier)
  void _SaveSetting(CIniMemFile *file) const;  // NOLINT(bugprone-reserved-identifier)

 private:
  // A damaged number of symbols must not fill the memory: from this position on, a symbol counts only if the
  // archive or the text has its ID.
  static constexpr int kTrustedSize = 256;
  static constexpr int kNoId = -1;

  void LoadSymbols(CKqArchive &archive, void (SPriceData::*load)(CKqArchive &, int));
  void StoreSymbols(CKqArchive &archive, void (SPriceData::*store)(CKqArchive &, int) const) const;
};

}  // namespace trovenu
