#include "platform/offline/desktop/process_api.h"

#include <cstring>

#include "platform/offline/locale/code_page.h"
#include "platform/offline/machine.h"

using namespace bromvale::offline;

namespace {

LibraryEntry entryOf(const std::string& library) {
    const auto found = machine().libraryEntries.find(library);
    return found != machine().libraryEntries.end() ? found->second : LibraryEntry{};
}

bool othersHold(LPCSTR mutex) {
    return machine().previousInstance || (mutex != nullptr && machine().otherMutexes.contains(mutex));
}

// Every entry has this one address.
LRESULT entryPoint(HWND, UINT, WPARAM, LPARAM) {
    const auto& [library, name] = machine().lookedUpEntry;
    machine().events.record({EventKind::Library, library, name});
    return entryOf(library).result;
}

}  // namespace

HANDLE GetCurrentProcess() {
    return INVALID_HANDLE_VALUE;
}

BOOL TerminateProcess(HANDLE, UINT exitCode) {
    if (failsHere("TerminateProcess")) return FALSE;
    machine().events.record({EventKind::End, "", "", exitCode});
    if (!machine().terminateReturns) throw ProcessEnded{exitCode};
    return TRUE;
}

HANDLE CreateMutexA(LPSECURITY_ATTRIBUTES, BOOL, LPCSTR name) {
    if (failsHere("CreateMutexA")) return nullptr;
    const HANDLE mutex = machine().kernelObjects.open({});
    SetLastError(othersHold(name) ? ERROR_ALREADY_EXISTS : ERROR_SUCCESS);
    return mutex;
}

HANDLE OpenMutexA(DWORD, BOOL, LPCSTR name) {
    if (failsHere("OpenMutexA")) return nullptr;
    return othersHold(name) ? machine().kernelObjects.open({})
                            : failed<HANDLE>(ERROR_FILE_NOT_FOUND, nullptr);
}

BOOL CreateProcessA(LPCSTR application, LPSTR commandLine, LPSECURITY_ATTRIBUTES, LPSECURITY_ATTRIBUTES, BOOL,
                    DWORD flags, LPVOID, LPCSTR, LPSTARTUPINFOA start, LPPROCESS_INFORMATION made) {
    const bool tells = start != nullptr && (start->dwFlags & STARTF_USESHOWWINDOW) != 0;
    machine().lastRequests.startFlags = flags;
    machine().lastRequests.startState = tells ? start->wShowWindow : -1;
    if (failsHere("CreateProcessA")) return FALSE;
    const std::string line = commandLine != nullptr ? commandLine : application;
    std::string sought = line;
    if (application != nullptr) sought.assign(1, '"').append(application).append(1, '"');
    if (programOf(sought).empty()) return failed(ERROR_FILE_NOT_FOUND);
    if (made != nullptr) *made = {machine().kernelObjects.open({}), machine().kernelObjects.open({}), 1, 1};
    machine().events.record({EventKind::Run, line});
    return TRUE;
}

BOOL OpenProcessToken(HANDLE, DWORD, PHANDLE token) {
    if (failsHere("OpenProcessToken")) return FALSE;
    if (!machine().os().isNt()) return failed(ERROR_CALL_NOT_IMPLEMENTED);
    *token = machine().kernelObjects.open({});
    return TRUE;
}

BOOL LookupPrivilegeValueA(LPCSTR, LPCSTR name, PLUID id) {
    if (failsHere("LookupPrivilegeValueA")) return FALSE;
    if (!machine().os().isNt() || !equalNoCase(name, SE_SHUTDOWN_NAME))
        return failed(machine().os().isNt() ? ERROR_NO_SUCH_PRIVILEGE : ERROR_CALL_NOT_IMPLEMENTED);
    *id = {19, 0};
    return TRUE;
}

BOOL AdjustTokenPrivileges(HANDLE, BOOL, PTOKEN_PRIVILEGES wanted, DWORD, PTOKEN_PRIVILEGES, LPDWORD) {
    if (failsHere("AdjustTokenPrivileges")) return FALSE;
    const bool known =
        wanted != nullptr && wanted->PrivilegeCount == 1 && wanted->Privileges[0].Luid.LowPart == 19;
    if (!known || !machine().shutdownPrivilege) return failed(ERROR_NOT_ALL_ASSIGNED, TRUE);
    machine().events.record(
        {EventKind::Privilege, SE_SHUTDOWN_NAME, "", wanted->Privileges[0].Attributes, 0});
    SetLastError(ERROR_SUCCESS);
    return TRUE;
}

BOOL ExitWindowsEx(UINT flags, DWORD reason) {
    if (failsHere("ExitWindowsEx")) return FALSE;
    if (machine().os().isNt() && !machine().shutdownPrivilege) return failed(ERROR_PRIVILEGE_NOT_HELD);
    machine().events.record({EventKind::Restart, "", "", flags, static_cast<int>(reason)});
    return TRUE;
}

HMODULE LoadLibraryA(LPCSTR path) {
    if (failsHere("LoadLibraryA")) return nullptr;
    const std::string inSystem = machine().systemFolder() + "\\" + path;
    if (!machine().drives.exists(wideFromAnsi(path)) && !machine().drives.exists(wideFromAnsi(inSystem)))
        return failed<HMODULE>(ERROR_MOD_NOT_FOUND, nullptr);
    machine().modules.emplace_back(path);
    return reinterpret_cast<HMODULE>(machine().modules.size());
}

FARPROC GetProcAddress(HMODULE module, LPCSTR name) {
    if (failsHere("GetProcAddress")) return nullptr;
    const auto number = reinterpret_cast<std::uintptr_t>(module);
    const auto& modules = machine().modules;
    if (number == 0 || number > modules.size() || !entryOf(modules[number - 1]).exists)
        return failed<FARPROC>(ERROR_PROC_NOT_FOUND, nullptr);
    machine().lookedUpEntry = {modules[number - 1], name};
    // By way of a function without arguments, the one type that compilers let stand for any other.
    return reinterpret_cast<FARPROC>(reinterpret_cast<void (*)()>(&entryPoint));
}

BOOL FreeLibrary(HMODULE) {
    return failsHere("FreeLibrary") ? FALSE : TRUE;
}

LRESULT CallWindowProcA(WNDPROC procedure, HWND window, UINT message, WPARAM first, LPARAM second) {
    if (failsHere("CallWindowProcA") || procedure == nullptr) return 0;
    return procedure(window, message, first, second);
}
