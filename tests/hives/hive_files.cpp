#include "tests/hives/hive_files.h"

#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <sstream>

namespace bromvale::offline {

namespace fs = std::filesystem;

HiveFilesTest::HiveFilesTest(const fs::path& parent) {
    std::string pattern = (parent / "bromvale-hives-XXXXXX").string();
    folder_ = ::mkdtemp(pattern.data());
}

HiveFilesTest::~HiveFilesTest() {
    std::error_code error;
    fs::remove_all(folder_, error);
}

fs::path HiveFilesTest::memory() {
    const fs::path shared = "/dev/shm";
    return fs::is_directory(shared) ? shared : fs::temp_directory_path();
}

std::string HiveFilesTest::write(const std::string& name, std::string_view bytes) const {
    const fs::path file = folder_ / name;
    fs::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return file.string();
}

std::string HiveFilesTest::bytesOf(const fs::path& file) {
    std::ostringstream bytes;
    bytes << std::ifstream(file, std::ios::binary).rdbuf();
    return bytes.str();
}

std::string realHive(const std::string& name) {
    std::string content;
    const std::string command = "xz -dc '" BROMVALE_SHARED_DATA_DIR "/hives/" + name + ".xz'";
    if (std::FILE* pipe = ::popen(command.c_str(), "r")) {
        char buffer[65536];
        for (std::size_t count = 0; (count = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;)
            content.append(buffer, count);
        ::pclose(pipe);
    }
    EXPECT_NE(content, "") << "the real hives are not in " BROMVALE_SHARED_DATA_DIR "/hives";
    return content;
}

}  // namespace bromvale::offline
