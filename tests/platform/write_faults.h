#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace trovenu::tests {

/// What an action did until it was stopped.
struct Interrupted {
  bool finished = false;   ///< It ended by itself.
  std::size_t writes = 0;  ///< Calls that change a file: writes, cuts, renames, flushes.
};

/// True where `StopAtWrite` works.
bool CanStopWrites();

/// Runs `action` in a child process that ends, without any clean-up, in the `stopAt`-th call that changes a
/// file, counted from 0. Of a write the first `bytes` bytes still happen; of any other call nothing does.
Interrupted StopAtWrite(std::size_t stopAt, std::size_t bytes, const std::function<void()> &action);

/// Runs `action` in a child process in which files can't grow beyond `bytes`, as on a full disk. True if it
/// ended.
bool RunOnFullDisk(std::size_t bytes, const std::function<void()> &action);

/// Lets one call of this thread fail, as if the device were out of order: of those that open a file or change
/// one, the `nth` from now on (1 is the next), for as long as the object lives.
class FailingCall {
 public:
  explicit FailingCall(int nth);
  ~FailingCall();
  FailingCall(const FailingCall &) = delete;
  FailingCall &operator=(const FailingCall &) = delete;
  /// True once the call has failed.
  bool Happened() const;
};

/// Runs `action` in a child process, or on a thread where a process can't be split, at the same time as this
/// one goes on. `WaitFor` gives true if it returned true.
int StartProcess(const std::function<bool()> &action);
bool WaitFor(int process);

}  // namespace trovenu::tests
