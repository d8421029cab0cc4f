#include "platform/offline/files/host_names.h"

#include "platform/offline/locale/code_pages.h"
#include "platform/offline/locale/stored_text.h"

namespace bromvale::offline {
namespace {

// What Windows allows in no name: on the host it may stand in one, and is told as a character beyond all code
// pages, as Windows itself does with files of other systems.
constexpr std::string_view kForbidden = "\\:*?\"<>|";
constexpr char16_t kForbiddenPlace = 0xF000;

std::string storedOfHost(std::string_view name) {
    std::string stored = storedFromUtf8(name);
    if (name.find_first_of(kForbidden) == std::string_view::npos) return stored;
    std::string result;
    for (std::string_view rest = stored; !rest.empty();) {
        const char16_t unit = takeUnit(rest);
        const bool forbidden =
            unit < 0x80 && kForbidden.find(static_cast<char>(unit)) != std::string_view::npos;
        appendUnit(result, forbidden ? static_cast<char16_t>(kForbiddenPlace + unit) : unit);
    }
    return result;
}

}  // namespace

std::string hostOfStored(std::string_view stored) {
    if (isAscii(stored)) return std::string(stored);
    std::string result;
    for (std::string_view rest = stored; !rest.empty();) {
        const char16_t unit = takeUnit(rest);
        const bool moved = unit > kForbiddenPlace && unit < kForbiddenPlace + 0x80;
        appendUnit(result, moved ? static_cast<char16_t>(unit - kForbiddenPlace) : unit);
    }
    return utf8FromStored(result);
}

std::string knownName(std::string_view hostName) {
    std::string stored = storedOfHost(hostName);
    return textRules().unicode ? stored : withinCodePage(stored);
}

}  // namespace bromvale::offline
