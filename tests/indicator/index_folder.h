#pragma once

#include <string>

#include "tests/platform/temp_folder.h"
#include "trovenu/support/index_paths.h"

namespace trovenu::tests {

/// An empty folder for formula tables, which is that of the library for as long as the object lives.
class IndexFolder : public TempFolder {
 public:
  IndexFolder() { setIndexDir(Path().c_str()); }
  ~IndexFolder() { setIndexDir(nullptr); }
  IndexFolder(const IndexFolder &) = delete;
  IndexFolder &operator=(const IndexFolder &) = delete;
};

}  // namespace trovenu::tests
