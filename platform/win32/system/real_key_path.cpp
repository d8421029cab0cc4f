#include "platform/real_key_path.h"

#include "base/editor_key_path.h"

#include <cstring>
#include <vector>

#include "platform/other_view_api.h"
#include "platform/win32/system/entries.h"

namespace bromvale {
namespace {

bool isWow64Process() {
    const auto isWow64 = otherViewFunctions().isWow64Process;
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
    LONG(WINAPI * queryKey)(HANDLE, int, PVOID, ULONG, PULONG) = nullptr;
    if (!loadEntry(GetModuleHandleA("ntdll.dll"), "NtQueryKey", queryKey)) return std::nullopt;
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
