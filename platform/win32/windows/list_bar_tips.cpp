#include "platform/win32/windows/list_bar_peer.h"

#include "platform/win32/windows/common_controls.h"
#include "platform/win32/windows/metrics.h"

namespace bromvale {

namespace {

constexpr int kTipWidth = 300;  // pixels at 96 DPI

// The structure's first version, 40 bytes in 32-bit programs: libraries of Windows 98 refuse later ones.
TOOLINFOA toolOf(HWND owner, unsigned number) {
    TOOLINFOA tool{};
    tool.cbSize = TTTOOLINFOA_V1_SIZE;
    tool.uFlags = TTF_SUBCLASS;
    tool.hwnd = owner;
    tool.uId = number;
    return tool;
}

}  // namespace

ListBarTips::~ListBarTips() {
    drop();
}

void ListBarTips::drop() {
    if (window_ != nullptr && IsWindow(window_)) DestroyWindow(window_);
    window_ = nullptr;
    count_ = 0;
}

void ListBarTips::place(HWND owner, const ListBar& bar, const ListBarLayout& layout, const Scale& scale) {
    if (window_ == nullptr) {
        window_ = CreateWindowExA(
            WS_EX_TOPMOST, TOOLTIPS_CLASSA, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, CW_USEDEFAULT,
            CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, owner, nullptr, GetModuleHandleA(nullptr), nullptr);
        SendMessageA(window_, TTM_SETMAXTIPWIDTH, 0, scale.scaled(kTipWidth));
    }
    for (; count_ > 0; --count_) {
        TOOLINFOA tool = toolOf(owner, count_);
        SendMessageA(window_, TTM_DELTOOLA, 0, reinterpret_cast<LPARAM>(&tool));
    }
    for (const ListBarLayout::Item& item : layout.items) {
        if (item.bar != bar.openBar()) continue;
        TOOLINFOA tool = toolOf(owner, ++count_);
        IntersectRect(&tool.rect, &item.cell, &layout.bars[static_cast<std::size_t>(item.bar)].area);
        tool.lpszText = const_cast<char*>(bar.item(item.bar, item.index).toolTip.c_str());
        SendMessageA(window_, TTM_ADDTOOLA, 0, reinterpret_cast<LPARAM>(&tool));
    }
}

}  // namespace bromvale
