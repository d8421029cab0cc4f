// A library that leaves a file beside itself when it is loaded, and a program that loads libraries by their
// bare names: what the installer must not do.
#include <windows.h>

#include <ole2.h>
#include <shlobj.h>

#ifdef PLANTED_LIBRARY
BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID) {
    if (reason != DLL_PROCESS_ATTACH) return TRUE;
    char path[MAX_PATH + 16];
    GetModuleFileNameA(module, path, MAX_PATH);
    lstrcatA(path, ".loaded");
    CloseHandle(CreateFileA(path, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
    return TRUE;
}
#else
// It imports what the installer imports too, so that Wine brings in for it what it does for that one.
void* imported[] = {reinterpret_cast<void*>(&OleInitialize), reinterpret_cast<void*>(&SHGetMalloc),
                    reinterpret_cast<void*>(&GetStockObject), reinterpret_cast<void*>(&GetDesktopWindow),
                    reinterpret_cast<void*>(&RegCloseKey)};

int main(int count, char** names) {
    for (int index = 1; index < count; ++index) LoadLibraryA(names[index]);
    return 0;
}
#endif
