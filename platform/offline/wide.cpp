#include "platform/wide.h"

#include "platform/offline/machine.h"

namespace bromvale {

const WideFunctions* wide() {
    static constexpr WideFunctions kFunctions{
        &::RegOpenKeyExW,
        &::RegEnumKeyExW,
        &::RegEnumValueW,
        &::RegQueryValueExW,
        &::RegQueryInfoKeyW,
        &::FindFirstFileW,
        &::FindNextFileW,
        &::CreateFileW,
        &::GetModuleFileNameW,
        &::GetWindowsDirectoryW,
        &::ExpandEnvironmentStringsW,
        &::GetShortPathNameW,
        &::SHGetPathFromIDListW,
        &::GetFinalPathNameByHandleW,
    };
    return offline::machine().os().isNt() ? &kFunctions : nullptr;
}

}  // namespace bromvale
