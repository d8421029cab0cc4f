#pragma once
#include <vector>

#include "base/scale.h"
#include "platform/controls/list_bar.h"
#include "platform/win32/system/windows.h"

namespace bromvale {

// Where the parts of a list bar stand, in client pixels. Headers up to the open bar's are stacked at the top,
// the others at the bottom; between them lies the open bar. While it slides, two bars have an area.
struct ListBarLayout {
    struct Bar {
        RECT header;
        RECT area;
    };
    struct Item {
        int bar;
        int index;
        RECT cell;  // reacts to the mouse
        RECT icon;
        RECT text;
    };
    std::vector<Bar> bars;
    std::vector<Item> items;
    RECT scrollUp{};  // empty where there is nothing to scroll
    RECT scrollDown{};
    int scrollLimit = 0;  // the furthest that the open bar can be scrolled
};

// What lies under a point.
struct ListBarHit {
    enum class Part { None, Header, Item, ScrollUp, ScrollDown };
    Part part = Part::None;
    int bar = -1;
    int index = -1;
    bool operator==(const ListBarHit&) const = default;
};

// The bar's own face, which it has had since it was drawn.
[[nodiscard]] HFONT listBarFont(const Scale& scale);

// Upper edges of all headers while `open` is the open bar and nothing slides.
[[nodiscard]] std::vector<int> restingTops(const ListBar& bar, const RECT& client, int open,
                                           const Scale& scale);

// `tops` are the headers' upper edges, `scroll` the pixels by which the open bar is scrolled.
[[nodiscard]] ListBarLayout layOut(const ListBar& bar, const RECT& client, const std::vector<int>& tops,
                                   int scroll, const Scale& scale);

[[nodiscard]] ListBarHit hitTest(const ListBarLayout& layout, int openBar, POINT at);
[[nodiscard]] const ListBarLayout::Item* findItem(const ListBarLayout& layout, int bar, int index);

}  // namespace bromvale
