#include "platform/win32/metrics.h"

#include <map>

#include "platform/screen.h"

namespace bromvale {

namespace {

constexpr int kTwipsPerInch = 1440;
constexpr int kPointSize = 8;

int deviceCap(int index) {
    const HDC screen = GetDC(nullptr);
    const int value = GetDeviceCaps(screen, index);
    ReleaseDC(nullptr, screen);
    return value;
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
    const HDC screen = GetDC(nullptr);
    EnumFontFamiliesA(screen, face, onFontFound, reinterpret_cast<LPARAM>(&found));
    ReleaseDC(nullptr, screen);
    return found;
}

HFONT makeFont(const char* face) {
    return CreateFontA(-MulDiv(kPointSize, screenDpi(), 72), 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE,
                       DEFAULT_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY,
                       DEFAULT_PITCH | FF_DONTCARE, face);
}

}  // namespace

int screenDpi() {
    static const int dpi = deviceCap(LOGPIXELSX);
    return dpi;
}

int scaled(int pixels) { return MulDiv(pixels, screenDpi(), 96); }

// Whole twips: between the steps of 15 and 10 the layout grows a little more than the text, so nothing is clipped.
int twipsPerPixelX() {
    static const int twips = kTwipsPerInch / screenDpi();
    return twips;
}

int twipsPerPixelY() {
    static const int twips = kTwipsPerInch / deviceCap(LOGPIXELSY);
    return twips;
}

int screenWidth() { return GetSystemMetrics(SM_CXSCREEN) * twipsPerPixelX(); }
int screenHeight() { return GetSystemMetrics(SM_CYSCREEN) * twipsPerPixelY(); }

int pixelsX(int twips) { return roundedPixels(twips, twipsPerPixelX()); }
int pixelsY(int twips) { return roundedPixels(twips, twipsPerPixelY()); }

RECT pixelRect(const Place& place) {
    return {pixelsX(place.left), pixelsY(place.top), pixelsX(place.left + place.width),
            pixelsY(place.top + place.height)};
}

HFONT controlFont() {
    static const HFONT font = makeFont(fontExists("Tahoma") ? "Tahoma" : "MS Sans Serif");
    return font;
}

HFONT fontOfFace(const std::string& face) {
    static std::map<std::string, HFONT> fonts;
    if (face.empty() || face == "MS Sans Serif" || !fontExists(face.c_str())) return controlFont();
    HFONT& font = fonts[face];
    if (font == nullptr) font = makeFont(face.c_str());
    return font;
}

int fontHeight(HFONT font) {
    const HDC screen = GetDC(nullptr);
    const HGDIOBJ old = SelectObject(screen, font);
    TEXTMETRICA metric{};
    GetTextMetricsA(screen, &metric);
    SelectObject(screen, old);
    ReleaseDC(nullptr, screen);
    return static_cast<int>(metric.tmHeight);
}

}  // namespace bromvale
