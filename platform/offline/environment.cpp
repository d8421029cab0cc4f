// The machine's environment variables.
#include <cstring>
#include <optional>

#include "platform/offline/code_page.h"
#include "platform/offline/machine.h"
#include "platform/offline/process_api.h"

using namespace bromvale::offline;

namespace {

std::optional<std::string> variable(std::string_view name) {
    const Machine& own = machine();
    const std::pair<std::string_view, std::string> variables[] = {
        {"SystemRoot", own.windowsFolder()},
        {"windir", own.windowsFolder()},
        {"SystemDrive", own.windowsFolder().substr(0, 2)},
        {"ProgramFiles", own.programFiles()},
        {"TEMP", own.tempFolder()},
        {"TMP", own.tempFolder()},
        {"USERNAME", own.user},
        {"COMPUTERNAME", own.computer},
    };
    for (const auto& [known, value] : variables) {
        if (equalNoCase(known, name)) return value;
    }
    return std::nullopt;
}

std::string expand(std::string_view text) {
    std::string expanded;
    while (!text.empty()) {
        const std::size_t open = text.find('%');
        expanded.append(text.substr(0, open));
        if (open == std::string_view::npos) break;
        text.remove_prefix(open);
        const std::size_t close = text.find('%', 1);
        const auto value =
            close != std::string_view::npos ? variable(text.substr(1, close - 1)) : std::nullopt;
        // A sign without a known name behind it stands for itself; the next one may open a name.
        expanded.append(value ? *value : "%");
        text.remove_prefix(value ? close + 1 : 1);
    }
    return expanded;
}

}  // namespace

DWORD ExpandEnvironmentStringsA(LPCSTR text, LPSTR expanded, DWORD size) {
    if (failsHere("ExpandEnvironmentStringsA")) return 0;
    const std::string result = expand(text);
    if (result.size() < size) std::memcpy(expanded, result.c_str(), result.size() + 1);
    return static_cast<DWORD>(result.size() + 1);
}
