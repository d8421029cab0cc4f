#include "platform/exact/machine.h"

#include <array>

#include "platform/exact/text.h"
#include "platform/files.h"
#include "platform/machine.h"
#include "platform/process.h"
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

WCHAR* units(char16_t* text) {
    return reinterpret_cast<WCHAR*>(text);
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
        return wide()->expandEnvironmentStrings(reinterpret_cast<const WCHAR*>(sought.c_str()), units(buffer),
                                                room);
    });
    return expanded.empty() ? text : exactText(expanded);
}

}  // namespace bromvale
