#include "trovenu/platform/host.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

namespace trovenu {

struct HostLock::Own {
  std::recursive_mutex mutex;
};

HostLock::HostLock() : HostLock(nullptr) {}

HostLock::HostLock(void *criticalSection) : native_(native::HasHandles() ? criticalSection : nullptr) {
  if (native_ == nullptr) own_ = std::make_unique<Own>();
}

HostLock::~HostLock() = default;

void HostLock::Enter() {
  if (own_) {
    own_->mutex.lock();
  } else {
    native::EnterCriticalSection(native_);
  }
}

void HostLock::Unlock() {
  if (own_) {
    own_->mutex.unlock();
  } else {
    native::LeaveCriticalSection(native_);
  }
}

struct HostWindow::Queue {
  std::mutex mutex;
  std::condition_variable arrival;
  std::deque<HostMessage> messages;
};

HostWindow::HostWindow() : HostWindow(nullptr) {}

HostWindow::HostWindow(void *windowHandle) : native_(native::HasHandles() ? windowHandle : nullptr) {
  if (native_ == nullptr) queue_ = std::make_unique<Queue>();
}

HostWindow::~HostWindow() = default;

bool HostWindow::Post(const HostMessage &message) {
  if (!queue_) return native::PostToWindow(native_, message);
  {
    const std::lock_guard guard(queue_->mutex);
    if (queue_->messages.size() >= kQueueLimit) return false;
    queue_->messages.push_back(message);
  }
  queue_->arrival.notify_one();
  return true;
}

bool HostWindow::Wait(int milliseconds, HostMessage *message) {
  if (!queue_) return false;
  std::unique_lock guard(queue_->mutex);
  const auto some = [this] { return !queue_->messages.empty(); };
  if (!queue_->arrival.wait_for(guard, std::chrono::milliseconds(milliseconds), some)) return false;
  *message = queue_->messages.front();
  queue_->messages.pop_front();
  return true;
}

struct HostThread::Own {
  std::mutex mutex;
  std::condition_variable resumed;
  int suspensions = 0;
  unsigned result = 0;
  std::thread thread;
};

HostThread::HostThread() : HostThread(nullptr) {}

HostThread::HostThread(void *threadHandle) : native_(native::HasHandles() ? threadHandle : nullptr) {
  if (native_ == nullptr) own_ = std::make_unique<Own>();
}

HostThread::~HostThread() { Join(); }

bool HostThread::Start(std::function<unsigned()> work) {
  if (!own_ || own_->thread.joinable()) return false;
  try {
    own_->thread = std::thread([own = own_.get(), run = std::move(work)] { own->result = run(); });
  } catch (const std::system_error &) {
    return false;
  }
  return true;
}

unsigned HostThread::Join() {
  if (!own_ || !own_->thread.joinable()) return 0;
  own_->thread.join();
  return own_->result;
}

void HostThread::SuspendSelf() {
  if (!own_) {
    native::SuspendThread(native_);
    return;
  }
  std::unique_lock guard(own_->mutex);
  ++own_->suspensions;
  own_->resumed.wait(guard, [this] { return own_->suspensions == 0; });
}

bool HostThread::IsSuspended() const {
  if (!own_) return false;
  const std::lock_guard guard(own_->mutex);
  return own_->suspensions > 0;
}

bool HostThread::Resume() {
  if (!own_) return native::ResumeThread(native_);
  {
    const std::lock_guard guard(own_->mutex);
    if (own_->suspensions == 0) return false;
    --own_->suspensions;
  }
  own_->resumed.notify_all();
  return true;
}

}  // namespace trovenu
