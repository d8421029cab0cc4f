#include <string>
#include <vector>

#include "platform/win32/system/windows.h"
#include "tests/contract/unicode_machine.h"

namespace bromvale::testing {
namespace {

struct MadeKey {
    HKEY hive;
    std::wstring path;
};
std::vector<MadeKey> keys;
std::vector<std::wstring> files;

std::wstring wideOf(std::u16string_view text) {
    return {text.begin(), text.end()};
}

HKEY madeKey(HKEY hive, std::u16string_view path) {
    HKEY key = nullptr;
    keys.push_back({hive, wideOf(path)});
    RegCreateKeyExW(hive, keys.back().path.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key, nullptr);
    return key;
}

}  // namespace

void makeWideKey(HKEY hive, std::u16string_view path) {
    RegCloseKey(madeKey(hive, path));
}

void setWideValue(HKEY hive, std::u16string_view path, std::u16string_view name, DWORD type,
                  std::string_view bytes) {
    const HKEY key = madeKey(hive, path);
    RegSetValueExW(key, wideOf(name).c_str(), 0, type, reinterpret_cast<const BYTE*>(bytes.data()),
                   static_cast<DWORD>(bytes.size()));
    RegCloseKey(key);
}

void writeWideFile(std::u16string_view path, std::string_view bytes) {
    files.push_back(wideOf(path));
    const HANDLE file =
        CreateFileW(files.back().c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    DWORD done = 0;
    WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &done, nullptr);
    CloseHandle(file);
}

void makeWideFolder(std::u16string_view path) {
    files.push_back(wideOf(path));
    CreateDirectoryW(files.back().c_str(), nullptr);
}

void switchShortNamesOn() {}

DWORD finalPathByHandle(HANDLE file, WCHAR* buffer, DWORD size) {
    using Function = DWORD(WINAPI*)(HANDLE, LPWSTR, DWORD, DWORD);
    const auto function = reinterpret_cast<Function>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleA("kernel32.dll"), "GetFinalPathNameByHandleW")));
    return function(file, buffer, size, 0);
}

void removeWideThings() {
    for (auto key = keys.rbegin(); key != keys.rend(); ++key) RegDeleteKeyW(key->hive, key->path.c_str());
    for (auto file = files.rbegin(); file != files.rend(); ++file) {
        if (DeleteFileW(file->c_str()) == 0) RemoveDirectoryW(file->c_str());
    }
    keys.clear();
    files.clear();
}

}  // namespace bromvale::testing
