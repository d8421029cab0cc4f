// Registrations by real libraries, which the build makes beside the tests.
#include "core/log.h"
#include "core/startup/check_libs.h"
#include "core/state.h"
#include "core/time.h"
#include "platform/events.h"
#include "platform/win32/system/windows.h"
#include "tests/support/test_machine.h"
#include "ui/frm_login.h"

namespace bromvale {
namespace {

using Lines = std::vector<std::string>;

constexpr const char* kClass = "Software\\Classes\\CLSID\\{71A27032-C7D8-11D2-BEF8-525400DFB47A}";

class RealRegistration : public testing::TestMachine {
  protected:
    RealRegistration() {
        fillState();
        SysDir = folder();
        makeComponents(folder());
        RegDeleteKeyA(HKEY_LOCAL_MACHINE, kClass);
        setErrorDialog([this](auto, auto, std::int32_t nummer, auto, auto) { dialogs.push_back(nummer); });
    }
    ~RealRegistration() override { setErrorDialog(nullptr); }
    // Puts the library in the place of the first component.
    std::string install(const std::string& library) {
        std::string path = folder() + "SSubTmr6.dll";
        const std::string from = std::string(BROMVALE_COMPONENTS_DIR "/") + library;
        EXPECT_TRUE(CopyFileA(from.c_str(), path.c_str(), FALSE)) << from;
        return path;
    }
    std::vector<int> dialogs;
};

TEST_F(RealRegistration, AGoodLibraryRegistersItsClassBehindTheWaitingWindow) {
    const std::string path = install("component_good.dll");
    std::string shown;
    setPumpObserver([&] {
        if (frmLogin().visible()) shown = frmLogin().lblLogin.caption();
    });
    const double start = secondsOfDay();
    CheckLibs();
    setPumpObserver(nullptr);
    EXPECT_GE(secondsOfDay() - start, 1.0);
    EXPECT_EQ(shown, "Die Komponente " + path + " wird nachregistriert.");
    EXPECT_EQ(stringValue(HKEY_LOCAL_MACHINE, kClass, ""), "Registriert");
    EXPECT_EQ(LastRegisterResult, S_OK);
    EXPECT_EQ(logLines(), Lines{"modLibRegister; RegisterServer; " + path + "; 0; "});
    EXPECT_TRUE(dialogs.empty());
    EXPECT_EQ(GetModuleHandleA(path.c_str()), nullptr) << "the library is released";
    // The next start finds the class.
    CheckLibs();
    EXPECT_EQ(logLines().size(), 1u);
}

TEST_F(RealRegistration, ZeroTakesTheClassBack) {
    const std::string path = install("component_good.dll");
    setString(HKEY_LOCAL_MACHINE, kClass, "", "da");
    RegisterServer(nullptr, path, 0);
    EXPECT_FALSE(keyExists(HKEY_LOCAL_MACHINE, kClass));
    EXPECT_EQ(LastRegisterResult, S_FALSE);
}

TEST_F(RealRegistration, AFailureInsideTheLibraryIsToldToNobody) {
    const std::string path = install("component_failing.dll");
    CheckLibs();
    EXPECT_EQ(LastRegisterResult, static_cast<std::int32_t>(E_ACCESSDENIED));
    EXPECT_EQ(logLines(), Lines{"modLibRegister; RegisterServer; " + path + "; 0; "});
    EXPECT_TRUE(dialogs.empty());
    EXPECT_TRUE(boxes().empty());
}

TEST_F(RealRegistration, ALibraryWithoutTheEntryIsNotCalled) {
    const std::string path = install("component_empty.dll");
    LastRegisterResult = 7;
    CheckLibs();
    EXPECT_EQ(LastRegisterResult, 0);
    EXPECT_EQ(logLines(), Lines{"modLibRegister; RegisterServer; " + path + "; 0; "});
    EXPECT_TRUE(dialogs.empty());
}

TEST_F(RealRegistration, AFileThatIsNoLibraryIsNotCalled) {
    writeWholeFile(folder() + "SSubTmr6.dll", "kein Programm");
    CheckLibs();
    EXPECT_EQ(logLines().size(), 1u);
    EXPECT_TRUE(dialogs.empty());
    EXPECT_TRUE(boxes().empty());
}

}  // namespace
}  // namespace bromvale
