// The button of the programs page, on a machine that records what is started.
#include "base/failure.h"
#include "core/log.h"
#include "platform/offline/machine.h"
#include "tests/uninstall/programs_fixture.h"

namespace bromvale::testing {
namespace {

using offline::EventKind;

class UninstallerTest : public ProgramsTest {
  protected:
    // A program whose uninstaller exists.
    void installed(const std::string& name, HKEY hive = HKEY_LOCAL_MACHINE) {
        const std::string file = "C:\\Programme\\" + name + "\\weg.exe";
        writeWholeFile(file, "MZ");
        program(hive, name, name, file + " /still");
    }
    void makeFolders(const Texts& names) {
        for (const std::string& name : names) makeFolderOnDisk("C:\\Programme\\" + name);
    }
    static Texts started() {
        Texts result;
        for (const offline::Event& event : offline::machine().events.of(EventKind::Run))
            result.push_back(event.text);
        return result;
    }
    static std::string commandOf(const std::string& name) {
        return "C:\\Programme\\" + name + "\\weg.exe /still";
    }
    static void click() { form().programs.cmdDeinstall.userClick(); }
    // Of a standard user on Windows 7, with Yes to both questions.
    void removeWithoutRights(HKEY hive) {
        program(hive, "Alpha", "Alpha", "C:\\Weg\\weg.exe");
        openPage();
        offline::machine().setOs({2, 6, 1, 7601});
        offline::machine().rights.token = offline::Rights::Token::Standard;
        list().userSelect({1});
        answer(IDYES);
        answer(IDYES);
        click();
    }
};

TEST_F(UninstallerTest, UninstallingAsksAndStartsTheCommandOnYes) {
    makeFolders({"Alpha"});
    installed("Alpha");
    openPage();
    list().userSelect({1});
    answer(IDYES);
    click();
    ASSERT_EQ(boxes().size(), 1u);
    EXPECT_EQ(boxes()[0].text, "Wollen Sie das Programm Alpha wirklich deinstallieren?");
    EXPECT_EQ(boxes()[0].caption, "Bromvale");
    EXPECT_EQ(boxes()[0].style & 0xFFu, 36u);
    EXPECT_EQ(started(), Texts{commandOf("Alpha")});
    EXPECT_EQ(offline::machine().lastRequests.startState, 1);
    // The row stays until the user refreshes the list.
    EXPECT_EQ(names(), Texts{"Alpha"});
    EXPECT_TRUE(list().item(1).selected());
}

TEST_F(UninstallerTest, NothingIsStartedOnNo) {
    makeFolders({"Alpha"});
    installed("Alpha");
    openPage();
    list().userSelect({1});
    answer(IDNO);
    click();
    EXPECT_EQ(started(), Texts{});
}

TEST_F(UninstallerTest, TwoSelectedProgramsAreStartedAtOnce) {
    makeFolders({"Alpha", "Beta", "Gamma"});
    for (const char* name : {"Alpha", "Beta", "Gamma"}) installed(name);
    openPage();
    list().userSelect({1, 3});
    answer(IDYES);
    answer(IDYES);
    const auto before = offline::machine().clock.elapsed();
    click();
    EXPECT_EQ(started(), (Texts{commandOf("Alpha"), commandOf("Gamma")}));
    EXPECT_EQ(offline::machine().clock.elapsed(), before);
}

TEST_F(UninstallerTest, ReturnClearDeleteAndADoubleClickUninstall) {
    makeFolders({"Alpha"});
    installed("Alpha");
    openPage();
    for (const int key : {12, 13, 46}) {
        list().userSelect({1});
        answer(IDYES);
        list().userKeyDown(key);
    }
    answer(IDYES);
    list().userDoubleClick();
    EXPECT_EQ(started().size(), 4u);
}

// The question stands, and behind it the list loses its rows.
TEST_F(UninstallerTest, RowsThatGoMeanwhileAreReportedAndTheOthersAskedAbout) {
    makeFolders({"Alpha", "Beta"});
    installed("Alpha");
    installed("Beta");
    openPage();
    list().userSelect({1, 2});
    offline::machine().events.sink = [](const offline::Event& event) {
        if (event.kind == EventKind::MessageBox) list().clear();
    };
    switchTracingOn();
    answer(IDYES);
    click();
    offline::machine().events.sink = nullptr;
    EXPECT_EQ(started(), Texts{commandOf("Alpha")});
    EXPECT_EQ(boxes().size(), 1u);
    EXPECT_EQ(
        logOf("cmdDeinstall_Click"),
        (Texts{"started; 0; ", "Alpha soll deinstalliert werden; 0; ",
               "Es wurde keine Datei gewählt.; 35600; Index liegt außerhalb der Grenzen", "endet; 0; "}));
}

TEST_F(UninstallerTest, TheStartIsTraced) {
    makeFolders({"Alpha"});
    installed("Alpha");
    openPage();
    list().userSelect({1});
    switchTracingOn();
    answer(IDYES);
    click();
    EXPECT_EQ(logOf("cmdDeinstall_Click"),
              (Texts{"started; 0; ", "Alpha soll deinstalliert werden; 0; ", "endet; 0; "}));
}

TEST_F(UninstallerTest, TheProgramsOwnEntryStopsEverythingFromItsRowOn) {
    makeFolders({"Alpha", "Gamma"});
    installed("Alpha");
    program(HKEY_LOCAL_MACHINE, "Bromvale", "Der Bromvale 1.0", "C:\\Programme\\Bromvale\\weg.exe");
    installed("Gamma");
    openPage();
    list().userSelect({1, 2, 3});
    switchTracingOn();
    answer(IDYES);
    answer(IDOK);
    click();
    EXPECT_EQ(started(), Texts{commandOf("Alpha")});
    ASSERT_EQ(boxes().size(), 2u);
    EXPECT_EQ(boxes()[1].text,
              "Der Bromvale kann nur über die Windows Systemsteuerung deinstalliert werden.");
    EXPECT_EQ(boxes()[1].caption, "Bromvale");
    EXPECT_EQ(boxes()[1].style & 0xFFu, 64u);
    // No end in the trace.
    EXPECT_EQ(logOf("cmdDeinstall_Click"), (Texts{"started; 0; ", "Alpha soll deinstalliert werden; 0; "}));
}

TEST_F(UninstallerTest, TheOwnNameComparesWithItsCase) {
    makeFolders({"BROMVALER"});
    installed("BROMVALER");
    openPage();
    list().userSelect({1});
    answer(IDYES);
    click();
    EXPECT_EQ(started().size(), 1u);
}

TEST_F(UninstallerTest, AnEmptyCommandIsReportedAndLeavesTheEntry) {
    setString(HKEY_LOCAL_MACHINE, keyOf("Alpha"), "DisplayName", "Alpha");
    openPage();
    list().userSelect({1});
    switchTracingOn();
    answer(IDYES);
    click();
    EXPECT_EQ(boxes().size(), 1u);
    EXPECT_EQ(logOf("cmdDeinstall_Click"),
              (Texts{"started; 0; ", "; 5; Ungültiger Prozeduraufruf oder ungültiges Argument",
                     "Alpha soll deinstalliert werden; 0; ", "endet; 0; "}));
    EXPECT_TRUE(keyExists(HKEY_LOCAL_MACHINE, keyOf("Alpha")));
}

// --- a missing uninstaller ---

TEST_F(UninstallerTest, AMissingUninstallerLeadsToTheQuestionAndOnYesToTheRemovalOfTheKey) {
    program(HKEY_CURRENT_USER, "Alpha", "Alpha", "C:\\Weg\\weg.exe");
    program(HKEY_CURRENT_USER, "Beta", "Beta", "C:\\Weg\\auch.exe");
    openPage();
    list().userSelect({1, 2});
    switchTracingOn();
    answer(IDYES);
    answer(IDYES);
    click();
    ASSERT_EQ(boxes().size(), 2u);
    EXPECT_EQ(boxes()[1].text,
              "Das Programm kann nicht deinstalliert werden, da das Deinstallationsprogramm fehlt.\rSoll der "
              "Eintrag jetzt "
              "entfernt werden?");
    EXPECT_EQ(boxes()[1].caption, "Bromvale");
    EXPECT_EQ(boxes()[1].style & 0xFFu, 36u);
    EXPECT_FALSE(keyExists(HKEY_CURRENT_USER, keyOf("Alpha")));
    // The loop ends here, with a fresh list and a complete copy of the key, but no undo file.
    EXPECT_TRUE(keyExists(HKEY_CURRENT_USER, keyOf("Beta")));
    EXPECT_EQ(names(), Texts{"Beta"});
    EXPECT_EQ(filesIn(BackupPath, "*.*"), Texts{"Vollst\xE4ndig_15112026_071209.reg"});
    EXPECT_EQ(
        logOf("cmdDeinstall_Click"),
        (Texts{"started; 0; ",
               "Das Programm Alpha kann nicht deinstalliert werden.; 53; Datei nicht gefunden",
               "Ordner C:\\Programme\\Bromvale\\Backup\\ angelegt; 76; Pfad nicht gefunden", "endet; 0; "}));
}

TEST_F(UninstallerTest, OnNoTheEntryStaysAndTheNextRowFollows) {
    makeFolders({"Beta"});
    program(HKEY_LOCAL_MACHINE, "Alpha", "Alpha", "C:\\Weg\\weg.exe");
    installed("Beta");
    openPage();
    list().userSelect({1, 2});
    switchTracingOn();
    answer(IDYES);
    answer(IDNO);
    answer(IDYES);
    click();
    EXPECT_TRUE(keyExists(HKEY_LOCAL_MACHINE, keyOf("Alpha")));
    EXPECT_EQ(started(), Texts{commandOf("Beta")});
    EXPECT_EQ(logOf("cmdDeinstall_Click"), (Texts{"started; 0; ", "Alpha soll deinstalliert werden; 0; ",
                                                  "Beta soll deinstalliert werden; 0; ", "endet; 0; "}));
}

TEST_F(UninstallerTest, AKeyWithSubKeysStaysOnTheNtFamily) {
    program(HKEY_LOCAL_MACHINE, "Alpha", "Alpha", "C:\\Weg\\weg.exe");
    makeKey(HKEY_LOCAL_MACHINE, keyOf("Alpha") + "\\Unten");
    openPage();
    list().userSelect({1});
    answer(IDYES);
    answer(IDYES);
    click();
    EXPECT_EQ(names(), Texts{"Alpha"});
}

// --- rights ---

TEST_F(UninstallerTest, AnEntryOfTheMachineStaysWhereTheRightsAreMissing) {
    removeWithoutRights(HKEY_LOCAL_MACHINE);
    EXPECT_EQ(
        asked().back(),
        "Ihnen fehlen die Rechte, Schlüssel unterhalb von HKEY_LOCAL_MACHINE zu entfernen.\r\nDer Eintrag "
        "bleibt erhalten.");
    EXPECT_TRUE(keyExists(HKEY_LOCAL_MACHINE, keyOf("Alpha")));
    EXPECT_EQ(filesIn(folder() + "Backup\\", "*"), Texts{});
}

TEST_F(UninstallerTest, AnEntryOfTheUserGoesWithoutRights) {
    removeWithoutRights(HKEY_CURRENT_USER);
    EXPECT_EQ(boxes().size(), 2u);
    EXPECT_FALSE(keyExists(HKEY_CURRENT_USER, keyOf("Alpha")));
}

TEST_F(UninstallerTest, WithoutAPlaceForItsCopyNoEntryGoes) {
    program(HKEY_CURRENT_USER, "Alpha", "Alpha", "C:\\Weg\\weg.exe");
    openPage();
    offline::machine().drives.protect("C:\\Programme\\Bromvale");
    list().userSelect({1});
    answer(IDYES);
    answer(IDYES);
    click();
    EXPECT_EQ(
        asked().back(),
        "In den Ordner des Programms kann nicht geschrieben werden:\r\nC:\\Programme\\Bromvale\\\r\n\r\nOhne "
        "Sicherungsdatei wird nichts entfernt.");
    EXPECT_TRUE(keyExists(HKEY_CURRENT_USER, keyOf("Alpha")));
    EXPECT_EQ(names(), Texts{"Alpha"});
}

// --- faults ---

class UninstallerFaultsTest : public UninstallerTest,
                              public ::testing::WithParamInterface<std::pair<long, int>> {};

TEST_P(UninstallerFaultsTest, AStartThatFailsTouchesNoEntryAndTheNextOneIsStarted) {
    makeFolders({"Alpha", "Beta"});
    installed("Alpha");
    installed("Beta");
    openPage();
    list().userSelect({1, 2});
    // A file that is there is not missing, whatever the system says.
    if (GetParam().second == 53) offline::machine().drives.erase("C:\\Programme\\Alpha\\weg.exe");
    offline::machine().faults.fail("CreateProcessA", 1, GetParam().first);
    answer(IDYES);
    if (GetParam().second == 53) answer(IDNO);
    answer(IDYES);
    click();
    EXPECT_EQ(started(), Texts{commandOf("Beta")});
    EXPECT_EQ(names(), (Texts{"Alpha", "Beta"}));
    EXPECT_TRUE(keyExists(HKEY_LOCAL_MACHINE, keyOf("Alpha")));
    const Texts log = logOf("cmdDeinstall_Click");
    if (GetParam().second == 53) {
        EXPECT_EQ(boxes().size(), 3u);
        EXPECT_EQ(log, Texts{});
    } else {
        EXPECT_EQ(boxes().size(), 2u);
        ASSERT_EQ(log.size(), 1u);
        EXPECT_EQ(log[0].substr(0, log[0].find("; ", 2)), "; " + std::to_string(GetParam().second));
    }
}

INSTANTIATE_TEST_SUITE_P(
    Results, UninstallerFaultsTest,
    ::testing::Values(std::pair{long{ERROR_FILE_NOT_FOUND}, 53}, std::pair{long{ERROR_PATH_NOT_FOUND}, 53},
                      std::pair{long{ERROR_ACCESS_DENIED}, 70}, std::pair{long{ERROR_SHARING_VIOLATION}, 70},
                      std::pair{long{ERROR_NOT_READY}, 71}, std::pair{long{ERROR_BAD_NETPATH}, 76},
                      std::pair{long{ERROR_BAD_EXE_FORMAT}, 5}));

TEST_F(UninstallerTest, AnEntryThatCannotBeRemovedStaysInTheList) {
    for (const char* operation : {"RegOpenKeyExA", "RegDeleteKeyA"}) {
        offline::machine().faults.clear();
        program(HKEY_LOCAL_MACHINE, "Alpha", "Alpha", "C:\\Weg\\weg.exe");
        openPage();
        list().userSelect({1});
        answer(IDYES);
        answer(IDYES);
        offline::machine().faults.fail(operation, 1, ERROR_ACCESS_DENIED);
        click();
        EXPECT_EQ(names(), Texts{"Alpha"}) << operation;
        EXPECT_TRUE(keyExists(HKEY_LOCAL_MACHINE, keyOf("Alpha"))) << operation;
    }
}

TEST_F(UninstallerTest, AnEntryThatVanishedMeanwhileIsGoneAfterTheClick) {
    program(HKEY_LOCAL_MACHINE, "Alpha", "Alpha", "C:\\Weg\\weg.exe");
    program(HKEY_LOCAL_MACHINE, "Beta", "Beta", "C:\\Weg\\weg.exe");
    openPage();
    ASSERT_TRUE(offline::machine().registry.deleteKey("HKEY_LOCAL_MACHINE\\" + keyOf("Alpha")));
    list().userSelect({1});
    answer(IDYES);
    answer(IDYES);
    click();
    EXPECT_EQ(names(), Texts{"Beta"});
}

TEST_F(UninstallerTest, EachReadingOfTheRegistryMayFailAndTheOtherProgramsAreListed) {
    for (const char* name : {"Alpha", "Beta", "Gamma"}) program(HKEY_LOCAL_MACHINE, name, name, "");
    for (const long result : {long{ERROR_FILE_NOT_FOUND}, long{ERROR_ACCESS_DENIED}}) {
        for (const char* operation : {"RegOpenKeyExA", "RegQueryValueExA", "RegEnumValueA", "RegEnumKeyA"}) {
            offline::machine().faults.clear();
            offline::machine().faults.startCounting();
            form().programs.ShowDeinstall();
            ASSERT_EQ(names().size(), 3u);
            const auto calls = offline::machine().faults.calls(operation);
            for (unsigned call = 1; call <= calls; ++call) {
                offline::machine().faults.clear();
                offline::machine().faults.fail(operation, call, result);
                form().programs.ShowDeinstall();
                EXPECT_LE(names().size(), 3u);
                EXPECT_EQ(form().StatusBar_.panelText(1), "Status");
            }
        }
    }
    offline::machine().faults.clear();
    form().programs.ShowDeinstall();
    EXPECT_EQ(names(), (Texts{"Alpha", "Beta", "Gamma"}));
    EXPECT_EQ(asked(), Texts{});
}

// --- other failures of the reading ---

TEST_F(UninstallerTest, AnyOtherFailureOfTheReadingIsShownAndEndsIt) {
    program(HKEY_LOCAL_MACHINE, "Alpha", "Alpha", "");
    openPage();
    atPump(1, [] { bromvale::raise(7); });
    form().programs.ShowDeinstall();
    EXPECT_EQ(logLines(), Texts{"frmMain; ShowDeinstall; Programm Deinstallation konnte nicht angezeigt "
                                "werden.; 7; Nicht genügend Speicher"});
    EXPECT_EQ(names(), Texts{});
    EXPECT_EQ(form().StatusBar_.panelText(1), "Status");
    EXPECT_EQ(form().mousePointer(), MousePointer::Default);
}

// What a report shows, beside its line in the log.
struct ShownReport {
    std::string routine;
    std::int32_t number;
    std::string description;
    bool operator==(const ShownReport&) const = default;
};

class UninstallerReports : public UninstallerTest {
  protected:
    UninstallerReports() {
        setErrorDialog([this](std::string_view modul, std::string_view funktion, std::int32_t number,
                              std::string_view description, std::int32_t) {
            shown_.push_back(
                {std::string(modul) + "; " + std::string(funktion), number, std::string(description)});
        });
    }
    ~UninstallerReports() override { setErrorDialog(nullptr); }
    std::vector<ShownReport> shown_;
};

TEST_F(UninstallerReports, AnInvalidCallWhileReadingIsLoggedAndNotShown) {
    atPump(1, [] { bromvale::raise(5); });
    form().programs.ShowDeinstall();
    EXPECT_EQ(logLines(), Texts{"frmMain; ShowDeinstall; Programm Deinstallation konnte nicht angezeigt "
                                "werden.; 5; Ungültiger Prozeduraufruf oder ungültiges Argument"});
    EXPECT_TRUE(shown_.empty());
}

TEST_F(UninstallerReports, AnyOtherFailureOfTheReadingIsShownInTheErrorDialog) {
    atPump(1, [] { bromvale::raise(7); });
    form().programs.ShowDeinstall();
    EXPECT_EQ(logLines(), Texts{"frmMain; ShowDeinstall; Programm Deinstallation konnte nicht angezeigt "
                                "werden.; 7; Nicht genügend Speicher"});
    EXPECT_EQ(shown_, (std::vector<ShownReport>{{"frmMain; ShowDeinstall", 7, "Nicht genügend Speicher"}}));
}

TEST_F(UninstallerReports, AStartThatFailsIsLoggedAndNotShown) {
    makeFolders({"Alpha"});
    installed("Alpha");
    openPage();
    list().userSelect({1});
    offline::machine().faults.fail("CreateProcessA", 1, ERROR_ACCESS_DENIED);
    answer(IDYES);
    click();
    EXPECT_EQ(logLines(), Texts{"frmMain; cmdDeinstall_Click; ; 70; Zugriff verweigert"});
    EXPECT_TRUE(shown_.empty());
}

// --- the menu ---

TEST_F(UninstallerTest, TheRightButtonOpensTheMenuWhoseEntriesDoAsTheButtons) {
    makeFolders({"Alpha"});
    installed("Alpha");
    openPage();
    list().userSelect({1});
    auto& machine = offline::machine();
    machine.menuChoices = {"mnuPopUpDeinstDeinstall", "mnuPopUpDeinstRefresh"};
    answer(IDYES);
    list().userMouseUp(kRight);
    EXPECT_EQ(started(), Texts{commandOf("Alpha")});
    ASSERT_EQ(machine.events.count(EventKind::Menu), 1u);
    EXPECT_EQ(machine.events.of(EventKind::Menu)[0].text,
              "markiertes Programm &deinstallieren | &Ansicht aktualisieren");
    program(HKEY_LOCAL_MACHINE, "Beta", "Beta", "");
    list().userMouseUp(kRight);
    EXPECT_EQ(names(), (Texts{"Alpha", "Beta"}));
}

}  // namespace
}  // namespace bromvale::testing
