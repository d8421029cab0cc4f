#pragma once
#include "platform/machine.h"

namespace bromvale {

// What a 64-bit Windows has beside the functions of all others; each is null where the system lacks it.
struct OtherViewFunctions {
    BOOL(WINAPI* isWow64Process)(HANDLE process, BOOL* is);
    BOOL(WINAPI* disableRedirection)(PVOID* old);
    BOOL(WINAPI* revertRedirection)(PVOID old);
    UINT(WINAPI* wow64Directory)(LPSTR buffer, UINT size);
};

[[nodiscard]] const OtherViewFunctions& otherViewFunctions();

}  // namespace bromvale
