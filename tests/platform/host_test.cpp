#include "trovenu/platform/host.h"

#include <gtest/gtest.h>

#include <atomic>
#include <mutex>

namespace trovenu {
namespace {

// The thread suspends itself as soon as it starts; who resumes it too early has no effect and must try again.
TEST(HostThread, GoesOnOnceForEachResume) {
  HostThread thread;
  EXPECT_FALSE(thread.Resume());
  std::atomic<int> steps = 0;
  ASSERT_TRUE(thread.Start([&] {
    for (int i = 0; i < 3; ++i) {
      thread.SuspendSelf();
      ++steps;
    }
    return 7u;
  }));
  EXPECT_FALSE(thread.Start([] { return 0u; }));
  for (int resumed = 0; resumed < 3;) {
    EXPECT_LE(steps, resumed);
    if (thread.Resume()) ++resumed;
  }
  EXPECT_EQ(7u, thread.Join());
  EXPECT_EQ(3, steps);
  EXPECT_EQ(0u, thread.Join());
}

TEST(HostWindow, KeepsMessagesInOrderAndDropsThemWhenFull) {
  HostWindow window;
  HostMessage message{.number = 1};
  EXPECT_FALSE(window.Wait(0, &message));
  EXPECT_EQ(1u, message.number);
  for (unsigned i = 0; i < HostWindow::kQueueLimit; ++i) ASSERT_TRUE(window.Post({.number = i}));
  EXPECT_FALSE(window.Post({.number = 5}));
  for (unsigned i = 0; i < 3; ++i) {
    ASSERT_TRUE(window.Wait(0, &message));
    EXPECT_EQ(i, message.number);
  }
}

TEST(HostLock, IsEnteredAgainByItsHolderAlone) {
  HostLock lock;
  HostThread thread;
  int shared = 0;
  ASSERT_TRUE(thread.Start([&] {
    for (int i = 0; i < 1000; ++i) {
      const std::lock_guard guard(lock);
      ++shared;
    }
    return 0u;
  }));
  for (int i = 0; i < 1000; ++i) {
    const std::lock_guard outer(lock);
    const std::lock_guard inner(lock);
    ++shared;
  }
  thread.Join();
  EXPECT_EQ(2000, shared);
}

}  // namespace
}  // namespace trovenu
