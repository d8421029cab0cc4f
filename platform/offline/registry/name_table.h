// Finds a named child by owner and name, without case: one open-addressing table for all keys of a registry,
// so that a key costs no table of its own and a look-up touches one slot and one name.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/offline/registry/name_hash.h"

namespace bromvale::offline {

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
