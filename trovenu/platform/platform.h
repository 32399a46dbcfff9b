#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "trovenu/platform/export.h"

/// \file
/// What the library needs of the operating system. The calls themselves stand in platform_posix.cpp and
/// platform_win32.cpp alone. Paths are in the encoding of the system's 8-bit calls and go there as they are.
///
/// Nothing here throws; what can't be done gives false, 0 or nothing and leaves the files as they were.

namespace trovenu {

#if defined(_WIN32)
inline constexpr char kPathSeparator = '\\';
inline constexpr const char *kLineEnd = "\r\n";
#else
/// Stands between the folders of a path.
inline constexpr char kPathSeparator = '/';
/// Ends a line of a text file.
inline constexpr const char *kLineEnd = "\n";
#endif

/// True for a byte that stands between the folders of a path; on Windows there are two.
constexpr bool IsPathSeparator(char c) { return c == kPathSeparator || c == '/'; }

/// Nonzero if there is a file of this name, 0 if there is none or a folder bears it. Null counts as no name.
TROVENU_API int FileExist(const char *path);

/// \name Folders
/// @{

/// Makes the folder; its parent must be there. True if the folder is there afterwards.
TROVENU_API bool MakeFolder(const std::string &path);

/// The names, without the folder, of the files in a folder, in order. Empty if there is no such folder.
TROVENU_API std::vector<std::string> FilesIn(const std::string &folder);

/// Deletes a file. False if that can't be done, or if there is none.
TROVENU_API bool RemoveFile(const std::string &path);
/// @}

/// How far a file has got when a write is said to be done: `ToDisk`, it outlives a power failure; `ToSystem`,
/// it outlives the end of this process.
enum class Flush { ToDisk, ToSystem };

/// An open file, read and written by position. Closes itself. Several objects and processes may have one file
/// open, and it can be replaced by a `NewFile` meanwhile: the object then goes on with the file that it
/// opened.
class TROVENU_API File {
 public:
  enum class Access { Read, ReadAndWrite };

  File() = default;
  ~File() { Close(); }
  File(File &&other) noexcept;
  File &operator=(File &&other) noexcept;

  /// Opens a file that is there, after closing the one that was open.
  bool Open(const std::string &path, Access access);
  void Close();
  bool IsOpen() const { return handle_ != kNoHandle; }

  /// Bytes in the file; 0 if none is open.
  std::uint64_t Size() const;
  /// Reads up to `size` bytes from `offset` on and returns their number: fewer at the end of the file, and
  /// where it can't be read.
  std::size_t ReadAt(std::uint64_t offset, void *buffer, std::size_t size) const;
  /// Writes all bytes, lengthening the file where needed. False if only some of them, or none, are written.
  bool WriteAt(std::uint64_t offset, const void *data, std::size_t size);
  /// Cuts or lengthens the file.
  bool Resize(std::uint64_t size);
  /// Brings to the disk what has been written.
  bool FlushToDisk();

  /// Waits until no other object, here or in another process, holds the lock of the file, and takes it.
  /// Reading and writing go on without it.
  bool Lock();
  void Unlock();

  /// True if `path` still names this file, false if another has taken its place.
  bool IsAt(const std::string &path) const;

 private:
  friend class NewFile;
  static constexpr std::intptr_t kNoHandle = -1;
  std::intptr_t handle_ = kNoHandle;
};

/// A file that appears whole or not at all. It is written beside the place that it is meant for, as that
/// name with ".new" behind it, and takes that place in one step. Readers meet the old file or the new one,
/// whenever the process or the machine stops. A ".new" that was left behind is used again by the next write.
/// A link is followed, and the permissions of the old file stay.
class TROVENU_API NewFile {
 public:
  explicit NewFile(const std::string &path);
  /// Drops what has not been put in place.
  ~NewFile();
  NewFile(const NewFile &) = delete;
  NewFile &operator=(const NewFile &) = delete;

  /// Adds to the end. Once a write has failed, it and all others are false.
  bool Write(std::string_view bytes);
  /// Puts the file in place; nothing can be written afterwards. False, with the old file still there, if that
  /// can't be done or a write has failed.
  bool Commit(Flush flush);

 private:
  bool OpenBeside(const std::string &name);

  File file_;
  std::string target_;
  std::string beside_;
  std::uint64_t size_ = 0;
  bool good_ = false;
};

/// Reads a whole file. False, with `content` as it was, if there is none or it can't be read.
TROVENU_API bool ReadFileBytes(const std::string &path, std::string *content);

/// Writes a whole file, as `NewFile`.
TROVENU_API bool WriteFileBytes(const std::string &path, std::string_view content, Flush flush);

}  // namespace trovenu
