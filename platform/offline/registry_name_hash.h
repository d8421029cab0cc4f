// Hash and equality of registry names without case, fast enough for a path of eight components per call.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "platform/offline/code_page.h"

namespace bromvale::offline {

// Drops the bits in which a letter of Windows-1252 and its other case can differ, for eight bytes at once:
// bit 5 below 80, bits 4 to 6 from 80 on (8A/9A, C0/E0, 9F/FF). Some other pairs fall together too; the
// comparison tells them apart.
inline std::uint64_t foldForHash(std::uint64_t bytes) {
    const std::uint64_t high = bytes & 0x8080808080808080u;
    return bytes & ~(0x2020202020202020u | (high >> 1) | (high >> 2) | (high >> 3));
}

inline std::uint64_t hashStep(std::uint64_t hash, std::uint64_t bytes) {
    hash = (hash ^ foldForHash(bytes)) * 0x9E3779B97F4A7C15u;
    return hash ^ (hash >> 29);
}

inline std::uint32_t nameHash(const void* owner, std::string_view name) {
    std::uint64_t hash = (reinterpret_cast<std::uintptr_t>(owner) >> 4) * 0xD6E8FEB86659FD93u + name.size();
    const char* at = name.data();
    std::size_t left = name.size();
    std::uint64_t bytes = 0;
    for (; left >= 8; at += 8, left -= 8) {
        std::memcpy(&bytes, at, 8);
        hash = hashStep(hash, bytes);
    }
    bytes = 0;
    for (std::size_t i = 0; i < left; ++i) bytes = bytes << 8 | static_cast<unsigned char>(at[i]);
    hash = hashStep(hash, bytes);
    return static_cast<std::uint32_t>(hash ^ (hash >> 32));
}

inline bool sameName(std::string_view left, std::string_view right) {
    if (left.size() != right.size()) return false;
    return left.empty() || std::memcmp(left.data(), right.data(), left.size()) == 0 ||
           equalNoCase(left, right);
}

}  // namespace bromvale::offline
