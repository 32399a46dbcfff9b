#if !defined(_WIN32)

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "trovenu/platform/platform.h"

namespace trovenu {

namespace {

constexpr mode_t kFileMode = 0666;
constexpr mode_t kFolderMode = 0777;

bool IsFolder(const char *path) {
  struct stat status = {};
  return stat(path, &status) == 0 && S_ISDIR(status.st_mode);
}

int Descriptor(std::intptr_t handle) { return static_cast<int>(handle); }

/// The place that a file is to be put: what a link points to, and otherwise the path itself.
std::string PlaceOf(const std::string &path) {
  const std::unique_ptr<char, void (*)(void *)> real(realpath(path.c_str(), nullptr), std::free);
  return real != nullptr ? std::string(real.get()) : path;
}

/// A rename outlives a power failure once the folder has reached the disk too.
void FlushFolderOf(const std::string &path) {
  const std::size_t slash = path.rfind('/');
  const std::string folder = slash == path.npos ? "." : path.substr(0, slash + 1);
  const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return;
  fsync(descriptor);
  close(descriptor);
}

}  // namespace

int FileExist(const char *path) {
  struct stat status = {};
  return path != nullptr && stat(path, &status) == 0 && !S_ISDIR(status.st_mode) ? 1 : 0;
}

bool MakeFolder(const std::string &path) {
  return mkdir(path.c_str(), kFolderMode) == 0 || IsFolder(path.c_str());
}

std::vector<std::string> FilesIn(const std::string &folder) {
  std::vector<std::string> names;
  const std::unique_ptr<DIR, int (*)(DIR *)> entries(opendir(folder.c_str()), closedir);
  if (entries == nullptr) return names;
  while (const dirent *entry = readdir(entries.get())) {
    if (FileExist((folder + '/' + entry->d_name).c_str())) names.emplace_back(entry->d_name);
  }
  std::sort(names.begin(), names.end());
  return names;
}

bool RemoveFile(const std::string &path) { return unlink(path.c_str()) == 0; }

bool File::Open(const std::string &path, Access access) {
  Close();
  const int mode = access == Access::Read ? O_RDONLY : O_RDWR;
  const int descriptor = open(path.c_str(), mode | O_CLOEXEC);
  struct stat status = {};
  if (descriptor >= 0 && (fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode))) {
    close(descriptor);
    return false;
  }
  handle_ = descriptor;
  return IsOpen();
}

void File::Close() {
  if (IsOpen()) close(Descriptor(handle_));
  handle_ = kNoHandle;
}

std::uint64_t File::Size() const {
  struct stat status = {};
  if (!IsOpen() || fstat(Descriptor(handle_), &status) != 0 || status.st_size < 0) return 0;
  return static_cast<std::uint64_t>(status.st_size);
}

std::size_t File::ReadAt(std::uint64_t offset, void *buffer, std::size_t size) const {
  std::size_t done = 0;
  while (done < size) {
    const ssize_t got =
        pread(Descriptor(handle_), static_cast<char *>(buffer) + done,
              std::min<std::size_t>(size - done, SSIZE_MAX), static_cast<off_t>(offset + done));
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) break;
    done += static_cast<std::size_t>(got);
  }
  return done;
}

bool File::WriteAt(std::uint64_t offset, const void *data, std::size_t size) {
  std::size_t done = 0;
  while (done < size) {
    const ssize_t put =
        pwrite(Descriptor(handle_), static_cast<const char *>(data) + done,
               std::min<std::size_t>(size - done, SSIZE_MAX), static_cast<off_t>(offset + done));
    if (put < 0 && errno == EINTR) continue;
    if (put <= 0) return false;
    done += static_cast<std::size_t>(put);
  }
  return true;
}

bool File::Resize(std::uint64_t size) {
  return ftruncate(Descriptor(handle_), static_cast<off_t>(size)) == 0;
}

bool File::FlushToDisk() { return fsync(Descriptor(handle_)) == 0; }

bool File::Lock() {
  int result = 0;
  do {
    result = flock(Descriptor(handle_), LOCK_EX);
  } while (result != 0 && errno == EINTR);
  return result == 0;
}

void File::Unlock() { flock(Descriptor(handle_), LOCK_UN); }

bool File::IsAt(const std::string &path) const {
  struct stat own = {};
  struct stat named = {};
  return fstat(Descriptor(handle_), &own) == 0 && stat(path.c_str(), &named) == 0 &&
         own.st_dev == named.st_dev && own.st_ino == named.st_ino;
}

NewFile::NewFile(const std::string &path) : target_(PlaceOf(path)) {
  if (path.empty()) return;
  struct stat old = {};
  const bool replaces = stat(target_.c_str(), &old) == 0;
  if (replaces && !S_ISREG(old.st_mode)) return;
  constexpr int kNames = 100;
  for (int i = 0; i < kNames && !good_; ++i) {
    good_ = OpenBeside(target_ + ".new" + (i == 0 ? "" : std::to_string(i)));
    // Only a name that another process is writing to is worth a second one.
    if (!good_ && errno != EWOULDBLOCK) return;
  }
  if (good_ && replaces && fchmod(Descriptor(file_.handle_), old.st_mode & 07777) != 0) good_ = false;
}

bool NewFile::OpenBeside(const std::string &name) {
  for (;;) {
    file_.handle_ = open(name.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, kFileMode);
    if (!file_.IsOpen()) return false;
    // Its holder may have put this very file in place before letting it go.
    const bool inUse = flock(Descriptor(file_.handle_), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    const bool own = !inUse && file_.IsAt(name);
    if (own) beside_ = name;
    if (own && file_.Resize(0)) return true;
    const int fault = inUse ? EWOULDBLOCK : errno;
    file_.Close();
    errno = fault;
    if (inUse || own) return false;
  }
}

NewFile::~NewFile() {
  if (!beside_.empty()) unlink(beside_.c_str());
}

bool NewFile::Commit(Flush flush) {
  if (good_ && flush == Flush::ToDisk) good_ = file_.FlushToDisk();
  good_ = good_ && rename(beside_.c_str(), target_.c_str()) == 0;
  if (!good_) return false;
  beside_.clear();
  file_.Close();
  good_ = false;
  if (flush == Flush::ToDisk) FlushFolderOf(target_);
  return true;
}

}  // namespace trovenu

#endif
