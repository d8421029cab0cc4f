#include "platform/wide.h"

#include "platform/win32/system/shell_objects.h"
#include "platform/win32/system/windows.h"

namespace bromvale {
namespace {

// The top bit of GetVersion tells the 9x family.
bool isNtFamily() {
    return (GetVersion() & 0x80000000u) == 0;
}

template <class Function>
void take(Function& function, const char* library, const char* name) {
    const HMODULE module = LoadLibraryA(library);
    const FARPROC found = module != nullptr ? GetProcAddress(module, name) : nullptr;
    function = reinterpret_cast<Function>(reinterpret_cast<void*>(found));
}

WideFunctions load() {
    WideFunctions functions{};
    take(functions.openKey, "advapi32.dll", "RegOpenKeyExW");
    take(functions.enumKey, "advapi32.dll", "RegEnumKeyExW");
    take(functions.enumValue, "advapi32.dll", "RegEnumValueW");
    take(functions.queryValue, "advapi32.dll", "RegQueryValueExW");
    take(functions.queryInfoKey, "advapi32.dll", "RegQueryInfoKeyW");
    take(functions.findFirstFile, "kernel32.dll", "FindFirstFileW");
    take(functions.findNextFile, "kernel32.dll", "FindNextFileW");
    take(functions.createFile, "kernel32.dll", "CreateFileW");
    take(functions.moduleFileName, "kernel32.dll", "GetModuleFileNameW");
    take(functions.windowsDirectory, "kernel32.dll", "GetWindowsDirectoryW");
    take(functions.expandEnvironmentStrings, "kernel32.dll", "ExpandEnvironmentStringsW");
    take(functions.shortPathName, "kernel32.dll", "GetShortPathNameW");
    take(functions.pathFromIdList, "shell32.dll", "SHGetPathFromIDListW");
    take(functions.finalPathName, "kernel32.dll", "GetFinalPathNameByHandleW");
    return functions;
}

}  // namespace

const WideFunctions* wide() {
    static const bool known = isNtFamily();
    if (!known) return nullptr;
    static const WideFunctions functions = load();
    return &functions;
}

}  // namespace bromvale
