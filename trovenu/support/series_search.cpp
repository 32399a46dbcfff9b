#include <algorithm>

#include "trovenu/support/series.h"

namespace trovenu {
namespace {

struct Range {
  int begin;
  int end;
};

// The valid bars from first to last, both included.
Range Clip(const SVector &series, int first, int last) {
  const int begin = std::max({first, series.startIndex, 0});
  const int end = last < series.size ? last + 1 : series.size;
  return {begin, std::max(begin, end)};
}

double LargestIn(const SVector &series, Range range) {
  double largest = kNoMaximum;
  bool found = false;
  for (int i = range.begin; i < range.end; ++i) {
    if (!found || series.data[i] > largest) {
      largest = series.data[i];
      found = largest == largest;
    }
  }
  return found ? largest : kNoMaximum;
}

double SmallestIn(const SVector &series, Range range) {
  double smallest = -kNoMaximum;
  bool found = false;
  for (int i = range.begin; i < range.end; ++i) {
    if (!found || series.data[i] < smallest) {
      smallest = series.data[i];
      found = smallest == smallest;
    }
  }
  return found ? smallest : -kNoMaximum;
}

}  // namespace

int SVector::FindFirstNonZeroIndex(int from) const {
  for (int i = std::max(from, 0); i < size; ++i) {
    if (data[i] != 0.0) return i;
  }
  return -1;
}

int SVector::FindPrevNonZeroIndex(int from) const {
  for (int i = std::min(from, size - 1); i >= 0; --i) {
    if (data[i] != 0.0) return i;
  }
  return -1;
}

double SVector::GetFirstNonZeroValue() const {
  const int i = FindFirstNonZeroIndex(startIndex);
  return i < 0 ? 0.0 : data[i];
}

int SVector::FindPos(double value, int from) const {
  if (from >= size) return -1;
  const double *const begin = data;
  const double *const end = begin + size;
  const double *const found = std::lower_bound(begin + std::max(from, 0), end, value);
  return found != end && *found == value ? static_cast<int>(found - data) : -1;
}

double SVector::GetMax() const { return LargestIn(*this, Clip(*this, 0, size)); }

double SVector::GetMin() const { return SmallestIn(*this, Clip(*this, 0, size)); }

// The bounded forms always look anew, and what they find is remembered for the forms that end in Temp.
double SVector::GetMax(int first, int last, int /*mode*/) const {
  maxCache_ = {first, last, startIndex, true, LargestIn(*this, Clip(*this, first, last))};
  return maxCache_.value;
}

double SVector::GetMin(int first, int last, int /*mode*/) const {
  minCache_ = {first, last, startIndex, true, SmallestIn(*this, Clip(*this, first, last))};
  return minCache_.value;
}

double SVector::GetMaxTemp(int first, int last) const {
  const RangeCache &cache = maxCache_;
  const bool remembered =
      cache.filled && cache.first == first && cache.last == last && cache.start == startIndex;
  return remembered ? cache.value : GetMax(first, last, 0);
}

double SVector::GetMinTemp(int first, int last) const {
  const RangeCache &cache = minCache_;
  const bool remembered =
      cache.filled && cache.first == first && cache.last == last && cache.start == startIndex;
  return remembered ? cache.value : GetMin(first, last, 0);
}

void SVector::InitTemp() {
  maxCache_.filled = false;
  minCache_.filled = false;
}

void SVector::SetDrawRange(int first, int last) {
  drawFirst_ = first;
  drawLast_ = last;
}

}  // namespace trovenu
