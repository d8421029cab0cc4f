#include "starter/win32/wide.h"

#include "platform/win32/system/entries.h"

namespace bromvale::starter {
namespace {

WideCalls find() {
    WideCalls calls{};
    const HMODULE registry = GetModuleHandleA("advapi32.dll");
    const HMODULE kernel = GetModuleHandleA("kernel32.dll");
    loadEntry(registry, "RegOpenKeyExW", calls.openKey);
    loadEntry(registry, "RegCreateKeyExW", calls.createKey);
    loadEntry(registry, "RegEnumValueW", calls.enumValue);
    loadEntry(registry, "RegSetValueExW", calls.setValue);
    loadEntry(registry, "RegDeleteValueW", calls.deleteValue);
    loadEntry(registry, "RegDeleteKeyW", calls.deleteKey);
    loadEntry(registry, "RegDeleteKeyExW", calls.deleteKeyEx);
    loadEntry(kernel, "CreateFileW", calls.createFile);
    loadEntry(kernel, "DeleteFileW", calls.deleteFile);
    loadEntry(kernel, "MoveFileExW", calls.moveFile);
    loadEntry(kernel, "GetFileAttributesW", calls.fileAttributes);
    loadEntry(kernel, "GetModuleFileNameW", calls.moduleFileName);
    loadEntry(kernel, "GetCommandLineW", calls.commandLine);
    loadEntry(kernel, "CreateProcessW", calls.createProcess);
    return calls;
}

}  // namespace

const WideCalls* wide() {
    // The top bit of GetVersion tells the 9x family.
    static const bool isNtFamily = (GetVersion() & 0x80000000u) == 0;
    static const WideCalls calls = isNtFamily ? find() : WideCalls{};
    return isNtFamily ? &calls : nullptr;
}

std::string toCodePage(std::u16string_view text) {
    const auto* const from = reinterpret_cast<const WCHAR*>(text.data());
    const int length = static_cast<int>(text.size());
    if (length == 0) return {};
    const int size = WideCharToMultiByte(CP_ACP, 0, from, length, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_ACP, 0, from, length, bytes.data(), size, nullptr, nullptr);
    return bytes;
}

std::u16string fromCodePage(std::string_view text) {
    const int length = static_cast<int>(text.size());
    if (length == 0) return {};
    const int size = MultiByteToWideChar(CP_ACP, 0, text.data(), length, nullptr, 0);
    std::u16string result(static_cast<std::size_t>(size), u'\0');
    MultiByteToWideChar(CP_ACP, 0, text.data(), length, units(result), size);
    return result;
}

}  // namespace bromvale::starter
