// The same for the wide functions of the NT family, which the program asks for by name.
#include <cstring>

#include "bench/windows/call_notes.h"
#include "platform/wide.h"

namespace {

using bench::Call;
using bench::fileNumber;
using bench::keyNumber;
using bench::put;
using bench::putWide;

bromvale::WideFunctions real{};

LONG WINAPI openKey(HKEY parent, LPCWSTR subKey, DWORD options, REGSAM access, PHKEY key) {
    const LONG result = real.openKey(parent, subKey, options, access, key);
    putWide({Call::OpenKeyWide, 0, 0, keyNumber(parent), static_cast<std::uint32_t>(access), 0, 0}, subKey);
    bench::opened(*key, result == ERROR_SUCCESS);
    return result;
}

LONG WINAPI enumKey(HKEY key, DWORD index, LPWSTR name, LPDWORD size, LPDWORD reserved, LPWSTR keyClass,
                    LPDWORD classSize, PFILETIME written) {
    put({Call::EnumKeyWide, 0, 0, keyNumber(key), index, *size, 0});
    return real.enumKey(key, index, name, size, reserved, keyClass, classSize, written);
}

LONG WINAPI enumValue(HKEY key, DWORD index, LPWSTR name, LPDWORD nameSize, LPDWORD reserved, LPDWORD type,
                      LPBYTE data, LPDWORD dataSize) {
    put({Call::EnumValueWide, data != nullptr, 0, keyNumber(key), index, *nameSize,
         dataSize ? *dataSize : 0});
    return real.enumValue(key, index, name, nameSize, reserved, type, data, dataSize);
}

LONG WINAPI queryValue(HKEY key, LPCWSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data, LPDWORD size) {
    putWide({Call::QueryValueWide, data != nullptr, 0, keyNumber(key), 0, 0, size ? *size : 0}, name);
    return real.queryValue(key, name, reserved, type, data, size);
}

LONG WINAPI queryInfo(HKEY key, LPWSTR keyClass, LPDWORD classSize, LPDWORD reserved, LPDWORD subKeys,
                      LPDWORD longestSubKey, LPDWORD longestClass, LPDWORD values, LPDWORD longestName,
                      LPDWORD longestData, LPDWORD security, PFILETIME written) {
    put({Call::QueryInfoWide, 0, 0, keyNumber(key), 0, 0, 0});
    return real.queryInfoKey(key, keyClass, classSize, reserved, subKeys, longestSubKey, longestClass, values,
                             longestName, longestData, security, written);
}

HANDLE WINAPI findFirst(LPCWSTR path, LPWIN32_FIND_DATAW data) {
    const HANDLE search = real.findFirstFile(path, data);
    putWide({Call::FindFirstWide, 0, 0, 0, 0, 0, 0}, path);
    bench::opened(search);
    return search;
}

BOOL WINAPI findNext(HANDLE search, LPWIN32_FIND_DATAW data) {
    put({Call::FindNextWide, 0, 0, fileNumber(search), 0, 0, 0});
    return real.findNextFile(search, data);
}

HANDLE WINAPI createFile(LPCWSTR path, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security,
                         DWORD disposition, DWORD flags, HANDLE pattern) {
    const HANDLE file = real.createFile(path, access, share, security, disposition, flags, pattern);
    putWide({Call::OpenFileWide, static_cast<std::uint8_t>(share), 0, 0, access, disposition, flags}, path);
    bench::opened(file);
    return file;
}

DWORD WINAPI finalPath(HANDLE file, LPWSTR path, DWORD size, DWORD flags) {
    put({Call::FinalPath, 0, 0, fileNumber(file), flags, size, 0});
    return real.finalPathName(file, path, size, flags);
}

template <class Function>
bool replaced(LPCSTR name, const char* sought, FARPROC& found, Function& kept, Function recorder) {
    if (std::strcmp(name, sought) != 0) return false;
    kept = bench::functionOf<Function>(found);
    found = reinterpret_cast<FARPROC>(reinterpret_cast<void*>(recorder));
    return true;
}

}  // namespace

FARPROC bench::recorderOf(LPCSTR name, FARPROC found) {
    static_cast<void>(replaced(name, "RegOpenKeyExW", found, real.openKey, &openKey) ||
                      replaced(name, "RegEnumKeyExW", found, real.enumKey, &enumKey) ||
                      replaced(name, "RegEnumValueW", found, real.enumValue, &enumValue) ||
                      replaced(name, "RegQueryValueExW", found, real.queryValue, &queryValue) ||
                      replaced(name, "RegQueryInfoKeyW", found, real.queryInfoKey, &queryInfo) ||
                      replaced(name, "FindFirstFileW", found, real.findFirstFile, &findFirst) ||
                      replaced(name, "FindNextFileW", found, real.findNextFile, &findNext) ||
                      replaced(name, "CreateFileW", found, real.createFile, &createFile) ||
                      replaced(name, "GetFinalPathNameByHandleW", found, real.finalPathName, &finalPath));
    return found;
}
