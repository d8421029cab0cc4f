// Hash and equality of registry names (in the stored form) without case, fast enough for a path of eight
// components per call.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "platform/offline/locale/stored_text.h"

namespace bromvale::offline {

constexpr std::uint64_t kNotAscii = 0x8080808080808080u;

// Drops the bit in which a letter and its other case differ, for eight bytes of ASCII at once. Some other
// pairs fall together too; the comparison tells them apart.
inline std::uint64_t hashStep(std::uint64_t hash, std::uint64_t bytes) {
    hash = (hash ^ (bytes & ~std::uint64_t{0x2020202020202020u})) * 0x9E3779B97F4A7C15u;
    return hash ^ (hash >> 29);
}

// Other texts unit by unit: their capitals may take another number of bytes.
inline std::uint64_t hashUnits(std::uint64_t hash, std::string_view name) {
    while (!name.empty()) hash = hashStep(hash, upperUnit(takeUnit(name)));
    return hash;
}

inline std::uint32_t nameHash(const void* owner, std::string_view name) {
    const std::uint64_t start = (reinterpret_cast<std::uintptr_t>(owner) >> 4) * 0xD6E8FEB86659FD93u;
    std::uint64_t hash = start + name.size();
    std::uint64_t all = 0;
    const char* at = name.data();
    std::size_t left = name.size();
    std::uint64_t bytes = 0;
    for (; left >= 8; at += 8, left -= 8) {
        std::memcpy(&bytes, at, 8);
        all |= bytes;
        hash = hashStep(hash, bytes);
    }
    bytes = 0;
    for (std::size_t i = 0; i < left; ++i) bytes = bytes << 8 | static_cast<unsigned char>(at[i]);
    hash = hashStep(hash, bytes);
    if (((all | bytes) & kNotAscii) != 0) hash = hashUnits(start, name);
    return static_cast<std::uint32_t>(hash ^ (hash >> 32));
}

// Two letters of ASCII that are not one letter in two cases: what begins or ends with them differs.
inline bool areDifferentAscii(char left, char right) {
    const auto a = static_cast<unsigned char>(left);
    const auto b = static_cast<unsigned char>(right);
    return (a | b) < 0x80 && ((a ^ b) & 0xDFu) != 0;
}

inline bool sameName(std::string_view left, std::string_view right) {
    if (left.size() == right.size() &&
        (left.empty() || std::memcmp(left.data(), right.data(), left.size()) == 0)) {
        return true;
    }
    if (left.empty() || right.empty() || areDifferentAscii(left.front(), right.front()) ||
        areDifferentAscii(left.back(), right.back())) {
        return false;
    }
    return sameStored(left, right);
}

}  // namespace bromvale::offline
