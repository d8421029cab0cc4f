#pragma once
#include <string>

#include "base/scale.h"
#include "platform/controls/control.h"
#include "platform/win32/system/windows.h"

namespace bromvale {

// The screen as a place to measure on, with this font or its own.
class ScreenDc {
  public:
    explicit ScreenDc(HGDIOBJ font = GetStockObject(SYSTEM_FONT))
        : dc_(GetDC(nullptr)), old_(SelectObject(dc_, font)) {}
    ~ScreenDc() {
        SelectObject(dc_, old_);
        ReleaseDC(nullptr, dc_);
    }
    ScreenDc(const ScreenDc&) = delete;
    ScreenDc& operator=(const ScreenDc&) = delete;
    [[nodiscard]] HDC get() const { return dc_; }

  private:
    HDC dc_;
    HGDIOBJ old_;
};

// Both edges are rounded, not the length: controls that touch in twips touch in pixels and never overlap.
[[nodiscard]] RECT pixelRect(const Place& place, const Scale& scale);

// The font of all controls: 8 points of Tahoma, or of MS Sans Serif where a system lacks it. The message font
// of later systems is wider and would be clipped at the designed sizes. Lives as long as the process.
[[nodiscard]] HFONT controlFont(const Scale& scale);
// The given face in 8 points; the control font where it is empty, the system lacks it, or it would look
// coarse: "MS Sans Serif" consists of pictures of its letters, which are there up to 120 DPI. Lives as long
// as the process.
[[nodiscard]] HFONT fontOfFace(const std::string& face, const Scale& scale);
[[nodiscard]] int fontHeight(HFONT font);
// Of a text in one line, in pixels.
[[nodiscard]] int textWidth(HFONT font, const std::string& text);

}  // namespace bromvale
