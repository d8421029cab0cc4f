#pragma once
// Machine facts, clock and locale of the offline machine.
#include "platform/offline/windows_types.h"

BOOL GetComputerNameA(LPSTR buffer, LPDWORD size);
BOOL GetUserNameA(LPSTR buffer, LPDWORD size);
UINT GetWindowsDirectoryA(LPSTR buffer, UINT size);
UINT GetSystemDirectoryA(LPSTR buffer, UINT size);
DWORD GetTempPathA(DWORD size, LPSTR buffer);
BOOL GetVersionExA(LPOSVERSIONINFOA info);
DWORD GetModuleFileNameA(HMODULE module, LPSTR buffer, DWORD size);
LPSTR GetCommandLineA();

void GetLocalTime(LPSYSTEMTIME time);
// Milliseconds since the machine was made.
DWORD GetTickCount();
// Moves the clock on and returns at once.
void Sleep(DWORD milliseconds);

int GetDateFormatA(LCID locale, DWORD flags, const SYSTEMTIME* date, LPCSTR picture, LPSTR buffer, int size);
int GetTimeFormatA(LCID locale, DWORD flags, const SYSTEMTIME* time, LPCSTR picture, LPSTR buffer, int size);
int GetLocaleInfoA(LCID locale, LCTYPE type, LPSTR buffer, int size);

DWORD GetLastError();
void SetLastError(DWORD error);
