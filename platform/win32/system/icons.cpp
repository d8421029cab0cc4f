#include <map>
#include <utility>

#include "platform/controls/image_list.h"
#include "platform/win32/system/windows.h"

namespace bromvale {

namespace {

// Sizes that every system reads, for those that can't read the packed pictures of bigger ones.
constexpr int kPlainSizes[] = {48, 32, 16};

HICON loadIcon(int resourceId, int pixels) {
    const auto load = [&](int source) {
        return static_cast<HICON>(LoadImageA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(resourceId),
                                             IMAGE_ICON, source, source, LR_DEFAULTCOLOR));
    };
    HICON icon = load(pixels);
    for (const int size : kPlainSizes) {
        if (icon == nullptr && size < pixels) icon = load(size);
    }
    return icon;
}

}  // namespace

HICON loadResourceIcon(int resourceId, int pixels) {
    static std::map<std::pair<int, int>, HICON> icons;
    const auto [at, fresh] = icons.try_emplace({resourceId, pixels}, nullptr);
    if (fresh) at->second = loadIcon(resourceId, pixels);
    return at->second;
}

}  // namespace bromvale
