#pragma once
// Files and folders by their true names, which the program's code page may lack.
#include <gtest/gtest.h>

#include <string>

#include "platform/exact/text.h"
#include "platform/wide.h"
#ifndef _WIN32
#include "platform/offline/machine.h"
#endif

namespace bromvale::testing {

inline const WCHAR* windowsText(const std::u16string& text) {
    return reinterpret_cast<const WCHAR*>(text.c_str());
}

inline std::u16string in(const std::string& folder, std::u16string_view name) {
    return wideText(folder).append(name);
}

inline bool trueFileExists(const std::u16string& path) {
    WIN32_FIND_DATAW found{};
    const HANDLE search = wide()->findFirstFile(windowsText(path), &found);
    if (search == INVALID_HANDLE_VALUE) return false;
    FindClose(search);
    return true;
}

// One byte.
inline void writeTrueFile(const std::u16string& path) {
    const HANDLE file = wide()->createFile(windowsText(path), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                           FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    DWORD written = 0;
    EXPECT_NE(WriteFile(file, "x", 1, &written, nullptr), 0);
    CloseHandle(file);
}

inline void makeTrueFolder(const std::u16string& path) {
#ifdef _WIN32
    ASSERT_NE(CreateDirectoryW(windowsText(path), nullptr), 0);
#else
    ASSERT_TRUE(offline::machine().drives.makeFolder(path));
#endif
}

}  // namespace bromvale::testing
