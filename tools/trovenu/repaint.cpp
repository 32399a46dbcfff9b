#include "tools/trovenu/repaint.h"

#include <algorithm>
#include <vector>

#include "tools/trovenu/expression_tree.h"
#include "trovenu/formula/calc.h"
#include "trovenu/formula/user_function_list.h"
#include "trovenu/formula/words.h"

namespace trovenu::tool {

namespace {

constexpr const char *kNegativeShift = "a negative shift";
constexpr const char *kUnfinishedGroup = "the newest group is not complete";
constexpr const char *kThirdDay = "the third day gives the last bar of the second one a value";

struct Reason {
  FunctionId id;
  const char *text;
};

constexpr Reason kReasons[] = {
    {FunctionId::Ref, kNegativeShift},
    {FunctionId::Shift, kNegativeShift},
    {FunctionId::CompressClose, kUnfinishedGroup},
    {FunctionId::CompressHigh, kUnfinishedGroup},
    {FunctionId::CompressLow, kUnfinishedGroup},
    {FunctionId::CompressVolume, kUnfinishedGroup},
    {FunctionId::CompressDate, kUnfinishedGroup},
    {FunctionId::DeCompress, "bars behind the last date of the groups show the newest group"},
    {FunctionId::ZigZag, "the last pivot moves"},
    {FunctionId::BarsSince, "before the condition is first true, all bars are counted"},
    {FunctionId::PreDayOpen, kThirdDay},
    {FunctionId::PreDayHigh, kThirdDay},
    {FunctionId::PreDayLow, kThirdDay},
};

const char *ReasonOf(const std::string &word) {
  const Word *const known = FindName(word.c_str());
  if (known == nullptr) return "";
  const auto *const reason = std::find_if(std::begin(kReasons), std::end(kReasons),
                                          [&](const Reason &r) { return r.id == known->function; });
  return reason != std::end(kReasons) ? reason->text : "";
}

// What a formula showed so far, look by look.
class History {
 public:
  explicit History(int bars) : changed_(static_cast<std::size_t>(bars)) {}

  void Look(const SVector &result, int count) {
    const int known = static_cast<int>(shown_.size());
    const int oldSize = size_;
    size_ = result.GetSize();
    NoteLag(count);
    shown_.resize(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
      Shown &bar = shown_[static_cast<std::size_t>(i)];
      const Shown now = ShownAt(result, i);
      const bool isNew = i >= known || (countsGroups_ && i >= oldSize);
      if (!isNew && !IsSame(bar, now)) NoteChange(i, bar, now, count - 1);
      bar = now;
    }
  }

  std::optional<Repaint> Changes() const {
    return repaint_.changes > 0 ? std::optional(repaint_) : std::nullopt;
  }

 private:
  // A result that falls behind the bars more and more has an element for each group of them. A further group
  // is then no change of the bar of that number, while a result that ends some bars before the newest one
  // gives values to bars that are past.
  void NoteLag(int count) {
    if (size_ == 0) return;
    const int lag = count - size_;
    countsGroups_ = countsGroups_ || (hasLag_ && lag != lag_);
    lag_ = lag;
    hasLag_ = true;
  }

  void NoteChange(int bar, const Shown &before, const Shown &after, int arrived) {
    const bool isOldest = repaint_.changes == 0 || bar < repaint_.bar;
    ++repaint_.changes;
    if (!changed_[static_cast<std::size_t>(bar)]) ++repaint_.changedBars;
    changed_[static_cast<std::size_t>(bar)] = true;
    if (!isOldest) return;
    repaint_.bar = bar;
    repaint_.before = before;
    repaint_.after = after;
    repaint_.arrived = arrived;
  }

  std::vector<Shown> shown_;
  std::vector<bool> changed_;
  int size_ = 0;
  int lag_ = 0;
  bool hasLag_ = false;
  bool countsGroups_ = false;
  Repaint repaint_;
};

// Series that grow by bars from a file.
class Feed {
 public:
  explicit Feed(const Bars &bars) : bars_(bars) {}

  void Bind(SCalc &calc) {
    calc.SetVariable(series_[0], series_[1], series_[2], series_[3], series_[4], series_[5], series_[6],
                     series_[7]);
  }

  void GrowTo(int count) {
    for (; size_ < count; ++size_) {
      for (std::size_t i = 0; i < kSeriesFields; ++i) series_[i].Add(bars_.series[i][size_]);
    }
  }

 private:
  const Bars &bars_;
  SVector series_[kSeriesFields];
  int size_ = 0;
};

// A formula on its way down to the part that repaints.
struct Scope {
  // The formula or the body of a user function, and its statements.
  const std::string &text;
  const std::vector<Expression> &statements;
  // What has to be evaluated before it.
  std::string before;
  // Where it is called in the whole formula, and the name of the function; both of the outermost call.
  std::size_t callPosition;
  std::string function;
  int depth;
};

// The outermost assignments of a part that end before a place, in order.
void CollectAssignments(const Expression &part, std::size_t place, std::vector<const Expression *> &found) {
  if (part.kind == Expression::Kind::Assignment && part.end <= place) {
    found.push_back(&part);
    return;
  }
  for (const Expression &inner : part.parts) CollectAssignments(inner, place, found);
}

// The last assignment of a variable that ends before a place; null without one.
const Expression *LastAssignment(const Expression &part, const SString &name, std::size_t place) {
  if (part.kind == Expression::Kind::Assignment && part.end <= place &&
      name.CompareNoCase(part.word.c_str()) == 0) {
    return &part;
  }
  const Expression *last = nullptr;
  for (const Expression &inner : part.parts) {
    if (const Expression *found = LastAssignment(inner, name, place)) last = found;
  }
  return last;
}

class CauseSearch {
 public:
  CauseSearch(const RepaintSearch &search, SFunctionList *functions)
      : search_(search), functions_(functions) {}

  RepaintCause Find(const std::string &formula) {
    const std::vector<Expression> statements = ReadStatements(formula);
    if (statements.empty()) return {};
    return Descend({formula, statements, "", 0, "", 0}, statements.back());
  }

 private:
  // What has to be evaluated before a part: the statements before its own, and the assignments before it in
  // its own one.
  static std::string Before(const Scope &scope, const Expression &part) {
    const auto behind = std::upper_bound(
        scope.statements.begin(), scope.statements.end(), part.begin,
        [](std::size_t position, const Expression &statement) { return position < statement.begin; });
    const Expression &own = *std::prev(behind);
    std::string before = scope.before + scope.text.substr(0, own.begin);
    std::vector<const Expression *> assignments;
    CollectAssignments(own, part.begin, assignments);
    for (const Expression *assignment : assignments) before += TextOf(scope, *assignment) + ";";
    return before;
  }

  static std::string TextOf(const Scope &scope, const Expression &part) {
    return scope.text.substr(part.begin, part.end - part.begin);
  }

  bool Repaints(const Scope &scope, const Expression &part) const {
    return search_.Find(Before(scope, part) + TextOf(scope, part)).has_value();
  }

  // The assignment that gave a variable the value that it has at a part; null where it has none in this text.
  static const Expression *AssignmentOf(const Scope &scope, const Expression &part) {
    const Expression *last = nullptr;
    for (const Expression &statement : scope.statements) {
      if (const Expression *found = LastAssignment(statement, part.word.c_str(), part.begin)) last = found;
    }
    return last;
  }

  RepaintCause Descend(const Scope &scope, const Expression &part) const {
    for (const Expression &inner : part.parts) {
      if (Repaints(scope, inner)) return Descend(scope, inner);
    }
    if (part.kind == Expression::Kind::Name) {
      if (RepaintsByShift(scope, part)) return CauseAt(scope, part, kNegativeShift);
      if (const Expression *assignment = AssignmentOf(scope, part)) {
        // A call of a user function may have changed the variable since.
        const Expression &value = assignment->parts.front();
        return Repaints(scope, value) ? Descend(scope, value) : CauseAt(scope, part, "");
      }
      if (const std::optional<RepaintCause> cause = FindInFunction(scope, part)) return *cause;
    }
    return CauseAt(scope, part, ReasonOf(part.word));
  }

  static RepaintCause CauseAt(const Scope &scope, const Expression &part, const char *reason) {
    return {part.word, reason, scope.depth == 0 ? part.begin : scope.callPosition, scope.function};
  }

  // Tells whether a name is quiet once its last argument is taken away: the shift that a series has in
  // parentheses, and every function behind its own arguments.
  bool RepaintsByShift(const Scope &scope, const Expression &part) const {
    if (part.parts.empty()) return false;
    std::string call = part.word + "(";
    for (std::size_t i = 0; i + 1 < part.parts.size(); ++i) {
      call += (i > 0 ? "," : "") + TextOf(scope, part.parts[i]);
    }
    const std::string before = Before(scope, part);
    return IsQuiet(before + call + ")") || (part.parts.size() == 1 && IsQuiet(before + part.word));
  }

  bool IsQuiet(const std::string &formula) const {
    return search_.IsSound(formula) && !search_.Find(formula);
  }

  // Looks into the body of a user function, its parameters bound as a call binds them.
  std::optional<RepaintCause> FindInFunction(const Scope &scope, const Expression &part) const {
    const int index = functions_ != nullptr ? functions_->Find(part.word.c_str()) : -1;
    if (index < 0 || scope.depth >= kUserCallLimit) return std::nullopt;
    const SFunction &function = (*functions_)[index];
    std::string before = Before(scope, part);
    std::size_t bound = 0;
    for (; bound < part.parts.size() && bound < kParameters && !function.VarName[bound].IsEmpty(); ++bound) {
      before += function.VarName[bound].c_str();
      before += "=(" + TextOf(scope, part.parts[bound]) + ");";
    }
    const std::string body = function.Expression.c_str();
    const std::vector<Expression> statements = ReadStatements(body);
    const bool isWhole = scope.depth == 0;
    const Scope inner{body,
                      statements,
                      before,
                      isWhole ? part.begin : scope.callPosition,
                      isWhole ? part.word : scope.function,
                      scope.depth + 1};
    if (statements.empty() || !Repaints(inner, statements.back())) return std::nullopt;
    return Descend(inner, statements.back());
  }

  const RepaintSearch &search_;
  SFunctionList *functions_;
};

}  // namespace

RepaintSearch::RepaintSearch(const Bars &bars, SFunctionList *functions, int samples)
    : bars_(bars), functions_(functions), samples_(samples) {}

int RepaintSearch::Looks() const { return samples_ > 0 ? std::min(samples_, bars_.Size()) : bars_.Size(); }

bool RepaintSearch::IsSound(const std::string &formula) const {
  Feed feed(bars_);
  feed.GrowTo(bars_.Size());
  SCalc calc;
  feed.Bind(calc);
  calc.SetFunction(functions_);
  calc.SetExpression(formula.c_str());
  calc.Calculate();
  return calc.errorCount == 0;
}

std::optional<Repaint> RepaintSearch::Find(const std::string &formula) const {
  Feed feed(bars_);
  SCalc calc;
  feed.Bind(calc);
  calc.SetFunction(functions_);
  History history(bars_.Size());
  const int looks = Looks();
  for (int j = 1; j <= looks; ++j) {
    const int count = static_cast<int>(static_cast<long long>(bars_.Size()) * j / looks);
    feed.GrowTo(count);
    calc.InitCalc();
    calc.SetExpression(formula.c_str());
    history.Look(calc.Calculate(), count);
  }
  return history.Changes();
}

RepaintCause RepaintSearch::FindCause(const std::string &formula) const {
  return CauseSearch(*this, functions_).Find(formula);
}

}  // namespace trovenu::tool
