#pragma once

/// \file
/// The inner loops that run over all bars, in two builds of the same source: one for the instructions that
/// every processor of the target has, one for AVX2. Which of them runs is chosen once, when the program asks
/// for the first time. Both give the same bits.

namespace trovenu {

/// Writes `out[i]` for the windows of n bars (at least 1) that end at the bars i from `from` to `to` - 1, of
/// which there is at least one. `x` is read from bar `from` - n + 1 on and does not overlap `out`. A value
/// depends on the elements of its window and their absolute index alone.
using WindowKernel = void (*)(const double *x, int from, int to, int n, double *out);

/// What `lineFit` gives where all elements of a window are equal; below every other value.
inline constexpr double kNoFit = -1.0;

/// Where the walk of the parabolic stop-and-reverse stands, and its parameters.
struct ParabolicStart {
  bool rising;
  double stop;
  double extreme;
  /// That of the next bar, and after every reversal.
  double acceleration;
  double step;
  double maximum;
};

/// The loops of one build.
struct Kernels {
  WindowKernel sum;
  WindowKernel mean;
  WindowKernel weightedMean;
  /// NaN is passed over; a window of nothing else gives -infinity and infinity.
  WindowKernel highest;
  WindowKernel lowest;
  /// Standard deviation, divided by n.
  WindowKernel deviation;
  /// Of the least-squares line: its slope, its value `distance` bars newer than the middle of the window, and
  /// how well it fits, 0 to 1.
  WindowKernel lineSlope;
  void (*lineValue)(const double *x, int from, int to, int n, double distance, double *out);
  WindowKernel lineFit;
  /// Of two series; 0.0 where one of them does not vary.
  void (*correlation)(const double *x, const double *y, int from, int to, int n, double *out);

  /// Writes the element of those windows whose elements are all equal, and no other.
  WindowKernel keepFlat;

  /// Exponential average: `out[seed]` is given, every bar i after it up to `to` - 1 becomes
  /// `out[i - 1] + factor * (x[i] - out[i - 1])`.
  void (*exponential)(const double *x, int seed, int to, double factor, double *out);
  /// Relative strength with Wilder's smoothing, the first value at bar `first`, from n changes.
  void (*relativeStrength)(const double *x, int first, int to, int n, double *out);
  /// The mean of high, low and close at each bar.
  void (*typicalPrice)(const double *high, const double *low, const double *close, int from, int to,
                       double *out);
  /// The commodity channel index; `out` holds the means of the windows before.
  WindowKernel channelIndex;
  /// The parabolic stop-and-reverse at the bars from `from` to `to` - 1.
  void (*parabolic)(const double *high, const double *low, const ParabolicStart &start, int from, int to,
                    double *out);

  /// `a / b` at the bars from `from` to `to` - 1, 0.0 where b is 0; `out` may be one of the operands.
  void (*quotients)(const double *a, const double *b, int from, int to, double *out);
  void (*quotientsOfNumber)(double a, const double *b, int from, int to, double *out);
};

/// What a build was made for.
enum class Instructions : unsigned char { Baseline, Avx2 };

/// The loops of the build that was chosen.
const Kernels &ActiveKernels();

/// Takes the loops of that build from now on, for tests and benchmarks. \return false, with nothing changed,
/// where this program or this processor has no such build.
bool UseInstructions(Instructions instructions);

/// The build that is in use.
Instructions InstructionsInUse();

}  // namespace trovenu
