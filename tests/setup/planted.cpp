// A library that leaves a file beside itself when it is loaded, and a program that loads libraries by their bare names:
// what the installer must not do.
#include <windows.h>

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
int main(int count, char** names) {
    for (int index = 1; index < count; ++index) LoadLibraryA(names[index]);
    return 0;
}
#endif
