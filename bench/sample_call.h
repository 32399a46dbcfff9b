#pragma once

#include <string>
#include <vector>

namespace trovenu::bench {

/// One sound call of every function of the language, made from the arguments that its row names; functions
/// with an optional period stand twice.
std::vector<std::string> SampleCalls();

}  // namespace trovenu::bench
