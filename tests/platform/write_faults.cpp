#include "tests/platform/write_faults.h"

#if defined(__linux__)

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>

namespace trovenu::tests {

namespace {

// Counts in memory that the child shares with its parent; null while no write is to be stopped.
std::size_t *writesSoFar = nullptr;
std::size_t stopAtWrite = 0;
std::size_t bytesOfStopped = 0;

constexpr int kStopped = 77;

// Counts down to the call that fails; 0 where none does, or where it has failed.
thread_local int callsToFailure = 0;

/// True for the call that is to fail.
bool FailsNow() {
  if (callsToFailure == 0 || --callsToFailure > 0) return false;
  errno = EIO;
  return true;
}

/// True for the call in which the process is to end.
bool IsTheOne() { return writesSoFar != nullptr && (*writesSoFar)++ == stopAtWrite; }

int ChildResult(pid_t child) {
  int status = 0;
  while (waitpid(child, &status, 0) < 0) {
  }
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace

bool CanStopWrites() { return true; }

Interrupted StopAtWrite(std::size_t stopAt, std::size_t bytes, const std::function<void()> &action) {
  void *shared =
      mmap(nullptr, sizeof(std::size_t), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  auto *writes = static_cast<std::size_t *>(shared);
  *writes = 0;
  const pid_t child = fork();
  if (child == 0) {
    writesSoFar = writes;
    stopAtWrite = stopAt;
    bytesOfStopped = bytes;
    action();
    _exit(0);
  }
  Interrupted result;
  result.finished = ChildResult(child) == 0;
  result.writes = *writes;
  munmap(shared, sizeof(std::size_t));
  return result;
}

FailingCall::FailingCall(int nth) { callsToFailure = nth; }
FailingCall::~FailingCall() { callsToFailure = 0; }
bool FailingCall::Happened() const { return callsToFailure == 0; }

bool RunOnFullDisk(std::size_t bytes, const std::function<void()> &action) {
  const pid_t child = fork();
  if (child == 0) {
    signal(SIGXFSZ, SIG_IGN);
    const rlimit limit = {bytes, bytes};
    setrlimit(RLIMIT_FSIZE, &limit);
    action();
    _exit(0);
  }
  return ChildResult(child) == 0;
}

int StartProcess(const std::function<bool()> &action) {
  const pid_t child = fork();
  if (child == 0) _exit(action() ? 0 : 1);
  return child;
}

bool WaitFor(int process) { return ChildResult(process) == 0; }

}  // namespace trovenu::tests

// These stand before the functions of the C library in every test program.

using trovenu::tests::FailsNow;
using trovenu::tests::IsTheOne;
using trovenu::tests::kStopped;

extern "C" {

int open(const char *path, int flags, ...) {
  if (FailsNow()) return -1;
  mode_t mode = 0;
  if ((flags & O_CREAT) != 0) {
    va_list arguments;
    va_start(arguments, flags);
    mode = va_arg(arguments, mode_t);
    va_end(arguments);
  }
  return static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}

int fchmod(int file, mode_t mode) noexcept {
  return FailsNow() ? -1 : static_cast<int>(syscall(SYS_fchmod, file, mode));
}

ssize_t pwrite(int file, const void *data, size_t size, off_t offset) {
  if (FailsNow()) return -1;
  const bool stop = IsTheOne();
  const size_t some = stop ? std::min(size, trovenu::tests::bytesOfStopped) : size;
  const ssize_t result = syscall(SYS_pwrite64, file, data, some, offset);
  if (stop) _exit(kStopped);
  return result;
}

int fsync(int file) {
  if (FailsNow()) return -1;
  if (IsTheOne()) _exit(kStopped);
  // The order of calls is what is tested; waiting for the disk each time would only take long.
  static_cast<void>(file);
  return 0;
}

int ftruncate(int file, off_t size) noexcept {
  if (FailsNow()) return -1;
  if (IsTheOne()) _exit(kStopped);
  return static_cast<int>(syscall(SYS_ftruncate, file, size));
}

int rename(const char *from, const char *to) noexcept {
  if (FailsNow()) return -1;
  if (IsTheOne()) _exit(kStopped);
  return static_cast<int>(syscall(SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, 0));
}
}

#else

#include <future>
#include <vector>

namespace trovenu::tests {

namespace {

std::vector<std::future<bool>> running;

}  // namespace

bool CanStopWrites() { return false; }
Interrupted StopAtWrite(std::size_t, std::size_t, const std::function<void()> &) { return {}; }
FailingCall::FailingCall(int) {}
FailingCall::~FailingCall() = default;
bool FailingCall::Happened() const { return false; }
bool RunOnFullDisk(std::size_t, const std::function<void()> &) { return false; }

// Each of the threads opens the files that it works on, as a process does.
int StartProcess(const std::function<bool()> &action) {
  running.push_back(std::async(std::launch::async, action));
  return static_cast<int>(running.size()) - 1;
}

bool WaitFor(int process) { return running[static_cast<std::size_t>(process)].get(); }

}  // namespace trovenu::tests

#endif
