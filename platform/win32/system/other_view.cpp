#include "platform/other_view_api.h"
#include "platform/win32/system/windows.h"

namespace bromvale {
namespace {

template <class Function>
void take(Function& function, const char* name) {
    const HMODULE kernel = GetModuleHandleA("kernel32.dll");
    function = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(kernel, name)));
}

OtherViewFunctions load() {
    OtherViewFunctions functions{};
    take(functions.isWow64Process, "IsWow64Process");
    take(functions.disableRedirection, "Wow64DisableWow64FsRedirection");
    take(functions.revertRedirection, "Wow64RevertWow64FsRedirection");
    take(functions.wow64Directory, "GetSystemWow64DirectoryA");
    return functions;
}

}  // namespace

const OtherViewFunctions& otherViewFunctions() {
    static const OtherViewFunctions functions = load();
    return functions;
}

}  // namespace bromvale
