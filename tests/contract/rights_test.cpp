// What a user with all rights is told, and the look whether a folder takes files.
#include "platform/rights.h"

#include "platform/machine.h"
#include "tests/support/test_machine.h"

namespace bromvale::testing {
namespace {

class RightsTest : public TestMachine {};

TEST_F(RightsTest, WhoHasAllRightsCouldNotHaveMoreAndLacksNone) {
    EXPECT_FALSE(couldHaveMoreRights());
    EXPECT_FALSE(lacksMachineRights());
}

TEST_F(RightsTest, AFolderThatTakesFilesIsAsItWas) {
    writeWholeFile(folder() + "da.txt", "x");
    EXPECT_TRUE(takesFiles(folder()));
    EXPECT_EQ(filesIn(folder(), "*"), std::vector<std::string>{"da.txt"});
}

TEST_F(RightsTest, AFolderThatIsNotThereTakesNone) {
    EXPECT_FALSE(takesFiles(folder() + "fehlt\\"));
    EXPECT_FALSE(takesFiles(folder() + "fehlt\\unten\\"));
}

TEST_F(RightsTest, AFileTakesNone) {
    writeWholeFile(folder() + "da.txt", "x");
    EXPECT_FALSE(takesFiles(folder() + "da.txt\\"));
}

TEST_F(RightsTest, AMutexThatNobodyHasMadeIsNotOpened) {
    EXPECT_EQ(OpenMutexA(SYNCHRONIZE, FALSE, "Bromvale: Test"), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_FILE_NOT_FOUND});
}

}  // namespace
}  // namespace bromvale::testing
