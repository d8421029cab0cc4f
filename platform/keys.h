#pragma once
// Virtual key codes under their own names: VK_CLEAR, VK_RETURN, VK_DELETE, VK_EXECUTE, VK_F4 to VK_F8.
#ifdef _WIN32
#include "platform/win32/system/windows.h"
#else
#include "platform/offline/windows_types.h"
#endif
