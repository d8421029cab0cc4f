#include "platform/win32/windows/metrics.h"

#include <map>

#include "platform/screen.h"
#include "platform/win32/system/entries.h"

namespace bromvale {

namespace {

constexpr int kTwipsPerInch = 1440;
constexpr int kPointSize = 8;
constexpr const char* kPictureFace = "MS Sans Serif";
constexpr int kMostDpiOfPictures = 120;

int deviceCap(int index) {
    return GetDeviceCaps(ScreenDc().get(), index);
}

int roundedPixels(int twips, int perPixel) {
    const int raised = twips + perPixel / 2;
    return raised >= 0 ? raised / perPixel : -((perPixel - 1 - raised) / perPixel);
}

int CALLBACK onFontFound(const LOGFONTA*, const TEXTMETRICA*, DWORD, LPARAM found) {
    *reinterpret_cast<bool*>(found) = true;
    return 0;
}

bool fontExists(const char* face) {
    bool found = false;
    EnumFontFamiliesA(ScreenDc().get(), face, onFontFound, reinterpret_cast<LPARAM>(&found));
    return found;
}

HFONT makeFont(const char* face) {
    return CreateFontA(-MulDiv(kPointSize, screenDpi(), 72), 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE,
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
HFONT usableFont(const char* face) {
    if (!fontExists(face)) return nullptr;
    const HFONT font = makeFont(face);
    if (drawsAsMeasured(font)) return font;
    DeleteObject(font);
    return nullptr;
}

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

int screenDpi() {
    static const int dpi = deviceCap(LOGPIXELSX);
    return dpi;
}

int scaled(int pixels) {
    return MulDiv(pixels, screenDpi(), 96);
}

// Whole twips: between the steps of 15 and 10 the layout grows a little more than the text, so nothing is
// clipped.
int twipsPerPixelX() {
    static const int twips = kTwipsPerInch / screenDpi();
    return twips;
}

int twipsPerPixelY() {
    static const int twips = kTwipsPerInch / deviceCap(LOGPIXELSY);
    return twips;
}

int pixelsX(int twips) {
    return roundedPixels(twips, twipsPerPixelX());
}
int pixelsY(int twips) {
    return roundedPixels(twips, twipsPerPixelY());
}

RECT pixelRect(const Place& place) {
    return {pixelsX(place.left), pixelsY(place.top), pixelsX(place.left + place.width),
            pixelsY(place.top + place.height)};
}

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

HFONT controlFont() {
    static const HFONT font = [] {
        const HFONT modern = usableFont("Tahoma");
        return modern != nullptr ? modern : makeFont(kPictureFace);
    }();
    return font;
}

HFONT fontOfFace(const std::string& face) {
    static std::map<std::string, HFONT> fonts;
    if (face.empty() || (face == kPictureFace && screenDpi() > kMostDpiOfPictures)) return controlFont();
    const auto [at, fresh] = fonts.try_emplace(face, nullptr);
    if (fresh) at->second = usableFont(face.c_str());
    return at->second != nullptr ? at->second : controlFont();
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
