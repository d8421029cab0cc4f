// Stands between the program and the system's functions (the linker wraps their import pointers) and writes
// down each call, so that bare_calls can make the same ones: registry and message queue.
#include "bench/windows/call_notes.h"

using bench::Call;
using bench::keyNumber;
using bench::put;

namespace {

LONG WINAPI openKey(HKEY parent, LPCSTR subKey, PHKEY key);
LONG WINAPI openKeyEx(HKEY parent, LPCSTR subKey, DWORD options, REGSAM access, PHKEY key);
LONG WINAPI closeKey(HKEY key);
LONG WINAPI deleteKey(HKEY key, LPCSTR subKey);
LONG WINAPI enumValue(HKEY key, DWORD index, LPSTR name, LPDWORD nameSize, LPDWORD reserved, LPDWORD type,
                      LPBYTE data, LPDWORD dataSize);
LONG WINAPI enumKey(HKEY key, DWORD index, LPSTR name, DWORD size);
LONG WINAPI queryValue(HKEY key, LPCSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data, LPDWORD size);
FARPROC WINAPI findEntry(HMODULE module, LPCSTR name);
BOOL WINAPI peek(LPMSG message, HWND window, UINT first, UINT last, UINT remove);

}  // namespace

RECORDED(RegOpenKeyA, openKey);
RECORDED(RegOpenKeyExA, openKeyEx);
RECORDED(RegCloseKey, closeKey);
RECORDED(RegDeleteKeyA, deleteKey);
RECORDED(RegEnumValueA, enumValue);
RECORDED(RegEnumKeyA, enumKey);
RECORDED(RegQueryValueExA, queryValue);
RECORDED(GetProcAddress, findEntry);
RECORDED(PeekMessageA, peek);

namespace {

LONG WINAPI openKey(HKEY parent, LPCSTR subKey, PHKEY key) {
    const LONG result = REAL(RegOpenKeyA)(parent, subKey, key);
    put({Call::OpenKey, 0, 0, keyNumber(parent), 0, 0, 0}, subKey);
    bench::opened(*key, result == ERROR_SUCCESS);
    return result;
}

LONG WINAPI openKeyEx(HKEY parent, LPCSTR subKey, DWORD options, REGSAM access, PHKEY key) {
    const LONG result = REAL(RegOpenKeyExA)(parent, subKey, options, access, key);
    put({Call::OpenKeyEx, 0, 0, keyNumber(parent), static_cast<std::uint32_t>(access), 0, 0}, subKey);
    bench::opened(*key, result == ERROR_SUCCESS);
    return result;
}

LONG WINAPI closeKey(HKEY key) {
    put({Call::CloseKey, 0, 0, keyNumber(key), 0, 0, 0});
    return REAL(RegCloseKey)(key);
}

LONG WINAPI deleteKey(HKEY key, LPCSTR subKey) {
    put({Call::DeleteKey, 0, 0, keyNumber(key), 0, 0, 0}, subKey);
    return REAL(RegDeleteKeyA)(key, subKey);
}

LONG WINAPI enumValue(HKEY key, DWORD index, LPSTR name, LPDWORD nameSize, LPDWORD reserved, LPDWORD type,
                      LPBYTE data, LPDWORD dataSize) {
    put({Call::EnumValue, data != nullptr, 0, keyNumber(key), index, *nameSize, dataSize ? *dataSize : 0});
    return REAL(RegEnumValueA)(key, index, name, nameSize, reserved, type, data, dataSize);
}

LONG WINAPI enumKey(HKEY key, DWORD index, LPSTR name, DWORD size) {
    put({Call::EnumKey, 0, 0, keyNumber(key), index, size, 0});
    return REAL(RegEnumKeyA)(key, index, name, size);
}

LONG WINAPI queryValue(HKEY key, LPCSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data, LPDWORD size) {
    put({Call::QueryValue, data != nullptr, 0, keyNumber(key), 0, 0, size ? *size : 0}, name ? name : "");
    return REAL(RegQueryValueExA)(key, name, reserved, type, data, size);
}

FARPROC WINAPI findEntry(HMODULE module, LPCSTR name) {
    const FARPROC found = REAL(GetProcAddress)(module, name);
    const bool byNumber = reinterpret_cast<std::uintptr_t>(name) < 0x10000;
    return found == nullptr || byNumber ? found : bench::recorderOf(name, found);
}

BOOL WINAPI peek(LPMSG message, HWND window, UINT first, UINT last, UINT remove) {
    put({Call::Peek, 0, 0, 0, 0, 0, 0});
    return REAL(PeekMessageA)(message, window, first, last, remove);
}

}  // namespace
