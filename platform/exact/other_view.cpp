#include "platform/exact/other_view.h"

#include <algorithm>
#include <array>
#include <optional>
#include <vector>

#include "base/text_case.h"
#include "platform/files.h"
#include "platform/machine.h"
#include "platform/other_view_api.h"

namespace bromvale {
namespace {

constexpr std::string_view kSlashes = "\\/";

// The names on the way, gone through as the system does it.
std::vector<std::string_view> namesOf(std::string_view path) {
    std::vector<std::string_view> names;
    while (!path.empty()) {
        const std::string_view name = path.substr(0, path.find_first_of(kSlashes));
        path.remove_prefix(std::min(name.size() + 1, path.size()));
        if (name.empty() || name == ".") continue;
        if (name == "..") {
            if (names.size() > 1) names.pop_back();  // the drive stays
        } else {
            names.push_back(name);
        }
    }
    return names;
}

bool hasDriveLetter(std::string_view path) {
    return path.size() > 2 && path[1] == ':' && kSlashes.find(path[2]) != std::string_view::npos;
}

bool same(std::string_view a, std::string_view b) {
    return compareWithoutCase(a, b) == 0;
}

// What stands behind a folder, with a backslash before each name; nothing for a path elsewhere.
std::optional<std::string> behindFolder(const std::string& folder, std::string_view path) {
    if (path.starts_with("\\\\?\\")) path.remove_prefix(4);
    if (!hasDriveLetter(path)) return std::nullopt;
    const auto own = namesOf(folder);
    const auto names = namesOf(path);
    if (own.empty() || names.size() < own.size() || !std::equal(own.begin(), own.end(), names.begin(), same))
        return std::nullopt;
    std::string rest;
    for (std::size_t i = own.size(); i < names.size(); ++i) rest.append("\\").append(names[i]);
    return rest;
}

bool isProgramOfTheOtherWidth(const OtherViewFunctions& functions) {
    BOOL is = FALSE;
    return functions.isWow64Process != nullptr &&
           functions.isWow64Process(GetCurrentProcess(), &is) != FALSE && is != FALSE;
}

// Empty on a 32-bit Windows.
std::string wow64Folder(const OtherViewFunctions& functions) {
    std::array<char, MAX_PATH> buffer{};
    if (functions.wow64Directory == nullptr) return {};
    const UINT length = functions.wow64Directory(buffer.data(), static_cast<UINT>(buffer.size()));
    return length < buffer.size() ? std::string(buffer.data(), length) : std::string();
}

}  // namespace

std::string systemFolderName() {
    std::array<char, MAX_PATH> buffer{};
    const UINT length = GetSystemDirectoryA(buffer.data(), static_cast<UINT>(buffer.size()));
    return length < buffer.size() ? std::string(buffer.data(), length) : std::string();
}

namespace {

// The name under which programs of 32 bits alone know the system folder of 64 bits.
std::string sysnativeFolder() {
    const std::string folder = systemFolderName();
    return folder.substr(0, folder.rfind('\\') + 1) + "Sysnative";
}

}  // namespace

// A program of 32 bits sees the other folder under the same name as soon as its calls aren't led away.
OtherView::OtherView(std::string_view path) {
    const OtherViewFunctions& functions = otherViewFunctions();
    const std::optional<std::string> rest = behindFolder(systemFolderName(), path);
    if (!isProgramOfTheOtherWidth(functions)) {
        const std::string folder = wow64Folder(functions);
        if (folder.empty()) return;
        const std::optional<std::string> native = behindFolder(sysnativeFolder(), path);
        if (rest) path_ = folder + *rest;
        if (native) path_ = systemFolderName() + *native;
        return;
    }
    if (!rest) return;
    path_ = systemFolderName() + *rest;
    redirectionIsOff_ = functions.disableRedirection != nullptr && functions.revertRedirection != nullptr &&
                        functions.disableRedirection(&redirection_) != FALSE;
    if (!redirectionIsOff_) path_.clear();
}

OtherView::~OtherView() {
    if (redirectionIsOff_) otherViewFunctions().revertRedirection(redirection_);
}

bool existsInOtherView(std::string_view path) {
    const OtherView view(path);
    if (view.path().empty()) return false;
    WIN32_FIND_DATAA found;
    const HANDLE search = FindFirstFileA(view.path().c_str(), &found);
    if (search == INVALID_HANDLE_VALUE || search == nullptr) return false;
    FindClose(search);
    return true;
}

}  // namespace bromvale
