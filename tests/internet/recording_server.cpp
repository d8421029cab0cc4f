#include "tests/internet/recording_server.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace bromvale::testing {
namespace {

std::string bytesOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

int nextNumber() {
    static int number = 0;
    return ++number;
}

}  // namespace

RecordingServer::RecordingServer(const std::string& mode, const std::string& answer) {
    const int number = nextNumber();
    folder_ = serverFolder(number);
    const std::string onHost = serverFolderOnHost(number);
    std::filesystem::remove_all(folder_);
    std::filesystem::create_directories(folder_);
    std::ofstream(folder_ + "/answer", std::ios::binary) << answer;
    const std::string script = BROMVALE_SOURCE_DIR "/tools/recording_server";
    EXPECT_TRUE(startOnHost({"/usr/bin/python3", script, onHost, mode, onHost + "/answer"}));
    for (int tries = 0; tries < 1000 && !std::filesystem::exists(folder_ + "/port"); ++tries) waitABit();
    port_ = std::atoi(bytesOf(folder_ + "/port").c_str());
    EXPECT_NE(port_, 0) << "the server does not start";
}

RecordingServer::~RecordingServer() {
    std::ofstream(folder_ + "/stop") << "stop";
}

std::vector<std::string> RecordingServer::requests() const {
    // What a client sent last may still be under way to the record when the client goes on.
    for (int i = 0; i < 10; ++i) waitABit();
    std::vector<std::string> all;
    for (int number = 1;; ++number) {
        const std::string path = folder_ + "/request-" + std::to_string(number);
        if (!std::filesystem::exists(path)) return all;
        all.push_back(bytesOf(path));
    }
}

}  // namespace bromvale::testing
