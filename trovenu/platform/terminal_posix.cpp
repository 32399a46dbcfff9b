#include "trovenu/platform/terminal.h"

#include <signal.h>
#include <unistd.h>

namespace trovenu {

void PrepareStandardStreams() {}

bool ErrorsGoToTerminal() { return isatty(STDERR_FILENO) != 0; }

bool InputIsTerminal() { return isatty(STDIN_FILENO) != 0; }

void LetSignalEndReading(int signal) {
  struct sigaction action;
  if (sigaction(signal, nullptr, &action) != 0) return;
  action.sa_flags &= ~SA_RESTART;
  sigaction(signal, &action, nullptr);
}

}  // namespace trovenu
