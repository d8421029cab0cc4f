// Finds a named child by owner and name, without case: one open-addressing table for all keys of a registry,
// so that a key costs no table of its own and a look-up touches one slot and one name.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

#include "platform/offline/locale/stored_text.h"

namespace bromvale::offline {

// Hash and equality of names (in the stored form) without case, fast enough for a path of eight components
// per call.

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

// `Node` has owner() and name().
template <typename Node>
class NameTable {
  public:
    [[nodiscard]] Node* find(const void* owner, std::string_view name) const {
        if (slots_.empty()) return nullptr;
        const std::uint32_t hash = nameHash(owner, name);
        for (std::size_t i = hash & mask();; i = (i + 1) & mask()) {
            const Slot& slot = slots_[i];
            if (slot.node == nullptr) return nullptr;
            if (slot.hash == hash && slot.node->owner() == owner && sameName(slot.node->name(), name)) {
                return slot.node;
            }
        }
    }

    void insert(Node* node) {
        if ((used_ + 1) * 10 > slots_.size() * 7) grow();
        place(nameHash(node->owner(), node->name()), node);
        ++used_;
    }

    void erase(const Node* node) {
        std::size_t hole = nameHash(node->owner(), node->name()) & mask();
        while (slots_[hole].node != node) hole = (hole + 1) & mask();
        // Close the gap, so that no look-up stops at it and no tombstones pile up.
        for (std::size_t i = (hole + 1) & mask(); slots_[i].node != nullptr; i = (i + 1) & mask()) {
            const std::size_t home = slots_[i].hash & mask();
            if (((i - home) & mask()) >= ((i - hole) & mask())) {
                slots_[hole] = slots_[i];
                hole = i;
            }
        }
        slots_[hole] = Slot{};
        --used_;
    }

  private:
    struct Slot {
        std::uint32_t hash = 0;
        Node* node = nullptr;
    };

    [[nodiscard]] std::size_t mask() const { return slots_.size() - 1; }

    void place(std::uint32_t hash, Node* node) {
        std::size_t i = hash & mask();
        while (slots_[i].node != nullptr) i = (i + 1) & mask();
        slots_[i] = {hash, node};
    }

    void grow() {
        std::vector<Slot> old(slots_.empty() ? 64 : slots_.size() * 2);
        old.swap(slots_);
        for (const Slot& slot : old) {
            if (slot.node != nullptr) place(slot.hash, slot.node);
        }
    }

    std::vector<Slot> slots_;
    std::size_t used_ = 0;
};

}  // namespace bromvale::offline
