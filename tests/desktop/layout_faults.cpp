#include "layout_faults.h"

#include <windows.h>

#include <algorithm>

#include "windows_by_name.h"

namespace {

RECT placeOf(HWND window) {
    RECT place{};
    GetWindowRect(window, &place);
    return place;
}

RECT insideOf(HWND window) {
    RECT place{};
    GetClientRect(window, &place);
    MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&place), 2);
    return place;
}

int smallerSide(const RECT& place) {
    return static_cast<int>(std::min(place.right - place.left, place.bottom - place.top));
}

// How far a control reaches beyond its container; 0 if it doesn't.
int beyond(const RECT& inner, const RECT& outer) {
    const LONG farthest = std::max({outer.left - inner.left, outer.top - inner.top, inner.right - outer.right,
                                    inner.bottom - outer.bottom});
    return std::max(0, static_cast<int>(farthest));
}

void addOverlaps(const std::vector<NamedWindow>& windows, std::size_t at, std::vector<LayoutFault>& faults) {
    const RECT place = placeOf(windows[at].window);
    for (std::size_t other = at + 1; other < windows.size(); ++other) {
        if (GetParent(windows[other].window) != GetParent(windows[at].window)) continue;
        const RECT second = placeOf(windows[other].window);
        RECT common{};
        if (IntersectRect(&common, &place, &second))
            faults.push_back({"overlap", windows[at].name, windows[other].name, smallerSide(common)});
    }
}

}  // namespace

std::vector<LayoutFault> layoutFaults() {
    std::vector<NamedWindow> windows = namedWindows();
    std::erase_if(windows, [](const NamedWindow& each) {
        return !IsWindowVisible(each.window) || GetAncestor(each.window, GA_ROOT) == each.window;
    });
    std::vector<LayoutFault> faults;
    for (std::size_t at = 0; at < windows.size(); ++at) {
        addOverlaps(windows, at, faults);
        const HWND window = windows[at].window;
        const int out = beyond(placeOf(window), insideOf(GetParent(window)));
        if (out > 0) faults.push_back({"outside", windows[at].name, "", out});
    }
    return faults;
}
