#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>

#include "trovenu/platform/host.h"

namespace trovenu::native {
namespace {

constexpr DWORD kFailed = static_cast<DWORD>(-1);

}  // namespace

bool HasHandles() { return true; }

bool EnterCriticalSection(void *section) {
  ::EnterCriticalSection(static_cast<CRITICAL_SECTION *>(section));
  return true;
}

bool LeaveCriticalSection(void *section) {
  ::LeaveCriticalSection(static_cast<CRITICAL_SECTION *>(section));
  return true;
}

bool PostToWindow(void *window, const HostMessage &message) {
  return PostMessageA(static_cast<HWND>(window), message.number, static_cast<WPARAM>(message.wParam),
                      static_cast<LPARAM>(message.lParam)) != 0;
}

bool SuspendThread(void *thread) { return ::SuspendThread(static_cast<HANDLE>(thread)) != kFailed; }

bool ResumeThread(void *thread) {
  const DWORD before = ::ResumeThread(static_cast<HANDLE>(thread));
  return before != kFailed && before > 0;
}

}  // namespace trovenu::native
