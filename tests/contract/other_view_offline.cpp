// The offline machine as a 64-bit Windows: two system folders, two halves of some keys. What is set up is
// named by where it really lies.
#include "platform/exact/other_view.h"

#include "core/file_helpers.h"
#include "core/registry_layer.h"
#include "platform/files.h"
#include "platform/offline/files/other_half.h"
#include "platform/offline/machine.h"
#include "platform/other_view_api.h"
#include "tests/support/test_machine.h"

namespace bromvale::testing {
namespace {

using offline::Halves;
using offline::machine;
using offline::setHalves;

class TwoHalves : public TestMachine {
  protected:
    TwoHalves() {
        setHalves(Halves::SeenBy64);
        machine().drives.writeFile("C:\\WINDOWS\\SYSTEM32\\nur64.dll", "64");
        machine().drives.writeFile("C:\\WINDOWS\\SysWOW64\\nur32.dll", "32");
        machine().drives.writeFile("C:\\WINDOWS\\SYSTEM32\\drivers\\etc\\hosts", "x");
    }
    static bool found(const std::string& path) { return FileExists(path); }
};

TEST_F(TwoHalves, EachProgramFindsTheFilesOfItsOwnWidthBelowSystem32) {
    EXPECT_TRUE(found("C:\\WINDOWS\\System32\\nur64.dll"));
    EXPECT_FALSE(found("C:\\WINDOWS\\System32\\nur32.dll"));
    EXPECT_FALSE(found("C:\\WINDOWS\\Sysnative\\nur64.dll"));
    setHalves(Halves::SeenBy32);
    EXPECT_FALSE(found("C:\\WINDOWS\\System32\\nur64.dll"));
    EXPECT_TRUE(found("c:\\windows\\\\system32\\nur32.dll"));
    EXPECT_TRUE(found("C:\\WINDOWS\\Sysnative\\nur64.dll"));
    EXPECT_TRUE(found("C:\\WINDOWS\\SysWOW64\\nur32.dll"));
    EXPECT_TRUE(found("C:\\WINDOWS\\System32\\drivers\\etc\\hosts"));
}

TEST_F(TwoHalves, SomeFoldersBelowSystem32AreOfBoth) {
    const char* const shared[] = {"catroot", "CatRoot2", "driverstore", "LogFiles", "spool", "drivers\\etc"};
    const char* const own[] = {"catroot3", "drivers", "drivers\\etcx", "spooler", "etc"};
    const auto pathIn = [](const char* folder) {
        return "C:\\WINDOWS\\SYSTEM32\\" + std::string(folder) + "\\a.dat";
    };
    for (const char* const folder : shared) machine().drives.writeFile(pathIn(folder), "x");
    for (const char* const folder : own) machine().drives.writeFile(pathIn(folder), "x");
    setHalves(Halves::SeenBy32);
    for (const char* const folder : shared) EXPECT_TRUE(found(pathIn(folder))) << folder;
    for (const char* const folder : own) EXPECT_FALSE(found(pathIn(folder))) << folder;
}

TEST_F(TwoHalves, TheOtherViewHasTheFilesOfTheOtherHalf) {
    EXPECT_TRUE(existsInOtherView("C:\\WINDOWS\\System32\\nur32.dll"));
    EXPECT_FALSE(existsInOtherView("C:\\WINDOWS\\System32\\nur64.dll"));
    setHalves(Halves::SeenBy32);
    EXPECT_TRUE(existsInOtherView("C:\\WINDOWS\\System32\\nur64.dll"));
    EXPECT_FALSE(existsInOtherView("C:\\WINDOWS\\System32\\nur32.dll"));
    EXPECT_FALSE(found("C:\\WINDOWS\\System32\\nur64.dll"));  // the view is over
}

TEST_F(TwoHalves, PathsMayBeWrittenAsRegistryTextsHoldThem) {
    for (const Halves halves : {Halves::SeenBy64, Halves::SeenBy32}) {
        setHalves(halves);
        const std::string name = halves == Halves::SeenBy64 ? "nur32.dll" : "nur64.dll";
        for (const char* folder :
             {"c:\\windows\\\\system32\\", "C:/WINDOWS/System32/", "c:\\windows\\system32\\\\",
              "C:\\WINDOWS\\.\\SYSTEM32\\", "c:\\windows\\system\\..\\system32\\",
              "\\\\?\\C:\\Windows\\System32\\", "c:\\..\\windows\\system32\\"}) {
            EXPECT_TRUE(existsInOtherView(folder + name)) << folder;
        }
        EXPECT_TRUE(existsInOtherView("c:\\windows\\system32\\nur*.dll"));
        EXPECT_TRUE(existsInOtherView("c:\\windows\\system32"));
        for (const char* folder : {"c:\\windows\\system32x\\", "c:\\windows\\", "d:\\windows\\system32\\",
                                   "system32\\", "\\", "\\\\server\\windows\\system32\\",
                                   "c:\\windows\\system32\\..\\", "c:windows\\system32\\", ""}) {
            EXPECT_EQ(OtherView(folder + name).path(), "") << folder;
        }
    }
}

TEST_F(TwoHalves, ATurnedViewIsTurnedBackByWhoTurnedItFirst) {
    setHalves(Halves::SeenBy32);
    PVOID first = &first;
    PVOID second = nullptr;
    EXPECT_NE(otherViewFunctions().disableRedirection(&first), 0);
    EXPECT_EQ(first, nullptr);
    EXPECT_NE(otherViewFunctions().disableRedirection(&second), 0);
    EXPECT_NE(second, nullptr);
    EXPECT_TRUE(found("C:\\WINDOWS\\System32\\nur64.dll"));
    EXPECT_NE(otherViewFunctions().revertRedirection(second), 0);
    EXPECT_TRUE(found("C:\\WINDOWS\\System32\\nur64.dll"));
    EXPECT_NE(otherViewFunctions().revertRedirection(first), 0);
    EXPECT_FALSE(found("C:\\WINDOWS\\System32\\nur64.dll"));
}

TEST_F(TwoHalves, WhereThereIsOneFolderOnlyThereIsNoOtherView) {
    setHalves(Halves::None);
    EXPECT_FALSE(existsInOtherView("C:\\WINDOWS\\System32\\nur32.dll"));
    EXPECT_FALSE(existsInOtherView("C:\\WINDOWS\\System32\\nur64.dll"));
    setHalves(Halves::SeenBy64);
    machine().setOs({1, 4, 10, 0x40A07CE});
    EXPECT_FALSE(existsInOtherView("C:\\WINDOWS\\SYSTEM\\nur32.dll"));
}

// Unknown is not there: what the scan makes of it is what it would without the other view.
TEST_F(TwoHalves, ACallThatFailsGivesNoOtherView) {
    for (const char* call : {"GetSystemDirectoryA", "GetSystemWow64DirectoryA", "FindFirstFileA"}) {
        machine().faults.clear();
        machine().faults.fail(call, 1, ERROR_ACCESS_DENIED);
        EXPECT_FALSE(existsInOtherView("C:\\WINDOWS\\System32\\nur32.dll")) << call;
        EXPECT_TRUE(existsInOtherView("C:\\WINDOWS\\System32\\nur32.dll")) << call;
    }
    setHalves(Halves::SeenBy32);
    for (const char* call : {"GetSystemDirectoryA", "Wow64DisableWow64FsRedirection", "FindFirstFileA"}) {
        machine().faults.clear();
        machine().faults.fail(call, 1, ERROR_ACCESS_DENIED);
        EXPECT_FALSE(existsInOtherView("C:\\WINDOWS\\System32\\nur64.dll")) << call;
        EXPECT_TRUE(existsInOtherView("C:\\WINDOWS\\System32\\nur64.dll")) << call;
    }
}

TEST_F(TwoHalves, TheScansQuestionIsAskedInBothAndTracedOnce) {
    static_cast<void>(folder());
    fillState();
    switchTracingOn();
    EXPECT_TRUE(FileExistsInAnyView("C:\\WINDOWS\\System32\\nur32.dll"));
    EXPECT_TRUE(FileExistsInAnyView("C:\\WINDOWS\\System32\\nur64.dll"));
    EXPECT_FALSE(FileExistsInAnyView("C:\\WINDOWS\\System32\\fehlt.dll"));
    EXPECT_EQ(logLines(), (std::vector<std::string>{
                              "modFiles; FileExists; C:\\WINDOWS\\System32\\nur32.dll; Falsch; 0; ",
                              "modFiles; FileExists; C:\\WINDOWS\\System32\\fehlt.dll; Falsch; 0; ",
                          }));
}

TEST_F(TwoHalves, AFileThatIsFoundCostsNothingMore) {
    machine().faults.startCounting();
    EXPECT_TRUE(FileExistsInAnyView("C:\\WINDOWS\\System32\\nur64.dll"));
    EXPECT_EQ(machine().faults.calls("FindFirstFileA"), 1u);
    EXPECT_EQ(machine().faults.calls("GetSystemDirectoryA"), 0u);
}

// --- the registry ---

struct KeyRow {
    const char* named;  // by a program of 32 bits
    const char* real;
};
constexpr KeyRow kKeys[] = {
    {"Software\\Classes\\CLSID\\{A}", "HKEY_LOCAL_MACHINE\\Software\\Classes\\Wow6432Node\\CLSID\\{A}"},
    {"software\\classes\\interface\\{A}",
     "HKEY_LOCAL_MACHINE\\Software\\Classes\\Wow6432Node\\Interface\\{A}"},
    {"Software\\Classes\\TypeLib\\{A}", "HKEY_LOCAL_MACHINE\\Software\\Classes\\TypeLib\\{A}"},
    {"Software\\Classes\\CLSIDx", "HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSIDx"},
    {"Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\a.exe",
     "HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\a.exe"},
    {"Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\a",
     "HKEY_LOCAL_MACHINE\\Software\\Wow6432Node\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\a"},
    {"Software\\Wow6432Node\\x", "HKEY_LOCAL_MACHINE\\Software\\Wow6432Node\\x"},
    {"System\\x", "HKEY_LOCAL_MACHINE\\System\\x"},
};

TEST_F(TwoHalves, AProgramOf32BitsIsLedToItsHalfOfTheRegistry) {
    setHalves(Halves::SeenBy32);
    for (const auto& [named, real] : kKeys) {
        EXPECT_EQ(KeyExist(kHiveLocalMachine, named, READ_CONTROL), 0) << named;
        makeKey(HKEY_LOCAL_MACHINE, named);
        EXPECT_TRUE(machine().registry.exists(real)) << named;
        EXPECT_NE(KeyExist(kHiveLocalMachine, named, READ_CONTROL), 0) << named;
        DelKey(kHiveLocalMachine, named, READ_CONTROL);
        EXPECT_FALSE(machine().registry.exists(real)) << named;
    }
    makeKey(HKEY_CURRENT_USER, "Software\\Classes\\CLSID\\{A}");
    EXPECT_TRUE(machine().registry.exists("HKEY_CURRENT_USER\\Software\\Classes\\Wow6432Node\\CLSID\\{A}"));
    makeKey(HKEY_CURRENT_USER, "Software\\Bromvale");
    EXPECT_TRUE(machine().registry.exists("HKEY_CURRENT_USER\\Software\\Bromvale"));
}

// As 64-bit systems before Windows 7 had them.
TEST_F(TwoHalves, BeforeWindows7AllClassesAreApart) {
    setHalves(Halves::SeenBy32);
    machine().otherHalf.classesApart = true;
    constexpr KeyRow kOlderKeys[] = {
        {"Software\\Classes\\CLSID\\{A}", "HKEY_LOCAL_MACHINE\\Software\\Wow6432Node\\Classes\\CLSID\\{A}"},
        {"software\\classes\\TypeLib\\{A}",
         "HKEY_LOCAL_MACHINE\\Software\\Wow6432Node\\Classes\\TypeLib\\{A}"},
        {"Software\\Wow6432Node\\x", "HKEY_LOCAL_MACHINE\\Software\\Wow6432Node\\x"},
        {"Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\a.exe",
         "HKEY_LOCAL_MACHINE\\Software\\Wow6432Node\\Microsoft\\Windows\\CurrentVersion\\App Paths\\a.exe"},
        {"System\\x", "HKEY_LOCAL_MACHINE\\System\\x"},
    };
    for (const auto& [named, real] : kOlderKeys) {
        makeKey(HKEY_LOCAL_MACHINE, named);
        EXPECT_TRUE(machine().registry.exists(real)) << named;
    }
    makeKey(HKEY_CURRENT_USER, "Software\\Classes\\Interface\\{A}");
    EXPECT_TRUE(
        machine().registry.exists("HKEY_CURRENT_USER\\Software\\Classes\\Wow6432Node\\Interface\\{A}"));
}

TEST_F(TwoHalves, AProgramOf64BitsSeesWhatLiesThere) {
    for (const auto& [named, real] : kKeys) {
        makeKey(HKEY_LOCAL_MACHINE, named);
        EXPECT_TRUE(machine().registry.exists(std::string("HKEY_LOCAL_MACHINE\\") + named)) << real;
    }
}

}  // namespace
}  // namespace bromvale::testing
