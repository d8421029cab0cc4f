#include "platform/shell.h"

#include <string>

#include "platform/win32/system/entries.h"
#include "platform/win32/system/libraries.h"

#include <htmlhelp.h>

namespace bromvale {

namespace {

using Entry = HWND(WINAPI*)(HWND, LPCSTR, UINT, DWORD_PTR);

Entry entry = nullptr;
std::string helpFolder;

std::string inHelpFolder(const char* file) {
    std::string name = file != nullptr ? file : "";
    if (name.empty() || name.find_first_of("\\/:") != std::string::npos) return name;
    const std::string path = helpFolder + name;
    return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES ? path : name;
}

}  // namespace

void setHelpFolder(std::string_view folder) {
    helpFolder = folder;
}

HWND HtmlHelpA(HWND window, const char* file, unsigned command, std::uintptr_t data) {
    // What was never opened needs no closing.
    const bool opened = entry != nullptr;
    if (!opened &&
        (command == HH_CLOSE_ALL || !loadEntry(loadSystemLibrary("hhctrl.ocx"), "HtmlHelpA", entry)))
        return nullptr;
    const std::string path = inHelpFolder(file);
    return entry(window, path.c_str(), command, data);
}

}  // namespace bromvale
