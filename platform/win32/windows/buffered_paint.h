#pragma once
#include "platform/win32/system/windows.h"

namespace bromvale {

// A window's painting, made in memory and shown in one piece: BeginPaint to EndPaint.
class BufferedPaint {
  public:
    explicit BufferedPaint(HWND window);
    ~BufferedPaint();
    BufferedPaint(const BufferedPaint&) = delete;
    BufferedPaint& operator=(const BufferedPaint&) = delete;

    [[nodiscard]] HDC dc() const { return memory_; }
    [[nodiscard]] const RECT& area() const { return area_; }

  private:
    HWND window_;
    PAINTSTRUCT paint_{};
    RECT area_{};
    HDC memory_;
    HBITMAP picture_;
    HGDIOBJ oldPicture_;
};

}  // namespace bromvale
