#pragma once

#include <vector>

#include "tools/trovenu/picture.h"
#include "tools/trovenu/svg.h"

namespace trovenu::tool {

/// Keeps labels inside an area from touching each other, and other things that it is told of.
class LabelRoom {
 public:
  LabelRoom(const Area &area, double fontSize) : area_(area), fontSize_(fontSize) {}

  /// Keeps a rectangle free of labels.
  void Block(const Area &box) { taken_.push_back(box); }
  /// Whether the text has room with its middle at `x` and its base line at `y`; then it is taken.
  bool Take(double x, double y, std::string_view text) {
    constexpr double kGap = 3;
    const double half = TextWidth(text, fontSize_) / 2;
    const Area box{x - half, y - fontSize_ * 0.85, x + half, y + fontSize_ * 0.25};
    if (box.left < area_.left || box.right > area_.right || box.top < area_.top ||
        box.bottom > area_.bottom) {
      return false;
    }
    for (const Area &other : taken_) {
      const bool apart = box.right + kGap < other.left || other.right + kGap < box.left ||
                         box.bottom + kGap < other.top || other.bottom + kGap < box.top;
      if (!apart) return false;
    }
    taken_.push_back(box);
    return true;
  }

 private:
  Area area_;
  double fontSize_;
  std::vector<Area> taken_;
};

}  // namespace trovenu::tool
