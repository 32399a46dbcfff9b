#pragma once

namespace trovenu::bench {

/// Prints a table, columns separated by tabs, of what the formulas with a limit cost through the engine in
/// each build of the kernels, per bar and as ratios to the yardsticks, with what one evaluation takes of the
/// system once it has settled. \return 0, or 1 where a limit is not kept.
int PrintGoals();

}  // namespace trovenu::bench
