#pragma once
#include "platform/controls/list_view.h"

namespace bromvale {

// How many rows are marked.
[[nodiscard]] inline int selectedRows(const ListView& list) {
    int selected = 0;
    for (int row = 1; row <= list.count(); ++row) {
        if (list.item(row).selected()) ++selected;
    }
    return selected;
}

}  // namespace bromvale
