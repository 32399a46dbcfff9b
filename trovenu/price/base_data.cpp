#include "trovenu/price/base_data.h"

namespace trovenu {

SBaseData::~SBaseData() = default;

}  // namespace trovenu
