#include "trovenu/platform/version.h"

namespace trovenu {

const char *Version() { return TROVENU_VERSION; }

}  // namespace trovenu
