#pragma once
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <queue>
#include <utility>
#include <vector>

#include "platform/offline/windows_types.h"

namespace bromvale::offline {

// Open objects of one kind under their handles: multiples of four from 4 on, as on the NT family; the lowest
// free one is taken. What was opened and not closed shows in count().
template <class Object, class Handle = HANDLE>
class HandleTable {
  public:
    Handle open(Object object) {
        std::size_t slot = slots_.size();
        if (free_.empty()) {
            slots_.emplace_back(std::move(object));
        } else {
            slot = free_.top();
            free_.pop();
            slots_[slot].emplace(std::move(object));
        }
        return handleOf(slot);
    }
    // Null for a handle that is not open.
    [[nodiscard]] Object* find(Handle handle) {
        const auto number = reinterpret_cast<std::uintptr_t>(handle);
        const std::size_t slot = number / 4 - 1;
        return number % 4 == 0 && slot < slots_.size() && slots_[slot] ? &*slots_[slot] : nullptr;
    }
    [[nodiscard]] const Object* find(Handle handle) const {
        return const_cast<HandleTable*>(this)->find(handle);
    }
    bool close(Handle handle) {
        if (find(handle) == nullptr) return false;
        const std::size_t slot = reinterpret_cast<std::uintptr_t>(handle) / 4 - 1;
        slots_[slot].reset();
        free_.push(slot);
        return true;
    }
    [[nodiscard]] std::size_t count() const { return slots_.size() - free_.size(); }
    template <class Visit>
    void each(const Visit& visit) const {
        for (const auto& slot : slots_) {
            if (slot) visit(*slot);
        }
    }

  private:
    static Handle handleOf(std::size_t slot) { return reinterpret_cast<Handle>((slot + 1) * 4); }

    std::vector<std::optional<Object>> slots_;
    std::priority_queue<std::size_t, std::vector<std::size_t>, std::greater<>> free_;
};

}  // namespace bromvale::offline
