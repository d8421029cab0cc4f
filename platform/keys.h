#pragma once
// Numbers of keys under Windows' own names: VK_RETURN, VK_DELETE, VK_F4 ...
#ifdef _WIN32
#include "platform/win32/system/windows.h"
#else
#include "platform/offline/windows_codes.h"
#endif
