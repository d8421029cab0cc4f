#include "platform/final_path.h"

#include <array>

#include "platform/win32/windows.h"

namespace bromvale {

std::string finalPath(const std::string& path, Links links) {
    using FinalPathName = DWORD(WINAPI*)(HANDLE, LPSTR, DWORD, DWORD);
    static const auto finalPathName = reinterpret_cast<FinalPathName>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleA("kernel32.dll"), "GetFinalPathNameByHandleA")));
    if (finalPathName == nullptr) return {};
    constexpr DWORD kAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const DWORD itself = links == Links::Open ? static_cast<DWORD>(FILE_FLAG_OPEN_REPARSE_POINT) : 0;
    // Asks for the attributes alone, which is allowed for a file that another program has locked, too.
    const HANDLE file = CreateFileA(path.c_str(), FILE_READ_ATTRIBUTES, kAll, nullptr, OPEN_EXISTING,
                                    FILE_FLAG_BACKUP_SEMANTICS | itself, nullptr);
    if (file == INVALID_HANDLE_VALUE) return {};
    std::array<char, 1024> buffer{};
    const DWORD length = finalPathName(file, buffer.data(), static_cast<DWORD>(buffer.size()), 0);
    CloseHandle(file);
    return length < buffer.size() ? std::string(buffer.data(), length) : std::string();
}

}  // namespace bromvale
