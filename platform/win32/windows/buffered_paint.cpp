#include "platform/win32/windows/buffered_paint.h"

namespace bromvale {

BufferedPaint::BufferedPaint(HWND window) : window_(window) {
    const HDC screen = BeginPaint(window_, &paint_);
    GetClientRect(window_, &area_);
    memory_ = CreateCompatibleDC(screen);
    // A picture has at least one point.
    picture_ = CreateCompatibleBitmap(screen, area_.right > 0 ? area_.right : 1,
                                      area_.bottom > 0 ? area_.bottom : 1);
    oldPicture_ = SelectObject(memory_, picture_);
}

BufferedPaint::~BufferedPaint() {
    const RECT& part = paint_.rcPaint;
    BitBlt(paint_.hdc, part.left, part.top, part.right - part.left, part.bottom - part.top, memory_,
           part.left, part.top, SRCCOPY);
    SelectObject(memory_, oldPicture_);
    DeleteObject(picture_);
    DeleteDC(memory_);
    EndPaint(window_, &paint_);
}

}  // namespace bromvale
