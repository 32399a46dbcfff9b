#include "trovenu/support/series.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <utility>

#include "trovenu/support/block_pool.h"

namespace trovenu {
namespace {

constexpr int kGrowthStep = 1000;

void WriteToStandardError(const char *text) { std::fputs(text, stderr); }

std::atomic<SVector::ErrorHandler> errorHandler{WriteToStandardError};

int RoundUpToGrowthStep(int n) {
  const long long steps = (static_cast<long long>(n) + kGrowthStep - 1) / kGrowthStep;
  return static_cast<int>(std::min<long long>(steps * kGrowthStep, 2147483647));
}

}  // namespace

SVector::SVector() { reallocBuffer = data; }

SVector::SVector(int n) : SVector() {
  if (n > 1) Alloc(n);
  size = std::min(std::max(n, 0), capacity);
}

SVector::SVector(double value) : SVector() {
  number_ = value;
  size = 1;
  isSeries = 0;
}

SVector::SVector(const SVector &other) : SVector() { *this = other; }

SVector::SVector(SVector &&other) noexcept : SVector() { StealElements(other); }

SVector::~SVector() { ReleaseData(); }

SVector &SVector::operator=(const SVector &other) {
  if (this != &other) CopyElements(other, 0);
  return *this;
}

SVector &SVector::operator=(SVector &&other) noexcept {
  if (this != &other) {
    ReleaseData();
    StealElements(other);
  }
  return *this;
}

SVector &SVector::operator=(const double &value) {
  InitValue(value);
  return *this;
}

// A reference to the element that stands for all those outside: it reads as 0.0 and forgets what is written.
double &SVector::Outside() {
  thread_local double outside;
  outside = 0.0;
  return outside;
}

double *SVector::TakeBlock(int n, int firstWritten) const {
  double *block = AcquireBlock(n, firstWritten);
  if (block == nullptr) Error("Out of memory trying to create SVector\n");
  return block;
}

void SVector::ReleaseData() {
  if (OwnsBlock()) ReleaseBlock(data, firstWritten_, capacity);
  data = &number_;
  reallocBuffer = data;
  capacity = 1;
  firstWritten_ = 0;
}

void SVector::AdoptBlock(double *block, int n, int firstWritten) {
  ReleaseData();
  data = block;
  reallocBuffer = block;
  capacity = n;
  firstWritten_ = firstWritten;
}

void SVector::StealElements(SVector &other) {
  if (other.OwnsBlock()) {
    data = other.data;
    capacity = other.capacity;
    firstWritten_ = other.firstWritten_;
    other.data = &other.number_;
    other.reallocBuffer = other.data;
    other.capacity = 1;
    other.firstWritten_ = 0;
  } else {
    number_ = other.number_;
  }
  reallocBuffer = data;
  startIndex = other.startIndex;
  size = other.size;
  isSeries = other.isSeries;
  minMaxChanged = other.minMaxChanged;
  maxCache_ = other.maxCache_;
  minCache_ = other.minCache_;
  drawFirst_ = other.drawFirst_;
  drawLast_ = other.drawLast_;
  other.number_ = 0.0;
  other.startIndex = 0;
  other.size = 0;
  other.isSeries = 1;
  other.InitTemp();
}

void SVector::CopyElements(const SVector &other, int from) {
  from = std::min(std::max({from, other.firstWritten_, 0}), other.size);
  if (capacity < other.size) {
    double *block = TakeBlock(other.size, from);
    if (block == nullptr) return ClearData();
    AdoptBlock(block, other.size, from);
  } else {
    std::fill(data + std::min(firstWritten_, from), data + from, 0.0);
    firstWritten_ = std::min(from, capacity);
  }
  std::copy(other.data + from, other.data + other.size, data + from);
  startIndex = other.startIndex;
  size = other.size;
  isSeries = other.isSeries;
  minMaxChanged = other.minMaxChanged;
  maxCache_ = other.maxCache_;
  minCache_ = other.minCache_;
  drawFirst_ = other.drawFirst_;
  drawLast_ = other.drawLast_;
}

SVector SVector::TakeElements() { return std::move(*this); }

SVector SVector::CopyFrom(int from) const {
  SVector copy;
  copy.CopyElements(*this, from);
  copy.InitTemp();
  return copy;
}

void SVector::Alloc(int n) {
  n = std::max(n, 1);
  if (n == 1) {
    ReleaseData();
    number_ = 0.0;
  } else {
    double *block = TakeBlock(n, n);
    if (block == nullptr) return;
    AdoptBlock(block, n, 0);
  }
  size = std::min(size, capacity);
  InitTemp();
}

void SVector::ReAlloc(int n) {
  n = std::max(n, 1);
  if (n == 1 && !OwnsBlock()) {
    if (startIndex > 0) number_ = 0.0;
    InitTemp();
    return;
  }
  const int end = std::min(size, n);
  const int begin = std::min(std::max(startIndex, 0), end);
  reallocBuffer = TakeBlock(std::max(n, 2), std::max(n, 2));
  if (reallocBuffer == nullptr) {
    reallocBuffer = data;
    return;
  }
  std::copy(data + begin, data + end, reallocBuffer + begin);
  AdoptBlock(reallocBuffer, n, begin);
  size = end;
  InitTemp();
}

void SVector::SetSize(int n) {
  n = std::max(n, 0);
  if (n > capacity) ReAlloc(RoundUpToGrowthStep(n));
  size = std::min(n, capacity);
  // Only a single element can be a constant.
  if (size != 1) isSeries = 1;
  firstWritten_ = 0;
  InitTemp();
}

void SVector::Add(double x) {
  const int old = size;
  if (size < capacity) {
    ++size;
    if (size != 1) isSeries = 1;
  } else {
    SetSize(MoveIndex(size, 1));
  }
  if (size > old) data[old] = x;
  firstWritten_ = std::min(firstWritten_, old);
  InitTemp();
}

void SVector::Update(double x, int k) {
  if (k < 0 || k >= size) return;
  data[size - 1 - k] = x;
  firstWritten_ = std::min(firstWritten_, size - 1 - k);
  InitTemp();
}

void SVector::Error(const char *text) const { errorHandler.load()(text); }

void SVector::SetErrorHandler(ErrorHandler handler) {
  errorHandler.store(handler != nullptr ? handler : WriteToStandardError);
}

void SVector::ClearData() {
  size = 0;
  startIndex = 0;
  isSeries = 1;
  InitTemp();
}

void SVector::InitValue(double value) {
  std::fill_n(data, size, value);
  firstWritten_ = 0;
  InitTemp();
}

void SVector::Insert(SVector &other) {
  const int added = other.size;
  if (added == 0) return;
  const long long total = static_cast<long long>(size) + added;
  const int capacityWanted =
      total > capacity ? RoundUpToGrowthStep(static_cast<int>(std::min<long long>(total, 2147483647)))
                       : capacity;
  double *block = TakeBlock(std::max(capacityWanted, 2), std::max(capacityWanted, 2));
  if (block == nullptr || total > capacityWanted) {
    ReleaseBlock(block, 0, 0);
    return;
  }
  std::copy(other.data, other.data + added, block);
  std::copy(data, data + size, block + added);
  const bool otherHasValid = other.startIndex < added;
  startIndex = otherHasValid ? other.startIndex : MoveIndex(startIndex, added);
  AdoptBlock(block, capacityWanted, 0);
  size = static_cast<int>(total);
  isSeries = 1;
  InitTemp();
}

void SVector::BeginResult(int n, int start) {
  n = std::max(n, 0);
  const int firstWritten = std::min(std::max(start, 0), n);
  ReleaseData();
  number_ = 0.0;
  isSeries = 1;
  startIndex = start;
  size = n;
  InitTemp();
  if (n <= 1) return;
  double *block = TakeBlock(n, firstWritten);
  if (block == nullptr) {
    size = 0;
    return;
  }
  AdoptBlock(block, n, firstWritten);
}

void SVector::RaiseStart(int start) {
  const int begin = std::clamp(start, 0, size);
  if (begin > firstWritten_) std::fill(data + firstWritten_, data + begin, 0.0);
  // Also where less was written so far: a copy may know of fewer elements than its start index says.
  firstWritten_ = begin;
  startIndex = start;
  InitTemp();
}

}  // namespace trovenu
