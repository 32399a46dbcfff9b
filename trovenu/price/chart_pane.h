#pragma once

#include "trovenu/platform/export.h"
#include "trovenu/support/text.h"

namespace trovenu {

class CKqArchive;

/// What a pane of a chart window shows; the host derives its own objects from it.
class TROVENU_API SChartItem {
 public:
  virtual ~SChartItem();
};

/// One pane of a chart window: its share of the window, its label scales and its name.
///
/// Required: a copy holds the same item pointers and both objects delete the items that they count. The host
/// sets `itemCount` of one of them to 0 before it goes.
class TROVENU_API SChartProp {
 public:
  static constexpr int kItems = 30;
  static constexpr int kPaneData = 100;

  SChartProp();
  SChartProp(const SChartProp &other) = default;
  SChartProp &operator=(const SChartProp &other) = default;
  /// Deletes the first `itemCount` items.
  virtual ~SChartProp();

  /// Reads or writes the named members in the category "Chart", with `index` appended unless it is -1.
  void Load(CKqArchive &archive, int index);
  void Store(CKqArchive &archive, int index) const;

  /// Owned, as the class tells.
  SChartItem *items[kItems] = {};
  int itemCount = 0;
  /// The host's.
  int paneData[kPaneData] = {};
  int hostValue = 0;
  int ChartID = 0;
  /// The host's.
  int hostValues[4] = {};
  /// Share of the window's size.
  double WidthRatio;
  double HeightRatio;
  int LeftLabelIndex;
  int RightLabelIndex;
  SString ChartName;
  int BlDeleble;
  int BlShowUnit;
  int BlShow;
  struct Rectangle {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
  };
  /// Where the pane stands; the host's.
  Rectangle rectangle;
};

}  // namespace trovenu
