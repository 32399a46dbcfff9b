#pragma once

/// \file
/// The formula language: lexer, variables, and the evaluator over whole series.

#include <memory>
#include <vector>

#include "trovenu/formula/function.h"
#include "trovenu/formula/postfix/operations.h"
#include "trovenu/formula/postfix/stack.h"
#include "trovenu/formula/user_function.h"
#include "trovenu/platform/export.h"
#include "trovenu/support/series.h"
#include "trovenu/support/text.h"

namespace trovenu {

class SAnsiStringList;
class SFunctionList;
struct Word;

/// Tokens of the lexer. A token of one character has that character's code; "&&" and "||" that of their
/// first.
enum TokenValue {
  NAME = 0,
  NUMBER = 1,
  /// Accepted by `SCalc::Prim`, never produced by the lexer.
  END = 2,
  MOD = 37,
  AND = 38,
  LP = 40,
  RP = 41,
  MUL = 42,
  PLUS = 43,
  COMMA = 44,
  MINUS = 45,
  DIV = 47,
  /// ";", the end of the text, and a character that starts no token.
  PRINT = 59,
  ASSIGN = 61,
  /// No rule of the grammar takes it, so an expression ends here.
  CARET = 94,
  OR = 124,
  LT = 125,
  LE = 126,
  GT = 127,
  GE = 128,
  EQ = 129,
  NE = 130,
  NOT = 131
};

/// Sizes of the lexer's buffers, the final zero included, and the limits of an evaluation.
inline constexpr int kExpressionBytes = 4096;
inline constexpr int kWordBytes = 256;
inline constexpr int kNumberBytes = 200;
inline constexpr int kNameBytes = 50;
inline constexpr int kTableEntries = 50;
inline constexpr int kNestingLimit = 256;
/// Calls of user functions in one evaluation, and in one run of a program.
inline constexpr int kUserCallLimit = 50;
inline constexpr int kCompiledCallLimit = 1000;

/// One variable of a formula.
struct TROVENU_API Name {
  /// The name as first written, code-page bytes.
  char string[kNameBytes] = {};
  /// Always 0.
  int link = 0;
  /// The current value; a new variable holds the number 1.
  SVector value = SVector(1.0);
  /// The formula that assigned it, as `SCalc::formula` counts them.
  int formula = 0;
};

using NamePointer = std::shared_ptr<Name>;

/// Evaluates formula texts over the series of one symbol.
///
/// The usual order is `SetVariable`, `SetFunction`, then `SetExpression` and `Calculate` for each formula.
/// Variables survive from one formula to the next. A fault is counted, the first message kept, and evaluation
/// runs on to the end of the text.
///
/// An engine belongs to one thread at a time, and so do the series that it is bound to: `Calculate(int)`
/// changes their start indexes while it runs.
class TROVENU_API SCalc {
 public:
  SCalc();
  /// A copy shares the entries of the variable table with the original, as its text and its state are copied.
  /// Required: its compiled programs are copies that don't run; it must be compiled again.
  SCalc(const SCalc &other);
  SCalc &operator=(const SCalc &other);
  ~SCalc();

  /// \name Input
  /// @{

  /// Binds the price series, which must outlive their use. An unbound series counts as empty.
  void SetVariable(SVector &closeSeries, SVector &openSeries, SVector &highSeries, SVector &lowSeries,
                   SVector &volumeSeries, SVector &dateSeries, SVector &openInterestSeries,
                   SVector &amountSeries);
  /// The user functions that formulas may call; not owned.
  void SetFunction(SFunctionList *list);
  /// A list that records the user functions that were called; not owned, null for none.
  void SetFuncHist(SAnsiStringList *history);
  /// Copies the text, at most 4,095 code-page bytes. A longer text is a fault that the next `Calculate`
  /// reports. Variables and the error count stay. Null counts as an empty text.
  void SetExpression(const char *text);
  /// @}

  /// \name Evaluation
  /// @{

  /// Evaluates the whole text; the value of the last statement is the result. After an error its start index
  /// is `kNoValidBar`; a constant or an empty result is widened over close.
  SVector Calculate();
  /// Evaluates from bar `start` on, for the tail of a series: open, high, low, close and volume count as
  /// valid from that bar. The error count is not reset, no start index marks an error, and a constant is not
  /// widened.
  SVector Calculate(int start);
  /// Removes all variables and sets the counts to 0.
  void InitCalc();
  /// Records an error and gives an empty series. Null counts as an empty message.
  SVector Error(const char *message);
  /// x plus 0.0001, truncated toward zero: for shifts of data words and counts of bars, while periods are
  /// truncated as they are.
  static int ToInt(double x);
  /// @}

  /// \name Grammar, loosest level first; each starts at the current token and leaves the one behind its text
  /// @{
  SVector Expr();
  SVector Relop();
  SVector Add();
  SVector Term();
  SVector Prim();
  /// @}

  /// \name Compiled path: one text, run again and again on new data without being read
  /// It reads formulas by rules of its own, and some mean something else than on the direct path.
  /// @{

  /// Compiles the user functions, the first ten at most, and the text of `SetExpression`. A fault is not
  /// reported, and items that have no room are dropped. Required: what has been compiled before stays, so
  /// that a second text needs a fresh engine.
  void InfixToPostFix();
  /// Compiles the text in `expression` and adds it to `out`, whose top is then the item that runs first.
  void InToPost(SStack *out);
  /// The number of arguments of the call whose "(" comes next in the text, 0 if none comes. The read pointer
  /// stays.
  int GetParamCount();
  /// How tightly the item of that code binds; 1 for an unknown code.
  int GetPrecedence(int code) const;
  /// An `OperationType`; 90 for an unknown code.
  int GetOpType(int code) const;
  /// Runs a program from its top down; null stands for the program of the text, on an empty evaluation stack.
  /// \return a copy of the top of the evaluation stack; an empty series if it has none.
  SVector CalcOp(SStack *program);
  /// The series of a slot of the evaluation stack: its own value, a bound series, or a variable. An empty one
  /// for a slot outside the stack and after an error.
  SVector *GetEvalValue(int slot);
  /// Apply the item at the top of the program to the evaluation stack. Without the operands that they need
  /// they do nothing.
  void ProcessOperator(SStack *program);
  void ProcessFunction(SStack *program);
  /// @}

  /// \name Words; a word is recognised without regard to ASCII case
  /// @{
  bool IsVectorFunction(const char *word) const;
  bool IsDataVariable(const char *word) const;
  bool IsMathFunction(const char *word) const;
  bool IsTimeFunction(const char *word) const;
  bool IsMethodVariable(const char *word) const;
  /// True when the bound list has a function of that name.
  bool IsUserFunction(const char *word) const;
  /// Its position in the bound list, or -1.
  int FindFunction(const char *word) const;
  /// Each evaluates a word of its family, with the lexer at the first argument; an empty series for another
  /// word.
  SVector ProcessVectorFunction(const char *word);
  SVector ProcessDataVariable(const char *word);
  SVector ProcessMathFunction(const char *word);
  SVector ProcessTimeFunction(const char *word);
  /// Calls a user function: its parameters become variables, its body is evaluated, and the variables that
  /// the caller knew get their values back. An error after the 50th call of an evaluation, however they are
  /// nested.
  SVector ProcessUserFunction(const char *word);
  /// @}

  /// \name Turning points
  /// @{

  /// At each bar the n-th most recent swing within the last `depth` bars that has `strength` lower (for
  /// `isHigh` nonzero, else higher) bars on each side, and -1.0 where there is none. The start index is that
  /// of x plus depth plus 1; with n, strength or depth below 1 it is the size plus 10000.
  static SVector CalcSwingHighLow(int isHigh, int n, const SVector &x, int strength, int depth);
  /// The pivots of a line that turns when the price has moved by `percent`, at their bars; 0 elsewhere.
  static SVector CalcZigZag(double percent, const SVector &swingHigh, const SVector &swingLow,
                            const SVector &highSeries, const SVector &lowSeries);
  /// Gives an empty series: candle patterns are scanned outside the formula language.
  static SVector CalcCandlePattern();
  /// @}

  /// \name Lexer
  /// @{
  TokenValue GetToken();
  double GetNumber();
  /// Consumes a word into `wordBuffer`. The argument is not used.
  char *GetName(const char *text);
  /// Reads a word at `from` into `wordBuffer` without moving the read pointer.
  char *PeekName(const char *from);
  /// Moves past blanks and at most one comment.
  void SkipWhite();
  /// @}

  /// \name Variables
  /// @{

  /// The variable of that name. If there is none: null when `create` is 0, else a new one. A name of more
  /// than 49 bytes and a 51st variable are faults and give null.
  Name *Look(const char *name, int create);
  Name *Insert(const char *name) { return Look(name, 1); }
  /// Makes n new entries in `to` with the names and values of those in `from`.
  static void CopyTable(const NamePointer *from, NamePointer *to, int n);
  void ClearNameTable();
  /// @}

  /// The compiled text, the compiled user functions in the order of their list, and the values of a running
  /// program; made on first use.
  std::unique_ptr<SStack> programStack;
  std::unique_ptr<SStack> functionStacks[kCompiledFunctions];
  std::unique_ptr<SStack> evaluationStack;
  /// What `Error` returns; stays empty.
  SVector errorResult;
  /// The number of the last method word.
  SVector methodValue;
  /// Working series of the compiled path: dates and times as the program that runs reads them.
  SVector postfixResult;
  /// Nonzero while the last item that ran was an assignment.
  int assignmentFlag = 0;
  /// Items for which the last `InfixToPostFix` had no room.
  int itemsDropped = 0;
  SVector *close = nullptr;
  SVector *open = nullptr;
  SVector *high = nullptr;
  SVector *low = nullptr;
  SVector *volume = nullptr;
  SVector *date = nullptr;
  SVector *openInterest = nullptr;
  SVector *amount = nullptr;
  SFunctionList *functionList = nullptr;
  /// Set by functions whose value at a bar comes from the bar before, so that a tail cannot be computed
  /// alone.
  int fullCalc = 0;
  /// Raised on entry to `Prim`, lowered on leaving the levels above it; nothing reads it.
  int exprDepth = 0;
  /// Calls of user functions in this evaluation.
  int userDepth = 0;
  char expression[kExpressionBytes];
  /// The lexer's position.
  const char *readPointer = expression;
  /// Value of the current `NUMBER`.
  double numberValue = 0.0;
  /// Text of the current `NAME`.
  char nameString[kWordBytes];
  char wordBuffer[kWordBytes];
  NamePointer table[kTableEntries];
  int tableCount = 0;
  /// Errors since `Calculate()` began.
  int errorCount = 0;
  /// The first message, code page.
  SString errorText;
  /// Where the read pointer stood in the text when the first error was recorded, in bytes.
  int errorPosition = 0;
  /// First bar of `Calculate(int)`.
  int calcStart = 0;
  TokenValue currentToken = PLUS;
  /// A host's own functions, ten if there are any, and their number. Nothing here reads them: calls go to
  /// `functionList`.
  std::unique_ptr<SFunction[]> functions;
  int functionCount = 0;
  SAnsiStringList *funcHistory = nullptr;
  /// Number of the formula, 0 to 31, for a caller that evaluates several with shared variables.
  int formula = 0;
  /// Bit i is set once an evaluation has read a variable that formula i assigned, i not being `formula`; the
  /// caller clears it.
  unsigned formulasRead = 0;
  /// Bit i is set once an evaluation has read series i of the order of `SetVariable`; the caller clears it.
  unsigned columnsRead = 0;

 private:
  friend class Call;
  class TailStart;
  struct CallFrame;
  struct ArgumentWords;
  class Compiler;

  SVector *BoundSeries(Column column);
  const SVector &Bound(Column column);

  // The levels of the grammar leave their value on top of the operand stack.
  void EvaluateExpr();
  void EvaluateRelop();
  void EvaluateAdd();
  void EvaluateTerm();
  void EvaluatePrim();
  void EvaluateName();
  void EvaluateVariable(const Name &variable);
  void NoteRead(const Name &variable);
  void EvaluateDataWord(const Function &function);
  template <class Evaluate>
  void EvaluateCall(Evaluate evaluate);
  void EvaluateMethodWord(FunctionId method);
  void RunText();

  bool ReadArguments(const Function &function, ArgumentWords &words);
  bool ReadMethod(ArgumentWords &words);
  bool ReadUnit(ArgumentWords &words);
  bool Refuse(const Function &function);

  void Apply(const Function &function);
  void ApplyRule(const Function &function, const ArgumentWords &words, std::size_t base);
  SVector ApplyWord(const Word *word);
  void EvaluateAssignment();
  void EvaluateUserCall(const char *name);
  void RunBody(const char *text);
  void StoreTop(Name &variable);
  void SaveForCaller(Name &variable);
  void LetWaitersOwn(const Name &variable);
  void Push(Operand operand) { operands_.push_back(std::move(operand)); }
  void PushError(const char *message) { Push(Error(message)); }
  void ReplaceTop(std::size_t base, Operand result);
  SVector PopSeries();
  void Combine(void (*operation)(SVector &, const SVector &, const SVector &));
  void ShiftTop(int bars);
  int CopiedFrom(const SVector &series) const { return isTail_ ? series.startIndex : 0; }
  bool EvaluateInParentheses();

  SStack &Evaluation();
  SStackItem &EvaluationSlot(int slot);
  void RunProgram(SStack *program);
  SVector *ReadDataWord(FunctionId function);
  void ApplyOperation(const Operation &operation, int count);
  void ApplyPower();
  void ApplyLag();
  void CallCompiled(int index, int count);

  std::vector<Operand> operands_;
  // The user-function call that runs now, or null.
  CallFrame *frame_ = nullptr;
  // Where the text of the formula goes on behind the outermost call, while a body is read; else null.
  const char *callPosition_ = nullptr;
  // Bit i: the program of user function i is running.
  unsigned runningFunctions_ = 0;
  // Calls of user functions in the program that runs.
  int compiledCalls_ = 0;
  int nesting_ = 0;
  bool isTail_ = false;
  bool textTooLong_ = false;
};

}  // namespace trovenu
