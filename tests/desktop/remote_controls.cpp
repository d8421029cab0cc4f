#include "remote_controls.h"

#include <commctrl.h>

#include "remote_memory.h"

namespace {

constexpr std::size_t TextCharacters = 4096;

std::wstring textIn(const RemoteMemory& memory, std::size_t offset, std::size_t characters) {
    std::vector<wchar_t> buffer(characters + 1);
    ReadProcessMemory(memory.process(), memory.at(offset), buffer.data(), characters * sizeof(wchar_t),
                      nullptr);
    return buffer.data();
}

std::wstring cell(HWND list, RemoteMemory& memory, int row, int column) {
    LVITEMW item{};
    item.iSubItem = column;
    item.pszText = static_cast<wchar_t*>(memory.at(sizeof item));
    item.cchTextMax = static_cast<int>(TextCharacters);
    memory.write(item);
    SendMessageW(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), memory.parameter());
    // The list may hand out a text of its own instead of filling the buffer.
    const auto answer = memory.read<LVITEMW>();
    const auto offset =
        static_cast<std::size_t>(reinterpret_cast<char*>(answer.pszText) - static_cast<char*>(memory.at(0)));
    return textIn(memory, offset, TextCharacters - 1);
}

HWND header(HWND list) {
    return reinterpret_cast<HWND>(SendMessageW(list, LVM_GETHEADER, 0, 0));
}

bool toScreen(HWND window, RECT& place) {
    MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&place), 2);
    return true;
}

}  // namespace

int listColumns(HWND list) {
    return static_cast<int>(SendMessageW(header(list), HDM_GETITEMCOUNT, 0, 0));
}

std::vector<int> listColumnWidths(HWND list) {
    std::vector<int> widths;
    for (int column = 0; column < listColumns(list); ++column)
        widths.push_back(
            static_cast<int>(SendMessageW(list, LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column), 0)));
    return widths;
}

std::vector<ListRow> listRows(HWND list) {
    RemoteMemory memory(list, sizeof(LVITEMW) + TextCharacters * sizeof(wchar_t));
    std::vector<ListRow> rows;
    const int count = static_cast<int>(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0));
    const int columns = listColumns(list);
    for (int row = 0; row < count; ++row) {
        ListRow next{};
        for (int column = 0; column < columns; ++column)
            next.columns.push_back(cell(list, memory, row, column));
        next.selected = SendMessageW(list, LVM_GETITEMSTATE, static_cast<WPARAM>(row), LVIS_SELECTED) != 0;
        rows.push_back(std::move(next));
    }
    return rows;
}

bool listRowPlace(HWND list, int row, RECT& place) {
    SendMessageW(list, LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
    RemoteMemory memory(list, sizeof(RECT));
    RECT question{};
    question.left = LVIR_LABEL;
    memory.write(question);
    if (!SendMessageW(list, LVM_GETITEMRECT, static_cast<WPARAM>(row), memory.parameter())) return false;
    place = memory.read<RECT>();
    return toScreen(list, place);
}

bool listHeaderPlace(HWND list, int column, RECT& place) {
    RemoteMemory memory(list, sizeof(RECT));
    if (!SendMessageW(header(list), HDM_GETITEMRECT, static_cast<WPARAM>(column), memory.parameter()))
        return false;
    place = memory.read<RECT>();
    return toScreen(header(list), place);
}

std::vector<std::wstring> statusPanels(HWND bar) {
    RemoteMemory memory(bar, TextCharacters * sizeof(wchar_t));
    std::vector<std::wstring> panels;
    const LRESULT count = SendMessageW(bar, SB_GETPARTS, 0, 0);
    for (WPARAM panel = 0; panel < static_cast<WPARAM>(count); ++panel) {
        const std::size_t length = LOWORD(SendMessageW(bar, SB_GETTEXTLENGTHW, panel, 0));
        SendMessageW(bar, SB_GETTEXTW, panel, memory.parameter());
        panels.push_back(textIn(memory, 0, length));
    }
    return panels;
}
