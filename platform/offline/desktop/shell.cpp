#include "platform/shell.h"

#include <cstring>

#include "platform/events.h"
#include "platform/offline/locale/code_page.h"
#include "platform/offline/locale/stored_text.h"
#include "platform/offline/machine.h"
#include "platform/offline/reg_files/reg_file.h"

using namespace bromvale::offline;

namespace {

std::string textOf(LPCSTR text) {
    return text != nullptr ? text : "";
}

constexpr int kFileNotFound = 2;  // as SHFileOperationA answers
constexpr int kInvalidFiles = 0x7C;

// All that a folder holds, then the folder itself; of a link what it leads to, as old systems do.
DWORD removeTree(Volume& volume, std::vector<std::string_view> names) {
    std::vector<FileInfo> entries;
    FileInfo info;
    if (const DWORD error = volume.find(names, &info)) return error;
    if ((info.attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        (void)volume.list(names, entries);
        for (const FileInfo& entry : entries) {
            names.push_back(entry.name);
            if (const DWORD error = removeTree(volume, names)) return error;
            names.pop_back();
        }
    }
    return volume.remove(names);
}

// `path` is in the stored form.
int removeOne(const std::string& path, FILEOP_FLAGS flags) {
    auto& drives = machine().drives;
    Location location;
    FileInfo info;
    if (drives.locateStored(path, location) != 0 || location.count == 0) return kInvalidFiles;
    if (location.volume->find(location.all(), &info) != 0) return kFileNotFound;
    if (drives.isProtected(location)) return ERROR_ACCESS_DENIED;
    const bool toBin = (flags & FOF_ALLOWUNDO) != 0 && location.root[0] != '\0';
    std::string stored;
    const DWORD error = toBin ? location.volume->recycle(location.all(), stored)
                              : removeTree(*location.volume, {location.all().begin(), location.all().end()});
    if (error != 0) return static_cast<int>(error);
    const std::string full = ansiFromStored(location.text());
    if (toBin) drives.recycled.push_back({full, ansiFromStored(stored)});
    const bool folder = (info.attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    machine().events.record(
        {folder ? EventKind::FolderDeleted : EventKind::FileDeleted, full, toBin ? "Papierkorb" : "", 0, 0});
    return 0;
}

// Whole paths of what one name of pFrom stands for, all in the stored form.
std::vector<std::string> expand(const std::string& name, FILEOP_FLAGS flags) {
    const std::size_t slash = name.find_last_of("\\/");
    const std::size_t start = slash == std::string::npos ? 0 : slash + 1;
    if (name.find_first_of("*?", start) == std::string::npos) return {name};
    std::vector<std::string> paths;
    std::vector<FileInfo> entries;
    Location folder;
    const std::string above = start == 0 ? "." : name.substr(0, start);
    if (machine().drives.locateStored(above, folder) != 0 || folder.volume->list(folder.all(), entries) != 0)
        return {};
    for (const FileInfo& entry : entries) {
        const bool isFolder = (entry.attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        if (isFolder && (flags & FOF_FILESONLY) != 0) continue;
        if (matchesMask(std::string_view(name).substr(start), entry.name))
            paths.push_back(name.substr(0, start) + entry.name);
    }
    return paths;
}

// What the programs behind the shell's associations do: the registry editor enters a file that it is to open.
// Everything else is only recorded.
void actOn(const std::string& path, std::string_view verb) {
    const bool regFile = path.size() > 4 && equalNoCase(path.substr(path.size() - 4), ".reg");
    if (!regFile || !equalNoCase(verb, "open")) return;
    if (const auto bytes = machine().drives.readFile(wideFromAnsi(path)))
        mergeRegText(*bytes, machine().registry);
}

template <class Char>
BOOL chosenPath(PCIDLIST_ABSOLUTE list, Char* path) {
    if (failsHere("SHGetPathFromIDListA") || list == nullptr) return FALSE;
    const std::string stored = storedFromWide(reinterpret_cast<const char16_t*>(list));
    return answerLength(textFor<Char>(stored), path, MAX_PATH) < MAX_PATH ? TRUE : FALSE;
}

std::string trayTip(const NOTIFYICONDATAA& data) {
    return {data.szTip, strnlen(data.szTip, sizeof data.szTip)};
}

}  // namespace

HINSTANCE ShellExecuteA(HWND, LPCSTR verb, LPCSTR file, LPCSTR parameters, LPCSTR, INT show) {
    machine().lastRequests.switches = textOf(parameters);
    long result = 42;
    if (const auto fault = machine().faults.at("ShellExecuteA")) {
        result = *fault;
    } else if (const std::string path = textOf(file);
               path.find("://") == std::string::npos && !machine().drives.exists(wideFromAnsi(path))) {
        result = SE_ERR_FNF;
    }
    machine().events.record({EventKind::ShellExecute, textOf(file), textOf(verb),
                             static_cast<std::uint32_t>(show), static_cast<int>(result)});
    if (result > 32) actOn(textOf(file), textOf(verb));
    return reinterpret_cast<HINSTANCE>(static_cast<std::intptr_t>(result));
}

int SHFileOperationA(LPSHFILEOPSTRUCTA operation) {
    machine().lastRequests.deletion = *operation;
    machine().lastRequests.deletionTitle = textOf(operation->lpszProgressTitle);
    if (const auto fault = machine().faults.at("SHFileOperationA")) return static_cast<int>(*fault);
    operation->fAnyOperationsAborted = FALSE;
    if (operation->wFunc != FO_DELETE || operation->pFrom == nullptr) return ERROR_INVALID_PARAMETER;
    int result = 0;
    for (const char* name = operation->pFrom; *name != '\0'; name += std::strlen(name) + 1) {
        const std::vector<std::string> paths =
            expand(std::string(StoredText(name).view()), operation->fFlags);
        if (paths.empty()) result = kFileNotFound;
        for (const std::string& path : paths) {
            if (const int error = removeOne(path, operation->fFlags)) result = error;
        }
    }
    return result;
}

BOOL Shell_NotifyIconA(DWORD message, PNOTIFYICONDATAA data) {
    if (failsHere("Shell_NotifyIconA")) return FALSE;
    constexpr EventKind kKinds[] = {EventKind::TrayAdd, EventKind::TrayModify, EventKind::TrayDelete};
    if (message > NIM_DELETE) return FALSE;
    machine().lastRequests.trayIcon = *data;
    machine().events.record({kKinds[message], trayTip(*data), "", data->uCallbackMessage});
    return TRUE;
}

BOOL SetForegroundWindow(HWND) {
    if (failsHere("SetForegroundWindow")) return FALSE;
    machine().events.record({EventKind::Foreground});
    return TRUE;
}

PIDLIST_ABSOLUTE SHBrowseForFolderA(LPBROWSEINFOA info) {
    auto& folders = machine().folders;
    if (failsHere("SHBrowseForFolderA")) return nullptr;
    machine().lastRequests.folderDialog = *info;
    const std::u16string chosen = folders.empty() ? std::u16string() : std::u16string(folders.front().view());
    if (!folders.empty()) folders.pop_front();
    machine().events.record(
        {EventKind::Browse, textOf(info->lpszTitle), ansiFromUtf16(chosen), 0, chosen.empty() ? 0 : 1});
    if (chosen.empty()) return nullptr;
    auto* list = new char16_t[chosen.size() + 1];
    list[chosen.copy(list, chosen.size())] = u'\0';
    return reinterpret_cast<PIDLIST_ABSOLUTE>(list);
}

BOOL SHGetPathFromIDListA(PCIDLIST_ABSOLUTE list, LPSTR path) {
    return chosenPath(list, path);
}

BOOL SHGetPathFromIDListW(PCIDLIST_ABSOLUTE list, LPWSTR path) {
    return refusesWide() ? FALSE : chosenPath(list, path);
}

void CoTaskMemFree(LPVOID memory) {
    delete[] static_cast<char16_t*>(memory);
}

namespace bromvale {

int SHFileOperationServing(SHFILEOPSTRUCTA& operation) {
    ServeWindows();
    return SHFileOperationA(&operation);
}

}  // namespace bromvale
