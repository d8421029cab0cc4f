#pragma once
#include "platform/win32/windows/list_bar_layout.h"

namespace bromvale {

// The tool-tips of a list bar: one per item of the open bar.
class ListBarTips {
  public:
    ListBarTips() = default;
    ~ListBarTips();
    ListBarTips(const ListBarTips&) = delete;
    ListBarTips& operator=(const ListBarTips&) = delete;

    // Brings the tips to where the items are now.
    void place(HWND owner, const ListBar& bar, const ListBarLayout& layout);

  private:
    HWND window_ = nullptr;
    unsigned count_ = 0;
};

}  // namespace bromvale
