#if defined(_WIN32)

#include <windows.h>

#include <algorithm>
#include <cstring>

#include "trovenu/platform/platform.h"

namespace trovenu {

namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr std::size_t kPiece = 1 << 30;

// The lock stands on a byte far behind the data, since locked bytes can't be read by others.
constexpr DWORD kLockOffset = 0xFFFFFFFE;
constexpr DWORD kLockOffsetHigh = 0x7FFFFFFF;

HANDLE Handle(std::intptr_t handle) { return reinterpret_cast<HANDLE>(handle); }

OVERLAPPED At(std::uint64_t offset) {
  OVERLAPPED position = {};
  position.Offset = static_cast<DWORD>(offset & 0xFFFFFFFF);
  position.OffsetHigh = static_cast<DWORD>(offset >> 32);
  return position;
}

bool IsFolder(DWORD attributes) {
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

/// The rename that also replaces a file which others have open. Systems before Windows 10 lack it.
bool RenameOpenFile(HANDLE file, const std::string &target) {
  struct RenameInformation {
    DWORD flags;
    HANDLE root;
    DWORD length;
    wchar_t name[MAX_PATH];
  };
  constexpr DWORD kReplaceWithPosixSemantics = 3;
  constexpr auto kRenameInformationEx = static_cast<FILE_INFO_BY_HANDLE_CLASS>(22);
  RenameInformation information = {};
  char whole[MAX_PATH];
  const DWORD length = GetFullPathNameA(target.c_str(), MAX_PATH, whole, nullptr);
  if (length == 0 || length >= MAX_PATH) return false;
  const int wide = MultiByteToWideChar(CP_ACP, 0, whole, -1, information.name, MAX_PATH);
  if (wide <= 0) return false;
  information.flags = kReplaceWithPosixSemantics;
  information.length = static_cast<DWORD>((wide - 1) * static_cast<int>(sizeof(wchar_t)));
  return SetFileInformationByHandle(file, kRenameInformationEx, &information, sizeof information) != FALSE;
}

bool IsThere(const std::string &path) { return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES; }

constexpr const char *kNewName = ".new";
constexpr int kOldNames = 100;

std::string OldName(const std::string &target, int i) {
  return target + ".replaced" + (i == 0 ? "" : std::to_string(i));
}

/// Where a file that others have open can't be replaced, it can still be given another name first. What bears
/// that name is gone when they close it, so there may be several.
bool MoveAside(const std::string &beside, const std::string &target, DWORD flags) {
  for (int i = 0; i < kOldNames; ++i) {
    const std::string old = OldName(target, i);
    if (MoveFileExA(target.c_str(), old.c_str(), flags & ~static_cast<DWORD>(MOVEFILE_REPLACE_EXISTING)) ==
        FALSE) {
      const DWORD fault = GetLastError();
      if (fault == ERROR_ALREADY_EXISTS || fault == ERROR_FILE_EXISTS) continue;
      return false;
    }
    const bool placed = MoveFileExA(beside.c_str(), target.c_str(), flags) != FALSE;
    if (placed) {
      DeleteFileA(old.c_str());
    } else {
      MoveFileExA(old.c_str(), target.c_str(), flags);
    }
    return placed;
  }
  return false;
}

/// For a path at which no file was found: waits while another process is between two steps, those of
/// `MoveAside`, or the system between removing the old file and renaming the new one. Where it was stopped
/// there, the old file gets its name back. True if there is a file now.
bool IsThereAfterAll(const std::string &path) {
  constexpr int kTries = 100;
  constexpr DWORD kPause = 2;
  // One move may end and the next begin between two looks.
  constexpr int kLooks = 3;
  int looks = 0;
  for (int i = 0; i < kTries; ++i) {
    if (IsThere(path)) return true;
    if (IsThere(OldName(path, 0)) || IsThere(path + kNewName)) {
      Sleep(kPause);
    } else if (++looks == kLooks) {
      return IsThere(path);
    }
  }
  int last = 0;
  while (last < kOldNames && IsThere(OldName(path, last))) ++last;
  return IsThere(path) ||
         (last > 0 && MoveFileExA(OldName(path, last - 1).c_str(), path.c_str(), 0) != FALSE);
}

HANDLE OpenExisting(const std::string &path, DWORD rights) {
  // Until it is opened, what was there can be on its way again.
  constexpr int kTries = 50;
  for (int i = 0;; ++i) {
    const HANDLE handle = CreateFileA(path.c_str(), rights, kShareAll, nullptr, OPEN_EXISTING, 0, nullptr);
    if (handle != INVALID_HANDLE_VALUE || GetLastError() != ERROR_FILE_NOT_FOUND) return handle;
    if (i == kTries || !IsThereAfterAll(path)) return INVALID_HANDLE_VALUE;
  }
}

}  // namespace

int FileExist(const char *path) {
  if (path == nullptr) return 0;
  DWORD attributes = GetFileAttributesA(path);
  if (attributes == INVALID_FILE_ATTRIBUTES && GetLastError() == ERROR_FILE_NOT_FOUND &&
      IsThereAfterAll(path)) {
    attributes = GetFileAttributesA(path);
  }
  return attributes != INVALID_FILE_ATTRIBUTES && !IsFolder(attributes) ? 1 : 0;
}

bool MakeFolder(const std::string &path) {
  return CreateDirectoryA(path.c_str(), nullptr) != FALSE || IsFolder(GetFileAttributesA(path.c_str()));
}

std::vector<std::string> FilesIn(const std::string &folder) {
  std::vector<std::string> names;
  WIN32_FIND_DATAA found = {};
  const HANDLE search = FindFirstFileA((folder + "\\*").c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return names;
  do {
    if (!IsFolder(found.dwFileAttributes)) names.emplace_back(found.cFileName);
  } while (FindNextFileA(search, &found) != FALSE);
  FindClose(search);
  std::sort(names.begin(), names.end());
  return names;
}

bool RemoveFile(const std::string &path) { return DeleteFileA(path.c_str()) != FALSE; }

bool File::Open(const std::string &path, Access access) {
  Close();
  const DWORD rights = access == Access::Read ? GENERIC_READ : GENERIC_READ | GENERIC_WRITE;
  const HANDLE handle = OpenExisting(path, rights);
  if (handle == INVALID_HANDLE_VALUE) return false;
  if (GetFileType(handle) != FILE_TYPE_DISK) {
    CloseHandle(handle);
    return false;
  }
  handle_ = reinterpret_cast<std::intptr_t>(handle);
  return true;
}

void File::Close() {
  if (IsOpen()) CloseHandle(Handle(handle_));
  handle_ = kNoHandle;
}

std::uint64_t File::Size() const {
  LARGE_INTEGER size = {};
  if (!IsOpen() || GetFileSizeEx(Handle(handle_), &size) == FALSE) return 0;
  return static_cast<std::uint64_t>(size.QuadPart);
}

std::size_t File::ReadAt(std::uint64_t offset, void *buffer, std::size_t size) const {
  std::size_t done = 0;
  while (done < size) {
    OVERLAPPED position = At(offset + done);
    DWORD got = 0;
    const auto piece = static_cast<DWORD>(std::min(size - done, kPiece));
    if (ReadFile(Handle(handle_), static_cast<char *>(buffer) + done, piece, &got, &position) == FALSE) break;
    if (got == 0) break;
    done += got;
  }
  return done;
}

bool File::WriteAt(std::uint64_t offset, const void *data, std::size_t size) {
  std::size_t done = 0;
  while (done < size) {
    OVERLAPPED position = At(offset + done);
    DWORD put = 0;
    const auto piece = static_cast<DWORD>(std::min(size - done, kPiece));
    const auto *from = static_cast<const char *>(data) + done;
    if (WriteFile(Handle(handle_), from, piece, &put, &position) == FALSE || put == 0) return false;
    done += put;
  }
  return true;
}

bool File::Resize(std::uint64_t size) {
  LARGE_INTEGER position = {};
  position.QuadPart = static_cast<LONGLONG>(size);
  return SetFilePointerEx(Handle(handle_), position, nullptr, FILE_BEGIN) != FALSE &&
         SetEndOfFile(Handle(handle_)) != FALSE;
}

bool File::FlushToDisk() { return FlushFileBuffers(Handle(handle_)) != FALSE; }

bool File::Lock() {
  OVERLAPPED position = {};
  position.Offset = kLockOffset;
  position.OffsetHigh = kLockOffsetHigh;
  return LockFileEx(Handle(handle_), LOCKFILE_EXCLUSIVE_LOCK, 0, 1, 0, &position) != FALSE;
}

void File::Unlock() {
  OVERLAPPED position = {};
  position.Offset = kLockOffset;
  position.OffsetHigh = kLockOffsetHigh;
  UnlockFileEx(Handle(handle_), 0, 1, 0, &position);
}

bool File::IsAt(const std::string &path) const {
  const HANDLE named = CreateFileA(path.c_str(), 0, kShareAll, nullptr, OPEN_EXISTING, 0, nullptr);
  if (named == INVALID_HANDLE_VALUE) return false;
  BY_HANDLE_FILE_INFORMATION own = {};
  BY_HANDLE_FILE_INFORMATION other = {};
  const bool same = GetFileInformationByHandle(Handle(handle_), &own) != FALSE &&
                    GetFileInformationByHandle(named, &other) != FALSE &&
                    own.dwVolumeSerialNumber == other.dwVolumeSerialNumber &&
                    own.nFileIndexHigh == other.nFileIndexHigh && own.nFileIndexLow == other.nFileIndexLow;
  CloseHandle(named);
  return same;
}

NewFile::NewFile(const std::string &path) : target_(path) {
  if (path.empty() || IsFolder(GetFileAttributesA(path.c_str()))) return;
  constexpr int kNames = 100;
  for (int i = 0; i < kNames && !good_; ++i) {
    good_ = OpenBeside(target_ + kNewName + (i == 0 ? "" : std::to_string(i)));
    // Only a name that another process is writing to is worth a second one.
    if (!good_ && GetLastError() != ERROR_SHARING_VIOLATION) return;
  }
}

bool NewFile::OpenBeside(const std::string &name) {
  const HANDLE handle = CreateFileA(name.c_str(), GENERIC_READ | GENERIC_WRITE | DELETE, 0, nullptr,
                                    CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (handle == INVALID_HANDLE_VALUE) return false;
  file_.handle_ = reinterpret_cast<std::intptr_t>(handle);
  beside_ = name;
  return true;
}

NewFile::~NewFile() {
  file_.Close();
  if (!beside_.empty()) DeleteFileA(beside_.c_str());
}

bool NewFile::Commit(Flush flush) {
  if (good_ && flush == Flush::ToDisk) good_ = file_.FlushToDisk();
  if (!good_) return false;
  good_ = false;
  bool placed = RenameOpenFile(Handle(file_.handle_), target_);
  file_.Close();
  // A virus scanner may hold the old file for a moment, and then keeps it from being renamed, too.
  constexpr int kTries = 50;
  constexpr DWORD kPause = 10;
  const DWORD flags = MOVEFILE_REPLACE_EXISTING | (flush == Flush::ToDisk ? MOVEFILE_WRITE_THROUGH : 0);
  for (int i = 0; i < kTries && !placed; ++i) {
    if (i > 0) Sleep(kPause);
    placed = MoveFileExA(beside_.c_str(), target_.c_str(), flags) != FALSE;
    const DWORD fault = placed ? ERROR_SUCCESS : GetLastError();
    // The old file may vanish while it is looked at.
    const bool isBusy = fault == ERROR_SHARING_VIOLATION || fault == ERROR_ACCESS_DENIED;
    if (!isBusy && fault != ERROR_FILE_NOT_FOUND) break;
    placed = isBusy && MoveAside(beside_, target_, flags);
  }
  if (placed) beside_.clear();
  return placed;
}

}  // namespace trovenu

#endif
