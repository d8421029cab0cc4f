// The same on a real NTFS, with Windows' own links, as ntfs-3g mounts it. Skipped where nothing can be
// mounted.
#include <sys/xattr.h>
#include <unistd.h>

#include <cstdlib>

#include "platform/offline/locale/stored_text.h"
#include "platform/offline/machine.h"
#include "tests/hives/disk/disk_files.h"

namespace bromvale::offline {
namespace {

namespace fs = std::filesystem;

class NtfsDisk : public DiskTest {
  protected:
    void SetUp() override {
        fs::create_directory(folder() / "disk");
        if (!run("truncate -s 64M image && mkntfs -q -F image") || !mount("rw"))
            GTEST_SKIP() << "no NTFS can be made and mounted here";
    }
    ~NtfsDisk() override { unmount(); }

    [[nodiscard]] bool run(const std::string& command) const {
        const std::string whole = "cd '" + folder().string() + "' && PATH=$PATH:/usr/sbin:/sbin && (" +
                                  command + ") >/dev/null 2>&1";
        return std::system(whole.c_str()) == 0;
    }
    bool mount(const std::string& how) {
        mounted_ = run("ntfs-3g -o " + how + " image '" + (folder() / "disk").string() + "'");
        return mounted_;
    }
    void unmount() {
        if (mounted_) static_cast<void>(run("umount disk"));
        mounted_ = false;
    }
    // A folder that becomes a junction; `target` as Windows stores it.
    static void junction(const fs::path& link, std::u16string_view target) {
        const std::string text = offline::bytesOf(target);
        const auto number = [](std::size_t value) {
            return std::string{static_cast<char>(value & 0xFF), static_cast<char>(value >> 8)};
        };
        const std::string data =
            number(0) + number(text.size() - 2) + number(text.size()) + number(0) + text + number(0);
        const std::string tag("\x03\0\0\xA0", 4);
        const std::string reparse = tag + number(data.size()) + number(0) + data;
        fs::remove(link);
        fs::create_directory(link);
        ASSERT_EQ(::setxattr(link.c_str(), "system.ntfs_reparse_data", reparse.data(), reparse.size(), 0), 0);
    }

  private:
    bool mounted_ = false;
};

TEST_F(NtfsDisk, IsFoundWithWindowsOwnLinks) {
    const MadeDisk made = make(Generation::Ten);
    junction(made.root / "Documents and Settings", u"\\??\\C:\\Users");
    junction(made.root / "Users/All Users", u"\\??\\C:\\ProgramData");
    junction(made.root / "Volume", u"\\??\\Volume{12345678-1234-1234-1234-123456789abc}\\");
    junction(made.root / "Elsewhere", u"\\??\\D:\\Daten");
    writeFile(made.root / "ProgramData/x.txt", "x");
    writeFile(made.root / "hiberfil.sys", "HIBR" + std::string(8192, '\0'));
    unmount();
    ASSERT_TRUE(mount("ro"));
    const auto before = state(made.root);
    const WindowsDisk disk = found(made.root);
    EXPECT_EQ(disk.warnings, std::vector<std::string>());
    EXPECT_EQ(disk.version.build, 19045u);
    EXPECT_EQ(disk.hibernation, Hibernation::Hibernated);
    ASSERT_EQ(disk.users.size(), 2u);
    EXPECT_EQ(disk.users[1].name, u"\u0141ukasz");
    EXPECT_EQ(disk.users[1].problem, "");
    EXPECT_TRUE(disk.users[1].classes && disk.users[1].classes->usable());
    EXPECT_EQ(state(made.root), before);

    Drives& drives = machine().drives;
    drives.addDisk('C', disk.root);
    EXPECT_TRUE(drives.exists(u"c:\\documents AND settings\\\u0142ukasz\\ntuser.dat"));
    EXPECT_TRUE(drives.exists(u"C:\\users\\all users\\X.TXT"));
    EXPECT_FALSE(drives.exists(u"C:\\Volume\\x.txt"));
    EXPECT_TRUE(drives.exists(u"C:\\Volume"));
    const InsideFolder inside(disk.root);
    EXPECT_EQ(inside.find(inside.root(), "Volume\\x.txt").state, InsidePath::State::Outside);
    EXPECT_EQ(inside.find(inside.root(), "Elsewhere\\x.txt").state, InsidePath::State::Outside);
}

}  // namespace
}  // namespace bromvale::offline
