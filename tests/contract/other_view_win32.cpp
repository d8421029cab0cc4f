// The two system folders of a real 64-bit Windows, as this program finds them.
#include "platform/exact/other_view.h"

#include "core/file_helpers.h"
#include "platform/files.h"
#include "platform/other_view_api.h"
#include "platform/win32/system/windows.h"
#include "tests/support/test_machine.h"

namespace bromvale::testing {
namespace {

class TwoHalvesWin32 : public TestMachine {
  protected:
    void SetUp() override {
        char other[MAX_PATH] = "";
        if (otherViewFunctions().wow64Directory == nullptr ||
            otherViewFunctions().wow64Directory(other, MAX_PATH) == 0)
            GTEST_SKIP() << "a 32-bit Windows";
        // SysWOW64 is the other folder for 64 bits, and System32 itself, by its third name, for 32.
        char windows[MAX_PATH] = "";
        GetWindowsDirectoryA(windows, MAX_PATH);
        const std::string folder = sizeof(void*) == 8 ? other : std::string(windows) + "\\Sysnative";
        there_ = folder + "\\" + name_;
        here_ = systemFolderName() + "\\" + name_;
        writeWholeFile(there_, "MZ");
    }
    void TearDown() override {
        if (!there_.empty()) DeleteFileA(there_.c_str());
    }
    const std::string name_ = "bromvale-" + std::to_string(GetCurrentProcessId()) + ".exe";
    std::string here_;
    std::string there_;
};

TEST_F(TwoHalvesWin32, AFileOfTheOtherHalfIsFoundInTheOtherViewOnly) {
    EXPECT_FALSE(FileExists(here_));
    EXPECT_TRUE(existsInOtherView(here_));
    EXPECT_TRUE(FileExistsInAnyView(here_));
    EXPECT_FALSE(FileExists(here_));  // the view is over
    EXPECT_FALSE(existsInOtherView(here_ + "x"));
}

TEST_F(TwoHalvesWin32, PathsMayBeWrittenAsRegistryTextsHoldThem) {
    for (const char* folder :
         {"c:\\windows\\\\system32\\", "C:/WINDOWS/System32/", "\\\\?\\C:\\Windows\\System32\\"})
        EXPECT_TRUE(existsInOtherView(folder + name_)) << folder;
    for (const char* folder :
         {"c:\\windows\\", "c:\\windows\\system32x\\", "\\\\server\\windows\\system32\\"})
        EXPECT_FALSE(existsInOtherView(folder + name_)) << folder;
}

}  // namespace
}  // namespace bromvale::testing
