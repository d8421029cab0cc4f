#include "platform/screen.h"

#include "platform/win32/system/entries.h"
#include "platform/win32/windows/metrics.h"

namespace bromvale {
namespace {

// Windows 95 and NT4 have one screen and no such calls.
bool areaOfScreenAt(POINT at, RECT& area) {
    decltype(&::MonitorFromPoint) fromPoint = nullptr;
    decltype(&::GetMonitorInfoA) getInfo = nullptr;
    const HMODULE user = GetModuleHandleA("user32.dll");
    if (!loadEntry(user, "MonitorFromPoint", fromPoint) || !loadEntry(user, "GetMonitorInfoA", getInfo))
        return false;
    MONITORINFO info{};
    info.cbSize = sizeof info;
    if (!getInfo(fromPoint(at, MONITOR_DEFAULTTONEAREST), &info)) return false;
    area = info.rcWork;
    return true;
}

}  // namespace

int screenWidth() {
    return GetSystemMetrics(SM_CXSCREEN) * twipsPerPixelX();
}
int screenHeight() {
    return GetSystemMetrics(SM_CYSCREEN) * twipsPerPixelY();
}

ScreenArea workingArea(int left, int top) {
    RECT area{0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
    if (!areaOfScreenAt({pixelsX(left), pixelsY(top)}, area))
        SystemParametersInfoA(SPI_GETWORKAREA, 0, &area, 0);
    return {static_cast<int>(area.left) * twipsPerPixelX(), static_cast<int>(area.top) * twipsPerPixelY(),
            static_cast<int>(area.right) * twipsPerPixelX(),
            static_cast<int>(area.bottom) * twipsPerPixelY()};
}

}  // namespace bromvale
