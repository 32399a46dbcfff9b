#include "trovenu/platform/host.h"

namespace trovenu::native {

bool HasHandles() { return false; }
bool EnterCriticalSection(void * /*section*/) { return false; }
bool LeaveCriticalSection(void * /*section*/) { return false; }
bool PostToWindow(void * /*window*/, const HostMessage & /*message*/) { return false; }
bool SuspendThread(void * /*thread*/) { return false; }
bool ResumeThread(void * /*thread*/) { return false; }

}  // namespace trovenu::native
