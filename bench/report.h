#pragma once

namespace trovenu::bench {

/// Prints the page docs/performance.md: what formulas, ticks, searches, back-tests and runs of a search over
/// values cost on this machine, beside what they may cost. \return 0, or 1 where a limit is not kept.
int PrintReport();

/// The part of the page that is about the formulas with a limit of their own.
int PrintGoals();

/// What one sound formula costs, by the number of bars. Ends the program for one with a fault.
int PrintFormula(const char *formula);

}  // namespace trovenu::bench
