#include "trovenu/formula/function_table.h"

#include <array>
#include <cassert>

#include "trovenu/formula/functions/averages.h"
#include "trovenu/formula/functions/conditions.h"
#include "trovenu/formula/functions/crossings.h"
#include "trovenu/formula/functions/data_words.h"
#include "trovenu/formula/functions/day_values.h"
#include "trovenu/formula/functions/event_counters.h"
#include "trovenu/formula/functions/extremes.h"
#include "trovenu/formula/functions/math.h"
#include "trovenu/formula/functions/momentum.h"
#include "trovenu/formula/functions/parabolic.h"
#include "trovenu/formula/functions/regression.h"
#include "trovenu/formula/functions/shifts.h"
#include "trovenu/formula/functions/sums.h"
#include "trovenu/formula/functions/swings.h"
#include "trovenu/formula/functions/time_frames.h"
#include "trovenu/formula/functions/volume_flow.h"

namespace trovenu {
namespace {

// Named here one by one: a linker would drop tables that register themselves from a static library.
constexpr FunctionRows (*kTables[])() = {
    DataWordRows,   MathRows,     TimeFrameRows,    ConditionRows, SumRows,       AverageRows,
    ExtremeRows,    ShiftRows,    CrossingRows,     MomentumRows,  ParabolicRows, VolumeFlowRows,
    RegressionRows, DayValueRows, EventCounterRows, SwingRows,
};

using Index = std::array<const Function *, kFunctionCount>;

Index MakeIndex() {
  Index index{};
  for (const auto table : kTables) {
    for (const Function &row : table()) {
      const Function *&place = index[static_cast<std::size_t>(row.id)];
      assert(place == nullptr && "one row for each function");
      place = &row;
    }
  }
  return index;
}

}  // namespace

const Function *FindFunction(FunctionId id) {
  static const Index index = MakeIndex();
  const auto i = static_cast<std::size_t>(id);
  return i < index.size() ? index[i] : nullptr;
}

}  // namespace trovenu
