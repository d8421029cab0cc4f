#pragma once
// Reads common controls of another process of the same width: their messages take pointers into that process.
#include <windows.h>

#include <string>
#include <vector>

struct ListRow {
    std::vector<std::wstring> columns;
    bool selected;
};

std::vector<ListRow> listRows(HWND list);
int listColumns(HWND list);
std::vector<int> listColumnWidths(HWND list);
// Screen places; rows and columns count from 0. False where the row isn't there.
bool listRowPlace(HWND list, int row, RECT& place);
bool listHeaderPlace(HWND list, int column, RECT& place);
std::vector<std::wstring> statusPanels(HWND bar);
