#pragma once

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <type_traits>
#include <vector>

#include "trovenu/platform/serial_archive.h"

namespace trovenu {

/// The ordinary growing array of the platform. `Type` is the kind of its elements, `Argument` the kind in
/// which they are handed over.
///
/// Indexes run from 0 to the size less 1. Reading outside gives a fallback element, equal to a fresh one, and
/// writing there is dropped. A negative size or count counts as 0.
template <class Type, class Argument = const Type &>
class CArray {
 public:
  CArray() = default;
  virtual ~CArray() = default;
  CArray(const CArray &) = default;
  CArray(CArray &&) noexcept = default;
  CArray &operator=(const CArray &) = default;
  CArray &operator=(CArray &&) noexcept = default;

  std::ptrdiff_t GetSize() const { return static_cast<std::ptrdiff_t>(elements_.size()); }
  std::ptrdiff_t GetCount() const { return GetSize(); }
  bool IsEmpty() const { return elements_.empty(); }
  /// The last index; -1 if the array is empty.
  std::ptrdiff_t GetUpperBound() const { return GetSize() - 1; }

  /// Cuts the array or fills it up with fresh elements. A growth step changes nothing but the memory taken.
  void SetSize(std::ptrdiff_t size, std::ptrdiff_t growBy = -1) {
    static_cast<void>(growBy);
    elements_.resize(static_cast<std::size_t>(std::max<std::ptrdiff_t>(size, 0)));
  }
  /// Gives memory back that is not needed.
  void FreeExtra() { elements_.shrink_to_fit(); }
  void RemoveAll() { elements_.clear(); }

  const Type &GetAt(std::ptrdiff_t index) const { return Has(index) ? elements_[At(index)] : Fallback(); }
  Type &ElementAt(std::ptrdiff_t index) { return Has(index) ? elements_[At(index)] : Fallback(); }
  const Type &operator[](std::ptrdiff_t index) const { return GetAt(index); }
  Type &operator[](std::ptrdiff_t index) { return ElementAt(index); }
  void SetAt(std::ptrdiff_t index, Argument element) {
    if (Has(index)) elements_[At(index)] = element;
  }
  /// As `SetAt`, after growing the array so that it has this index.
  void SetAtGrow(std::ptrdiff_t index, Argument element) {
    if (index < 0) return;
    Type copy = element;
    if (!Has(index)) SetSize(index + 1);
    elements_[At(index)] = copy;
  }

  /// Adds to the end and returns the index.
  std::ptrdiff_t Add(Argument element) {
    elements_.push_back(element);
    return GetUpperBound();
  }
  /// Adds all elements of another array and returns the index of the first.
  std::ptrdiff_t Append(const CArray &other) {
    const std::ptrdiff_t first = GetSize();
    const std::vector<Type> added = other.elements_;
    elements_.insert(elements_.end(), added.begin(), added.end());
    return first;
  }
  void Copy(const CArray &other) { elements_ = other.elements_; }

  /// Puts `count` copies before the element at `index`; behind the end, after growing the array.
  void InsertAt(std::ptrdiff_t index, Argument element, std::ptrdiff_t count = 1) {
    if (index < 0 || count <= 0) return;
    const Type copy = element;
    if (index > GetSize()) SetSize(index);
    elements_.insert(elements_.begin() + index, static_cast<std::size_t>(count), copy);
  }
  /// Removes `count` elements from `index` on, or as many as there are.
  void RemoveAt(std::ptrdiff_t index, std::ptrdiff_t count = 1) {
    if (!Has(index) || count <= 0) return;
    const auto first = elements_.begin() + index;
    elements_.erase(first, first + std::min(count, GetSize() - index));
  }

  /// The elements one after the other; null if there are none. Good until the array changes its size.
  const Type *GetData() const { return elements_.empty() ? nullptr : elements_.data(); }
  Type *GetData() { return elements_.empty() ? nullptr : elements_.data(); }

  /// Stores the number of elements and their bytes, or loads them, after which the array holds what was
  /// stored. An archive that ends too early leaves the array as it was. Pointers mean nothing outside the
  /// process, and elements that are more than their bytes need a way of their own: an array of these stores
  /// and loads nothing, unless a derived class says how.
  virtual void Serialize(CArchive &archive) {
    if constexpr (std::is_trivially_copyable_v<Type> && !std::is_pointer_v<Type> &&
                  !std::is_member_pointer_v<Type>) {
      if (archive.IsStoring()) {
        Store(archive);
      } else {
        Load(archive);
      }
    } else {
      static_cast<void>(archive);
    }
  }

 private:
  static std::size_t At(std::ptrdiff_t index) { return static_cast<std::size_t>(index); }
  bool Has(std::ptrdiff_t index) const { return index >= 0 && index < GetSize(); }

  static Type &Fallback() {
    thread_local Type fallback{};
    fallback = Type{};
    return fallback;
  }

  static constexpr std::size_t kMostElements = std::numeric_limits<unsigned int>::max() / sizeof(Type);

  void Store(CArchive &archive) {
    const std::size_t count = std::min(elements_.size(), kMostElements);
    archive.WriteCount(static_cast<std::uint32_t>(count));
    archive.Write(elements_.data(), static_cast<unsigned int>(count * sizeof(Type)));
  }

  void Load(CArchive &archive) {
    std::uint32_t count = 0;
    if (!archive.ReadCount(&count) || count > archive.Left() / sizeof(Type)) return;
    elements_.resize(count);
    archive.Read(elements_.data(), static_cast<unsigned int>(count * sizeof(Type)));
  }

  std::vector<Type> elements_;
};

}  // namespace trovenu
