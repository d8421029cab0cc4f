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
// On the 9x family it fails with ERROR_CALL_NOT_IMPLEMENTED.
DWORD GetModuleFileNameW(HMODULE module, LPWSTR buffer, DWORD size);
UINT GetWindowsDirectoryW(LPWSTR buffer, UINT size);

// Code pages: CP_ACP is the machine's. Known are those that code_page.h names; another one gives 0 and
// ERROR_INVALID_PARAMETER.
UINT GetACP();
BOOL GetCPInfo(UINT codePage, LPCPINFO info);
int MultiByteToWideChar(UINT codePage, DWORD flags, LPCSTR text, int size, LPWSTR wide, int wideSize);
int WideCharToMultiByte(UINT codePage, DWORD flags, LPCWSTR wide, int wideSize, LPSTR text, int size,
                        LPCSTR defaultChar, LPBOOL usedDefault);

void GetLocalTime(LPSYSTEMTIME time);
// Moves the clock on and returns at once.
void Sleep(DWORD milliseconds);

int GetDateFormatA(LCID locale, DWORD flags, const SYSTEMTIME* date, LPCSTR picture, LPSTR buffer, int size);
int GetTimeFormatA(LCID locale, DWORD flags, const SYSTEMTIME* time, LPCSTR picture, LPSTR buffer, int size);
int GetLocaleInfoA(LCID locale, LCTYPE type, LPSTR buffer, int size);

// Of the code page; a letter whose other case the page lacks stays.
DWORD CharLowerBuffA(LPSTR text, DWORD length);
DWORD CharUpperBuffA(LPSTR text, DWORD length);
