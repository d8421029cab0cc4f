#include "core/command_start.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>

#include "platform/failure.h"
#include "platform/files.h"
#include "platform/process.h"
#include "platform/shell.h"

namespace bromvale {
namespace {

constexpr int kInvalidCall = 5;
constexpr DWORD kElevationRequired = 740;  // Windows Vista and later, for a program that wants more rights
constexpr std::intptr_t kLastShellError = 32;
constexpr std::string_view kBlanks = " \t";

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

// A command line as CreateProcessA takes it apart.
struct CommandParts {
    std::string program;
    std::string switches;
};

std::string withExtension(std::string_view program) {
    const std::size_t slash = program.find_last_of("\\/:");
    const std::size_t dot = program.find('.', slash == std::string_view::npos ? 0 : slash);
    return std::string(program).append(dot == std::string_view::npos ? ".exe" : "");
}

CommandParts partsAt(std::string_view line, std::size_t end, std::size_t switches) {
    switches = line.find_first_not_of(kBlanks, switches);
    return {withExtension(line.substr(0, end)),
            switches == std::string_view::npos ? std::string() : std::string(line.substr(switches))};
}

bool namesProgram(std::string_view text) {
    const DWORD attributes = GetFileAttributesA(withExtension(text).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

// A name without folder may be found in many places; it ends at its first blank.
CommandParts takeApart(std::string_view line) {
    line.remove_prefix(line.find_first_not_of(kBlanks));
    if (line.front() == '"') {
        line.remove_prefix(1);
        const std::size_t quote = std::min(line.find('"'), line.size());
        return partsAt(line, quote, quote + 1);
    }
    for (std::size_t end = 0; end != std::string_view::npos;) {
        end = line.find_first_of(kBlanks, end + 1);
        if (namesProgram(line.substr(0, end))) return partsAt(line, end, end);
    }
    const std::size_t end = line.find_first_of(kBlanks);
    return partsAt(line, end, end);
}

// The shell asks the user for the rights that the program wants.
bool startByShell(std::string_view line, int showState) {
    const auto [program, switches] = takeApart(line);
    const HINSTANCE result =
        ShellExecuteA(nullptr, nullptr, program.c_str(), switches.c_str(), nullptr, showState);
    return reinterpret_cast<std::intptr_t>(result) > kLastShellError;
}

}  // namespace

void startCommand(std::string_view commandLine, int showState) {
    if (commandLine.find_first_not_of(kBlanks) == std::string_view::npos) raise(kInvalidCall);
    STARTUPINFOA start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESHOWWINDOW;
    start.wShowWindow = static_cast<WORD>(showState);
    PROCESS_INFORMATION made{};
    const std::string line = withVariables(std::string(commandLine));
    std::string writable = line;  // the call may write into it
    // A program of others gets the system's boxes for missing discs, which this one has switched off for
    // itself.
    if (!CreateProcessA(nullptr, writable.data(), nullptr, nullptr, FALSE, CREATE_DEFAULT_ERROR_MODE, nullptr,
                        nullptr, &start, &made)) {
        const DWORD error = GetLastError();
        if (error == kElevationRequired && startByShell(line, showState)) return;
        raise(failureOf(error));
    }
    CloseHandle(made.hThread);
    CloseHandle(made.hProcess);
}

}  // namespace bromvale
