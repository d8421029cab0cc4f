#include "platform/exact/machine.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "platform/exact/text.h"
#include "platform/files.h"
#include "platform/folder_dialog.h"
#include "platform/machine.h"
#include "platform/wide.h"

namespace bromvale {
namespace {

// Fills a buffer that grows until `fill` is content: it tells the size that it needs, with the NUL. Empty
// where it tells none.
template <class Text, class Fill>
Text filled(std::size_t size, Fill fill) {
    Text buffer(size, {});
    DWORD needed = 0;
    while ((needed = fill(buffer.data(), static_cast<DWORD>(buffer.size()))) > buffer.size())
        buffer.resize(needed);
    if (needed == 0) return {};
    buffer.resize(buffer.find(typename Text::value_type{}));
    return buffer;
}

constexpr std::size_t kLongestPath = 32768;

ProgramFile partsOf(std::string_view path) {
    const std::size_t name = path.rfind('\\') + 1;  // without one: npos + 1 is 0
    ProgramFile file{std::string(path.substr(0, name)), std::string(path.substr(name))};
    if (!path.empty() && file.folder.empty()) file.folder = "\\";
    return file;
}

std::string ansiPath() {
    std::array<char, MAX_PATH> buffer{};
    const DWORD length = GetModuleFileNameA(nullptr, buffer.data(), MAX_PATH);
    return {buffer.data(), std::min<std::size_t>(length, buffer.size())};
}

std::u16string widePath() {
    std::u16string path(kLongestPath, u'\0');
    path.resize(wide()->moduleFileName(nullptr, units(path.data()), kLongestPath));
    return path;
}

std::u16string shortPath(const std::u16string& path) {
    std::u16string found(kLongestPath, u'\0');
    const DWORD length = wide()->shortPathName(units(path.c_str()), units(found.data()), kLongestPath);
    found.resize(length < kLongestPath ? length : 0);
    return found;
}

}  // namespace

std::string exactWindowsFolder() {
    if (wide() == nullptr) {
        std::array<char, MAX_PATH> buffer{};
        const UINT length = GetWindowsDirectoryA(buffer.data(), MAX_PATH);
        return length < MAX_PATH ? std::string(buffer.data(), length) : std::string();
    }
    std::array<char16_t, MAX_PATH> buffer{};
    const UINT length = wide()->windowsDirectory(units(buffer.data()), MAX_PATH);
    return length < MAX_PATH ? exactText({buffer.data(), length}) : std::string();
}

std::string expandedExactly(const std::string& text) {
    const std::size_t size = text.size() + MAX_PATH;
    if (wide() == nullptr) {
        const auto expanded = filled<std::string>(size, [&](char* buffer, DWORD room) {
            return ExpandEnvironmentStringsA(text.c_str(), buffer, room);
        });
        return expanded.empty() ? text : expanded;
    }
    const std::u16string sought = wideText(text);
    const auto expanded = filled<std::u16string>(size, [&](char16_t* buffer, DWORD room) {
        return wide()->expandEnvironmentStrings(units(sought.c_str()), units(buffer), room);
    });
    return expanded.empty() ? text : exactText(expanded);
}

std::string exactPathFromIdList(PCIDLIST_ABSOLUTE list) {
    if (wide() != nullptr) {
        std::array<char16_t, MAX_PATH + 1> path{};
        if (wide()->pathFromIdList(list, units(path.data())) == 0) return {};
        return exactText(path.data());
    }
    std::array<char, MAX_PATH + 1> path{};
    if (SHGetPathFromIDListA(list, path.data()) == 0) return {};
    return path.data();
}

ProgramFile programFile() {
    if (wide() == nullptr) return partsOf(ansiPath());
    const std::u16string path = widePath();
    ProgramFile file = partsOf(exactText(path));
    if (isExact(file.folder) && isExact(file.name)) return file;
    const ProgramFile byShort = partsOf(exactText(shortPath(path)));
    if (!isExact(file.folder) && isExact(byShort.folder) && !byShort.folder.empty())
        file.folder = byShort.folder;
    if (!isExact(file.name) && isExact(byShort.name) && !byShort.name.empty()) file.name = byShort.name;
    return file;
}

}  // namespace bromvale
