// The boxes of the system for drives without a disc: off in this program, on in those that it starts. The
// started program is this test itself, which tells its mode.
#include "platform/win32/error_mode.h"

#include "core/command_start.h"
#include "platform/win32/windows.h"
#include "tests/support/test_machine.h"

namespace bromvale::testing {
namespace {

constexpr const char* kAnswer = "BROMVALE_ERROR_MODE";

UINT errorMode() {
    const UINT mode = SetErrorMode(0);
    SetErrorMode(mode);
    return mode;
}

// What the process came with: the test library switches boxes off before it runs a test.
const UINT modeAtStart = errorMode();

class ErrorMode : public TestMachine {
  protected:
    std::string answerOf(const std::string& file) {
        for (int tries = 0; tries < 300; ++tries) {
            const std::string text = readWholeFile(file);
            if (text != "<missing>" && text.ends_with(".")) return text;
            Sleep(50);
        }
        return "<none>";
    }
};

TEST_F(ErrorMode, TellsItsOwnWhereItIsAsked) {
    char file[MAX_PATH] = "";
    if (GetEnvironmentVariableA(kAnswer, file, MAX_PATH) == 0) GTEST_SKIP() << "nobody asks";
    writeWholeFile(file, std::to_string(modeAtStart) + ".");
}

TEST_F(ErrorMode, NoBoxComesForADriveWithoutADiscAndOthersGetTheirs) {
    SetErrorMode(0);
    silenceDrives();
    EXPECT_EQ(errorMode() & (SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX),
              static_cast<UINT>(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX));
    const std::string file = folder() + "modus.txt";
    SetEnvironmentVariableA(kAnswer, file.c_str());
    char program[MAX_PATH] = "";
    GetModuleFileNameA(nullptr, program, MAX_PATH);
    startCommand("\"" + std::string(program) + "\" --gtest_filter=ErrorMode.TellsItsOwnWhereItIsAsked",
                 SW_HIDE);
    const std::string told = answerOf(file);
    ASSERT_NE(told, "<none>");
    EXPECT_EQ(std::stoul(told) & SEM_FAILCRITICALERRORS, 0u);
}

}  // namespace
}  // namespace bromvale::testing
