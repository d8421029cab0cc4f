// Final paths and short paths.
#include "platform/offline/true_path.h"

#include "platform/offline/files_api.h"
#include "platform/offline/handles.h"
#include "platform/offline/machine.h"
#include "platform/offline/stored_text.h"

namespace bromvale::offline {
namespace {

// The path with each name replaced by what `choose` takes of its entry.
template <class Choose>
std::string withNames(const Location& location, const Choose& choose) {
    std::string text = location.rootText();
    for (std::size_t i = 0; i < location.count; ++i) {
        FileInfo info;
        const bool found = location.volume->find(location.all().first(i + 1), &info) == 0;
        text.append("\\").append(found ? choose(info) : std::string(location.names[i]));
    }
    if (location.count == 0) text += "\\";
    return text;
}

// 0 and the last error where the path leads nowhere.
bool shortPathOf(std::string_view path, std::string& text) {
    Location location;
    DWORD error = machine().drives.locateStored(path, location);
    if (error == 0) error = location.volume->find(location.all(), nullptr);
    if (error != 0) {
        SetLastError(error);
        return false;
    }
    text = withNames(
        location, [](const FileInfo& info) { return info.shortName.empty() ? info.name : info.shortName; });
    return true;
}

}  // namespace

std::string truePath(const Location& location) {
    return withNames(location, [](const FileInfo& info) { return info.name; });
}

}  // namespace bromvale::offline

using namespace bromvale::offline;

DWORD GetShortPathNameA(LPCSTR path, LPSTR buffer, DWORD size) {
    std::string text;
    if (failsHere("GetShortPathNameA") || !shortPathOf(StoredText(path).view(), text)) return 0;
    return answerLength(AnsiText(text).view(), buffer, size);
}

DWORD GetShortPathNameW(LPCWSTR path, LPWSTR buffer, DWORD size) {
    std::string text;
    if (refusesWide() || failsHere("GetShortPathNameA") || !shortPathOf(StoredText(path).view(), text))
        return 0;
    return answerLength(wideFromStored(text), buffer, size);
}

DWORD GetFinalPathNameByHandleW(HANDLE file, LPWSTR buffer, DWORD size, DWORD) {
    if (refusesWide() || failsHere("GetFinalPathNameByHandleW")) return 0;
    const KernelObject* object = kernelObjects().find(file);
    if (object == nullptr || object->truePath.empty()) {
        SetLastError(ERROR_INVALID_HANDLE);
        return 0;
    }
    const bool share = object->truePath.starts_with("\\\\");
    const std::string text = (share ? "\\\\?\\UNC" : "\\\\?\\") + object->truePath.substr(share ? 1 : 0);
    return answerLength(wideFromStored(text), buffer, size);
}
