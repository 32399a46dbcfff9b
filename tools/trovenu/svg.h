#pragma once

#include <string>
#include <string_view>

namespace trovenu::tool {

/// The colours of a picture. Each has a light and a dark form; the viewer's preference chooses, and a viewer
/// without style sheets shows the light one.
enum class Ink { None, Paper, Text, Muted, Grid, Axis, Up, Down, Accent, Band };

enum class Anchor { Start, Middle, End };

/// The lines of an SVG path. Coordinates are pixels, y downwards.
class SvgPath {
 public:
  SvgPath &MoveTo(double x, double y) { return Point('M', x, y); }
  SvgPath &LineTo(double x, double y) { return Point('L', x, y); }
  SvgPath &AcrossTo(double x) { return Single('H', x); }
  SvgPath &UpOrDownTo(double y) { return Single('V', y); }
  SvgPath &Ellipse(double x, double y, double radiusX, double radiusY);

  bool IsEmpty() const { return text_.empty(); }
  const std::string &Text() const { return text_; }

 private:
  SvgPath &Point(char command, double x, double y);
  SvgPath &Single(char command, double value);

  std::string text_;
};

/// Writes an SVG picture. Shapes stand in groups, which carry the colours. A shape with a hint is a mark of
/// the result, and viewers show the hint as a tooltip; texts are UTF-8, and what XML does not allow becomes
/// "?".
class Svg {
 public:
  Svg(int width, int height, std::string_view title);

  /// Opens a group; `more` holds further attributes.
  void Begin(Ink fill, Ink stroke, double strokeWidth = 1.0, std::string_view more = "");
  void End() { text_ += "</g>\n"; }

  /// Opens a group in which only what lies in the rectangle shows.
  void BeginClip(double x, double y, double width, double height);

  void Rect(double x, double y, double width, double height, std::string_view hint = "");
  void Path(const SvgPath &path, std::string_view hint = "");
  void Circle(double x, double y, double radius, std::string_view hint = "");
  void Text(double x, double y, std::string_view text, Anchor anchor = Anchor::Start,
            std::string_view hint = "");

  /// A piece of the text that `BeginText` has opened, `gap` pixels behind the one before.
  void Span(double gap, Ink fill, std::string_view text, std::string_view more = "");
  void BeginText(double x, double y);
  void EndText() { text_ += "</text>\n"; }

  /// The whole document.
  std::string Take();

 private:
  void Attribute(std::string_view name, double value);
  void Paint(Ink fill, Ink stroke);
  void Close(std::string_view element, std::string_view hint);

  std::string text_;
  int clips_ = 0;
};

/// Pixels that the text takes at most in a usual sans-serif font of that size.
double TextWidth(std::string_view utf8, double fontSize);

}  // namespace trovenu::tool
