// Stands between the program and the system's functions (the linker wraps their import pointers) and writes
// down each call, so that bare_calls can make the same ones.
#include "bench/windows/call_recorder.h"

#include <cstdio>
#include <cstring>
#include <map>

#include "bench/windows/call_record.h"
#include "platform/win32/system/windows.h"

namespace {

using bench::Call;
using bench::Record;

std::FILE* file = nullptr;
std::map<HKEY, std::int32_t> keys;
std::int32_t opened = 0;

std::int32_t keyNumber(HKEY key) {
    const auto value = reinterpret_cast<std::intptr_t>(key);
    if (value == 0) return 0;
    if (static_cast<std::int32_t>(value) < 0) return static_cast<std::int32_t>(value);
    const auto found = keys.find(key);
    return found == keys.end() ? 0 : found->second;
}

void put(Record record, const char* text = nullptr) {
    if (!file) return;
    record.length = text ? static_cast<std::uint16_t>(std::strlen(text)) : std::uint16_t{0};
    std::fwrite(&record, sizeof record, 1, file);
    if (text) std::fwrite(text, 1, record.length, file);
}

void putOpen(Call call, HKEY parent, const char* subKey, REGSAM access, LONG result, HKEY key) {
    if (!file) return;
    put({call, 0, 0, keyNumber(parent), static_cast<std::uint32_t>(access), 0, 0}, subKey);
    ++opened;
    if (result == ERROR_SUCCESS) keys[key] = opened;
}

}  // namespace

void startRecording() {
    file = std::fopen(bench::kRecordFile, "wb");
}

void stopRecording() {
    if (file) std::fclose(file);
    file = nullptr;
}

#define REAL(name) __real___imp_##name
#define WRAP(name) __wrap___imp_##name
#define DECLARE(name, type)     \
    extern "C" type REAL(name); \
    static_assert(true)

using OpenKeyFn = LONG(WINAPI*)(HKEY, LPCSTR, PHKEY);
using OpenKeyExFn = LONG(WINAPI*)(HKEY, LPCSTR, DWORD, REGSAM, PHKEY);
using CloseKeyFn = LONG(WINAPI*)(HKEY);
using EnumValueFn = LONG(WINAPI*)(HKEY, DWORD, LPSTR, LPDWORD, LPDWORD, LPDWORD, LPBYTE, LPDWORD);
using EnumKeyFn = LONG(WINAPI*)(HKEY, DWORD, LPSTR, DWORD);
using QueryFn = LONG(WINAPI*)(HKEY, LPCSTR, LPDWORD, LPDWORD, LPBYTE, LPDWORD);
using FindFirstFn = HANDLE(WINAPI*)(LPCSTR, LPWIN32_FIND_DATAA);
using FindCloseFn = BOOL(WINAPI*)(HANDLE);
using FindEntryFn = FARPROC(WINAPI*)(HMODULE, LPCSTR);
using PeekFn = BOOL(WINAPI*)(LPMSG, HWND, UINT, UINT, UINT);

DECLARE(RegOpenKeyA, OpenKeyFn);
DECLARE(RegOpenKeyExA, OpenKeyExFn);
DECLARE(RegCloseKey, CloseKeyFn);
DECLARE(RegEnumValueA, EnumValueFn);
DECLARE(RegEnumKeyA, EnumKeyFn);
DECLARE(RegQueryValueExA, QueryFn);
DECLARE(FindFirstFileA, FindFirstFn);
DECLARE(FindClose, FindCloseFn);
DECLARE(GetProcAddress, FindEntryFn);
DECLARE(PeekMessageA, PeekFn);

namespace {

LONG WINAPI openKey(HKEY parent, LPCSTR subKey, PHKEY key) {
    const LONG result = REAL(RegOpenKeyA)(parent, subKey, key);
    putOpen(Call::OpenKey, parent, subKey, 0, result, *key);
    return result;
}

LONG WINAPI openKeyEx(HKEY parent, LPCSTR subKey, DWORD options, REGSAM access, PHKEY key) {
    const LONG result = REAL(RegOpenKeyExA)(parent, subKey, options, access, key);
    putOpen(Call::OpenKeyEx, parent, subKey, access, result, *key);
    return result;
}

LONG WINAPI closeKey(HKEY key) {
    put({Call::CloseKey, 0, 0, keyNumber(key), 0, 0, 0});
    return REAL(RegCloseKey)(key);
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

HANDLE WINAPI findFirst(LPCSTR path, LPWIN32_FIND_DATAA data) {
    put({Call::FindFirst, 0, 0, 0, 0, 0, 0}, path);
    return REAL(FindFirstFileA)(path, data);
}

BOOL WINAPI findClose(HANDLE handle) {
    put({Call::FindClose, 0, 0, 0, 0, 0, 0});
    return REAL(FindClose)(handle);
}

// The wide functions of the NT family, which the program asks for by name. They are written down as the ANSI
// functions that they stand for, with the same sizes: those are what a scan is measured against.
constexpr DWORD kNameSize = 255;
constexpr DWORD kDataSize = 256;
decltype(&RegEnumKeyExW) realEnumKeyW = nullptr;
decltype(&RegEnumValueW) realEnumValueW = nullptr;
decltype(&RegQueryValueExW) realQueryValueW = nullptr;

LONG WINAPI enumKeyW(HKEY key, DWORD index, LPWSTR name, LPDWORD size, LPDWORD reserved, LPWSTR keyClass,
                     LPDWORD classSize, PFILETIME written) {
    put({Call::EnumKey, 0, 0, keyNumber(key), index, kNameSize, 0});
    return realEnumKeyW(key, index, name, size, reserved, keyClass, classSize, written);
}

LONG WINAPI enumValueW(HKEY key, DWORD index, LPWSTR name, LPDWORD nameSize, LPDWORD reserved, LPDWORD type,
                       LPBYTE data, LPDWORD dataSize) {
    put({Call::EnumValue, data != nullptr, 0, keyNumber(key), index, kNameSize, kDataSize});
    return realEnumValueW(key, index, name, nameSize, reserved, type, data, dataSize);
}

LONG WINAPI queryValueW(HKEY key, LPCWSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data, LPDWORD size) {
    char narrow[4 * kNameSize] = "";
    WideCharToMultiByte(CP_ACP, 0, name, -1, narrow, sizeof narrow, nullptr, nullptr);
    put({Call::QueryValue, data != nullptr, 0, keyNumber(key), 0, 0, kDataSize}, narrow);
    return realQueryValueW(key, name, reserved, type, data, size);
}

template <class Function>
bool replaced(LPCSTR name, const char* sought, FARPROC& found, Function& real, Function recorder) {
    if (std::strcmp(name, sought) != 0) return false;
    real = reinterpret_cast<Function>(reinterpret_cast<void*>(found));
    found = reinterpret_cast<FARPROC>(reinterpret_cast<void*>(recorder));
    return true;
}

FARPROC WINAPI findEntry(HMODULE module, LPCSTR name) {
    FARPROC found = REAL(GetProcAddress)(module, name);
    const bool byNumber = reinterpret_cast<std::uintptr_t>(name) < 0x10000;
    if (found == nullptr || byNumber) return found;
    static_cast<void>(replaced(name, "RegEnumKeyExW", found, realEnumKeyW, &enumKeyW) ||
                      replaced(name, "RegEnumValueW", found, realEnumValueW, &enumValueW) ||
                      replaced(name, "RegQueryValueExW", found, realQueryValueW, &queryValueW));
    return found;
}

BOOL WINAPI peek(LPMSG message, HWND window, UINT first, UINT last, UINT remove) {
    put({Call::Peek, 0, 0, 0, 0, 0, 0});
    return REAL(PeekMessageA)(message, window, first, last, remove);
}

}  // namespace

extern "C" {
OpenKeyFn WRAP(RegOpenKeyA) = openKey;
OpenKeyExFn WRAP(RegOpenKeyExA) = openKeyEx;
CloseKeyFn WRAP(RegCloseKey) = closeKey;
EnumValueFn WRAP(RegEnumValueA) = enumValue;
EnumKeyFn WRAP(RegEnumKeyA) = enumKey;
QueryFn WRAP(RegQueryValueExA) = queryValue;
FindFirstFn WRAP(FindFirstFileA) = findFirst;
FindCloseFn WRAP(FindClose) = findClose;
FindEntryFn WRAP(GetProcAddress) = findEntry;
PeekFn WRAP(PeekMessageA) = peek;
}
