#include "platform/real_key_path.h"

#include "base/editor_key_path.h"

#include <cstring>
#include <vector>

#include "platform/win32/system/windows.h"

namespace bromvale {
namespace {

template <class Function>
Function functionOf(const char* library, const char* name) {
    const HMODULE module = GetModuleHandleA(library);
    const FARPROC found = module != nullptr ? GetProcAddress(module, name) : nullptr;
    return reinterpret_cast<Function>(reinterpret_cast<void*>(found));
}

bool isWow64Process() {
    using IsWow64 = BOOL(WINAPI*)(HANDLE, PBOOL);
    const auto isWow64 = functionOf<IsWow64>("kernel32.dll", "IsWow64Process");
    BOOL answer = FALSE;
    return isWow64 != nullptr && isWow64(GetCurrentProcess(), &answer) != 0 && answer != FALSE;
}

// What NtQueryKey answers when it is asked for the name: the length in bytes, then the UTF-16 text.
constexpr int kKeyNameInformation = 3;
constexpr ULONG kLongestAnswer = 70000;

}  // namespace

bool seesAnotherHalf() {
    static const bool answer = isWow64Process();
    return answer;
}

std::optional<std::u16string> realKeyPath(HKEY key) {
    using QueryKey = LONG(WINAPI*)(HANDLE, int, PVOID, ULONG, PULONG);
    static const auto queryKey = functionOf<QueryKey>("ntdll.dll", "NtQueryKey");
    if (queryKey == nullptr) return std::nullopt;
    std::vector<BYTE> answer(kLongestAnswer);
    ULONG size = 0;
    if (queryKey(key, kKeyNameInformation, answer.data(), kLongestAnswer, &size) != 0) return std::nullopt;
    ULONG length = 0;
    std::memcpy(&length, answer.data(), sizeof length);
    if (length > kLongestAnswer - sizeof length) return std::nullopt;
    std::u16string path(length / sizeof(char16_t), u'\0');
    std::memcpy(path.data(), answer.data() + sizeof length, path.size() * sizeof(char16_t));
    return editorKeyPath(path);
}

}  // namespace bromvale
