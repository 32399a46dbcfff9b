// Windows has a record of the same name, in the global namespace.
#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>

#include <bit>
#include <cstdlib>
#include <cstring>

#include "trovenu/platform/font_metric.h"

namespace trovenu {
namespace {

constexpr int kTenthsPerInch = 720;

static_assert(sizeof(TEXTMETRIC) == sizeof(TEXTMETRICA));

// The device context of the desktop window.
class DesktopContext {
 public:
  DesktopContext() : window_(GetDesktopWindow()), context_(GetDC(window_)) {}
  ~DesktopContext() {
    if (context_ != nullptr) ReleaseDC(window_, context_);
  }
  DesktopContext(const DesktopContext &) = delete;
  DesktopContext &operator=(const DesktopContext &) = delete;
  HDC Get() const { return context_; }

 private:
  HWND window_;
  HDC context_;
};

HFONT CreatePointFont(HDC context, const FontRequest &font) {
  LOGFONTA wanted = {};
  wanted.lfHeight = -std::abs(MulDiv(font.tenths, GetDeviceCaps(context, LOGPIXELSY), kTenthsPerInch));
  wanted.lfCharSet = font.charSet;
  std::strncpy(wanted.lfFaceName, font.face, LF_FACESIZE - 1);
  return CreateFontIndirectA(&wanted);
}

}  // namespace

bool MeasureFontOnDesktop(const FontRequest &font, TEXTMETRIC &metric) {
  const DesktopContext desktop;
  if (desktop.Get() == nullptr) return false;
  const HFONT created = CreatePointFont(desktop.Get(), font);
  if (created == nullptr) return false;
  const HGDIOBJ before = SelectObject(desktop.Get(), created);
  TEXTMETRICA measured;
  const bool ok = before != nullptr && GetTextMetricsA(desktop.Get(), &measured) != 0;
  if (before != nullptr) SelectObject(desktop.Get(), before);
  DeleteObject(created);
  if (ok) metric = std::bit_cast<TEXTMETRIC>(measured);
  return ok;
}

}  // namespace trovenu
