// The machine's environment variables.
#include <optional>

#include "platform/offline/desktop/process_api.h"
#include "platform/offline/locale/code_page.h"
#include "platform/offline/locale/stored_text.h"
#include "platform/offline/machine.h"

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
        {"USERNAME", storedFromAnsi(own.user)},
        {"COMPUTERNAME", storedFromAnsi(own.computer)},
    };
    for (const auto& [known, value] : variables) {
        if (equalNoCase(known, name)) return value;
    }
    const auto further = own.environment.find(upper(name));
    if (further != own.environment.end()) return storedFromWide(further->second);
    return std::nullopt;
}

// In the stored form, as the text is.
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

// The size with the NUL, also of a text that fits.
template <class Char>
DWORD expandInto(const Char* text, Char* expanded, DWORD size) {
    if (failsHere("ExpandEnvironmentStringsA")) return 0;
    const std::string result = expand(StoredText(text).view());
    const DWORD length = answerLength(textFor<Char>(result), expanded, size);
    return length < size ? length + 1 : length;
}

}  // namespace

DWORD ExpandEnvironmentStringsA(LPCSTR text, LPSTR expanded, DWORD size) {
    return expandInto(text, expanded, size);
}

DWORD ExpandEnvironmentStringsW(LPCWSTR text, LPWSTR expanded, DWORD size) {
    return refusesWide() ? 0 : expandInto(text, expanded, size);
}
