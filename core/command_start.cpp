#include "core/command_start.h"

#include <string>

#include "platform/failure.h"
#include "platform/files.h"
#include "platform/process.h"

namespace bromvale {
namespace {

constexpr int kInvalidCall = 5;
constexpr int kFileNotFound = 53;

int failureOf(DWORD error) {
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND ? kFileNotFound : kInvalidCall;
}

}  // namespace

void startCommand(std::string_view commandLine, int showState) {
    STARTUPINFOA start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESHOWWINDOW;
    start.wShowWindow = static_cast<WORD>(showState);
    PROCESS_INFORMATION made{};
    std::string writable(commandLine);  // the call may write into it
    if (!CreateProcessA(nullptr, writable.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                        &made)) {
        raise(failureOf(GetLastError()));
    }
    CloseHandle(made.hThread);
    CloseHandle(made.hProcess);
}

}  // namespace bromvale
