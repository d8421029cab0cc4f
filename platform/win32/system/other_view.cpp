// What a 64-bit Windows shows a program of 32 bits, and where that really lies.
#include "platform/other_view_api.h"

#include <cstring>
#include <vector>

#include "base/editor_key_path.h"
#include "platform/registry.h"
#include "platform/win32/system/entries.h"

namespace bromvale {
namespace {

OtherViewFunctions load() {
    OtherViewFunctions functions{};
    const HMODULE kernel = GetModuleHandleA("kernel32.dll");
    loadEntry(kernel, "IsWow64Process", functions.isWow64Process);
    loadEntry(kernel, "Wow64DisableWow64FsRedirection", functions.disableRedirection);
    loadEntry(kernel, "Wow64RevertWow64FsRedirection", functions.revertRedirection);
    loadEntry(kernel, "GetSystemWow64DirectoryA", functions.wow64Directory);
    return functions;
}

bool isWow64Process() {
    const auto isWow64 = otherViewFunctions().isWow64Process;
    BOOL answer = FALSE;
    return isWow64 != nullptr && isWow64(GetCurrentProcess(), &answer) != 0 && answer != FALSE;
}

// What NtQueryKey answers when it is asked for the name: the length in bytes, then the UTF-16 text.
constexpr int kKeyNameInformation = 3;
constexpr ULONG kLongestAnswer = 70000;

}  // namespace

const OtherViewFunctions& otherViewFunctions() {
    static const OtherViewFunctions functions = load();
    return functions;
}

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
