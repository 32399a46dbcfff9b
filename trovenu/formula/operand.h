#pragma once

#include <utility>

#include "trovenu/support/series.h"

namespace trovenu {

struct Name;

/// A value inside the evaluator: a series that is borrowed, bound data or a variable, or a temporary of its
/// own. Reading a price word copies nothing, and an operator writes into a temporary where it has one.
class Operand {
 public:
  Operand() = default;
  Operand(SVector temporary) : own_(std::move(temporary)) {}  // NOLINT(google-explicit-constructor)
  /// Borrows `series`, which must outlive the operand. `lender` is the variable that it belongs to, or null.
  static Operand Borrow(const SVector &series, const Name *lender = nullptr) {
    Operand operand;
    operand.borrowed_ = &series;
    operand.lender_ = lender;
    return operand;
  }

  const SVector &Series() const { return borrowed_ != nullptr ? *borrowed_ : own_; }
  bool IsTemporary() const { return borrowed_ == nullptr; }
  const Name *Lender() const { return lender_; }

  /// The series as a temporary that may be written to. What is borrowed is copied, from element `from` on.
  SVector &Own(int from = 0) {
    if (borrowed_ != nullptr) {
      own_ = borrowed_->CopyFrom(from);
      // The extremes that the lender remembers hold no longer once the copy is written to.
      own_.InitTemp();
      borrowed_ = nullptr;
      lender_ = nullptr;
    }
    return own_;
  }

 private:
  const SVector *borrowed_ = nullptr;
  const Name *lender_ = nullptr;
  SVector own_;
};

}  // namespace trovenu
