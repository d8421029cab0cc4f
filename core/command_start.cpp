#include "core/command_start.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>

#include "base/failure.h"
#include "platform/exact/machine.h"
#include "platform/exact/other_view.h"
#include "platform/exact/text.h"
#include "platform/files.h"
#include "platform/machine.h"
#include "platform/shell.h"

namespace bromvale {
namespace {

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
    FailureRow{ERROR_FILE_NOT_FOUND, Failure::kFileNotFound},
    FailureRow{ERROR_PATH_NOT_FOUND, Failure::kFileNotFound},
    FailureRow{ERROR_ACCESS_DENIED, Failure::kNoPermission},
    FailureRow{ERROR_SHARING_VIOLATION, Failure::kNoPermission},
    FailureRow{ERROR_NOT_ENOUGH_MEMORY, Failure::kNoMemory},
    FailureRow{ERROR_OUTOFMEMORY, Failure::kNoMemory},
    FailureRow{ERROR_INVALID_NAME, Failure::kBadFileName},
    FailureRow{ERROR_BAD_PATHNAME, Failure::kBadFileName},
    FailureRow{ERROR_FILENAME_EXCED_RANGE, Failure::kBadFileName},
    FailureRow{ERROR_NOT_READY, Failure::kDiskNotReady},
    FailureRow{ERROR_BAD_NETPATH, Failure::kPathNotFound},
    FailureRow{ERROR_BAD_NET_NAME, Failure::kPathNotFound},
};

int failureOf(DWORD error) {
    for (const FailureRow& row : kFailures) {
        if (row.error == error) return row.number;
    }
    return Failure::kInvalidCall;
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

bool isProgram(const std::string& path) {
    const DWORD attributes = GetFileAttributesA(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

// A name without folder may be found in many places; it ends at its first blank.
template <class NamesProgram>
CommandParts takeApart(std::string_view line, NamesProgram namesProgram) {
    if (line.front() == '"') {
        line.remove_prefix(1);
        const std::size_t quote = std::min(line.find('"'), line.size());
        return partsAt(line, quote, quote + 1);
    }
    for (std::size_t end = 0; end != std::string_view::npos;) {
        end = line.find_first_of(kBlanks, end + 1);
        if (namesProgram(withExtension(line.substr(0, end)))) return partsAt(line, end, end);
    }
    const std::size_t end = line.find_first_of(kBlanks);
    return partsAt(line, end, end);
}

// The shell asks the user for the rights that the program wants.
bool startByShell(const CommandParts& parts, int showState) {
    const HINSTANCE result =
        ShellExecuteA(nullptr, nullptr, parts.program.c_str(), parts.switches.c_str(), nullptr, showState);
    return reinterpret_cast<std::intptr_t>(result) > kLastShellError;
}

// 0 or the error of the system. `parts` takes the line apart, where the shell is to start it.
template <class Parts>
DWORD start(const std::string& line, Parts parts, int showState) {
    STARTUPINFOA start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESHOWWINDOW;
    start.wShowWindow = static_cast<WORD>(showState);
    PROCESS_INFORMATION made{};
    std::string writable = line;  // the call may write into it
    // A program of others gets the system's boxes for missing discs, which this one has switched off for
    // itself.
    if (!CreateProcessA(nullptr, writable.data(), nullptr, nullptr, FALSE, CREATE_DEFAULT_ERROR_MODE, nullptr,
                        nullptr, &start, &made)) {
        const DWORD error = GetLastError();
        return error == kElevationRequired && startByShell(parts(), showState) ? ERROR_SUCCESS : error;
    }
    CloseHandle(made.hThread);
    CloseHandle(made.hProcess);
    return ERROR_SUCCESS;
}

// A name without folder is looked for in the system folder, among others.
std::string inSystemFolder(const std::string& program) {
    return program.find_first_of("\\/:") == std::string::npos ? systemFolderName() + "\\" + program : program;
}

// Whether the program is one of the other half of a 64-bit Windows. It is started from there.
bool startInOtherView(const std::string& line, int showState) {
    const auto isThere = [](const std::string& program) {
        const OtherView view(inSystemFolder(program));
        return !view.path().empty() && isProgram(view.path());
    };
    CommandParts parts = takeApart(line, isThere);
    if (!isThere(parts.program)) return false;
    const OtherView view(inSystemFolder(parts.program));
    parts.program = view.path();
    std::string there = '"' + parts.program + '"';
    if (!parts.switches.empty()) there.append(" ").append(parts.switches);
    const DWORD error = start(
        there, [&] { return parts; }, showState);
    // The file is there: whatever the system says, it isn't missing.
    if (error != ERROR_SUCCESS)
        raise(failureOf(error) == Failure::kFileNotFound ? Failure::kInvalidCall : failureOf(error));
    return true;
}

// The drive or share that the program is said to lie on, with its backslash; empty for a path without one.
std::string rootOf(std::string program) {
    std::replace(program.begin(), program.end(), '/', '\\');
    if (program.size() > 1 && program[1] == ':') return program.substr(0, 2) + "\\";
    if (!program.starts_with("\\\\")) return {};
    const std::size_t server = program.find('\\', 2);
    if (server == std::string::npos) return program + "\\";
    return program.substr(0, program.find('\\', server + 1)) + "\\";
}

// Under the name itself, or without the extension that was added to it.
bool somethingIsThere(std::string_view program) {
    constexpr std::string_view kExtension = ".exe";
    const auto isThere = [](std::string_view path) {
        return GetFileAttributesA(std::string(path).c_str()) != INVALID_FILE_ATTRIBUTES;
    };
    if (isThere(program)) return true;
    return program.ends_with(kExtension) && isThere(program.substr(0, program.size() - kExtension.size()));
}

// A drive that isn't there, as one that was unplugged, or a share out of reach says nothing about its files.
// And a file that is there isn't missing, whatever the system says.
// Nor is anything missing that no path names: nothing between two quotes, an address of the web.
int failureOfMissing(std::string_view program) {
    if (program.find_first_of("*?") != program.npos) return Failure::kBadFileName;
    const bool noPath = program == ".exe" || (program.find(':') != 1 && program.find(':') != program.npos);
    if (noPath && !program.starts_with("\\\\")) return Failure::kInvalidCall;
    const std::string root = rootOf(std::string(program));
    if (!root.empty() && GetFileAttributesA(root.c_str()) == INVALID_FILE_ATTRIBUTES)
        return root.front() == '\\' ? Failure::kPathNotFound : Failure::kDiskNotReady;
    return somethingIsThere(program) ? Failure::kInvalidCall : Failure::kFileNotFound;
}

std::string_view withoutBlanksBefore(std::string_view line) {
    return line.substr(std::min(line.find_first_not_of(kBlanks), line.size()));
}

// As it is started, with marks.
std::string expanded(std::string_view commandLine) {
    return std::string(withoutBlanksBefore(expandedExactly(std::string(withoutBlanksBefore(commandLine)))));
}

}  // namespace

bool isExactCommand(std::string_view commandLine) {
    return isExact(expanded(commandLine));
}

void startCommand(std::string_view commandLine, int showState) {
    const std::string line = expanded(commandLine);
    if (line.empty()) raise(Failure::kInvalidCall);
    if (!isExact(line)) raise(Failure::kBadFileName);
    const auto parts = [&] { return takeApart(line, isProgram); };
    const DWORD error = start(line, parts, showState);
    if (error == ERROR_SUCCESS) return;
    const int failure = failureOf(error);
    if (failure != Failure::kFileNotFound) raise(failure);
    if (!startInOtherView(line, showState)) raise(failureOfMissing(parts().program));
}

}  // namespace bromvale
