#include "trovenu/price/base_info.h"

#include <algorithm>
#include <iterator>

namespace trovenu {

SBaseInfo::~SBaseInfo() = default;

void SBaseInfo::Reset() { std::fill(std::begin(slots), std::end(slots), -1.0); }

}  // namespace trovenu
