#include "platform/wide.h"

#include "platform/offline/machine.h"

namespace bromvale {

namespace {

constexpr WideFunctions kUpToXp{
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
    nullptr,
};

constexpr WideFunctions withFinalPaths(WideFunctions functions) {
    functions.finalPathName = &::GetFinalPathNameByHandleW;
    return functions;
}
constexpr WideFunctions kFromVistaOn = withFinalPaths(kUpToXp);

}  // namespace

const WideFunctions* wide() {
    const offline::OsVersion& os = offline::machine().os();
    if (!os.isNt()) return nullptr;
    return os.major < 6 ? &kUpToXp : &kFromVistaOn;
}

}  // namespace bromvale
