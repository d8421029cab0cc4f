#include "remote_orders.h"

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <sstream>
#include <vector>

#include "remote_memory.h"

namespace {

constexpr UINT DpiChanged = 0x02E0;
constexpr DWORD Patience = 20000;

void append(std::vector<unsigned char>& code, const void* bytes, std::size_t size) {
    const auto* const first = static_cast<const unsigned char*>(bytes);
    code.insert(code.end(), first, first + size);
}

// A routine of the other process that calls SetSysColors(count, numbers, colours). Windows' libraries lie at
// the same places in all processes of a width.
std::vector<unsigned char> callOfSetSysColors(INT count, std::uint64_t numbers, std::uint64_t colours) {
    const auto function = reinterpret_cast<std::uint64_t>(reinterpret_cast<void*>(&SetSysColors));
    std::vector<unsigned char> code{0x48, 0x83, 0xEC, 0x28};  // sub rsp, 40
    append(code, "\xB9", 1);                                  // mov ecx, count
    append(code, &count, sizeof count);
    append(code, "\x48\xBA", 2);  // mov rdx, numbers
    append(code, &numbers, sizeof numbers);
    append(code, "\x49\xB8", 2);  // mov r8, colours
    append(code, &colours, sizeof colours);
    append(code, "\x48\xB8", 2);  // mov rax, SetSysColors
    append(code, &function, sizeof function);
    append(code, "\xFF\xD0\x48\x83\xC4\x28\xC3", 7);  // call rax; add rsp, 40; ret
    return code;
}

}  // namespace

bool tellDpi(HWND window, int dpi) {
    RECT place{};
    GetWindowRect(window, &place);
    const int before = static_cast<int>(reinterpret_cast<INT_PTR>(GetPropA(window, "BromvaleTestDpi")));
    const int from = before != 0 ? before : 96;
    place.right = place.left + MulDiv(static_cast<int>(place.right - place.left), dpi, from);
    place.bottom = place.top + MulDiv(static_cast<int>(place.bottom - place.top), dpi, from);
    RemoteMemory memory(window, sizeof place);
    memory.write(place);
    DWORD_PTR result = 0;
    SetPropA(window, "BromvaleTestDpi", reinterpret_cast<HANDLE>(static_cast<INT_PTR>(dpi)));
    return SendMessageTimeoutW(window, DpiChanged, MAKEWPARAM(dpi, dpi), memory.parameter(), SMTO_NORMAL,
                               Patience, &result) != 0;
}

bool setColoursOf(HWND window, const std::string& colours) {
    if (sizeof(void*) != 8) return false;
    std::vector<INT> numbers;
    std::vector<COLORREF> values;
    std::istringstream words(colours);
    for (std::string word; words >> word;) {
        int number = 0;
        unsigned colour = 0;
        if (std::sscanf(word.c_str(), "%d=%6x", &number, &colour) != 2) return false;
        numbers.push_back(number);
        values.push_back(RGB(colour >> 16, (colour >> 8) & 0xFF, colour & 0xFF));
    }
    constexpr std::size_t NumbersAt = 256;
    constexpr std::size_t ColoursAt = 512;
    RemoteMemory memory(window, 4096, PAGE_EXECUTE_READWRITE);
    const auto code = callOfSetSysColors(static_cast<INT>(numbers.size()),
                                         reinterpret_cast<std::uint64_t>(memory.at(NumbersAt)),
                                         reinterpret_cast<std::uint64_t>(memory.at(ColoursAt)));
    if (!memory.writeBytes(code.data(), code.size()) ||
        !memory.writeBytes(numbers.data(), numbers.size() * sizeof(INT), NumbersAt) ||
        !memory.writeBytes(values.data(), values.size() * sizeof(COLORREF), ColoursAt))
        return false;
    const HANDLE thread =
        CreateRemoteThread(memory.process(), nullptr, 0,
                           reinterpret_cast<LPTHREAD_START_ROUTINE>(memory.at(0)), nullptr, 0, nullptr);
    if (thread == nullptr) return false;
    DWORD done = 0;
    WaitForSingleObject(thread, Patience);
    GetExitCodeThread(thread, &done);
    CloseHandle(thread);
    return done != 0;
}
