// The two names that code with a guarded stack asks for. The compiler's own library imports what old systems
// lack, and whatever it finds wrong it writes to a console.
#include "platform/win32/system/windows.h"

#include <cstdint>

extern "C" {

// What lies between a function's arrays and its way back. Set anew before anything else of the program runs.
std::uintptr_t __stack_chk_guard = static_cast<std::uintptr_t>(0x9E3779B97F4A7C15u);

[[noreturn]] void __stack_chk_fail();

// Nothing can be trusted any more, so nobody is told and nothing is tidied up.
void __stack_chk_fail() {
    constexpr UINT kStackBufferOverrun = 0xC0000409u;
    TerminateProcess(GetCurrentProcess(), kStackBufferOverrun);
    __builtin_trap();
}

}  // extern "C"

namespace {

std::uint64_t mixed(std::uint64_t value, std::uint64_t further) {
    value = (value ^ further) * 0x9E3779B97F4A7C15u;
    return value ^ (value >> 29);
}

// Not to be guessed from outside: there is no better source that every system has. Its lowest byte is 0, so
// that a text that runs over can't write it.
__attribute__((constructor(101), no_stack_protector)) void chooseGuard() {
    FILETIME time{};
    LARGE_INTEGER counter{};
    GetSystemTimeAsFileTime(&time);
    QueryPerformanceCounter(&counter);
    std::uint64_t value = mixed(time.dwHighDateTime, time.dwLowDateTime);
    value = mixed(value, static_cast<std::uint64_t>(counter.QuadPart));
    value = mixed(value, GetTickCount());
    value = mixed(value, GetCurrentProcessId());
    value = mixed(value, reinterpret_cast<std::uintptr_t>(&time));
    __stack_chk_guard = static_cast<std::uintptr_t>(value & ~std::uint64_t{0xFF});
}

}  // namespace
