#include "platform/win32/windows/metrics.h"

#include <map>
#include <utility>

#include "platform/screen.h"

namespace bromvale {

namespace {

constexpr int kPointSize = 8;
constexpr const char* kPictureFace = "MS Sans Serif";
constexpr int kMostDpiOfPictures = 120;

int CALLBACK onFontFound(const LOGFONTA*, const TEXTMETRICA*, DWORD, LPARAM found) {
    *reinterpret_cast<bool*>(found) = true;
    return 0;
}

bool fontExists(const char* face) {
    bool found = false;
    EnumFontFamiliesA(ScreenDc().get(), face, onFontFound, reinterpret_cast<LPARAM>(&found));
    return found;
}

HFONT makeFont(const char* face, const Scale& scale) {
    return CreateFontA(-mulDiv(kPointSize, scale.dpi(), 72), 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE,
                       DEFAULT_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY,
                       DEFAULT_PITCH | FF_DONTCARE, face);
}

// Some stand-ins for a face state other widths than they draw, and every right-aligned or centred text is off
// by that. True where a drawn text ends where its measure says.
bool drawsAsMeasured(HFONT font) {
    constexpr char kSample[] = "Fehlerbeschreibung: Platte bereinigen";
    constexpr int kLength = sizeof kSample - 1;
    const ScreenDc screen;
    const HDC memory = CreateCompatibleDC(screen.get());
    const HGDIOBJ oldFont = SelectObject(memory, font);
    SIZE size{};
    GetTextExtentPoint32A(memory, kSample, kLength, &size);
    const HBITMAP picture = CreateCompatibleBitmap(screen.get(), size.cx + 1, size.cy + 1);
    const HGDIOBJ oldPicture = SelectObject(memory, picture);
    const RECT area{0, 0, size.cx + 1, size.cy + 1};
    FillRect(memory, &area, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    TextOutA(memory, 0, 0, kSample, kLength);
    bool inked = false;
    for (LONG x = size.cx - size.cx / 40; x < size.cx && !inked; ++x) {
        for (LONG y = 0; y < size.cy && !inked; ++y) {
            inked = GetPixel(memory, static_cast<int>(x), static_cast<int>(y)) != RGB(255, 255, 255);
        }
    }
    SelectObject(memory, oldPicture);
    SelectObject(memory, oldFont);
    DeleteObject(picture);
    DeleteDC(memory);
    return inked;
}

// Null where the system has no such face, or none that can be relied on.
HFONT usableFont(const char* face, const Scale& scale) {
    if (!fontExists(face)) return nullptr;
    const HFONT font = makeFont(face, scale);
    if (drawsAsMeasured(font)) return font;
    DeleteObject(font);
    return nullptr;
}

}  // namespace

Scale systemScale() {
    static const Scale scale(GetDeviceCaps(ScreenDc().get(), LOGPIXELSX));
    return scale;
}

RECT pixelRect(const Place& place, const Scale& scale) {
    return {scale.pixels(place.left), scale.pixels(place.top), scale.pixels(place.left + place.width),
            scale.pixels(place.top + place.height)};
}

HFONT controlFont(const Scale& scale) {
    static std::map<int, HFONT> fonts;
    const auto [at, fresh] = fonts.try_emplace(scale.dpi(), nullptr);
    if (fresh) at->second = usableFont("Tahoma", scale);
    if (at->second == nullptr) at->second = makeFont(kPictureFace, scale);
    return at->second;
}

HFONT fontOfFace(const std::string& face, const Scale& scale) {
    static std::map<std::pair<std::string, int>, HFONT> fonts;
    if (face.empty() || (face == kPictureFace && scale.dpi() > kMostDpiOfPictures)) return controlFont(scale);
    const auto [at, fresh] = fonts.try_emplace({face, scale.dpi()}, nullptr);
    if (fresh) at->second = usableFont(face.c_str(), scale);
    return at->second != nullptr ? at->second : controlFont(scale);
}

int fontHeight(HFONT font) {
    TEXTMETRICA metric{};
    GetTextMetricsA(ScreenDc(font).get(), &metric);
    return static_cast<int>(metric.tmHeight);
}

int textWidth(HFONT font, const std::string& text) {
    SIZE size{};
    GetTextExtentPoint32A(ScreenDc(font).get(), text.c_str(), static_cast<int>(text.size()), &size);
    return static_cast<int>(size.cx);
}

}  // namespace bromvale
