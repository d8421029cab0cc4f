// What follows a scan by itself: restart and close, which end a real process.
#include "platform/offline/machine.h"
#include "repair/reboot.h"
#include "tests/scanner/scan_fixture.h"

namespace bromvale::testing {
namespace {

using offline::EventKind;

class FollowUpTest : public ScanTest {
  protected:
    FollowUpTest() {
        offline::machine().terminateReturns = true;
        setString(HKEY_LOCAL_MACHINE, "Software\\Classes\\CLSID\\{A}\\InprocServer32", "",
                  "C:\\Fehlt\\a.dll");
        setString(HKEY_LOCAL_MACHINE, "Software\\Classes\\CLSID\\{B}", "", "b");
        static_cast<void>(form());
        switchTracingOn();
    }
    std::ptrdiff_t logged(std::string_view text) {
        const Texts log = logLines();
        return std::count(log.begin(), log.end(), "frmMain; cmdStart_Click; " + std::string(text) + "; 0; ");
    }
    static std::size_t events(EventKind kind) { return offline::machine().events.count(kind); }
};

TEST_F(FollowUpTest, AutoCloseClosesBehindAScanWithFaults) {
    AutoClose = 1;
    form().show();
    scan();
    EXPECT_EQ(logged("AutoClose"), 1);
    EXPECT_EQ(events(EventKind::End), 1u);
    EXPECT_FALSE(form().loaded());
    EXPECT_TRUE(keyExists(HKEY_LOCAL_MACHINE, "Software\\Classes\\CLSID\\{A}"));
}

TEST_F(FollowUpTest, AutoCloseClosesBehindAScanWithoutFaultsAndAutoEntfernenRests) {
    setString(HKEY_LOCAL_MACHINE, "Software\\Classes\\CLSID\\{A}\\InprocServer32", "", "a.dll");
    AutoClose = 1;
    AutoEntfernen = 1;
    scan();
    EXPECT_EQ(logged("AutoClose"), 1);
    EXPECT_EQ(logged("Entfernen gedrückt"), 0);
}

TEST_F(FollowUpTest, WithAutoEntfernenTheCloseIsAskedForTwice) {
    AutoEntfernen = 1;
    AutoClose = 1;
    scan();
    EXPECT_EQ(logged("AutoEntfernen wird gestartet13"), 1);
    EXPECT_EQ(logged("Entfernen gedrückt"), 1);
    EXPECT_EQ(logged("AutoClose"), 2);
    EXPECT_FALSE(keyExists(HKEY_LOCAL_MACHINE, "Software\\Classes\\CLSID\\{A}\\InprocServer32"));
}

TEST_F(FollowUpTest, TheFirstCloseEndsTheProcessWhereNothingHoldsItUp) {
    offline::machine().terminateReturns = false;
    AutoEntfernen = 1;
    AutoClose = 1;
    EXPECT_THROW(scan(), offline::ProcessEnded);
    EXPECT_EQ(logged("AutoClose"), 1);
    EXPECT_FALSE(keyExists(HKEY_LOCAL_MACHINE, "Software\\Classes\\CLSID\\{A}\\InprocServer32"));
}

TEST_F(FollowUpTest, RebootAfterDeleteRestartsAndClosesAndAutoCloseClosesAgain) {
    AutoEntfernen = 1;
    AutoClose = 1;
    RebootAfterDelete = 1;
    scan();
    EXPECT_EQ(logged("AutoClose + Reboot"), 1);
    EXPECT_EQ(logged("AutoClose"), 2);
    const auto restarts = offline::machine().events.of(EventKind::Restart);
    ASSERT_EQ(restarts.size(), 1u);
    EXPECT_EQ(restarts[0].number, 6u);
}

TEST_F(FollowUpTest, ARestartClosesTheWindowWhateverTheOtherSettingsSay) {
    form().show();
    AutoEntfernen = 1;
    RebootAfterDelete = 1;
    scan();
    EXPECT_EQ(events(EventKind::Restart), 1u);
    EXPECT_EQ(events(EventKind::End), 1u);
    EXPECT_FALSE(form().loaded());
}

TEST_F(FollowUpTest, WithMarkedRowsThereIsNeitherRestartNorClose) {
    scan();
    form().scan.chbRegKeysShow.setValue(1);
    form().scan.chbMarkierteKeysEntfernen.setValue(1);
    form().scan.lvwRegKeys.item(1).setSelected(true);
    AutoClose = 1;
    RebootAfterDelete = 1;
    scan();
    EXPECT_EQ(logged("AutoClose + Reboot") + logged("AutoClose"), 0);
    EXPECT_EQ(events(EventKind::Restart), 0u);
    EXPECT_EQ(events(EventKind::End), 0u);
    EXPECT_EQ(form().scan.lvwRegKeys.count(), 1);
    EXPECT_EQ(caption(), "&Entfernen");
    EXPECT_TRUE(form().scan.lvwRegKeys.visible());
}

// --- hostile registries ---

using HostileScanTest = ScanTest;

TEST_F(HostileScanTest, AKeyThatCannotBeOpenedLooksEmptyAndTheNextIsJudged) {
    setString(HKEY_LOCAL_MACHINE, "Software\\Classes\\CLSID\\{A}", "", "a");
    setString(HKEY_LOCAL_MACHINE, "Software\\Classes\\CLSID\\{B}\\InprocServer32", "", "C:\\Fehlt\\b.dll");
    setString(HKEY_LOCAL_MACHINE, "Software\\Classes\\CLSID\\{C}", "", "c");
    ASSERT_TRUE(offline::machine().registry.deny("HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\{A}"));
    scan();
    EXPECT_EQ(rows(), (Texts{
                          "[HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\{A}] | @ |  | -2147483646",
                          "[HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\{B}\\InprocServer32] | @ | "
                          "C:\\\\Fehlt\\\\b.dll | -2147483646",
                          "[HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\{B}] | @ |  | -2147483646",
                      }));
    EXPECT_EQ(logLines(), Texts{});
}

// On the 9x family: the NT family opens no sub key text of more than 260 characters.
TEST_F(HostileScanTest, AThousandNestedLevelsAreOneObject) {
    offline::machine().setOs(*offline::osByName("Windows ME"));
    std::string path = "HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\{A}";
    for (int level = 0; level < 1000; ++level) path += "\\tief";
    ASSERT_TRUE(offline::machine().registry.createKey(path));
    makeKey(HKEY_LOCAL_MACHINE, "Software\\Classes\\CLSID\\{B}");
    setString(HKEY_LOCAL_MACHINE, "Software\\Classes\\CLSID\\{C}", "", "c");
    scan();
    EXPECT_EQ(rows(), (Texts{"[HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\{B}] | @ |  | -2147483646"}));
    EXPECT_EQ(report(), "Nur wenige Fehler gefunden. (1 von 1012 Einträgen = 0,1%)");
}

TEST_F(HostileScanTest, KeysDeletedInTheMiddleOfTheWalkLookEmptyAndTheScanEnds) {
    for (int i = 1; i <= 9; ++i)
        setString(HKEY_LOCAL_MACHINE, "Software\\Classes\\CLSID\\{" + std::to_string(i) + "}", "", "x");
    // Step 1 has three pumps; in step 2 come its own one, the start key's line, sub key {1}.
    atPump(6, [] {
        for (int i = 1; i <= 4; ++i)
            DelKey(kHiveLocalMachine, "Software\\Classes\\CLSID\\{" + std::to_string(i) + "}", READ_CONTROL);
    });
    scan();
    const std::string clsid = "[HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\";
    EXPECT_EQ(rows(), (Texts{
                          clsid + "{1}] | @ |  | -2147483646",
                          clsid + "{2}] | @ |  | -2147483646",
                          clsid + "{3}] | @ |  | -2147483646",
                          clsid + "{4}] | @ |  | -2147483646",
                      }));
    EXPECT_EQ(logLines(), Texts{});
}

// A 16-bit index over the group would end at 32767 entries.
TEST_F(HostileScanTest, AnObjectOf33000ValuesIsJudgedWhole) {
    const std::string key = "Software\\Classes\\CLSID\\{A}\\InprocServer32";
    for (int i = 0; i < 33000; ++i)
        setString(HKEY_LOCAL_MACHINE, key, std::string("w") + std::to_string(100000 + i), "x");
    setString(HKEY_LOCAL_MACHINE, key, "zuletzt", "C:\\Fehlt\\a.dll");
    setString(HKEY_LOCAL_MACHINE, "Software\\Classes\\CLSID\\{B}", "", "b");
    scan();
    EXPECT_EQ(form().scan.lvwRegKeys.count(), 33002);
}

// --- restart ---

using RebootTest = ScanTest;

TEST_F(RebootTest, Windows98RestartsWithoutAskingForTheRight) {
    offline::machine().setOs(*offline::osByName("Windows 98"));
    offline::faults().startCounting();
    EXPECT_FALSE(IsWinNT());
    RebootSystem();
    for (const char* operation : {"OpenProcessToken", "LookupPrivilegeValueA", "AdjustTokenPrivileges"})
        EXPECT_EQ(offline::faults().calls(operation), 0u) << operation;
    const auto restarts = offline::machine().events.of(EventKind::Restart);
    ASSERT_EQ(restarts.size(), 1u);
    EXPECT_EQ(restarts[0].number, 6u);
}

TEST_F(RebootTest, TheNtFamilyAsksForTheRightFirst) {
    Texts calls;
    offline::faults().observe([&](std::string_view operation) { calls.emplace_back(operation); });
    EXPECT_TRUE(IsWinNT());
    calls.clear();
    RebootSystem();
    std::erase(calls, "GetVersionExA");
    std::erase(calls, "GetCurrentProcess");
    EXPECT_EQ(calls,
              (Texts{"OpenProcessToken", "LookupPrivilegeValueA", "AdjustTokenPrivileges", "ExitWindowsEx"}));
    EXPECT_EQ(offline::machine().events.count(EventKind::Restart), 1u);
}

TEST_F(RebootTest, WithoutTheRightNothingHappensAndNothingIsReported) {
    offline::machine().setOs(*offline::osByName("Windows 2000"));
    offline::machine().shutdownPrivilege = false;
    RebootSystem();
    EXPECT_EQ(offline::machine().events.count(EventKind::Restart), 0u);
    EXPECT_EQ(offline::machine().events.count(EventKind::MessageBox), 0u);
    EXPECT_EQ(logLines(), Texts{});
}

}  // namespace
}  // namespace bromvale::testing
