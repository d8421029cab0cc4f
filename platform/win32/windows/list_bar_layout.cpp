#include "platform/win32/windows/list_bar_layout.h"

#include <algorithm>

#include "platform/controls/image_list.h"
#include "platform/win32/windows/metrics.h"

namespace bromvale {

namespace {

// Pixels at 96 DPI.
constexpr int kHeaderPadding = 4;
constexpr int kItemTop = 9;
constexpr int kIconGap = 6;
constexpr int kItemBottom = 3;
constexpr int kTextMargin = 3;
constexpr int kScrollButton = 16;
constexpr int kScrollMargin = 3;

int headerHeight(const Scale& scale) {
    return fontHeight(listBarFont(scale)) + 2 * scale.scaled(kHeaderPadding);
}

SIZE wrapped(const ScreenDc& screen, const std::string& text, int width) {
    RECT rect{0, 0, width, 0};
    DrawTextA(screen.get(), text.c_str(), static_cast<int>(text.size()), &rect,
              DT_CALCRECT | DT_CENTER | DT_WORDBREAK | DT_NOPREFIX);
    return {std::min<LONG>(rect.right - rect.left, width), rect.bottom - rect.top};
}

// Places one bar's items from `top` on and returns the edge below the last.
int placeItems(ListBarLayout& layout, const ListBar& bar, int number, int top, const ScreenDc& screen,
               const Scale& scale) {
    const RECT area = layout.bars[static_cast<std::size_t>(number)].area;
    const int icon = scale.scaled(bar.imageList() != nullptr ? bar.imageList()->size() : 32);
    const int width = static_cast<int>(area.right - area.left) - 2 * scale.scaled(kTextMargin);
    const int middle = static_cast<int>(area.left + area.right) / 2;
    int index = 0;
    for (const ListBar::Item& item : bar.items(number)) {
        const SIZE text = wrapped(screen, item.caption, width);
        const int iconTop = top + scale.scaled(kItemTop);
        const int textTop = iconTop + icon + scale.scaled(kIconGap);
        const int bottom = textTop + static_cast<int>(text.cy) + scale.scaled(kItemBottom);
        const int half = std::max(icon / 2 + scale.scaled(kIconGap), static_cast<int>(text.cx + 1) / 2);
        layout.items.push_back({number,
                                index++,
                                {middle - half, top + scale.scaled(kItemTop) / 2, middle + half, bottom},
                                {middle - icon / 2, iconTop, middle - icon / 2 + icon, iconTop + icon},
                                {area.left + scale.scaled(kTextMargin), textTop,
                                 area.right - scale.scaled(kTextMargin), textTop + text.cy}});
        top = bottom;
    }
    return top + scale.scaled(kItemTop) / 2;
}

void placeScrollButtons(ListBarLayout& layout, const RECT& area, int scroll, const Scale& scale) {
    const int size = scale.scaled(kScrollButton);
    const int margin = scale.scaled(kScrollMargin);
    const int left = static_cast<int>(area.right) - margin - size;
    if (scroll > 0) {
        layout.scrollUp = {left, area.top + margin, left + size, area.top + margin + size};
    }
    if (scroll < layout.scrollLimit) {
        layout.scrollDown = {left, area.bottom - margin - size, left + size, area.bottom - margin};
    }
}

}  // namespace

HFONT listBarFont(const Scale& scale) {
    return fontOfFace("MS Sans Serif", scale);
}

std::vector<int> restingTops(const ListBar& bar, const RECT& client, int open, const Scale& scale) {
    const int height = headerHeight(scale);
    const int count = static_cast<int>(bar.bars().size());
    std::vector<int> tops;
    for (int i = 0; i < count; ++i) {
        const int stacked = i * height;
        // A window too low for all of them pushes the lower ones out at the bottom.
        const int hanging = std::max(stacked, static_cast<int>(client.bottom) - (count - i) * height);
        tops.push_back(i <= open ? stacked : hanging);
    }
    return tops;
}

ListBarLayout layOut(const ListBar& bar, const RECT& client, const std::vector<int>& tops, int scroll,
                     const Scale& scale) {
    ListBarLayout layout;
    const int height = headerHeight(scale);
    const ScreenDc screen(listBarFont(scale));
    for (std::size_t i = 0; i < tops.size(); ++i) {
        const int top = tops[i];
        const int end = i + 1 < tops.size() ? tops[i + 1] : static_cast<int>(client.bottom);
        layout.bars.push_back({{0, top, client.right, top + height}, {0, top + height, client.right, end}});
    }
    for (std::size_t i = 0; i < tops.size(); ++i) {
        const RECT area = layout.bars[i].area;
        if (area.bottom <= area.top) continue;
        const int number = static_cast<int>(i);
        const bool open = number == bar.openBar();
        const int offset = open ? scroll : 0;
        const int bottom =
            placeItems(layout, bar, number, static_cast<int>(area.top) - offset, screen, scale) + offset;
        if (!open) continue;
        layout.scrollLimit = std::max(0, bottom - static_cast<int>(area.bottom));
        placeScrollButtons(layout, area, scroll, scale);
    }
    return layout;
}

ListBarHit hitTest(const ListBarLayout& layout, int openBar, POINT at) {
    using Part = ListBarHit::Part;
    for (std::size_t i = layout.bars.size(); i-- > 0;) {
        if (PtInRect(&layout.bars[i].header, at)) return {Part::Header, static_cast<int>(i), -1};
    }
    if (PtInRect(&layout.scrollUp, at)) return {Part::ScrollUp, openBar, -1};
    if (PtInRect(&layout.scrollDown, at)) return {Part::ScrollDown, openBar, -1};
    for (const ListBarLayout::Item& item : layout.items) {
        const RECT& area = layout.bars[static_cast<std::size_t>(item.bar)].area;
        if (item.bar == openBar && PtInRect(&item.cell, at) && PtInRect(&area, at)) {
            return {Part::Item, item.bar, item.index};
        }
    }
    return {};
}

const ListBarLayout::Item* findItem(const ListBarLayout& layout, int bar, int index) {
    for (const ListBarLayout::Item& item : layout.items) {
        if (item.bar == bar && item.index == index) return &item;
    }
    return nullptr;
}

}  // namespace bromvale
