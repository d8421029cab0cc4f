// The types, constants and records of the Windows interface that the program names, for builds without
// <windows.h>. Names, values and field names are Windows'; where a size is part of the interface (records
// that state their own size) it is the 32-bit ANSI one.
//
// The constants are macros, as in <windows.h>, so that code that compiles here compiles there too.
#pragma once

#ifdef _WIN32
#error "On Windows these names come from <windows.h>; include the headers in platform/ instead."
#endif

#include <cstddef>
#include <cstdint>

#include "platform/offline/windows_codes.h"

#define WINAPI

// Numbers and texts -------------------------------------------------------------------------------

using BYTE = std::uint8_t;
using CHAR = char;
using WCHAR = char16_t;
using WORD = std::uint16_t;
using INT = int;
using UINT = unsigned int;
using LONG = std::int32_t;
using DWORD = std::uint32_t;
using BOOL = int;
using INT_PTR = std::intptr_t;
using UINT_PTR = std::uintptr_t;
using LONG_PTR = std::intptr_t;
using WPARAM = UINT_PTR;
using LPARAM = LONG_PTR;
using LRESULT = LONG_PTR;
using HFILE = int;
using LCID = DWORD;
using LCTYPE = DWORD;
using ACCESS_MASK = DWORD;
using REGSAM = ACCESS_MASK;

using LPVOID = void*;
using PVOID = void*;
using LPCVOID = const void*;
using LPSTR = char*;
using LPCSTR = const char*;
using LPWSTR = WCHAR*;
using LPCWSTR = const WCHAR*;
using LPBYTE = BYTE*;
using LPDWORD = DWORD*;
using PLONG = LONG*;
using LPBOOL = BOOL*;

#define TRUE 1
#define FALSE 0
#define MAX_PATH 260

DWORD GetLastError();
void SetLastError(DWORD error);

// Handles -----------------------------------------------------------------------------------------

using HANDLE = void*;
using PHANDLE = HANDLE*;

#define BROMVALE_DECLARE_HANDLE(name) \
    struct name##__;                  \
    using name = name##__*
BROMVALE_DECLARE_HANDLE(HKEY);
BROMVALE_DECLARE_HANDLE(HWND);
BROMVALE_DECLARE_HANDLE(HICON);
BROMVALE_DECLARE_HANDLE(HINSTANCE);
BROMVALE_DECLARE_HANDLE(HMENU);
BROMVALE_DECLARE_HANDLE(HDC);
BROMVALE_DECLARE_HANDLE(HFONT);
BROMVALE_DECLARE_HANDLE(HBITMAP);
BROMVALE_DECLARE_HANDLE(HBRUSH);
BROMVALE_DECLARE_HANDLE(HRSRC);
#undef BROMVALE_DECLARE_HANDLE
using HMODULE = HINSTANCE;
using PHKEY = HKEY*;

#define INVALID_HANDLE_VALUE (reinterpret_cast<HANDLE>(static_cast<std::intptr_t>(-1)))
#define HFILE_ERROR (static_cast<HFILE>(-1))

using FARPROC = INT_PTR (*)();
using WNDPROC = LRESULT (*)(HWND, UINT, WPARAM, LPARAM);
using BFFCALLBACK = int (*)(HWND, UINT, LPARAM, LPARAM);

// Files -------------------------------------------------------------------------------------------

#define FILE_SHARE_READ 0x1u
#define FILE_SHARE_WRITE 0x2u
#define FILE_SHARE_DELETE 0x4u
#define CREATE_NEW 1u
#define CREATE_ALWAYS 2u
#define OPEN_EXISTING 3u
#define OPEN_ALWAYS 4u
#define TRUNCATE_EXISTING 5u
#define FILE_BEGIN 0u
#define FILE_CURRENT 1u
#define FILE_END 2u
#define INVALID_SET_FILE_POINTER 0xFFFFFFFFu
#define INVALID_FILE_SIZE 0xFFFFFFFFu
#define INVALID_FILE_ATTRIBUTES 0xFFFFFFFFu
#define FILE_ATTRIBUTE_READONLY 0x1u
#define FILE_ATTRIBUTE_HIDDEN 0x2u
#define FILE_ATTRIBUTE_SYSTEM 0x4u
#define FILE_ATTRIBUTE_DIRECTORY 0x10u
#define FILE_ATTRIBUTE_ARCHIVE 0x20u
#define FILE_ATTRIBUTE_NORMAL 0x80u
#define FILE_ATTRIBUTE_REPARSE_POINT 0x400u
#define FILE_FLAG_BACKUP_SEMANTICS 0x02000000u
#define FILE_FLAG_OPEN_REPARSE_POINT 0x00200000u
#define FILE_READ_ATTRIBUTES 0x80u
#define IO_REPARSE_TAG_SYMLINK 0xA000000Cu

#define OF_READ 0x0u
#define OF_CREATE 0x1000u
#define OF_EXIST 0x4000u
#define OFS_MAXPATHNAME 128

struct FILETIME {
    DWORD dwLowDateTime;
    DWORD dwHighDateTime;
};
using LPFILETIME = FILETIME*;

struct SYSTEMTIME {
    WORD wYear;
    WORD wMonth;
    WORD wDayOfWeek;
    WORD wDay;
    WORD wHour;
    WORD wMinute;
    WORD wSecond;
    WORD wMilliseconds;
};
using LPSYSTEMTIME = SYSTEMTIME*;

template <class Char>
struct FindData {
    DWORD dwFileAttributes;
    FILETIME ftCreationTime;
    FILETIME ftLastAccessTime;
    FILETIME ftLastWriteTime;
    DWORD nFileSizeHigh;
    DWORD nFileSizeLow;
    DWORD dwReserved0;
    DWORD dwReserved1;
    Char cFileName[MAX_PATH];
    Char cAlternateFileName[14];
};
using WIN32_FIND_DATAA = FindData<CHAR>;
using WIN32_FIND_DATAW = FindData<WCHAR>;
using LPWIN32_FIND_DATAA = WIN32_FIND_DATAA*;
using LPWIN32_FIND_DATAW = WIN32_FIND_DATAW*;
static_assert(sizeof(WIN32_FIND_DATAA) == 320);
static_assert(sizeof(WIN32_FIND_DATAW) == 592);

struct OFSTRUCT {
    BYTE cBytes;
    BYTE fFixedDisk;
    WORD nErrCode;
    WORD Reserved1;
    WORD Reserved2;
    CHAR szPathName[OFS_MAXPATHNAME];
};
static_assert(sizeof(OFSTRUCT) == 136);

struct SECURITY_ATTRIBUTES {
    DWORD nLength;
    LPVOID lpSecurityDescriptor;
    BOOL bInheritHandle;
};
using LPSECURITY_ATTRIBUTES = SECURITY_ATTRIBUTES*;

struct OVERLAPPED;
using LPOVERLAPPED = OVERLAPPED*;

// The machine -------------------------------------------------------------------------------------

#define VER_PLATFORM_WIN32s 0u
#define VER_PLATFORM_WIN32_WINDOWS 1u
#define VER_PLATFORM_WIN32_NT 2u

struct OSVERSIONINFOA {
    DWORD dwOSVersionInfoSize;
    DWORD dwMajorVersion;
    DWORD dwMinorVersion;
    DWORD dwBuildNumber;
    DWORD dwPlatformId;
    CHAR szCSDVersion[128];
};
using LPOSVERSIONINFOA = OSVERSIONINFOA*;
static_assert(sizeof(OSVERSIONINFOA) == 148);

#define CP_ACP 0u
#define CP_UTF8 65001u
#define MB_ERR_INVALID_CHARS 0x8u
#define WC_NO_BEST_FIT_CHARS 0x400u
#define MAX_LEADBYTES 12
#define MAX_DEFAULTCHAR 2

struct CPINFO {
    UINT MaxCharSize;
    BYTE DefaultChar[MAX_DEFAULTCHAR];
    BYTE LeadByte[MAX_LEADBYTES];
};
using LPCPINFO = CPINFO*;

#define LOCALE_USER_DEFAULT 0x0400u
#define LOCALE_NOUSEROVERRIDE 0x80000000u
#define LOCALE_SLIST 0x0Cu
#define LOCALE_SDECIMAL 0x0Eu
#define LOCALE_STHOUSAND 0x0Fu
#define LOCALE_SCURRENCY 0x14u
#define LOCALE_SDATE 0x1Du
#define LOCALE_STIME 0x1Eu
#define LOCALE_SSHORTDATE 0x1Fu
#define LOCALE_SLONGDATE 0x20u
#define LOCALE_S1159 0x28u
#define LOCALE_S2359 0x29u
#define LOCALE_SDAYNAME1 0x2Au
#define LOCALE_SABBREVDAYNAME1 0x31u
#define LOCALE_SMONTHNAME1 0x38u
#define LOCALE_SABBREVMONTHNAME1 0x44u
#define LOCALE_STIMEFORMAT 0x1003u
#define DATE_SHORTDATE 0x1u
#define DATE_LONGDATE 0x2u
#define TIME_NOTIMEMARKER 0x4u
#define TIME_FORCE24HOURFORMAT 0x8u

// Tokens and shutdown -----------------------------------------------------------------------------

#define SE_PRIVILEGE_ENABLED 0x2u
#define TOKEN_QUERY 0x8u
#define TOKEN_ADJUST_PRIVILEGES 0x20u
#define EWX_REBOOT 2u
#define EWX_FORCE 4u
#define SE_SHUTDOWN_NAME "SeShutdownPrivilege"

struct LUID {
    DWORD LowPart;
    LONG HighPart;
};
using PLUID = LUID*;

struct LUID_AND_ATTRIBUTES {
    LUID Luid;
    DWORD Attributes;
};

struct TOKEN_PRIVILEGES {
    DWORD PrivilegeCount;
    LUID_AND_ATTRIBUTES Privileges[1];
};
using PTOKEN_PRIVILEGES = TOKEN_PRIVILEGES*;
static_assert(sizeof(TOKEN_PRIVILEGES) == 16);

// Windows, messages, message boxes ----------------------------------------------------------------

#define MB_OK 0x0u
#define MB_OKCANCEL 0x1u
#define MB_ABORTRETRYIGNORE 0x2u
#define MB_YESNOCANCEL 0x3u
#define MB_YESNO 0x4u
#define MB_ICONQUESTION 0x20u
#define MB_ICONEXCLAMATION 0x30u
#define MB_TASKMODAL 0x2000u
#define IDOK 1
#define IDCANCEL 2
#define IDABORT 3
#define IDRETRY 4
#define IDIGNORE 5
#define IDYES 6
#define IDNO 7

#define SW_SHOWNORMAL 1
#define SW_SHOWMAXIMIZED 3

#define WM_MOUSEMOVE 0x0200u
#define WM_LBUTTONUP 0x0202u
#define WM_LBUTTONDBLCLK 0x0203u
#define WM_RBUTTONUP 0x0205u

struct POINT {
    LONG x;
    LONG y;
};

struct RECT {
    LONG left;
    LONG top;
    LONG right;
    LONG bottom;
};

// The shell ---------------------------------------------------------------------------------------

#define NIM_ADD 0u
#define NIM_DELETE 2u
#define NIF_MESSAGE 0x1u
#define NIF_ICON 0x2u
#define NIF_TIP 0x4u

struct NOTIFYICONDATAA {
    DWORD cbSize;
    HWND hWnd;
    UINT uID;
    UINT uFlags;
    UINT uCallbackMessage;
    HICON hIcon;
    CHAR szTip[64];
};
using PNOTIFYICONDATAA = NOTIFYICONDATAA*;

#define FO_DELETE 3u

using FILEOP_FLAGS = WORD;
#define FOF_NOCONFIRMATION 0x10
#define FOF_ALLOWUNDO 0x40
#define FOF_FILESONLY 0x80

struct SHFILEOPSTRUCTA {
    HWND hwnd;
    UINT wFunc;
    LPCSTR pFrom;
    LPCSTR pTo;
    FILEOP_FLAGS fFlags;
    BOOL fAnyOperationsAborted;
    LPVOID hNameMappings;
    LPCSTR lpszProgressTitle;
};
using LPSHFILEOPSTRUCTA = SHFILEOPSTRUCTA*;

struct ITEMIDLIST;
using PIDLIST_ABSOLUTE = ITEMIDLIST*;
using PCIDLIST_ABSOLUTE = const ITEMIDLIST*;

#define BIF_RETURNONLYFSDIRS 0x1u

struct BROWSEINFOA {
    HWND hwndOwner;
    PCIDLIST_ABSOLUTE pidlRoot;
    LPSTR pszDisplayName;
    LPCSTR lpszTitle;
    UINT ulFlags;
    BFFCALLBACK lpfn;
    LPARAM lParam;
    int iImage;
};
using LPBROWSEINFOA = BROWSEINFOA*;

#define SE_ERR_FNF 2
#define SE_ERR_ACCESSDENIED 5
#define SE_ERR_NOASSOC 31
