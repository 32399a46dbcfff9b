#if defined(_WIN32)

#include <windows.h>

#include "trovenu/platform/platform.h"

namespace trovenu {

int FileExist(const char *path) {
  if (path == nullptr) return 0;
  const DWORD attributes = GetFileAttributesA(path);
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0 ? 1 : 0;
}

}  // namespace trovenu

#endif
