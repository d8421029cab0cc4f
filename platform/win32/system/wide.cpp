#include "platform/wide.h"

#include "platform/win32/system/entries.h"
#include "platform/win32/system/libraries.h"
#include "platform/win32/system/shell_objects.h"

namespace bromvale {
namespace {

// The top bit of GetVersion tells the 9x family.
bool isNtFamily() {
    return (GetVersion() & 0x80000000u) == 0;
}

WideFunctions load() {
    WideFunctions functions{};
    const HMODULE registry = loadSystemLibrary("advapi32.dll");
    const HMODULE kernel = GetModuleHandleA("kernel32.dll");
    loadEntry(registry, "RegOpenKeyExW", functions.openKey);
    loadEntry(registry, "RegEnumKeyExW", functions.enumKey);
    loadEntry(registry, "RegEnumValueW", functions.enumValue);
    loadEntry(registry, "RegQueryValueExW", functions.queryValue);
    loadEntry(registry, "RegQueryInfoKeyW", functions.queryInfoKey);
    loadEntry(kernel, "FindFirstFileW", functions.findFirstFile);
    loadEntry(kernel, "FindNextFileW", functions.findNextFile);
    loadEntry(kernel, "CreateFileW", functions.createFile);
    loadEntry(kernel, "GetModuleFileNameW", functions.moduleFileName);
    loadEntry(kernel, "GetWindowsDirectoryW", functions.windowsDirectory);
    loadEntry(kernel, "ExpandEnvironmentStringsW", functions.expandEnvironmentStrings);
    loadEntry(kernel, "GetShortPathNameW", functions.shortPathName);
    loadEntry(loadSystemLibrary("shell32.dll"), "SHGetPathFromIDListW", functions.pathFromIdList);
    loadEntry(kernel, "GetFinalPathNameByHandleW", functions.finalPathName);
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
