#pragma once
// File functions under their own names: FindFirstFileA, FindNextFileA, FindClose, CreateFileA, ReadFile,
// WriteFile, SetFilePointer, GetFileSize, CloseHandle, CreateDirectoryA, RemoveDirectoryA, DeleteFileA,
// MoveFileA, GetFileAttributesA, GetCurrentDirectoryA, SetCurrentDirectoryA, OpenFile, GetFileTime,
// FileTimeToLocalFileTime, FileTimeToSystemTime, GetLastError.
// Wide ones, which the 9x family lacks: FindFirstFileW, FindNextFileW, CreateFileW,
// GetShortPathNameW, GetFinalPathNameByHandleW (from Windows Vista on).
// WriteFile hands its bytes to the operating system before it returns: they survive the end of the process.
#ifdef _WIN32
#include "platform/win32/system/windows.h"
#else
#include "platform/offline/files/api.h"
#endif
