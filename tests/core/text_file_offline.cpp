// Files as a user without rights finds them; Wine run by an administrator lets everything be written.
#include <utility>

#include "base/failure.h"
#include "core/text_file.h"
#include "platform/offline/files/api.h"
#include "platform/offline/machine.h"
#include "tests/support/test_machine.h"

namespace bromvale {
namespace {

class TextFileAccess : public testing::TestMachine {
  protected:
    TextFileAccess() {
        writeWholeFile(folder() + "fest.txt", "x");
        SetFileAttributesA((folder() + "fest.txt").c_str(), FILE_ATTRIBUTE_READONLY);
    }
    int openFailure(FileMode mode) {
        try {
            openFile(folder() + "fest.txt", mode, 1);
        } catch (const Failure& failure) {
            return failure.number;
        }
        closeFile(1);
        return 0;
    }
    static int writeFailure() {
        try {
            writeFile(1, "abc");
        } catch (const Failure& failure) {
            return failure.number;
        }
        return 0;
    }
};

TEST_F(TextFileAccess, AReadOnlyFileIsFailure75ForWritingAlone) {
    EXPECT_EQ(openFailure(FileMode::Output), 75);
    EXPECT_EQ(openFailure(FileMode::Append), 75);
    EXPECT_EQ(openFailure(FileMode::Input), 0);
    EXPECT_EQ(readWholeFile(folder() + "fest.txt"), "x");
}

TEST_F(TextFileAccess, AFullDiskIsFailure61AndOtherWriteFailures57) {
    openFile(folder() + "neu.txt", FileMode::Output, 1);
    offline::machine().faults.fail("WriteFile", 1, 112);
    offline::machine().faults.fail("WriteFile", 2, ERROR_HANDLE_DISK_FULL);
    offline::machine().faults.fail("WriteFile", 3, ERROR_GEN_FAILURE);
    EXPECT_EQ(writeFailure(), 61);
    EXPECT_EQ(writeFailure(), 61);
    EXPECT_EQ(writeFailure(), 57);
    EXPECT_EQ(writeFailure(), 0);
    closeFile(1);
    EXPECT_EQ(readWholeFile(folder() + "neu.txt"), "abc");
}

TEST_F(TextFileAccess, NothingIsWrittenWhereThePlaceCannotBeTold) {
    openFile(folder() + "neu.txt", FileMode::Append, 1);
    offline::machine().faults.fail("SetFilePointer", 1, ERROR_GEN_FAILURE);
    int number = 0;
    try {
        writeWholeOrNothing(1, "abc");
    } catch (const Failure& failure) {
        number = failure.number;
    }
    EXPECT_EQ(number, 57);
    writeWholeOrNothing(1, "x");
    closeFile(1);
    EXPECT_EQ(readWholeFile(folder() + "neu.txt"), "x");
}

TEST_F(TextFileAccess, EachRefusalOfWindowsHasItsFailure) {
    constexpr std::pair<long, int> kRefusals[] = {{ERROR_FILE_NOT_FOUND, 53},
                                                  {ERROR_PATH_NOT_FOUND, 76},
                                                  {ERROR_INVALID_DRIVE, 76},
                                                  {ERROR_BAD_NETPATH, 76},
                                                  {ERROR_BAD_NET_NAME, 76},
                                                  {ERROR_INVALID_NAME, 52},
                                                  {ERROR_BAD_PATHNAME, 52},
                                                  {ERROR_SHARING_VIOLATION, 70},
                                                  {ERROR_WRITE_PROTECT, 70},
                                                  {39, 61},
                                                  {112, 61},
                                                  {ERROR_ACCESS_DENIED, 75},
                                                  {ERROR_GEN_FAILURE, 75}};
    for (const auto& [code, number] : kRefusals) {
        offline::machine().faults.fail("CreateFileA", 1, code);
        EXPECT_EQ(openFailure(FileMode::Input), number) << code;
        EXPECT_EQ(openFailure(FileMode::Input), 0) << "the next one works";
    }
}

TEST_F(TextFileAccess, AReadFailureIsFailure57) {
    openFile(folder() + "fest.txt", FileMode::Input, 1);
    offline::machine().faults.fail("ReadFile", 1, ERROR_GEN_FAILURE);
    int number = 0;
    try {
        static_cast<void>(readLine(1));
    } catch (const Failure& failure) {
        number = failure.number;
    }
    EXPECT_EQ(number, 57);
    EXPECT_EQ(readLine(1), "x");
    closeFile(1);
}

}  // namespace
}  // namespace bromvale
