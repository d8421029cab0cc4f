#include "cleanup/entry_names.h"

#include <algorithm>
#include <array>

#include "base/text_case.h"
#include "platform/exact/text.h"

namespace bromvale {
namespace {

constexpr std::array<std::string_view, 7> kDevices{"con", "prn", "aux", "nul", "clock$", "conin$", "conout$"};
// With one digit behind them.
constexpr std::array<std::string_view, 2> kPorts{"com", "lpt"};
// The last three are digits to the system, too.
constexpr std::string_view kPortDigits = "0123456789\xB9\xB2\xB3";

// Whatever extension it has, and with blanks before that.
bool isDevice(std::string_view name) {
    std::string_view base = name.substr(0, name.find('.'));
    base = base.substr(0, base.find_last_not_of(' ') + 1);
    const auto is = [&](std::string_view device) { return compareWithoutCase(base, device) == 0; };
    if (std::any_of(kDevices.begin(), kDevices.end(), is)) return true;
    if (base.size() != 4 || kPortDigits.find(base.back()) == std::string_view::npos) return false;
    base.remove_suffix(1);
    return std::any_of(kPorts.begin(), kPorts.end(), is);
}

bool isNeverInNames(char c) {
    constexpr std::string_view kNeverInNames = "\\/:*?\"<>|";
    const bool control = static_cast<unsigned char>(c) < 0x20 && c != kMark;
    return control || kNeverInNames.find(c) != std::string_view::npos;
}

bool leadsTo(const std::string& path, const FoundEntry& entry) {
    FoundEntry found;
    return findEntry(path, found) == 0 && found.name == entry.name && found.shortName == entry.shortName;
}

}  // namespace

bool isSoundName(std::string_view name) {
    if (name.empty() || name.back() == '.' || name.back() == ' ') return false;
    return std::none_of(name.begin(), name.end(), isNeverInNames) && !isDevice(name);
}

bool isPlainName(std::string_view name) {
    return isExact(name) && isSoundName(name);
}

std::string reachableName(const std::string& folder, const FoundEntry& entry) {
    if (isPlainName(entry.name)) return entry.name;
    const bool proved = isPlainName(entry.shortName) && leadsTo(folder + entry.shortName, entry);
    return proved ? entry.shortName : std::string();
}

std::string reachableName(const std::string& folder, const std::string& name) {
    if (isPlainName(name)) return name;
    FoundEntry entry;
    const bool found = isSoundName(name) && findEntry(folder + name, entry) == 0 && entry.name == name;
    return found ? reachableName(folder, entry) : std::string();
}

}  // namespace bromvale
