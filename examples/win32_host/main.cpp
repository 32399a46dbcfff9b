// A host as plain Win32: a window, a critical section and a worker thread. It searches the lengths of two
// averages, shows every run that its window hears of, pauses the search, resumes it and cancels it. Then it
// searches a small grid to its end. Exits with 0 if all went as it should.
//   win32_host FOLDER    leaves the tables of the runs in FOLDER, and deletes what was there
#include <windows.h>

#include <trovenu/trovenu.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <memory>

namespace {

constexpr UINT kSearchEnded = WM_APP;
constexpr UINT_PTR kLookAgain = 1;
constexpr int kPauseAfter = 5;
constexpr int kCancelAfter = 10;

// The bars of a wave, and the rules that trade on it.
struct Market {
  Market() {
    for (int i = 0; i < 400; ++i) {
      const double price = 100 + 10 * std::sin(i * 0.7) + i % 3;
      close.Add(price);
      open.Add(price - 1);
      high.Add(price + 2);
      low.Add(price - 2);
      volume.Add(1000);
      date.Add(20240101 + i % 28 + 100 * (i / 28 % 12) + 10000 * (i / 336));
      openInterest.Add(0);
      amount.Add(0);
    }
    test.TickSize = 0.01;
    test.SetVariable(close, open, high, low, volume, date, openInterest, amount);
  }

  void SetGrid(const char *longest) {
    trovenu::SIndex rules("averages", 3);
    rules.SetExpression(0, "crossup(avg(c,short),avg(c,long))");
    rules.SetExpression(1, "crossdown(avg(c,short),avg(c,long))");
    const char *const variables[][4] = {{"short", "2", "4", "1"}, {"long", "5", longest, "1"}};
    for (int k = 0; k < 2; ++k) {
      rules.VarName[k] = variables[k][0];
      rules.VarStart[k] = variables[k][1];
      rules.VarEnd[k] = variables[k][2];
      rules.VarIncrement[k] = variables[k][3];
    }
    test.SetIndex(rules);
  }

  trovenu::SVector close, open, high, low, volume, date, openInterest, amount;
  trovenu::SSimulation test;
};

// One search: what window and worker share.
struct Search {
  Search(Market *market, const char *folder, HWND owner)
      : optimiser(&market->test, trovenu::SSimulationMain::Variables, folder), window(owner) {
    InitializeCriticalSection(&section);
    thread = CreateThread(nullptr, 0, &Search::Work, this, CREATE_SUSPENDED, nullptr);
    if (thread == nullptr) {
      std::fputs("a thread can't be started\n", stderr);
      std::exit(1);
    }
    hostWindow = std::make_unique<trovenu::HostWindow>(static_cast<void *>(window));
    hostLock = std::make_unique<trovenu::HostLock>(static_cast<void *>(&section));
    hostThread = std::make_unique<trovenu::HostThread>(static_cast<void *>(thread));
    shared.Window = hostWindow.get();
    shared.Lock = hostLock.get();
    shared.Thread = hostThread.get();
  }
  ~Search() {
    WaitForSingleObject(thread, INFINITE);
    CloseHandle(thread);
    DeleteCriticalSection(&section);
  }
  Search(const Search &) = delete;
  Search &operator=(const Search &) = delete;

  void Start() { ResumeThread(thread); }

  static DWORD WINAPI Work(void *search) {
    auto *self = static_cast<Search *>(search);
    const unsigned result = self->optimiser.Calc(&self->shared);
    PostMessageA(self->window, kSearchEnded, result, 0);
    return result;
  }

  // Whether the worker has suspended itself: the count of suspensions before one more, which is taken back.
  bool IsSuspended() const {
    const DWORD before = SuspendThread(thread);
    ResumeThread(thread);
    return before == 1;
  }

  trovenu::SSimulationMain optimiser;
  HWND window;
  CRITICAL_SECTION section;
  HANDLE thread;
  std::unique_ptr<trovenu::HostWindow> hostWindow;
  std::unique_ptr<trovenu::HostLock> hostLock;
  std::unique_ptr<trovenu::HostThread> hostThread;
  trovenu::tagOPVARTHREADINFO shared;

  // The window's own.
  int messages = 0;
  int messagesWhenPaused = 0;
  int looks = 0;
  bool isToBeCancelled = false;
  bool sawPause = false;
  int lastRun = -1;
  unsigned result = 2;
  bool isGood = true;
};

void Check(Search *search, bool good, const char *what) {
  if (good) return;
  std::printf("fault: %s\n", what);
  search->isGood = false;
}

void OnRunDone(Search *search) {
  ++search->messages;
  EnterCriticalSection(&search->section);
  const int run = search->shared.Current;
  const long figures = search->shared.Result.GetSize();
  const trovenu::SString name = search->shared.Result[0];
  const trovenu::SString profit = search->shared.Result[1];
  LeaveCriticalSection(&search->section);
  Check(search, figures == 13 && name.Find("averages(") == 0 && !profit.IsEmpty(), "figures of a run");
  Check(search, run >= search->lastRun, "the runs come in order");
  // A run that ended before this message was looked at takes the place of the one that sent it.
  if (run > search->lastRun) std::printf("run %d: %s profit %s\n", run, name.c_str(), profit.c_str());
  search->lastRun = run;
  if (!search->isToBeCancelled) return;
  if (search->messages == kPauseAfter) {
    search->shared.State = trovenu::kOptimiserPause;
    SetTimer(search->window, kLookAgain, 50, nullptr);
  } else if (search->messages == search->messagesWhenPaused + kCancelAfter && search->sawPause) {
    std::printf("cancelled\n");
    search->shared.State = trovenu::kOptimiserCancel;
  }
}

// Waits until the worker is seen suspended, sees that it stays so, and lets it go on.
void OnTimer(Search *search) {
  if (!search->IsSuspended()) return;
  // The message of the last run may come after the first look.
  if (search->looks++ < 2) {
    search->messagesWhenPaused = search->messages;
    return;
  }
  Check(search, search->messages == search->messagesWhenPaused, "no run while the search is paused");
  if (search->looks < 6) return;
  KillTimer(search->window, kLookAgain);
  std::printf("paused after run %d; resumed\n", search->lastRun);
  search->sawPause = true;
  search->shared.State = trovenu::kOptimiserRun;
  ResumeThread(search->thread);
}

LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  auto *search = reinterpret_cast<Search *>(GetWindowLongPtrA(window, GWLP_USERDATA));
  switch (message) {
    case trovenu::kRunDoneMessage:
      Check(search, wParam == 0 && lParam == 0, "parameters of the message");
      OnRunDone(search);
      return 0;
    case WM_TIMER:
      OnTimer(search);
      return 0;
    case kSearchEnded:
      search->result = static_cast<unsigned>(wParam);
      PostQuitMessage(0);
      return 0;
    default:
      return DefWindowProcA(window, message, wParam, lParam);
  }
}

// Runs a search with the window's messages until it ends.
void Run(Search *search) {
  SetWindowLongPtrA(search->window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(search));
  search->Start();
  MSG message;
  while (GetMessageA(&message, nullptr, 0, 0) > 0) {
    TranslateMessage(&message);
    DispatchMessageA(&message);
  }
}

}  // namespace

int main(int argc, char **argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: win32_host FOLDER\n");
    return 2;
  }
  WNDCLASSA kind = {};
  kind.lpfnWndProc = &WindowProcedure;
  kind.hInstance = GetModuleHandleA(nullptr);
  kind.lpszClassName = "TrovenuHost";
  RegisterClassA(&kind);
  const HWND window = CreateWindowA("TrovenuHost", "Host", WS_OVERLAPPEDWINDOW, CW_USEDEFAULT, CW_USEDEFAULT,
                                    400, 300, nullptr, nullptr, kind.hInstance, nullptr);
  if (window == nullptr) {
    std::fprintf(stderr, "win32_host: no window, error %lu\n", GetLastError());
    return 1;
  }

  Market market;
  market.SetGrid("1000000");
  bool isGood = true;
  {
    Search search(&market, argv[1], window);
    search.isToBeCancelled = true;
    Run(&search);
    Check(&search, search.sawPause, "the search was paused");
    Check(&search, search.result == 0, "a search that is cancelled gives 0");
    Check(&search, search.shared.State == trovenu::kOptimiserRun, "the state after it was cancelled");
    isGood = isGood && search.isGood;
  }
  market.SetGrid("7");
  {
    Search search(&market, argv[1], window);
    Run(&search);
    Check(&search, search.result == 1 && search.lastRun == 8 && search.messages == 9, "nine runs to the end");
    isGood = isGood && search.isGood;
  }
  DestroyWindow(window);
  std::printf(isGood ? "all as it should be\n" : "not as it should be\n");
  return isGood ? 0 : 1;
}
