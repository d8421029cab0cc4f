#pragma once
// MessageBoxA under its own name. Without a display the boxes are recorded and answered by the machine's
// script.
#ifdef _WIN32
#include "platform/win32/windows.h"
#else
#include "platform/offline/dialogs_api.h"
#endif
