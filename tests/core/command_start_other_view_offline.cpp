// Programs that only the other half of a 64-bit Windows has are started from there.
#include "base/failure.h"
#include "core/command_start.h"
#include "platform/offline/files/other_half.h"
#include "platform/offline/machine.h"
#include "tests/support/test_machine.h"

namespace bromvale::testing {
namespace {

using offline::Halves;
using offline::machine;
using offline::setHalves;
using Texts = std::vector<std::string>;

class OtherViewStart : public TestMachine {
  protected:
    OtherViewStart() {
        setHalves(Halves::SeenBy64);
        for (const char* name : {"weg.exe", "Ein Ordner\\weg.exe"}) {
            machine().drives.writeFile(std::string("C:\\WINDOWS\\SYSTEM32\\64-") + name, "MZ");
            machine().drives.writeFile(std::string("C:\\WINDOWS\\SysWOW64\\32-") + name, "MZ");
        }
    }
    static int failureOf(const std::string& commandLine) {
        try {
            startCommand(commandLine, 1);
        } catch (const Failure& failure) {
            return failure.number;
        }
        return 0;
    }
    static Texts started() {
        Texts lines;
        for (const auto& event : machine().events.of(offline::EventKind::Run)) lines.push_back(event.text);
        return lines;
    }
};

TEST_F(OtherViewStart, AProgramOf64BitsStartsTheOneOf32) {
    EXPECT_EQ(failureOf("\"%SystemRoot%\\system32\\32-weg.exe\" /x"), 0);
    EXPECT_EQ(failureOf("C:\\Windows\\System32\\32-Ein Ordner\\weg /still \"a b\""), 0);
    EXPECT_EQ(failureOf("32-weg.exe  /x"), 0);
    EXPECT_EQ(started(), (Texts{"\"C:\\WINDOWS\\SysWOW64\\32-weg.exe\" /x",
                                "\"C:\\WINDOWS\\SysWOW64\\32-Ein Ordner\\weg.exe\" /still \"a b\"",
                                "\"C:\\WINDOWS\\SysWOW64\\32-weg.exe\" /x"}));
}

TEST_F(OtherViewStart, AProgramOf32BitsStartsTheOneOf64) {
    setHalves(Halves::SeenBy32);
    EXPECT_EQ(failureOf("C:\\WINDOWS\\System32\\64-weg.exe"), 0);
    EXPECT_EQ(failureOf("C:\\Windows\\System32\\64-Ein Ordner\\weg.exe /still"), 0);
    EXPECT_EQ(started(), (Texts{"\"C:\\WINDOWS\\SYSTEM32\\64-weg.exe\"",
                                "\"C:\\WINDOWS\\SYSTEM32\\64-Ein Ordner\\weg.exe\" /still"}));
    EXPECT_EQ(failureOf("C:\\WINDOWS\\System32\\64-weg.exe.bak"), 53);
}

TEST_F(OtherViewStart, AProgramOfTheOwnHalfIsStartedAsItsLineSays) {
    EXPECT_EQ(failureOf("C:\\WINDOWS\\System32\\64-weg.exe /x"), 0);
    EXPECT_EQ(started(), Texts{"C:\\WINDOWS\\System32\\64-weg.exe /x"});
}

TEST_F(OtherViewStart, OneThatNeitherHasIsMissing) {
    EXPECT_EQ(failureOf("C:\\WINDOWS\\System32\\fehlt.exe"), 53);
    EXPECT_EQ(failureOf("C:\\WINDOWS\\System32\\32-Ein Ordner"), 53);  // a folder is no program
    EXPECT_EQ(failureOf("fehlt.exe"), 53);
}

TEST_F(OtherViewStart, OneThatIsThereIsNeverMissingWhateverTheStartSays) {
    for (const long error :
         {long{ERROR_FILE_NOT_FOUND}, long{ERROR_PATH_NOT_FOUND}, long{ERROR_ACCESS_DENIED}}) {
        machine().faults.clear();
        machine().faults.fail("CreateProcessA", 2, error);
        EXPECT_EQ(failureOf("C:\\WINDOWS\\System32\\32-weg.exe"), error == ERROR_ACCESS_DENIED ? 70 : 5);
    }
}

TEST_F(OtherViewStart, TheShellGetsItWhereItWantsMoreRights) {
    machine().faults.fail("CreateProcessA", 2, 740);
    machine().faults.fail("ShellExecuteA", 1, 42);
    EXPECT_EQ(failureOf("C:\\WINDOWS\\System32\\32-weg.exe /x"), 0);
    EXPECT_EQ(machine().events.of(offline::EventKind::ShellExecute).back().text,
              "C:\\WINDOWS\\SysWOW64\\32-weg.exe");
    EXPECT_EQ(machine().lastRequests.switches, "/x");
}

}  // namespace
}  // namespace bromvale::testing
