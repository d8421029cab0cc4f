#pragma once
// Message boxes of the offline machine: recorded, and answered from the machine's queue.
#include "platform/offline/windows_types.h"

int MessageBoxA(HWND window, LPCSTR text, LPCSTR caption, UINT style);
