/* A library of nobody: whoever loads it leaves a file that names it, path and all, in C:\planted. */
#include <windows.h>

#include <stdio.h>

BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID reserved) {
    char path[MAX_PATH] = "", mark[MAX_PATH * 2];
    int i;
    (void)reserved;
    if (reason != DLL_PROCESS_ATTACH) return TRUE;
    GetModuleFileNameA(module, path, MAX_PATH);
    for (i = 0; path[i] != '\0'; ++i)
        if (path[i] == '\\' || path[i] == ':') path[i] = '_';
    snprintf(mark, sizeof mark, "C:\\planted\\%s", path);
    CloseHandle(CreateFileA(mark, GENERIC_WRITE, 0, NULL, CREATE_ALWAYS, 0, NULL));
    return TRUE;
}
