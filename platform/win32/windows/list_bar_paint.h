#pragma once
#include "platform/win32/windows/list_bar_layout.h"

namespace bromvale {

// What the mouse and the keyboard do to a list bar at the moment.
struct ListBarState {
    ListBarHit hot;
    ListBarHit pressed;
    int focusedItem = -1;  // of the open bar, with a frame around its caption; -1 for none
};

void paintListBar(HDC dc, const RECT& client, const ListBar& bar, const ListBarLayout& layout,
                  const ListBarState& state);

}  // namespace bromvale
