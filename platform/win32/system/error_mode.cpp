#include "platform/win32/system/error_mode.h"

#include "platform/win32/system/windows.h"

namespace bromvale {

void silenceDrives() {
    // What the process came with stays: whoever started it may have switched other boxes off.
    const UINT before = SetErrorMode(0);
    SetErrorMode(before | SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
}

}  // namespace bromvale
