// The registry functions of the offline machine under Windows' names: same arguments, same result codes. They
// work on the machine's registry. Kept oddities, which the program or its data rest on:
// - a text stored without its NUL is stored with it when the byte behind the given length is NUL;
// - RegOpenKeyA with an empty name returns the handle that it was given, RegOpenKeyExA a new one;
// - RegDeleteKeyA with an empty name deletes the opened key itself, whatever access it was opened with.
#pragma once

#include "platform/offline/windows_types.h"

LONG RegOpenKeyA(HKEY key, LPCSTR subKey, PHKEY result);
LONG RegOpenKeyExA(HKEY key, LPCSTR subKey, DWORD options, REGSAM access, PHKEY result);
LONG RegCloseKey(HKEY key);
LONG RegCreateKeyExA(HKEY key, LPCSTR subKey, DWORD reserved, LPSTR keyClass, DWORD options, REGSAM access,
                     const SECURITY_ATTRIBUTES* security, PHKEY result, LPDWORD disposition);
LONG RegDeleteKeyA(HKEY key, LPCSTR subKey);
LONG RegDeleteValueA(HKEY key, LPCSTR valueName);

LONG RegEnumKeyA(HKEY key, DWORD index, LPSTR name, DWORD nameSize);
LONG RegEnumValueA(HKEY key, DWORD index, LPSTR name, LPDWORD nameSize, LPDWORD reserved, LPDWORD type,
                   LPBYTE data, LPDWORD dataSize);
LONG RegQueryValueExA(HKEY key, LPCSTR valueName, LPDWORD reserved, LPDWORD type, LPBYTE data,
                      LPDWORD dataSize);
LONG RegSetValueExA(HKEY key, LPCSTR valueName, DWORD reserved, DWORD type, const BYTE* data, DWORD dataSize);
LONG RegQueryInfoKeyA(HKEY key, LPSTR keyClass, LPDWORD classSize, LPDWORD reserved, LPDWORD subKeys,
                      LPDWORD longestSubKey, LPDWORD longestClass, LPDWORD values, LPDWORD longestValueName,
                      LPDWORD longestData, LPDWORD securitySize, LPFILETIME lastWrite);

// The wide functions of the NT family: real names, texts as UTF-16. On the 9x family they do nothing and give
// ERROR_CALL_NOT_IMPLEMENTED. Their fault points are those of the ANSI functions beside them, RegEnumKeyExW's
// that of RegEnumKeyA.
LONG RegOpenKeyExW(HKEY key, LPCWSTR subKey, DWORD options, REGSAM access, PHKEY result);
LONG RegEnumKeyExW(HKEY key, DWORD index, LPWSTR name, LPDWORD nameSize, LPDWORD reserved, LPWSTR keyClass,
                   LPDWORD classSize, LPFILETIME lastWrite);
LONG RegEnumValueW(HKEY key, DWORD index, LPWSTR name, LPDWORD nameSize, LPDWORD reserved, LPDWORD type,
                   LPBYTE data, LPDWORD dataSize);
LONG RegQueryValueExW(HKEY key, LPCWSTR valueName, LPDWORD reserved, LPDWORD type, LPBYTE data,
                      LPDWORD dataSize);
LONG RegQueryInfoKeyW(HKEY key, LPWSTR keyClass, LPDWORD classSize, LPDWORD reserved, LPDWORD subKeys,
                      LPDWORD longestSubKey, LPDWORD longestClass, LPDWORD values, LPDWORD longestValueName,
                      LPDWORD longestData, LPDWORD securitySize, LPFILETIME lastWrite);
