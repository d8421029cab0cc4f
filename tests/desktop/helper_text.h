#pragma once
// Texts of the desktop tests' helpers, which print UTF-8 and take their arguments in the system's code page.
#include <windows.h>

#include <string>

inline std::string utf8(const std::wstring& text) {
    const int wide = static_cast<int>(text.size());
    const int size = WideCharToMultiByte(CP_UTF8, 0, text.data(), wide, nullptr, 0, nullptr, nullptr);
    std::string result(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), wide, result.data(), size, nullptr, nullptr);
    return result;
}

inline std::wstring wide(const std::string& ansi) {
    const int length = static_cast<int>(ansi.size());
    std::wstring result(ansi.size(), L'\0');
    const int size = MultiByteToWideChar(CP_ACP, 0, ansi.data(), length, result.data(), length);
    result.resize(static_cast<std::size_t>(size));
    return result;
}
