#include "core/command_start.h"

#include <array>
#include <string>

#include "platform/failure.h"
#include "platform/files.h"
#include "platform/process.h"

namespace bromvale {
namespace {

constexpr int kInvalidCall = 5;

struct FailureRow {
    DWORD error;
    int number;
};

// Only a file that is surely not there counts as missing: a caller may offer to forget the program then. A
// drive without its disc or a server that is away says nothing about the file.
constexpr std::array kFailures{
    FailureRow{ERROR_FILE_NOT_FOUND, 53},       FailureRow{ERROR_PATH_NOT_FOUND, 53},
    FailureRow{ERROR_ACCESS_DENIED, 70},        FailureRow{ERROR_SHARING_VIOLATION, 70},
    FailureRow{ERROR_NOT_ENOUGH_MEMORY, 7},     FailureRow{ERROR_OUTOFMEMORY, 7},
    FailureRow{ERROR_INVALID_NAME, 52},         FailureRow{ERROR_BAD_PATHNAME, 52},
    FailureRow{ERROR_FILENAME_EXCED_RANGE, 52}, FailureRow{ERROR_NOT_READY, 71},
    FailureRow{ERROR_BAD_NETPATH, 76},          FailureRow{ERROR_BAD_NET_NAME, 76},
};

int failureOf(DWORD error) {
    for (const FailureRow& row : kFailures) {
        if (row.error == error) return row.number;
    }
    return kInvalidCall;
}

std::string withVariables(const std::string& text) {
    std::string expanded(text.size() + MAX_PATH, '\0');
    DWORD size = 0;  // with its NUL
    while ((size = ExpandEnvironmentStringsA(text.c_str(), expanded.data(),
                                             static_cast<DWORD>(expanded.size()))) > expanded.size()) {
        expanded.resize(size);
    }
    if (size == 0) return text;
    expanded.resize(expanded.find('\0'));
    return expanded;
}

}  // namespace

void startCommand(std::string_view commandLine, int showState) {
    if (commandLine.find_first_not_of(" \t") == std::string_view::npos) raise(kInvalidCall);
    STARTUPINFOA start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESHOWWINDOW;
    start.wShowWindow = static_cast<WORD>(showState);
    PROCESS_INFORMATION made{};
    std::string writable = withVariables(std::string(commandLine));  // the call may write into it
    if (!CreateProcessA(nullptr, writable.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                        &made)) {
        raise(failureOf(GetLastError()));
    }
    CloseHandle(made.hThread);
    CloseHandle(made.hProcess);
}

}  // namespace bromvale
