// The check of the components: what is missing, in its order, and what the user is told.
#include "core/startup/check_libs.h"
#include "core/log.h"
#include "core/state.h"
#include "platform/controls/form.h"
#include "platform/files.h"
#include "platform/registry.h"
#include "tests/support/test_machine.h"

namespace bromvale {
namespace {

using Lines = std::vector<std::string>;

struct Row {
    const char* file;
    const char* classId;
    int number;
};
constexpr Row kRows[] = {
    {"SSubTmr6.dll", "{71A27032-C7D8-11D2-BEF8-525400DFB47A}", 60000},
    {"vbalLBar6.ocx", "{FE1D1F9D-EC4B-11D3-B06C-00500427A693}", 60001},
    {"vbalIml6.ocx", "{396F7AC9-A0DD-11D3-93EC-00C0DFE7442A}", 60002},
    {"hhctrl.ocx", "{4662DAB0-D393-11D0-9A56-00C04FB68B66}", 60003},
    {"mscomctl.ocx", "{1EFB6596-857C-11D1-B16A-00C0F0283628}", 60006},
    {"msvbvm60.dll", "{D5DE8D20-5BB8-11D1-A1E3-00A0C90F2731}", 60007},
    {"mswinsck.ocx", "{248DD896-BB45-11CF-9ABC-0080C7E7B78D}", 60009},
};

std::string missing(const std::string& file) {
    return "Die Datei " + file +
           " wurde nicht gefunden. Deinstallieren Sie das Programm und installieren Sie es neu.";
}
const std::string kNoInternet =
    "Die Datei wininet.dll wurde nicht gefunden. Es scheint, das kein Microsoft Internet Explorer "
    "installiert ist.";

class Components : public testing::TestMachine {
  protected:
    Components() {
        fillState();
        SysDir = folder();
        makeComponents(folder());
        setErrorDialog([this](std::string_view modul, std::string_view funktion, std::int32_t nummer,
                              std::string_view beschreibung, std::int32_t stil) {
            dialogs.push_back(std::string(modul) + "|" + std::string(funktion) + "|" +
                              std::to_string(nummer) + "|" + std::string(beschreibung) + "|" +
                              std::to_string(stil));
        });
    }
    ~Components() override { setErrorDialog(nullptr); }
    static void dropClass(const std::string& id) {
        EXPECT_EQ(RegDeleteKeyA(HKEY_LOCAL_MACHINE, ("Software\\Classes\\CLSID\\" + id).c_str()), 0);
    }
    void dropInternet() { EXPECT_TRUE(DeleteFileA((folder() + "wininet.dll").c_str())); }
    static Lines formNames() {
        Lines names;
        for (const Form* form : loadedForms()) names.push_back(form->name());
        return names;
    }
    Lines dialogs;
};

TEST_F(Components, OnAHealthyMachineNothingIsShownOrLogged) {
    CheckLibs();
    EXPECT_EQ(dialogs, Lines{});
    EXPECT_EQ(logLines(), Lines{});
    EXPECT_EQ(formNames(), Lines{});
    EXPECT_FALSE(InternetMissing);
}

TEST_F(Components, TheCheckIsTraced) {
    switchTracingOn();
    CheckLibs();
    const Lines lines = logLines();
    ASSERT_GE(lines.size(), 2u);
    EXPECT_EQ(lines.front(), "modLibRegister; CheckLibs; started; 0; ");
    EXPECT_EQ(lines.back(), "modLibRegister; CheckLibs; endet; 0; ");
}

TEST_F(Components, EachOneThatIsMissingWithItsFileIsAFatalReport) {
    for (const Row& row : kRows) {
        dialogs.clear();
        dropClass(row.classId);
        CheckLibs();
        EXPECT_EQ(dialogs, Lines{"modLibRegister|CheckLibs|" + std::to_string(row.number) + "|" +
                                 missing(row.file) + "|16"});
        EXPECT_EQ(logLines().back(),
                  "modLibRegister; CheckLibs; ; " + std::to_string(row.number) + "; " + missing(row.file));
        EXPECT_EQ(formNames(), Lines{});
        setString(HKEY_LOCAL_MACHINE, std::string("Software\\Classes\\CLSID\\") + row.classId, "", "da");
    }
    EXPECT_FALSE(InternetMissing);
}

TEST_F(Components, AClassWithoutAnyValueIsThere) {
    dropClass(kRows[0].classId);
    makeKey(HKEY_LOCAL_MACHINE, std::string("Software\\Classes\\CLSID\\") + kRows[0].classId);
    CheckLibs();
    EXPECT_EQ(dialogs, Lines{});
}

TEST_F(Components, AClassOfTheUserAloneIsThere) {
    for (const Row& row : kRows) {
        dropClass(row.classId);
        setString(HKEY_CURRENT_USER, std::string("Software\\Classes\\CLSID\\") + row.classId, "", "da");
    }
    CheckLibs();
    EXPECT_EQ(dialogs, Lines{});
    EXPECT_EQ(logLines(), Lines{});
}

TEST_F(Components, OneClassInNeitherHalfIsReportedAlone) {
    for (const Row& row : kRows) dropClass(row.classId);
    for (const Row& row : kRows) {
        if (row.number == 60006) continue;
        makeKey(HKEY_CURRENT_USER, std::string("Software\\Classes\\CLSID\\") + row.classId);
    }
    CheckLibs();
    EXPECT_EQ(dialogs, Lines{"modLibRegister|CheckLibs|60006|" + missing("mscomctl.ocx") + "|16"});
}

TEST_F(Components, TheInternetLibraryMissingIsLoggedAndSwitchesTheBugReportOff) {
    dropInternet();
    CheckLibs();
    EXPECT_TRUE(InternetMissing);
    EXPECT_EQ(dialogs, Lines{});
    EXPECT_EQ(logLines(), Lines{"modLibRegister; CheckLibs; " + kNoInternet + "; 60008; " + kNoInternet});
}

TEST_F(Components, EverythingMissingIsToldInTheOrderOfTheTable) {
    for (const Row& row : kRows) dropClass(row.classId);
    dropInternet();
    CheckLibs();
    Lines expected;
    for (const Row& row : kRows) {
        expected.push_back("modLibRegister|CheckLibs|" + std::to_string(row.number) + "|" +
                           missing(row.file) + "|16");
    }
    EXPECT_EQ(dialogs, expected);
    const Lines lines = logLines();
    ASSERT_EQ(lines.size(), 8u);
    EXPECT_EQ(lines[6], "modLibRegister; CheckLibs; " + kNoInternet + "; 60008; " + kNoInternet);
    EXPECT_EQ(lines[7], "modLibRegister; CheckLibs; ; 60009; " + missing("mswinsck.ocx"));
}

}  // namespace
}  // namespace bromvale
