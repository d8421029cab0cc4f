#include "platform/win32/windows/list_bar_peer.h"

#include "platform/controls/image_list.h"
#include "platform/win32/system/icons.h"
#include "platform/win32/windows/colours.h"
#include "platform/win32/windows/metrics.h"

namespace bromvale {

namespace {

using Part = ListBarHit::Part;

// `share` percent of the first colour over the second.
COLORREF blended(COLORREF first, COLORREF second, int share) {
    const auto mix = [share](int a, int b) {
        return static_cast<BYTE>((a * share + b * (100 - share)) / 100);
    };
    return RGB(mix(GetRValue(first), GetRValue(second)), mix(GetGValue(first), GetGValue(second)),
               mix(GetBValue(first), GetBValue(second)));
}

void fillColour(HDC dc, const RECT& rect, COLORREF colour) {
    const HBRUSH brush = CreateSolidBrush(colour);
    FillRect(dc, &rect, brush);
    DeleteObject(brush);
}

// A soft plate in the selection's colour behind an icon, with a frame of one point.
void drawPlate(HDC dc, const RECT& icon, bool pressed, const Scale& scale) {
    const COLORREF ground = GetSysColor(COLOR_WINDOW);
    const COLORREF accent = GetSysColor(COLOR_HIGHLIGHT);
    RECT plate = icon;
    InflateRect(&plate, scale.scaled(4), scale.scaled(4));
    fillColour(dc, plate, blended(accent, ground, pressed ? 70 : 45));
    InflateRect(&plate, -1, -1);
    fillColour(dc, plate, blended(accent, ground, pressed ? 30 : 14));
}

void drawFocus(HDC dc, const RECT& frame, int text, int ground) {
    SetTextColor(dc, GetSysColor(text));
    SetBkColor(dc, GetSysColor(ground));
    DrawFocusRect(dc, &frame);
}

void paintItem(HDC dc, const ListBar& bar, const ListBarLayout::Item& placed, const ListBarState& state,
               const Scale& scale) {
    const ListBar::Item& item = bar.item(placed.bar, placed.index);
    const ListBarHit self{Part::Item, placed.bar, placed.index};
    const bool pressed = state.pressed == self && state.hot == self;
    const bool hot = state.hot == self && (state.pressed == self || state.pressed.part == Part::None);
    if (hot) drawPlate(dc, placed.icon, pressed, scale);
    if (bar.imageList() != nullptr && item.iconIndex < bar.imageList()->count()) {
        const int pixels = static_cast<int>(placed.icon.right - placed.icon.left);
        // Raised under the mouse, down while it is pressed.
        const int lift = pressed ? 1 : hot ? -1 : 0;
        drawIcon(dc, bar.imageList()->resourceId(item.iconIndex + 1),
                 {placed.icon.left + lift, placed.icon.top + lift}, pixels);
    }
    RECT text = placed.text;
    SetTextColor(dc, GetSysColor(bar.enabled() ? COLOR_WINDOWTEXT : COLOR_GRAYTEXT));
    DrawTextA(dc, item.caption.c_str(), static_cast<int>(item.caption.size()), &text,
              DT_CENTER | DT_WORDBREAK | DT_NOPREFIX);
    if (state.focused == ListBar::Part{placed.bar, placed.index}) {
        RECT frame = placed.text;
        InflateRect(&frame, 1, 1);
        drawFocus(dc, frame, COLOR_WINDOWTEXT, COLOR_WINDOW);
    }
}

void paintHeader(HDC dc, const RECT& place, const std::string& caption, bool hot, bool pressed) {
    RECT rect = place;
    DrawFrameControl(dc, &rect, DFC_BUTTON, DFCS_BUTTONPUSH | (pressed ? DFCS_PUSHED : 0u));
    const COLORREF text = GetSysColor(COLOR_BTNTEXT);
    const COLORREF lit = blended(GetSysColor(COLOR_BTNHIGHLIGHT), GetSysColor(COLOR_BTNFACE), 50);
    if (hot && !pressed && readable(text, lit)) {
        RECT inner = place;
        InflateRect(&inner, -2, -2);
        fillColour(dc, inner, lit);
    }
    if (pressed) OffsetRect(&rect, 1, 1);
    SetTextColor(dc, text);
    DrawTextA(dc, caption.c_str(), static_cast<int>(caption.size()), &rect,
              DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
}

void paintScrollButton(HDC dc, const RECT& place, UINT kind, bool pressed) {
    RECT rect = place;
    if (!IsRectEmpty(&rect)) DrawFrameControl(dc, &rect, DFC_SCROLL, kind | (pressed ? DFCS_PUSHED : 0u));
}

}  // namespace

void paintListBar(HDC dc, const RECT& client, const ListBar& bar, const ListBarLayout& layout,
                  const ListBarState& state, const Scale& scale) {
    FillRect(dc, &client, GetSysColorBrush(COLOR_WINDOW));
    const HGDIOBJ oldFont = SelectObject(dc, listBarFont(scale));
    SetBkMode(dc, TRANSPARENT);
    for (const ListBarLayout::Item& item : layout.items) {
        const RECT& area = layout.bars[static_cast<std::size_t>(item.bar)].area;
        const int saved = SaveDC(dc);
        IntersectClipRect(dc, area.left, area.top, area.right, area.bottom);
        paintItem(dc, bar, item, state, scale);
        RestoreDC(dc, saved);
    }
    const auto isPressed = [&](const ListBarHit& hit) { return state.pressed == hit && state.hot == hit; };
    paintScrollButton(dc, layout.scrollUp, DFCS_SCROLLUP, isPressed({Part::ScrollUp, bar.openBar(), -1}));
    paintScrollButton(dc, layout.scrollDown, DFCS_SCROLLDOWN,
                      isPressed({Part::ScrollDown, bar.openBar(), -1}));
    for (std::size_t i = 0; i < layout.bars.size(); ++i) {
        const ListBarHit self{Part::Header, static_cast<int>(i), -1};
        paintHeader(dc, layout.bars[i].header, bar.bars()[i].caption, state.hot == self, isPressed(self));
        if (state.focused != ListBar::Part{static_cast<int>(i), -1}) continue;
        RECT frame = layout.bars[i].header;
        InflateRect(&frame, -3, -3);
        drawFocus(dc, frame, COLOR_BTNTEXT, COLOR_BTNFACE);
    }
    SelectObject(dc, oldFont);
}

}  // namespace bromvale
