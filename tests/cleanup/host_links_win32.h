#pragma once
// Of the system below the Windows functions: links, which those can't make there, and its recycle bin.
#include <algorithm>
#include <cstdlib>
#include <string>

#include "platform/files.h"

namespace bromvale::testing {

inline std::string hostPath(const std::string& path) {
    using Convert = char*(__cdecl*)(const wchar_t*);
    const auto convert = reinterpret_cast<Convert>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("kernel32.dll"), "wine_get_unix_file_name")));
    if (convert == nullptr) return {};
    wchar_t wide[MAX_PATH] = L"";
    MultiByteToWideChar(CP_ACP, 0, path.c_str(), -1, wide, MAX_PATH);
    char* const host = convert(wide);
    std::string result = host != nullptr ? host : "";
    if (host != nullptr) HeapFree(GetProcessHeap(), 0, host);
    return result;
}

inline void onHost(std::string line) {
    STARTUPINFOA start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION made{};
    if (!CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &made))
        return;
    WaitForSingleObject(made.hProcess, 10000);
    CloseHandle(made.hThread);
    CloseHandle(made.hProcess);
    Sleep(200);  // such a program may end behind its handle
}

// False where there are no links.
inline bool makeLink(const std::string& target, const std::string& name) {
    const std::string targetPath = hostPath(target);
    if (targetPath.empty()) return false;
    onHost("Z:\\bin\\ln -s \"" + targetPath + "\" \"" + hostPath(name) + "\"");
    return GetFileAttributesA(name.c_str()) != INVALID_FILE_ATTRIBUTES;
}

inline void removeLink(const std::string& folder, const std::string& name) {
    onHost("Z:\\bin\\rm -f \"" + hostPath(folder) + "/" + name + "\"");
}

// The folder that the shell throws files into, with its backslash; empty where it isn't known.
inline std::string hostBin() {
    const char* const data = std::getenv("XDG_DATA_HOME");
    if (data == nullptr) return {};
    std::string path = std::string("Z:") + data + "/Trash/files/";
    std::replace(path.begin(), path.end(), '/', '\\');
    return path;
}

}  // namespace bromvale::testing
