#include "trovenu/indicator/index.h"

namespace trovenu {

void SIndex::CalcSwing(int automatic) { CalcKagi(automatic); }

}  // namespace trovenu
