#include "platform/win32/system/icons.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <span>
#include <utility>
#include <vector>

#include "platform/controls/image_list.h"

namespace bromvale {

namespace {

// A resource of icons begins with a table of its pictures.
struct PictureEntry {
    BYTE width;  // 0 for 256
    BYTE height;
    BYTE colours;
    BYTE reserved;
    WORD planes;
    WORD bits;
    WORD bytesLow;
    WORD bytesHigh;
    WORD number;  // of the picture's own resource

    [[nodiscard]] int pixels() const { return width != 0 ? width : 256; }
};
static_assert(sizeof(PictureEntry) == 14);
constexpr std::size_t kTableHead = 6;

std::span<const BYTE> resourceBytes(int number, LPSTR type) {
    const HMODULE program = GetModuleHandleA(nullptr);
    const HRSRC found = FindResourceA(program, MAKEINTRESOURCEA(number), type);
    const HGLOBAL loaded = found != nullptr ? LoadResource(program, found) : nullptr;
    if (loaded == nullptr) return {};
    return {static_cast<const BYTE*>(LockResource(loaded)), SizeofResource(program, found)};
}

bool paletteScreen() {
    const HDC screen = GetDC(nullptr);
    const int bits = GetDeviceCaps(screen, BITSPIXEL) * GetDeviceCaps(screen, PLANES);
    ReleaseDC(nullptr, screen);
    return bits <= 8;
}

// From the largest to the smallest, of one size first what suits the screen best.
std::vector<PictureEntry> picturesOf(int resourceId) {
    const std::span<const BYTE> table = resourceBytes(resourceId, RT_GROUP_ICON);
    std::vector<PictureEntry> pictures;
    for (std::size_t at = kTableHead; at + sizeof(PictureEntry) <= table.size(); at += sizeof(PictureEntry)) {
        std::memcpy(&pictures.emplace_back(), table.data() + at, sizeof(PictureEntry));
    }
    const bool fewColours = paletteScreen();
    std::ranges::stable_sort(pictures, [&](const PictureEntry& one, const PictureEntry& other) {
        if (one.pixels() != other.pixels()) return one.pixels() > other.pixels();
        return fewColours ? one.bits < other.bits : one.bits > other.bits;
    });
    return pictures;
}

HICON made(const PictureEntry& picture, int pixels) {
    constexpr DWORD kVersion = 0x00030000;
    const std::span<const BYTE> bytes = resourceBytes(picture.number, RT_ICON);
    if (bytes.empty()) return nullptr;
    return CreateIconFromResourceEx(const_cast<BYTE*>(bytes.data()), static_cast<DWORD>(bytes.size()), TRUE,
                                    kVersion, pixels, pixels, LR_DEFAULTCOLOR);
}

// Systems before Windows Vista can't read the packed pictures; another one of that size or a smaller one
// stands in.
DrawnIcon loadIcon(int resourceId, int pixels) {
    const std::vector<PictureEntry> pictures = picturesOf(resourceId);
    for (const PictureEntry& picture : pictures) {
        if (picture.pixels() > pixels) continue;
        if (const HICON icon = made(picture, picture.pixels())) return {icon, picture.pixels()};
    }
    if (pictures.empty()) return {nullptr, 0};
    return {made(pictures.back(), pixels), pixels};
}

}  // namespace

DrawnIcon drawnIcon(int resourceId, int pixels) {
    static std::map<std::pair<int, int>, DrawnIcon> icons;
    const auto [at, fresh] = icons.try_emplace({resourceId, pixels}, DrawnIcon{nullptr, 0});
    if (fresh) at->second = loadIcon(resourceId, pixels);
    return at->second;
}

void drawIcon(HDC dc, int resourceId, POINT at, int pixels) {
    const DrawnIcon icon = drawnIcon(resourceId, pixels);
    if (icon.handle == nullptr) return;
    const int margin = (pixels - icon.pixels) / 2;
    DrawIconEx(dc, static_cast<int>(at.x) + margin, static_cast<int>(at.y) + margin, icon.handle, icon.pixels,
               icon.pixels, 0, nullptr, DI_NORMAL);
}

HICON loadResourceIcon(int resourceId, int pixels) {
    return drawnIcon(resourceId, pixels).handle;
}

}  // namespace bromvale
