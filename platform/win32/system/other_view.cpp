#include "platform/other_view_api.h"
#include "platform/win32/system/entries.h"

namespace bromvale {
namespace {

OtherViewFunctions load() {
    OtherViewFunctions functions{};
    const HMODULE kernel = GetModuleHandleA("kernel32.dll");
    loadEntry(kernel, "IsWow64Process", functions.isWow64Process);
    loadEntry(kernel, "Wow64DisableWow64FsRedirection", functions.disableRedirection);
    loadEntry(kernel, "Wow64RevertWow64FsRedirection", functions.revertRedirection);
    loadEntry(kernel, "GetSystemWow64DirectoryA", functions.wow64Directory);
    return functions;
}

}  // namespace

const OtherViewFunctions& otherViewFunctions() {
    static const OtherViewFunctions functions = load();
    return functions;
}

}  // namespace bromvale
