#pragma once

/// \file
/// What the optimiser needs of its host: the thread that it runs on, the window that it reports to and the
/// lock of what both look at. On Windows each can stand for a handle of the host's own; without one, and on
/// other systems, they work by the standard library alone.

#include <cstdint>
#include <functional>
#include <memory>

#include "trovenu/platform/export.h"

namespace trovenu {

/// The lock that host and worker share. The thread that holds it may enter it again, and must leave it as
/// often.
class TROVENU_API HostLock {
 public:
  HostLock();
  /// Stands for a CRITICAL_SECTION of the host, which outlives the object. Null, and any pointer elsewhere
  /// than on Windows, gives a lock of its own.
  explicit HostLock(void *criticalSection);
  ~HostLock();
  HostLock(const HostLock &) = delete;
  HostLock &operator=(const HostLock &) = delete;

  /// Waits until no other thread holds the lock, and takes it. `lock` and `unlock` serve std::lock_guard.
  void Enter();
  void Unlock();
  void lock() { Enter(); }
  void unlock() { Unlock(); }

 private:
  struct Own;
  std::unique_ptr<Own> own_;
  void *native_ = nullptr;
};

/// A message that a window has received.
struct HostMessage {
  unsigned number = 0;
  std::uintptr_t wParam = 0;
  std::intptr_t lParam = 0;
};

/// The window that messages are posted to: the host's own, or a queue on which a thread can wait.
class TROVENU_API HostWindow {
 public:
  /// Messages that a queue keeps; those that come while it is full are lost.
  static constexpr int kQueueLimit = 10000;

  /// A queue.
  HostWindow();
  /// Stands for the window with this HWND. Null, and any pointer elsewhere than on Windows, gives a queue.
  explicit HostWindow(void *windowHandle);
  ~HostWindow();
  HostWindow(const HostWindow &) = delete;
  HostWindow &operator=(const HostWindow &) = delete;

  /// Hands a message over without waiting for anybody to take it. False if it is lost.
  bool Post(const HostMessage &message);
  /// Takes the oldest message of the queue, after waiting for one up to so many milliseconds. False, with the
  /// message as it was, if none came; a window of the host's own keeps its messages.
  bool Wait(int milliseconds, HostMessage *message);

 private:
  struct Queue;
  std::unique_ptr<Queue> queue_;
  void *native_ = nullptr;
};

/// A thread that can suspend itself until another one resumes it.
class TROVENU_API HostThread {
 public:
  HostThread();
  /// Stands for the running thread with this HANDLE, which outlives the object. Null, and any pointer
  /// elsewhere than on Windows, leaves the object without a thread of the host's own.
  explicit HostThread(void *threadHandle);
  /// Waits for the end of what `Start` has started, which must not be suspended for good.
  ~HostThread();
  HostThread(const HostThread &) = delete;
  HostThread &operator=(const HostThread &) = delete;

  /// Runs `work` on a new thread. False if there is none to be had, or if one has been started and not been
  /// waited for.
  bool Start(std::function<unsigned()> work);
  /// Waits for its end, and gives what `work` returned; 0 if nothing was started.
  unsigned Join();

  /// Called on the thread itself: goes on when `Resume` has been called once for each call. There is no other
  /// way out.
  void SuspendSelf();
  /// Takes back one `SuspendSelf`. False if the thread was not suspended, which has no effect: a thread that
  /// suspends itself later stays suspended.
  bool Resume();
  /// Whether the thread waits for `Resume`; false where the object stands for a handle, which can't be asked.
  bool IsSuspended() const;

 private:
  struct Own;
  std::unique_ptr<Own> own_;
  void *native_ = nullptr;
};

/// What the host classes do with handles of the operating system. Each gives false where there are none.
namespace native {
bool HasHandles();
bool EnterCriticalSection(void *section);
bool LeaveCriticalSection(void *section);
bool PostToWindow(void *window, const HostMessage &message);
bool SuspendThread(void *thread);
bool ResumeThread(void *thread);
}  // namespace native

}  // namespace trovenu
