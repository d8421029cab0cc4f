#pragma once
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/offline/files/volume.h"

namespace bromvale::offline {

// Open objects under small positive numbers from 1 on; a closed number is used again.
template <class Object>
class HandleTable {
  public:
    HANDLE open(Object object) {
        std::uint32_t slot = 0;
        if (free_.empty()) {
            slot = static_cast<std::uint32_t>(slots_.size());
            slots_.push_back({std::move(object), true});
        } else {
            slot = free_.back();
            free_.pop_back();
            slots_[slot] = {std::move(object), true};
        }
        return reinterpret_cast<HANDLE>(static_cast<std::uintptr_t>(slot) + 1);
    }
    // Null for a number that is not open.
    Object* find(HANDLE handle) {
        const auto slot = reinterpret_cast<std::uintptr_t>(handle) - 1;
        return slot < slots_.size() && slots_[slot].used ? &slots_[slot].object : nullptr;
    }
    bool close(HANDLE handle) {
        if (find(handle) == nullptr) return false;
        const auto slot = static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(handle) - 1);
        slots_[slot] = {};
        free_.push_back(slot);
        return true;
    }
    [[nodiscard]] std::size_t count() const { return slots_.size() - free_.size(); }
    template <class Visit>
    void each(const Visit& visit) {
        for (Slot& slot : slots_) {
            if (slot.used) visit(slot.object);
        }
    }

  private:
    struct Slot {
        Object object{};
        bool used = false;
    };
    std::vector<Slot> slots_;
    std::vector<std::uint32_t> free_;
};

// What CloseHandle closes: a file, or something without a content (token, mutex, process).
struct KernelObject {
    std::unique_ptr<OpenedFile> file;
    std::string path;
    std::string truePath;  // past links and short names; a folder's object has this and `path` only
    std::uint64_t position = 0;
    DWORD access = 0;
    DWORD share = 0;
    bool appendOnly = false;
};

HandleTable<KernelObject>& kernelObjects();
HANDLE openPlainObject();

}  // namespace bromvale::offline
