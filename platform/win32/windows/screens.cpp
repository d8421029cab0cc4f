#include "platform/win32/windows/screens.h"

#include "platform/screen.h"
#include "platform/win32/system/entries.h"

namespace bromvale {

namespace {

// Functions that a system may lack, looked for once.
struct Entries {
    decltype(&::MonitorFromPoint) monitorFromPoint = nullptr;
    decltype(&::MonitorFromWindow) monitorFromWindow = nullptr;
    decltype(&::GetMonitorInfoA) getMonitorInfo = nullptr;
    UINT(WINAPI* getDpiForWindow)(HWND) = nullptr;  // from Windows 10 (1607) on

    Entries() {
        const HMODULE user = GetModuleHandleA("user32.dll");
        loadEntry(user, "MonitorFromPoint", monitorFromPoint);
        loadEntry(user, "MonitorFromWindow", monitorFromWindow);
        loadEntry(user, "GetMonitorInfoA", getMonitorInfo);
        loadEntry(user, "GetDpiForWindow", getDpiForWindow);
    }
};

const Entries& entries() {
    static const Entries found;
    return found;
}

RECT workingAreaOfOnly() {
    RECT area{0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
    SystemParametersInfoA(SPI_GETWORKAREA, 0, &area, 0);
    return area;
}

RECT workingAreaOfMonitor(HMONITOR monitor) {
    MONITORINFO info{};
    info.cbSize = sizeof info;
    const auto get = entries().getMonitorInfo;
    return get != nullptr && get(monitor, &info) ? info.rcWork : workingAreaOfOnly();
}

}  // namespace

RECT workingAreaAt(POINT at) {
    const auto from = entries().monitorFromPoint;
    return from != nullptr ? workingAreaOfMonitor(from(at, MONITOR_DEFAULTTONEAREST)) : workingAreaOfOnly();
}

RECT workingAreaOf(HWND window) {
    const auto from = entries().monitorFromWindow;
    return from != nullptr ? workingAreaOfMonitor(from(window, MONITOR_DEFAULTTONEAREST))
                           : workingAreaOfOnly();
}

Scale scaleOf(HWND window) {
    const auto get = entries().getDpiForWindow;
    const UINT dpi = get != nullptr ? get(window) : 0;
    return dpi != 0 ? Scale(static_cast<int>(dpi)) : systemScale();
}

int screenWidth() {
    return systemScale().twips(GetSystemMetrics(SM_CXSCREEN));
}
int screenHeight() {
    return systemScale().twips(GetSystemMetrics(SM_CYSCREEN));
}

ScreenArea workingArea(int left, int top) {
    const Scale scale = systemScale();
    const RECT area = workingAreaAt({scale.pixels(left), scale.pixels(top)});
    return {scale.twips(static_cast<int>(area.left)), scale.twips(static_cast<int>(area.top)),
            scale.twips(static_cast<int>(area.right)), scale.twips(static_cast<int>(area.bottom))};
}

}  // namespace bromvale
