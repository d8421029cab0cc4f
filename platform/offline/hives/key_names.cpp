#include "platform/offline/hives/key_names.h"

#include <array>

#include "platform/offline/locale/stored_text.h"

namespace bromvale::offline {
namespace {

std::array<char16_t, 256> upperCasedLatin() {
    std::array<char16_t, 256> units{};
    for (std::size_t i = 0; i < units.size(); ++i) units[i] = upperUnit(static_cast<char16_t>(i));
    return units;
}

}  // namespace

void upperCasedName(std::string_view nameBytes, bool oneByte, std::u16string& upperCased) {
    static const std::array<char16_t, 256> latin = upperCasedLatin();
    const auto byteAt = [nameBytes](std::size_t at) { return static_cast<unsigned char>(nameBytes[at]); };
    upperCased.resize(oneByte ? nameBytes.size() : nameBytes.size() / 2);
    for (std::size_t i = 0; i < upperCased.size(); ++i) {
        upperCased[i] = oneByte ? latin[byteAt(i)]
                                : upperUnit(static_cast<char16_t>(byteAt(2 * i) | byteAt(2 * i + 1) << 8));
    }
}

std::uint32_t nameHash(std::u16string_view upperCased) {
    std::uint32_t hash = 0;
    for (const char16_t unit : upperCased) hash = hash * 37 + unit;
    return hash;
}

}  // namespace bromvale::offline
