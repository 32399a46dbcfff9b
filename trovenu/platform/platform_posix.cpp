#if !defined(_WIN32)

#include <sys/stat.h>

#include "trovenu/platform/platform.h"

namespace trovenu {

int FileExist(const char *path) {
  struct stat status = {};
  return path != nullptr && stat(path, &status) == 0 && !S_ISDIR(status.st_mode) ? 1 : 0;
}

}  // namespace trovenu

#endif
