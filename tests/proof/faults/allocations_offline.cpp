#include "tests/proof/faults/allocations.h"

#include <cstdlib>
#include <new>

#include "tests/proof/faults/provider_code.h"

namespace bromvale::proof {
namespace {

enum class Mode { Plain, Note, Fail };
Mode mode = Mode::Plain;
bool inside = false;  // of the noting, which allocates
unsigned long left = 0;
bool failed = false;

std::vector<bool>& notes() {
    static std::vector<bool> list;
    return list;
}

// What fails comes as an exception from here.
void beforeAllocation() {
    if (mode == Mode::Plain || inside) return;
    if (mode == Mode::Note) {
        inside = true;
        notes().push_back(!calledByProvider());
        inside = false;
        return;
    }
    if (left-- > 0) return;
    mode = Mode::Plain;
    failed = true;
    throw std::bad_alloc();
}

void* allocate(std::size_t size, std::size_t alignment) {
    beforeAllocation();
    const std::size_t wanted = size == 0 ? 1 : size;
    void* memory = alignment == 0
                       ? std::malloc(wanted)
                       : std::aligned_alloc(alignment, (wanted + alignment - 1) / alignment * alignment);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}

void* allocateOrNull(std::size_t size, std::size_t alignment) noexcept {
    try {
        return allocate(size, alignment);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

}  // namespace

void noteAllocations() {
    notes().clear();
    notes().reserve(1 << 20);
    mode = Mode::Note;
}

std::vector<bool> notedAllocations() {
    mode = Mode::Plain;
    return notes();
}

void failAllocation(unsigned long number) {
    left = number;
    failed = false;
    mode = Mode::Fail;
}

void letAllocationsWork() {
    mode = Mode::Plain;
}

bool allocationFailed() {
    return failed;
}

}  // namespace bromvale::proof

namespace proof = bromvale::proof;

// clang-format off
void* operator new(std::size_t size) { return proof::allocate(size, 0); }
void* operator new[](std::size_t size) { return proof::allocate(size, 0); }
void* operator new(std::size_t size, std::align_val_t by) { return proof::allocate(size, static_cast<std::size_t>(by)); }
void* operator new[](std::size_t size, std::align_val_t by) { return proof::allocate(size, static_cast<std::size_t>(by)); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return proof::allocateOrNull(size, 0); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return proof::allocateOrNull(size, 0); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete(void* memory, std::align_val_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::align_val_t) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t, std::align_val_t) noexcept { std::free(memory); }
void operator delete(void* memory, const std::nothrow_t&) noexcept { std::free(memory); }
void operator delete[](void* memory, const std::nothrow_t&) noexcept { std::free(memory); }
// clang-format on
