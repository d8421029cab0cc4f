#include "base/text_order.h"

#include "platform/win32/system/windows.h"

namespace bromvale {

int compareTexts(std::string_view a, std::string_view b) {
    const int result = CompareStringA(LOCALE_USER_DEFAULT, NORM_IGNORECASE, a.data(),
                                      static_cast<int>(a.size()), b.data(), static_cast<int>(b.size()));
    // 0 is a failure, which no text of the code page gives; such rows count as equal.
    return result == 0 ? 0 : result - CSTR_EQUAL;
}

// An empty text has no key, and comes first without one.
std::string orderKey(std::string_view text) {
    const auto asked = [&](std::string& key) {
        return LCMapStringA(LOCALE_USER_DEFAULT, LCMAP_SORTKEY | NORM_IGNORECASE, text.data(),
                            static_cast<int>(text.size()), key.data(), static_cast<int>(key.size()));
    };
    if (text.empty()) return {};
    std::string key(8 * text.size() + 16, '\0');
    int size = asked(key);
    if (size == 0) {
        std::string none;
        key.resize(static_cast<std::size_t>(asked(none)));
        size = asked(key);
    }
    return {key, 0, static_cast<std::size_t>(size)};  // without the room that was left
}

}  // namespace bromvale
