#include "platform/exact/program_file.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "platform/exact/text.h"
#include "platform/wide.h"

namespace bromvale {
namespace {

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
    path.resize(wide()->moduleFileName(nullptr, reinterpret_cast<WCHAR*>(path.data()), kLongestPath));
    return path;
}

std::u16string shortPath(const std::u16string& path) {
    std::u16string found(kLongestPath, u'\0');
    const DWORD length = wide()->shortPathName(reinterpret_cast<const WCHAR*>(path.c_str()),
                                               reinterpret_cast<WCHAR*>(found.data()), kLongestPath);
    found.resize(length < kLongestPath ? length : 0);
    return found;
}

}  // namespace

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
