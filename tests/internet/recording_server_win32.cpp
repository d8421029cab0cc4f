// Under Wine the server runs outside: Wine starts programs of its host, whose folders lie on drive Z.
#include "tests/internet/recording_server.h"

#include "platform/win32/system/windows.h"

namespace bromvale::testing {

std::string serverFolder(int number) {
    return "Z:" + serverFolderOnHost(number);
}

std::string serverFolderOnHost(int number) {
    // Several prefixes give the same process numbers.
    static const DWORD started = GetTickCount();
    return "/tmp/bromvale-server-wine-" + std::to_string(GetCurrentProcessId()) + "-" +
           std::to_string(started) + "-" + std::to_string(number);
}

bool startOnHost(const std::vector<std::string>& command) {
    std::string line = "\"Z:" + command[0] + "\"";
    for (std::size_t i = 1; i < command.size(); ++i) line += " \"" + command[i] + "\"";
    STARTUPINFOA start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION made{};
    if (!CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, "Z:\\", &start, &made))
        return false;
    CloseHandle(made.hThread);
    CloseHandle(made.hProcess);
    return true;
}

void waitABit() {
    Sleep(20);
}

}  // namespace bromvale::testing
