#pragma once
// A folder of the host, for drives of the offline machine that lie there.
#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>

namespace bromvale::testing {

// Empty at first; goes with all in it.
class HostFolder {
  public:
    HostFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "bromvale-drive-XXXXXX").string();
        path_ = ::mkdtemp(pattern.data());
    }
    ~HostFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    HostFolder(const HostFolder&) = delete;
    HostFolder& operator=(const HostFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

  private:
    std::filesystem::path path_;
};

}  // namespace bromvale::testing
