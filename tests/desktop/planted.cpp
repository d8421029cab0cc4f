// A library under the name of one of the system's, for the tests that lay it beside a program: whoever loads
// it has looked for it in the wrong place, and finds a file of its name with ".loaded" behind it.
#include <windows.h>

BOOL WINAPI DllMain(HINSTANCE library, DWORD reason, LPVOID) {
    if (reason != DLL_PROCESS_ATTACH) return TRUE;
    char path[MAX_PATH + 8];
    const DWORD length = GetModuleFileNameA(library, path, MAX_PATH);
    lstrcpyA(path + length, ".loaded");
    const HANDLE file = CreateFileA(path, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    if (file != INVALID_HANDLE_VALUE) CloseHandle(file);
    return TRUE;
}
