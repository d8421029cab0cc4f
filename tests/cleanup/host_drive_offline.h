#pragma once
// A drive that is a folder of the host, where links can be made and names be of any kind.

#include <filesystem>
#include <fstream>

#include "tests/cleanup/cleanup_fixture.h"
#include "tests/support/host_folder_offline.h"
#include "tests/support/recorded_offline.h"

namespace bromvale::testing {

namespace fs = std::filesystem;

// D: with the folder D:\Leeren.
class HostDriveTest : public CleanupTest {
  protected:
    HostDriveTest() {
        fs::create_directories(drive() / "Leeren");
        offline::machine().drives.addFolder('D', drive().string());
    }

    [[nodiscard]] fs::path drive() const { return host_.path() / "laufwerk"; }
    [[nodiscard]] fs::path bin() const { return host_.path() / "laufwerk.Papierkorb"; }
    [[nodiscard]] bool onHost(const fs::path& name) const { return fs::exists(drive() / name); }
    void write(const fs::path& name) const {
        fs::create_directories((drive() / name).parent_path());
        std::ofstream(drive() / name) << "x";
    }
    // In the place of one that is there.
    void link(const fs::path& target, const fs::path& name) const {
        fs::remove(drive() / name);
        fs::create_symlink(drive() / target, drive() / name);
    }
    static void emptyDrive() { empty("D:\\Leeren"); }

  private:
    const HostFolder host_;
};

}  // namespace bromvale::testing
