#pragma once
#include <string>
#include <string_view>

namespace bromvale::testing {

// The bytes of a text in a file of UTF-16LE.
inline std::string wide(std::u16string_view text) {
    std::string bytes;
    for (const char16_t unit : text) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
}

}  // namespace bromvale::testing
