#include "platform/win32/system/libraries.h"

#include <string>

#include "platform/win32/system/entries.h"

namespace bromvale {
namespace {

constexpr DWORD kSystemFolderOnly = 0x800;  // LOAD_LIBRARY_SEARCH_SYSTEM32

// What the system's own windows load by bare names, wherever it then comes from; one that is there already is
// taken.
constexpr const char* kAskedForByName[] = {"uxtheme.dll", "dwmapi.dll", "version.dll"};

// From Windows 8 on, and on those before it that have the update.
bool searchesSystemFolderOnly = false;

}  // namespace

void guardLibraries() {
    BOOL(WINAPI * setDirectories)(DWORD) = nullptr;
    BOOL(WINAPI * setDirectory)(LPCSTR) = nullptr;
    const HMODULE kernel = GetModuleHandleA("kernel32.dll");
    if (loadEntry(kernel, "SetDefaultDllDirectories", setDirectories))
        searchesSystemFolderOnly = setDirectories(kSystemFolderOnly) != 0;
    if (loadEntry(kernel, "SetDllDirectoryA", setDirectory)) setDirectory("");
    for (const char* name : kAskedForByName) static_cast<void>(loadSystemLibrary(name));
}

// Where Windows would look for the library's own libraries beside the program, it begins with the library's
// folder instead.
HMODULE loadSystemLibrary(const char* name) {
    char folder[MAX_PATH] = "";
    const UINT length = GetSystemDirectoryA(folder, MAX_PATH);
    if (length == 0 || length >= MAX_PATH) return nullptr;
    const std::string path = std::string(folder, length) + "\\" + name;
    return LoadLibraryExA(path.c_str(), nullptr,
                          searchesSystemFolderOnly ? 0 : LOAD_WITH_ALTERED_SEARCH_PATH);
}

}  // namespace bromvale
