#include "tests/tools/program.h"

#if defined(_WIN32)
#include <windows.h>
#else
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace trovenu::tests {

namespace fs = std::filesystem;

#if defined(_WIN32)

namespace {

// Programs are given characters, not bytes: of UTF-8, or of the Korean code page where the text is no UTF-8.
std::wstring Wide(const std::string &text) {
  constexpr UINT kKorean = 949;
  const int size = static_cast<int>(text.size());
  for (const UINT page : {static_cast<UINT>(CP_UTF8), kKorean}) {
    const int length = MultiByteToWideChar(page, MB_ERR_INVALID_CHARS, text.data(), size, nullptr, 0);
    if (length == 0) continue;
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(page, 0, text.data(), size, wide.data(), length);
    return wide;
  }
  return {};
}

// An argument in quotes, as the start-up code of a program takes it apart again: backslashes count by twos in
// front of a quote alone.
std::wstring Quoted(const std::wstring &argument) {
  std::wstring quoted = L"\"";
  std::size_t backslashes = 0;
  for (const wchar_t c : argument) {
    if (c == L'"') quoted.append(backslashes + 1, L'\\');
    backslashes = c == L'\\' ? backslashes + 1 : 0;
    quoted += c;
  }
  return quoted.append(backslashes, L'\\') + L'"';
}

HANDLE OpenStream(const fs::path &path, DWORD access, DWORD how) {
  SECURITY_ATTRIBUTES inherited = {};
  inherited.nLength = sizeof inherited;
  inherited.bInheritHandle = TRUE;
  return CreateFileW(path.c_str(), access, FILE_SHARE_READ, &inherited, how, FILE_ATTRIBUTE_NORMAL, nullptr);
}

}  // namespace

int RunProgram(const std::string &program, const std::vector<std::string> &arguments, const fs::path &folder,
               const fs::path &streams) {
  std::wstring command = Quoted(Wide(program));
  for (const std::string &argument : arguments) command += L' ' + Quoted(Wide(argument));
  STARTUPINFOW start = {};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESTDHANDLES;
  start.hStdInput = OpenStream(streams / "in", GENERIC_READ, OPEN_EXISTING);
  start.hStdOutput = OpenStream(streams / "out", GENERIC_WRITE, CREATE_ALWAYS);
  start.hStdError = OpenStream(streams / "err", GENERIC_WRITE, CREATE_ALWAYS);
  PROCESS_INFORMATION process = {};
  const bool started = CreateProcessW(Wide(program).c_str(), command.data(), nullptr, nullptr, TRUE, 0,
                                      nullptr, folder.c_str(), &start, &process) != FALSE;
  for (const HANDLE stream : {start.hStdInput, start.hStdOutput, start.hStdError}) CloseHandle(stream);
  if (!started) return -1;
  DWORD exitCode = 0;
  WaitForSingleObject(process.hProcess, INFINITE);
  const bool ended = GetExitCodeProcess(process.hProcess, &exitCode) != FALSE;
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  return ended ? static_cast<int>(exitCode) : -1;
}

#else

namespace {

bool Redirect(int stream, const fs::path &path, int how) {
  const int file = open(path.c_str(), how, 0600);
  return file >= 0 && dup2(file, stream) == stream && close(file) == 0;
}

}  // namespace

int RunProgram(const std::string &program, const std::vector<std::string> &arguments, const fs::path &folder,
               const fs::path &streams) {
  std::vector<const char *> words = {program.c_str()};
  for (const std::string &argument : arguments) words.push_back(argument.c_str());
  words.push_back(nullptr);
  const pid_t child = fork();
  if (child < 0) return -1;
  if (child == 0) {
    constexpr int kNew = O_WRONLY | O_CREAT | O_TRUNC;
    if (Redirect(STDIN_FILENO, streams / "in", O_RDONLY) && Redirect(STDOUT_FILENO, streams / "out", kNew) &&
        Redirect(STDERR_FILENO, streams / "err", kNew) && chdir(folder.c_str()) == 0) {
      execv(program.c_str(), const_cast<char *const *>(words.data()));
    }
    _exit(127);
  }
  int status = 0;
  while (waitpid(child, &status, 0) < 0) {
  }
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

#endif

}  // namespace trovenu::tests
