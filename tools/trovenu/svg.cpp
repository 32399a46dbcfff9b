#include "tools/trovenu/svg.h"

#include <charconv>
#include <cstddef>

#include "tools/trovenu/terminal_text.h"

namespace trovenu::tool {

namespace {

struct InkColours {
  const char *name;
  const char *light;
  const char *dark;
};

// In the order of Ink. Rising is red and falling blue, as Korean charts have it.
constexpr InkColours kInks[] = {
    {"none", "none", "none"},        {"paper", "#ffffff", "#15181d"}, {"text", "#1c2127", "#e8ebf0"},
    {"muted", "#5c6672", "#9da7b4"}, {"grid", "#e7eaee", "#2a2f38"},  {"axis", "#aeb6c0", "#4b5461"},
    {"up", "#cf2f3c", "#ff7a80"},    {"down", "#1f63c6", "#6cacff"},  {"accent", "#b26a00", "#f0b354"},
    {"band", "#d9e2ef", "#2f3d52"},
};

const InkColours &ColoursOf(Ink ink) { return kInks[static_cast<std::size_t>(ink)]; }

void AppendPixels(std::string &out, double value) {
  constexpr int kDecimals = 2;
  char digits[400];
  const auto [end, fault] =
      std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed, kDecimals);
  std::string_view text(digits, static_cast<std::size_t>(end - digits));
  while (text.back() == '0') text.remove_suffix(1);
  if (text.back() == '.') text.remove_suffix(1);
  out += text == "-0" ? "0" : text;
}

void AppendXml(std::string &out, std::string_view text) {
  for (const char c : ToUtf8(text)) {
    switch (c) {
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '>':
        out += "&gt;";
        break;
      case '"':
        out += "&quot;";
        break;
      default:
        out += static_cast<unsigned char>(c) < ' ' ? '?' : c;
    }
  }
}

// A class for each ink and use, for the colours of dark viewers.
std::string StyleSheet() {
  std::string sheet = "<style>@media (prefers-color-scheme: dark) {\n";
  for (std::size_t i = 1; i < std::size(kInks); ++i) {
    const InkColours &ink = kInks[i];
    sheet += std::string(".f-") + ink.name + " { fill: " + ink.dark + " }\n";
    sheet += std::string(".s-") + ink.name + " { stroke: " + ink.dark + " }\n";
  }
  return sheet + "}</style>\n";
}

constexpr const char *kAnchorNames[] = {"start", "middle", "end"};

}  // namespace

SvgPath &SvgPath::Point(char command, double x, double y) {
  text_ += command;
  AppendPixels(text_, x);
  text_ += ' ';
  AppendPixels(text_, y);
  return *this;
}

SvgPath &SvgPath::Single(char command, double value) {
  text_ += command;
  AppendPixels(text_, value);
  return *this;
}

SvgPath &SvgPath::Ellipse(double x, double y, double radiusX, double radiusY) {
  MoveTo(x - radiusX, y);
  for (const double way : {2.0, -2.0}) {
    text_ += 'a';
    AppendPixels(text_, radiusX);
    text_ += ' ';
    AppendPixels(text_, radiusY);
    text_ += " 0 1 1 ";
    AppendPixels(text_, way * radiusX);
    text_ += " 0";
  }
  return *this;
}

Svg::Svg(int width, int height, std::string_view title) {
  const std::string across = std::to_string(width);
  const std::string down = std::to_string(height);
  text_ = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" +
          across + "\" height=\"" + down + "\" viewBox=\"0 0 " + across + ' ' + down +
          "\" role=\"img\" font-family=\"system-ui, 'Segoe UI', 'Malgun Gothic', 'Noto Sans CJK KR', " +
          "sans-serif\" font-size=\"12\">\n<title>";
  AppendXml(text_, title);
  text_ += "</title>\n" + StyleSheet();
  Begin(Ink::Paper, Ink::None);
  Rect(0, 0, width, height);
  End();
}

void Svg::Begin(Ink fill, Ink stroke, double strokeWidth, std::string_view more) {
  text_ += "<g";
  Paint(fill, stroke);
  if (stroke != Ink::None) Attribute("stroke-width", strokeWidth);
  if (!more.empty()) text_ += ' ';
  text_ += more;
  text_ += ">\n";
}

void Svg::BeginClip(double x, double y, double width, double height) {
  const std::string id = "clip" + std::to_string(++clips_);
  text_ += "<clipPath id=\"" + id + "\">";
  Rect(x, y, width, height);
  text_ += "</clipPath>\n<g clip-path=\"url(#" + id + ")\">\n";
}

void Svg::Rect(double x, double y, double width, double height, std::string_view hint) {
  text_ += "<rect";
  Attribute("x", x);
  Attribute("y", y);
  Attribute("width", width);
  Attribute("height", height);
  Close("rect", hint);
}

void Svg::Path(const SvgPath &path, std::string_view hint) {
  text_ += "<path d=\"" + path.Text() + '"';
  Close("path", hint);
}

void Svg::Circle(double x, double y, double radius, std::string_view hint) {
  text_ += "<circle";
  Attribute("cx", x);
  Attribute("cy", y);
  Attribute("r", radius);
  Close("circle", hint);
}

void Svg::Text(double x, double y, std::string_view text, Anchor anchor, std::string_view hint) {
  text_ += "<text";
  Attribute("x", x);
  Attribute("y", y);
  if (anchor != Anchor::Start) {
    text_ += std::string(" text-anchor=\"") + kAnchorNames[static_cast<std::size_t>(anchor)] + '"';
  }
  text_ += '>';
  AppendXml(text_, text);
  if (!hint.empty()) {
    text_ += "<title>";
    AppendXml(text_, hint);
    text_ += "</title>";
  }
  text_ += "</text>\n";
}

void Svg::BeginText(double x, double y) {
  text_ += "<text";
  Attribute("x", x);
  Attribute("y", y);
  text_ += '>';
}

void Svg::Span(double gap, Ink fill, std::string_view text, std::string_view more) {
  text_ += "<tspan";
  Attribute("dx", gap);
  Paint(fill, Ink::None);
  if (!more.empty()) text_ += ' ';
  text_ += more;
  text_ += '>';
  AppendXml(text_, text);
  text_ += "</tspan>";
}

std::string Svg::Take() {
  text_ += "</svg>\n";
  return std::move(text_);
}

void Svg::Attribute(std::string_view name, double value) {
  text_ += ' ';
  text_ += name;
  text_ += "=\"";
  AppendPixels(text_, value);
  text_ += '"';
}

void Svg::Paint(Ink fill, Ink stroke) {
  std::string classes;
  if (fill != Ink::None) classes += std::string("f-") + ColoursOf(fill).name;
  if (stroke != Ink::None) classes += std::string(classes.empty() ? "" : " ") + "s-" + ColoursOf(stroke).name;
  if (!classes.empty()) text_ += " class=\"" + classes + '"';
  text_ += std::string(" fill=\"") + ColoursOf(fill).light + '"';
  if (stroke != Ink::None) text_ += std::string(" stroke=\"") + ColoursOf(stroke).light + '"';
}

void Svg::Close(std::string_view element, std::string_view hint) {
  if (hint.empty()) {
    text_ += "/>\n";
    return;
  }
  text_ += "><title>";
  AppendXml(text_, hint);
  text_ += "</title></";
  text_ += element;
  text_ += ">\n";
}

double TextWidth(std::string_view utf8, double fontSize) {
  constexpr double kColumn = 0.64;
  return static_cast<double>(DisplayWidth(utf8)) * kColumn * fontSize;
}

}  // namespace trovenu::tool
