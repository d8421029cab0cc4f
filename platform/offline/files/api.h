#pragma once
// The file functions of the offline machine. Same names, results and last errors as Windows'.
#include "platform/offline/windows_types.h"

HANDLE FindFirstFileA(LPCSTR path, LPWIN32_FIND_DATAA data);
BOOL FindNextFileA(HANDLE find, LPWIN32_FIND_DATAA data);
BOOL FindClose(HANDLE find);

HANDLE CreateFileA(LPCSTR path, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security, DWORD disposition,
                   DWORD attributes, HANDLE templateFile);
BOOL ReadFile(HANDLE file, LPVOID buffer, DWORD size, LPDWORD read, LPOVERLAPPED overlapped);
BOOL WriteFile(HANDLE file, LPCVOID bytes, DWORD size, LPDWORD written, LPOVERLAPPED overlapped);
DWORD SetFilePointer(HANDLE file, LONG distance, PLONG distanceHigh, DWORD method);
DWORD GetFileSize(HANDLE file, LPDWORD high);
BOOL SetEndOfFile(HANDLE file);
BOOL CloseHandle(HANDLE handle);

BOOL CreateDirectoryA(LPCSTR path, LPSECURITY_ATTRIBUTES security);
BOOL RemoveDirectoryA(LPCSTR path);
BOOL DeleteFileA(LPCSTR path);
// Files only, and within their drive.
BOOL MoveFileA(LPCSTR from, LPCSTR to);
DWORD GetFileAttributesA(LPCSTR path);
BOOL SetFileAttributesA(LPCSTR path, DWORD attributes);
DWORD GetCurrentDirectoryA(DWORD size, LPSTR buffer);
BOOL SetCurrentDirectoryA(LPCSTR path);

HFILE OpenFile(LPCSTR path, OFSTRUCT* opened, UINT style);
BOOL GetFileTime(HANDLE file, LPFILETIME creation, LPFILETIME lastAccess, LPFILETIME lastWrite);
BOOL SetFileTime(HANDLE file, const FILETIME* creation, const FILETIME* lastAccess,
                 const FILETIME* lastWrite);
BOOL FileTimeToLocalFileTime(const FILETIME* time, LPFILETIME local);
BOOL LocalFileTimeToFileTime(const FILETIME* local, LPFILETIME time);
BOOL FileTimeToSystemTime(const FILETIME* time, LPSYSTEMTIME system);
BOOL SystemTimeToFileTime(const SYSTEMTIME* system, LPFILETIME time);

// The wide functions of the NT family; on the 9x family they fail with ERROR_CALL_NOT_IMPLEMENTED. Their
// fault points are those of the ANSI functions.
HANDLE FindFirstFileW(LPCWSTR path, LPWIN32_FIND_DATAW data);
BOOL FindNextFileW(HANDLE find, LPWIN32_FIND_DATAW data);
// With FILE_FLAG_BACKUP_SEMANTICS folders too, as CreateFileA.
HANDLE CreateFileW(LPCWSTR path, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security, DWORD disposition,
                   DWORD attributes, HANDLE templateFile);
// Leads from any path to the same one with the short names that there are; a name without one stays.
DWORD GetShortPathNameW(LPCWSTR path, LPWSTR buffer, DWORD size);
// "\\?\C:\..." or "\\?\UNC\server\share\...", past all links and short names.
DWORD GetFinalPathNameByHandleW(HANDLE file, LPWSTR buffer, DWORD size, DWORD flags);
