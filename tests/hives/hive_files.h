// Files for the tests of raw hives: a folder of the test's own, and the hives of real machines, which lie
// packed beside the project. Tests that read these have "RealRegistry" in their names.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>

namespace bromvale::offline {

// A folder of the host that goes with all in it at the test's end.
class HiveFilesTest : public ::testing::Test {
  protected:
    explicit HiveFilesTest(const std::filesystem::path& parent = std::filesystem::temp_directory_path());
    ~HiveFilesTest() override;
    // A folder in memory, where waiting for the disk costs nothing.
    [[nodiscard]] static std::filesystem::path memory();

    [[nodiscard]] const std::filesystem::path& folder() const { return folder_; }
    // Returns the whole path (UTF-8).
    std::string write(const std::string& name, std::string_view bytes) const;
    [[nodiscard]] static std::string bytesOf(const std::filesystem::path& file);

  private:
    std::filesystem::path folder_;
};

// The unpacked bytes of one of the real hives: "win7-SYSTEM" and so on. The test fails where it is missing.
std::string realHive(const std::string& name);

}  // namespace bromvale::offline
