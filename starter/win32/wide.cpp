#include "starter/win32/wide.h"

namespace bromvale::starter {
namespace {

constexpr const char* kRegistry = "advapi32.dll";
constexpr const char* kKernel = "kernel32.dll";

WideCalls find() {
    WideCalls calls{};
    findEntry(kRegistry, "RegOpenKeyExW", calls.openKey);
    findEntry(kRegistry, "RegCreateKeyExW", calls.createKey);
    findEntry(kRegistry, "RegEnumValueW", calls.enumValue);
    findEntry(kRegistry, "RegSetValueExW", calls.setValue);
    findEntry(kRegistry, "RegDeleteValueW", calls.deleteValue);
    findEntry(kRegistry, "RegDeleteKeyW", calls.deleteKey);
    findEntry(kRegistry, "RegDeleteKeyExW", calls.deleteKeyEx);
    findEntry(kKernel, "CreateFileW", calls.createFile);
    findEntry(kKernel, "DeleteFileW", calls.deleteFile);
    findEntry(kKernel, "MoveFileExW", calls.moveFile);
    findEntry(kKernel, "GetFileAttributesW", calls.fileAttributes);
    findEntry(kKernel, "GetModuleFileNameW", calls.moduleFileName);
    findEntry(kKernel, "GetCommandLineW", calls.commandLine);
    findEntry(kKernel, "CreateProcessW", calls.createProcess);
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
    const WCHAR* const from = reinterpret_cast<const WCHAR*>(text.data());
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
