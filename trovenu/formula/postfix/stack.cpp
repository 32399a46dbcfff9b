#include "trovenu/formula/postfix/stack.h"

#include <algorithm>

namespace trovenu {

SStack::SStack() : Items(std::make_unique<SStackItem[]>(kStackItems)) {}

SStack::SStack(const SStack &other) { *this = other; }

SStack &SStack::operator=(const SStack &other) {
  if (this == &other) return *this;
  Top = -1;
  Count = other.Count;
  MaxSize = other.MaxSize;
  Items = std::make_unique<SStackItem[]>(static_cast<std::size_t>(MaxSize));
  // A program that has been compiled onto a copy counts more items than it holds.
  std::copy_n(other.Items.get(), std::clamp(Count, 0, MaxSize), Items.get());
  return *this;
}

void SStack::Push(const SStackItem &item) {
  if (IsFull()) return;
  ++Top;
  ++Count;
  Items[static_cast<std::size_t>(Top)] = item;
}

void SStack::Pop(SStackItem &item) {
  if (Top < 0) return;
  item = Items[static_cast<std::size_t>(Top)];
  --Top;
  --Count;
}

void SStack::Peek(SStackItem &item) const {
  if (Top >= 0) item = Items[static_cast<std::size_t>(Top)];
}

}  // namespace trovenu
