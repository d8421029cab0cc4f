#pragma once
// The folder dialog of the shell under its own names: SHBrowseForFolderA, SHGetPathFromIDListA,
// CoTaskMemFree; of the NT family only: SHGetPathFromIDListW.
#ifdef _WIN32
#include "platform/win32/system/shell_objects.h"
#else
#include "platform/offline/desktop/shell_api.h"
#endif
