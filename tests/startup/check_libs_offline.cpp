// Registrations on the offline machine: calls in their order, the waiting window and its seconds.
#include "core/log.h"
#include "core/startup/check_libs.h"
#include "core/state.h"
#include "platform/events.h"
#include "platform/offline/machine.h"
#include "platform/offline/reg_files/reg_file.h"
#include "tests/support/test_machine.h"
#include "ui/frm_error.h"
#include "ui/frm_login.h"

namespace bromvale {
namespace {

using Lines = std::vector<std::string>;
using offline::EventKind;
using offline::machine;

class Registration : public testing::TestMachine {
  protected:
    Registration() {
        fillState();
        makeComponents(SysDir);
    }
    void loseClass(const std::string& id, const std::string& file) {
        EXPECT_EQ(RegDeleteKeyA(HKEY_LOCAL_MACHINE, ("Software\\Classes\\CLSID\\" + id).c_str()), 0);
        writeWholeFile(SysDir + file, "");
    }
    static Lines calls() {
        Lines texts;
        for (const auto& event : machine().events.of(EventKind::Library))
            texts.push_back(event.caption + " " + event.text);
        return texts;
    }
};

constexpr const char* kTimer = "{71A27032-C7D8-11D2-BEF8-525400DFB47A}";
constexpr const char* kSocketClass = "{248DD896-BB45-11CF-9ABC-0080C7E7B78D}";

TEST_F(Registration, AMissingClassIsRegisteredFromItsFileBehindTheWaitingWindow) {
    loseClass(kTimer, "SSubTmr6.dll");
    loseClass(kSocketClass, "mswinsck.ocx");
    Lines shown;
    setPumpObserver([&] {
        if (!frmLogin().visible()) return;
        const std::string& text = frmLogin().lblLogin.caption();
        if (shown.empty() || shown.back() != text) shown.push_back(text);
    });
    const auto start = machine().clock.elapsed();
    CheckLibs();
    setPumpObserver(nullptr);
    EXPECT_EQ(calls(), (Lines{"DllRegisterServer C:\\WINDOWS\\SYSTEM32\\SSubTmr6.dll",
                              "DllRegisterServer C:\\WINDOWS\\SYSTEM32\\mswinsck.ocx"}));
    EXPECT_EQ(shown, (Lines{"Die Komponente C:\\WINDOWS\\SYSTEM32\\SSubTmr6.dll wird nachregistriert.",
                            "Die Komponente C:\\WINDOWS\\SYSTEM32\\mswinsck.ocx wird nachregistriert."}));
    EXPECT_GE(machine().clock.elapsed() - start, 2000);
    EXPECT_LT(machine().clock.elapsed() - start, 2200);
    EXPECT_FALSE(frmLogin().visible());
    // A line each, although tracing is off.
    EXPECT_EQ(logLines(),
              (Lines{"modLibRegister; RegisterServer; C:\\WINDOWS\\SYSTEM32\\SSubTmr6.dll; 0; ",
                     "modLibRegister; RegisterServer; C:\\WINDOWS\\SYSTEM32\\mswinsck.ocx; 0; "}));
    EXPECT_TRUE(boxes().empty());
}

TEST_F(Registration, AFailureInsideTheLibraryIsKeptAndToldToNobody) {
    loseClass(kTimer, "SSubTmr6.dll");
    machine().libraryEntries["C:\\WINDOWS\\SYSTEM32\\SSubTmr6.dll"] = {true, static_cast<LONG>(0x80070005)};
    CheckLibs();
    EXPECT_EQ(LastRegisterResult, static_cast<LONG>(0x80070005));
    EXPECT_TRUE(boxes().empty());
    EXPECT_FALSE(frmError().loaded());
    EXPECT_EQ(logLines(), Lines{"modLibRegister; RegisterServer; C:\\WINDOWS\\SYSTEM32\\SSubTmr6.dll; 0; "});
}

TEST_F(Registration, WithoutAnEntryNothingIsCalled) {
    LastRegisterResult = 7;
    loseClass(kTimer, "SSubTmr6.dll");
    machine().libraryEntries["C:\\WINDOWS\\SYSTEM32\\SSubTmr6.dll"] = {false, 0};
    CheckLibs();
    EXPECT_EQ(calls(), Lines{});
    EXPECT_EQ(LastRegisterResult, 0);
    EXPECT_EQ(logLines().size(), 1u);
}

TEST_F(Registration, ALibraryThatCannotBeLoadedLeavesItsLineOnly) {
    loseClass(kTimer, "SSubTmr6.dll");
    machine().faults.fail("LoadLibraryA", 1, ERROR_MOD_NOT_FOUND);
    CheckLibs();
    EXPECT_EQ(calls(), Lines{});
    EXPECT_EQ(logLines().size(), 1u);
    EXPECT_TRUE(boxes().empty());
}

TEST_F(Registration, ZeroTakesTheRegistrationBack) {
    writeWholeFile("C:\\x.dll", "");
    RegisterServer(nullptr, "C:\\x.dll", 0);
    RegisterServer(nullptr, "C:\\x.dll", 1);
    EXPECT_EQ(calls(), (Lines{"DllUnregisterServer C:\\x.dll", "DllRegisterServer C:\\x.dll"}));
}

TEST_F(Registration, SeveralMissingFilesShareOneDialogThatShowsTheLast) {
    registerErrorDialog();
    EXPECT_EQ(RegDeleteKeyA(HKEY_LOCAL_MACHINE, (std::string("Software\\Classes\\CLSID\\") + kTimer).c_str()),
              0);
    EXPECT_EQ(
        RegDeleteKeyA(HKEY_LOCAL_MACHINE, (std::string("Software\\Classes\\CLSID\\") + kSocketClass).c_str()),
        0);
    CheckLibs();
    EXPECT_TRUE(frmError().visible());
    EXPECT_EQ(frmError().lblErrNr.caption(), "60009");
    EXPECT_EQ(frmError().lblErrDesc.caption(),
              "Die Datei mswinsck.ocx wurde nicht gefunden. Deinstallieren Sie das Programm und installieren "
              "Sie es neu.");
    EXPECT_EQ(frmError().lblErrHow.caption(), "Modul: modLibRegister Funktion: CheckLibs");
    EXPECT_EQ(frmError().cmdSchließen.caption(), "Beenden");
}

TEST(ComponentsFile, TheClassesThatASetUpAddsMakeTheCheckPass) {
    const auto error =
        offline::loadRegFile(BROMVALE_SOURCE_DIR "/resources/components.reg", machine().registry);
    ASSERT_FALSE(error) << error->reason;
    machine().drives.writeFile("C:\\WINDOWS\\SYSTEM32\\wininet.dll", "");
    SysDir = "C:\\WINDOWS\\SYSTEM32\\";
    int dialogs = 0;
    setErrorDialog([&](auto, auto, auto, auto, auto) { ++dialogs; });
    CheckLibs();
    setErrorDialog(nullptr);
    EXPECT_EQ(dialogs, 0);
    EXPECT_FALSE(InternetMissing);
    // With a value each, so that a scan does not take them for empty keys.
    for (HKEY key = nullptr; const char* id : {kTimer, kSocketClass}) {
        ASSERT_EQ(RegOpenKeyExA(HKEY_LOCAL_MACHINE, (std::string("Software\\Classes\\CLSID\\") + id).c_str(),
                                0, KEY_READ, &key),
                  0);
        EXPECT_EQ(RegQueryValueExA(key, "", nullptr, nullptr, nullptr, nullptr), 0);
        RegCloseKey(key);
    }
}

}  // namespace
}  // namespace bromvale
