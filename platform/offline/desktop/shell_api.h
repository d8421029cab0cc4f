#pragma once
// What the user is shown and the shell's functions: recorded, and for files carried out.
#include "platform/offline/windows_types.h"

// Answered from the machine's queue.
int MessageBoxA(HWND window, LPCSTR text, LPCSTR caption, UINT style);

HINSTANCE ShellExecuteA(HWND window, LPCSTR verb, LPCSTR file, LPCSTR parameters, LPCSTR directory, INT show);
// FO_DELETE only. With FOF_ALLOWUNDO what goes lands in the drive's recycle bin. `pFrom` is read up to its
// doubled NUL; each name may hold wildcards in its last part.
int SHFileOperationA(LPSHFILEOPSTRUCTA operation);
BOOL Shell_NotifyIconA(DWORD message, PNOTIFYICONDATAA data);
BOOL SetForegroundWindow(HWND window);

// The folder that the machine's script has named, null without one.
PIDLIST_ABSOLUTE SHBrowseForFolderA(LPBROWSEINFOA info);
BOOL SHGetPathFromIDListA(PCIDLIST_ABSOLUTE list, LPSTR path);
BOOL SHGetPathFromIDListW(PCIDLIST_ABSOLUTE list, LPWSTR path);
void CoTaskMemFree(LPVOID memory);
