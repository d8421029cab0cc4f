// Final paths and short paths.
#include "platform/offline/files/api.h"
#include "platform/offline/locale/stored_text.h"
#include "platform/offline/machine.h"

namespace bromvale::offline {
namespace {

constexpr int kMostLinks = 16;  // as many as the drives in memory follow
constexpr std::string_view kLiteralPath = "\\\\?\\";

std::string followed(const Location& location, LinkAtEnd linkAtEnd, int links);

std::string followed(std::string_view path, LinkAtEnd linkAtEnd, int links) {
    Location location;
    if (links > kMostLinks) return {};
    const DWORD error = machine().drives.locateStored(path, location);
    // Off the machine's drives a link's target is known by name only.
    if (error != 0) return path.starts_with("\\\\") ? std::string(path) : std::string();
    return followed(location, linkAtEnd, links);
}

// The path beyond the link that the first `count` names lead to.
std::string beyondLink(const Location& location, std::size_t count, const std::string& target) {
    std::string path = target;
    for (std::size_t i = count; i < location.count; ++i) path.append("\\").append(location.names[i]);
    return path;
}

std::string followed(const Location& location, LinkAtEnd linkAtEnd, int links) {
    std::string text = location.rootText();
    for (std::size_t i = 0; i < location.count; ++i) {
        FileInfo info;
        if (location.volume->find(location.all().first(i + 1), &info) != 0) return {};
        const bool follows = i + 1 < location.count || linkAtEnd == LinkAtEnd::LeadsOn;
        if (!info.target.empty() && follows)
            return followed(beyondLink(location, i + 1, info.target), linkAtEnd, links + 1);
        text.append("\\").append(info.name);
    }
    if (location.count == 0) text += "\\";
    return text;
}

// The path with the short names that there are. False and the last error where it leads nowhere.
bool shortPathOf(std::string_view path, std::string& text) {
    Location location;
    DWORD error = machine().drives.locateStored(path, location);
    if (error == 0) text = path.starts_with(kLiteralPath) ? std::string(kLiteralPath) : std::string();
    if (error == 0) text += location.rootText();
    for (std::size_t i = 0; i < location.count && error == 0; ++i) {
        FileInfo info;
        error = location.volume->find(location.all().first(i + 1), &info);
        text.append("\\").append(info.shortName.empty() ? info.name : info.shortName);
    }
    if (location.count == 0 || path.ends_with('\\')) text += "\\";
    return error == 0 || failed(error);
}

}  // namespace

std::string truePath(const Location& location, LinkAtEnd linkAtEnd) {
    return followed(location, linkAtEnd, 0);
}

}  // namespace bromvale::offline

using namespace bromvale::offline;

DWORD GetShortPathNameW(LPCWSTR path, LPWSTR buffer, DWORD size) {
    std::string text;
    if (refusesWide() || failsHere("GetShortPathNameA") || !shortPathOf(StoredText(path).view(), text))
        return 0;
    return answerLength(wideFromStored(text), buffer, size);
}

DWORD GetFinalPathNameByHandleW(HANDLE file, LPWSTR buffer, DWORD size, DWORD) {
    if (refusesWide() || failsHere("GetFinalPathNameByHandleW")) return 0;
    const KernelObject* object = machine().kernelObjects.find(file);
    if (object == nullptr || object->truePath.empty()) return failed(ERROR_INVALID_HANDLE);
    const bool share = object->truePath.starts_with("\\\\");
    const std::string text = (share ? "\\\\?\\UNC" : "\\\\?\\") + object->truePath.substr(share ? 1 : 0);
    return answerLength(wideFromStored(text), buffer, size);
}
