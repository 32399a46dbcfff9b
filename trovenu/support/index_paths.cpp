#include "trovenu/support/index_paths.h"

#include <iterator>
#include <string>

#include "trovenu/platform/platform.h"

namespace trovenu {

namespace {

constexpr const char *kDefaultFolder = "Index";
constexpr const char *kExtensions[] = {"ind", "cnd", "ptn", "sys", "fnc"};

std::string WithSeparator(std::string path) {
  if (!IsPathSeparator(path.back())) path += kPathSeparator;
  return path;
}

std::string &Folder() {
  static std::string folder = WithSeparator(kDefaultFolder);
  return folder;
}

SString TablePath(const char *name, int kind) {
  const SString extension = getIndexDBExt(kind);
  if (extension.IsEmpty()) return {};
  return SString((Folder() + name + '.' + extension.c_str()).c_str());
}

}  // namespace

SString getIndexDir() { return SString(Folder().c_str()); }

void setIndexDir(const char *path) {
  Folder() = WithSeparator(path == nullptr || *path == '\0' ? kDefaultFolder : path);
}

SString getIndexDBFileName(int kind) { return TablePath("System", kind); }

SString getUserDBFileName(int kind) { return TablePath("User", kind); }

SString getIndexDBExt(int kind) {
  return kind >= 0 && kind < static_cast<int>(std::size(kExtensions)) ? SString(kExtensions[kind])
                                                                      : SString();
}

}  // namespace trovenu
