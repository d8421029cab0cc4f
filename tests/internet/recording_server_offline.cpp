#include <spawn.h>
#include <unistd.h>

#include <filesystem>

#include "tests/internet/recording_server.h"

namespace bromvale::testing {

std::string serverFolder(int number) {
    return serverFolderOnHost(number);
}

std::string serverFolderOnHost(int number) {
    const std::string name = "bromvale-server-" + std::to_string(getpid()) + "-" + std::to_string(number);
    return (std::filesystem::temp_directory_path() / name).string();
}

bool startOnHost(const std::vector<std::string>& command) {
    std::vector<char*> arguments;
    for (const std::string& argument : command) arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    pid_t process = 0;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", 1, 0);
    posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", 1, 0);
    const int result = posix_spawn(&process, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    return result == 0;
}

void waitABit() {
    usleep(20000);
}

}  // namespace bromvale::testing
