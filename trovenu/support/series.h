#pragma once

/// \file
/// The numeric series on which everything is calculated.

#include "trovenu/platform/export.h"

namespace trovenu {

/// Start index of a calculation that failed or produced nothing; it lies past the end of every series.
inline constexpr int kNoValidBar = 0x7ffffffe;

/// What `GetMax` gives for a range without a valid element; `GetMin` gives the same with the other sign.
inline constexpr double kNoMaximum = -1e38;

/// `index` moved by `bars`, limited to `kNoValidBar` so that start indexes never overflow.
constexpr int MoveIndex(int index, int bars) {
  const long long moved = static_cast<long long>(index) + bars;
  return moved > kNoValidBar ? kNoValidBar : moved < -kNoValidBar ? -kNoValidBar : static_cast<int>(moved);
}

/// Truncates toward zero and limits to the 32-bit range; NaN gives 0.
constexpr int TruncateToInt(double x) {
  if (x != x) return 0;
  if (x >= 2147483647.0) return 2147483647;
  if (x <= -2147483648.0) return -2147483647 - 1;
  return static_cast<int>(x);
}

/// A growable array of 64-bit floats indexed by bar, with the index at which its valid data begins.
///
/// Index 0 is the oldest bar, the last index the newest; bars keep their index across the series of one
/// symbol. Valid bars are `startIndex` <= i < `size`. What lies below the start index is initialised memory
/// but no data. A plain number is a constant: `size` 1, `startIndex` 0, `isSeries` zero, and its one element
/// answers every index. Truth values are 1.0 and 0.0 and are tested by exact comparison with 0.0.
///
/// Reading an element outside 0 to `size` - 1 of a series gives 0.0, and a write there is dropped.
class TROVENU_API SVector {
 public:
  /// An empty series.
  SVector();
  /// A series of `size` elements, all 0.0, with start index 0. A negative size counts as 0. At most one
  /// element where memory is exhausted.
  explicit SVector(int size);
  /// A constant.
  SVector(double value);  // NOLINT(google-explicit-constructor): a number stands wherever a series may.
  /// Copies the elements into a block of its own, and everything else. Where memory is exhausted the copy is
  /// an empty series; so is the target of an assignment.
  SVector(const SVector &other);
  /// Takes over the elements; `other` becomes an empty series.
  SVector(SVector &&other) noexcept;
  ~SVector();
  SVector &operator=(const SVector &other);
  SVector &operator=(SVector &&other) noexcept;
  /// Stores the value into every element of the existing size, which does not change.
  SVector &operator=(const double &value);

  /// \name Storage
  /// @{

  /// Allocates max(n, 1) elements; `capacity` becomes max(n, 1) and `size` that at most. The elements are
  /// 0.0. If memory is exhausted, calls `Error` and leaves the object as it was.
  void Alloc(int n);
  /// As `Alloc`, but the elements from `startIndex` up to `size` keep their values.
  /// Required: elements below `startIndex` are not carried over; they read as 0.0 afterwards.
  void ReAlloc(int n);
  /// Sets the size. Above `capacity` it reallocates to the next whole multiple of 1000 elements. The block
  /// never shrinks, and the size never exceeds `capacity`, also where memory is exhausted.
  void SetSize(int n);
  /// Appends an element; the block grows in steps of 1000.
  void Add(double x);
  /// Stores x into the element k places before the newest. A negative k or an index below 0 is ignored.
  void Update(double x, int k);
  int GetStartIndex() const { return startIndex; }
  /// Stores the index unchecked; values past the size say that no bar is valid.
  void SetStartIndex(int i) {
    startIndex = i;
    if (i < firstWritten_) firstWritten_ = i < 0 ? 0 : i;
  }
  int GetSize() const { return size; }
  /// Nonzero for a true series, zero for a constant.
  bool IsConstant() const { return isSeries == 0; }
  double &operator[](int i) {
    if (isSeries == 0) return data[0];
    if (static_cast<unsigned>(i) >= static_cast<unsigned>(size)) return Outside();
    if (i < firstWritten_) firstWritten_ = i;
    return data[i];
  }
  double operator[](int i) const {
    if (isSeries == 0) return data[0];
    return static_cast<unsigned>(i) < static_cast<unsigned>(size) ? data[i] : 0.0;
  }
  /// Reports an exhausted resource to the handler of `SetErrorHandler`.
  void Error(const char *text) const;
  using ErrorHandler = void (*)(const char *text);
  /// Replaces the handler of all series; null restores the one that writes to standard error.
  static void SetErrorHandler(ErrorHandler handler);
  /// Removes all bars; the block is kept.
  void ClearData();
  /// Stores the value into all existing elements.
  void InitValue(double value);
  /// Places the bars of `other` ahead of the existing ones, for older data that is fetched later. The start
  /// index becomes that of `other` if it has a valid element, else that of the object plus the size of
  /// `other`.
  void Insert(SVector &other);
  /// @}

  /// \name Searches
  /// @{

  /// Lowest index at or after `from` whose element is not 0.0, or -1.
  int FindFirstNonZeroIndex(int from) const;
  /// Nearest index at or before `from` whose element is not 0.0, or -1.
  int FindPrevNonZeroIndex(int from) const;
  /// The first element from the start index on that is not 0.0, or 0.0.
  double GetFirstNonZeroValue() const;
  /// First position at or after `from` that holds `value` in an ascending series (binary search), or -1.
  int FindPos(double value, int from) const;
  /// Largest valid element, -1e38 without one.
  double GetMax() const;
  /// Smallest valid element, 1e38 without one.
  double GetMin() const;
  /// Largest element of the valid bars from `first` to `last`, both included; -1e38 without one. Every mode
  /// means the same.
  double GetMax(int first, int last, int mode) const;
  /// As the bounded `GetMax`; 1e38 without a valid bar.
  double GetMin(int first, int last, int mode) const;
  /// As `GetMax(first, last, 0)`, answered from memory when the same range is asked again. Writing through
  /// `operator[]` or `data` goes unnoticed: call `InitTemp` after it.
  double GetMaxTemp(int first, int last) const;
  double GetMinTemp(int first, int last) const;
  /// Forgets what `GetMaxTemp` and `GetMinTemp` remember.
  void InitTemp();
  /// Stores the range of bars that a window shows.
  void SetDrawRange(int first, int last);
  int GetDrawFirst() const { return drawFirst_; }
  int GetDrawLast() const { return drawLast_; }
  /// @}

  /// The series n bars earlier: element i of the result is element i - n, the size stays, the start index
  /// grows by n. A negative n looks ahead: the start index falls, not below 0, and the last |n| elements are
  /// 0.0. A constant gives itself.
  SVector operator()(int n) const;
  SVector operator-() const;
  /// 1.0 for an element equal to 0.0, else 0.0.
  SVector operator!() const;

  /// \name Moving calculations
  /// Each fills the object from a source series and takes its size from it. Over the last n bars the start
  /// index is that of the source (0 for one below 0) plus n - 1, a period below 1 gives no valid bar, and a
  /// value depends on the elements of its window and their index alone. The results are series, also over a
  /// constant. A window of equal elements gives exactly that element as its average and 0 as its deviation.
  /// @{
  void CalcSum(const SVector &source, int n);
  /// Arithmetic mean.
  void CalcAvg(const SVector &source, int n);
  /// Exponential average: factor 2 / (n + 1), first value the simple mean of the first n valid elements.
  void CalcEAvg(const SVector &source, int n);
  /// Weights 1 to n, the newest element the heaviest.
  void CalcWAvg(const SVector &source, int n);
  /// The simple mean of the simple mean, over (n + 1) / 2 twice, or n / 2 + 1 and n / 2 for an even n.
  void CalcTAvg(const SVector &source, int n);
  /// Geometric mean; 0.0 where the window holds an element at or below 0.
  void CalcGAvg(const SVector &source, int n);
  /// Harmonic mean; 0.0 where the window holds an element at or below 0.
  void CalcHAvg(const SVector &source, int n);
  /// Standard deviation of the window as a whole population (divides by n).
  void CalcStdev(const SVector &source, int n);
  /// Largest and smallest element. NaN is passed over; in a window of nothing else they are -infinity and
  /// infinity.
  void CalcHighest(const SVector &source, int n);
  void CalcLowest(const SVector &source, int n);
  /// Exponential sum: the plain sum of the first n elements, then the previous value times (n - 1) / n plus
  /// the new element.
  void CalcESum(const SVector &source, int n);

  /// The growing forms run from the first valid bar of the source up to each bar. The result has the size n
  /// (the number of bars), at most that of the source unless it is a constant, and the start index of the
  /// source.
  void CalcSumCum(const SVector &source, int n);
  void CalcAvgCum(const SVector &source, int n);
  /// E(1) = x(1), then E(m) = E(m-1) + 2 / (m + 1) * (x(m) - E(m-1)), m counting valid elements from 1.
  void CalcEAvgCum(const SVector &source, int n);
  /// Weights 1 to m over all m valid elements so far.
  void CalcWAvgCum(const SVector &source, int n);
  /// The value at bar i is the one before times (i - 1) / i plus the element; i is the bar's own index.
  void CalcESumCum(const SVector &source, int n);
  /// @}

  /// \name For calculations
  /// @{

  /// Makes the object a series of `n` elements that are 0.0 below `start`. The caller writes every element
  /// from `start` on. The size is 0 when memory is exhausted.
  void BeginResult(int n, int start);
  /// Hands the elements over and leaves an empty series, which keeps its owner's marks (`minMaxChanged`, the
  /// draw range): for a result that takes the place of an operand.
  SVector TakeElements();
  /// A copy that carries over only the elements from `from` on; those before read as 0.0.
  SVector CopyFrom(int from) const;
  /// Sets every element below `start` to 0.0 and the start index to `start`: for a result that is computed in
  /// place. The caller may write every element from `start` on.
  void RaiseStart(int start);
  /// @}

  /// Elements that `data` has room for, at least 1.
  int capacity = 1;
  /// Equals `data` outside `ReAlloc`, which holds the new block in it while it copies.
  double *reallocBuffer = nullptr;

 private:
  struct RangeCache {
    int first = 0;
    int last = 0;
    int start = 0;
    bool filled = false;
    double value = 0;
  };

  static double &Outside();
  double *TakeBlock(int n, int firstWritten) const;
  void ReleaseData();
  void AdoptBlock(double *block, int n, int firstWritten);
  void CopyElements(const SVector &other, int from);
  void StealElements(SVector &other);
  bool OwnsBlock() const { return data != &number_; }

  mutable RangeCache maxCache_;
  mutable RangeCache minCache_;

 public:
  /// Index of the first valid element.
  int startIndex = 0;
  /// Number of elements from index 0, the invalid ones included.
  int size = 0;
  /// Set by the owner of a series when its displayed range must be worked out anew; nothing in the class
  /// writes it.
  int minMaxChanged = 0;
  /// The elements, owned. A single element stands inside the object. Elements below the start index are
  /// written through `operator[]` alone, which keeps the account of what has been written; `SetStartIndex`,
  /// not the field, lowers that index before elements are written here.
  double *data = &number_;
  /// Nonzero for a true series, zero for a constant.
  int isSeries = 1;

 private:
  double number_ = 0.0;
  // Elements of the block below this one are 0.0.
  int firstWritten_ = 0;
  int drawFirst_ = 0;
  int drawLast_ = 0;
};

/// \name Element-wise operations
/// The start index of a result is the larger one of its operands', its size the smaller one; a constant
/// limits neither. Two constants give a constant. x / 0 and x % 0 are 0.0; % is the remainder of `fmod`.
/// @{
TROVENU_API SVector operator+(const SVector &a, const SVector &b);
TROVENU_API SVector operator-(const SVector &a, const SVector &b);
TROVENU_API SVector operator*(const SVector &a, const SVector &b);
TROVENU_API SVector operator*(const SVector &a, double b);
TROVENU_API SVector operator/(const SVector &a, const SVector &b);
TROVENU_API SVector operator%(const SVector &a, const SVector &b);
TROVENU_API SVector operator<(const SVector &a, const SVector &b);
TROVENU_API SVector operator<=(const SVector &a, const SVector &b);
TROVENU_API SVector operator>(const SVector &a, const SVector &b);
TROVENU_API SVector operator>=(const SVector &a, const SVector &b);
TROVENU_API SVector operator==(const SVector &a, const SVector &b);
TROVENU_API SVector operator!=(const SVector &a, const SVector &b);
TROVENU_API SVector operator&&(const SVector &a, const SVector &b);
TROVENU_API SVector operator||(const SVector &a, const SVector &b);
/// @}

/// \name The same operations into a given series
/// `out` may be one of the operands; it is then computed in place where its size allows.
/// @{
TROVENU_API void VecPlus(SVector &out, const SVector &a, const SVector &b);
TROVENU_API void VecMinus(SVector &out, const SVector &a, const SVector &b);
TROVENU_API void VecMultiply(SVector &out, const SVector &a, const SVector &b);
TROVENU_API void VecDivide(SVector &out, const SVector &a, const SVector &b);
TROVENU_API void VecMod(SVector &out, const SVector &a, const SVector &b);
TROVENU_API void VecLT(SVector &out, const SVector &a, const SVector &b);
TROVENU_API void VecLE(SVector &out, const SVector &a, const SVector &b);
TROVENU_API void VecGT(SVector &out, const SVector &a, const SVector &b);
TROVENU_API void VecGE(SVector &out, const SVector &a, const SVector &b);
TROVENU_API void VecEQ(SVector &out, const SVector &a, const SVector &b);
TROVENU_API void VecNEQ(SVector &out, const SVector &a, const SVector &b);
TROVENU_API void VecAND(SVector &out, const SVector &a, const SVector &b);
TROVENU_API void VecOR(SVector &out, const SVector &a, const SVector &b);
TROVENU_API void VecUMinus(SVector &out, const SVector &a);
TROVENU_API void VecNot(SVector &out, const SVector &a);
TROVENU_API void VecCopy(SVector &out, const SVector &in);
/// `out` becomes `in(n)`.
TROVENU_API void VecRef(SVector &out, const SVector &in, int n);
/// @}

}  // namespace trovenu
