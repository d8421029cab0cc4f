// What the list of installed programs shows, and how mouse and keyboard work on it.
#include "tests/uninstall/programs_fixture.h"

namespace bromvale::testing {
namespace {

using ProgramsListTest = ProgramsTest;

TEST_F(ProgramsListTest, AKeyOfTheSameNameInTheOtherHiveGivesNoCommand) {
    setString(HKEY_LOCAL_MACHINE, keyOf("Werkzeug"), "DisplayName", "Werkzeug");
    setString(HKEY_CURRENT_USER, keyOf("Werkzeug"), "UninstallString", "C:\\fremd.exe");
    openPage();
    ASSERT_EQ(list().count(), 1);
    EXPECT_EQ(list().item(1).column(kUninstallCommand), "");
}

TEST_F(ProgramsListTest, AProgramIsARowWithItsCommandRootAndKey) {
    program(HKEY_LOCAL_MACHINE, "Alpha", "Alpha 1.0", "C:\\Alpha\\weg.exe /still");
    openPage();
    EXPECT_EQ(rows(), Texts{"Alpha 1.0 | C:\\Alpha\\weg.exe /still | -2147483646 | "
                            "Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Alpha]"});
    EXPECT_EQ(list().item(1).smallIcon(), 5);
}

TEST_F(ProgramsListTest, TheMachinesProgramsComeBeforeTheUsersAndBothRootsHaveTheirOwnRow) {
    program(HKEY_CURRENT_USER, "Alpha", "Alpha", "c:\\benutzer.exe");
    program(HKEY_LOCAL_MACHINE, "Alpha", "Alpha", "c:\\rechner.exe");
    program(HKEY_LOCAL_MACHINE, "Beta", "Beta", "c:\\beta.exe");
    openPage();
    const std::string key = "Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\";
    EXPECT_EQ(rows(), (Texts{
                          "Alpha | c:\\rechner.exe | -2147483646 | " + key + "Alpha]",
                          "Beta | c:\\beta.exe | -2147483646 | " + key + "Beta]",
                          "Alpha | c:\\benutzer.exe | -2147483647 | " + key + "Alpha]",
                      }));
}

TEST_F(ProgramsListTest, ANameWithoutCommandHasAnEmptySecondColumn) {
    setString(HKEY_LOCAL_MACHINE, keyOf("Alpha"), "DisplayName", "Alpha");
    openPage();
    EXPECT_EQ(names(), Texts{"Alpha"});
    EXPECT_EQ(list().item(1).column(kUninstallCommand), "");
}

TEST_F(ProgramsListTest, AKeyWithoutNameHasNoRowWhateverElseItHas) {
    setString(HKEY_LOCAL_MACHINE, keyOf("Alpha"), "UninstallString", "c:\\weg.exe");
    setString(HKEY_LOCAL_MACHINE, keyOf("Alpha"), "Publisher", "Jemand");
    makeKey(HKEY_LOCAL_MACHINE, keyOf("Leer"));
    openPage();
    EXPECT_EQ(names(), Texts{});
}

TEST_F(ProgramsListTest, ACommandIsNeverGivenToTheProgramOfAnotherKey) {
    setString(HKEY_LOCAL_MACHINE, keyOf("Alpha"), "DisplayName", "Alpha");
    setString(HKEY_LOCAL_MACHINE, keyOf("Beta"), "UninstallString", "c:\\beta.exe");
    openPage();
    EXPECT_EQ(names(), Texts{"Alpha"});
    EXPECT_EQ(list().item(1).column(kUninstallCommand), "");
}

TEST_F(ProgramsListTest, ANameInADeeperKeyHasARowOfItsOwn) {
    program(HKEY_LOCAL_MACHINE, "Alpha", "Alpha", "c:\\alpha.exe");
    program(HKEY_LOCAL_MACHINE, "Alpha\\Zusatz", "Zusatz", "c:\\zusatz.exe");
    openPage();
    EXPECT_EQ(names(), (Texts{"Zusatz", "Alpha"}));
    EXPECT_EQ(list().item(2).column(kUninstallCommand), "c:\\alpha.exe");
}

TEST_F(ProgramsListTest, ValueNamesCompareWithTheirCase) {
    setString(HKEY_LOCAL_MACHINE, keyOf("Alpha"), "displayname", "Klein");
    program(HKEY_LOCAL_MACHINE, "Beta", "Beta", "c:\\beta.exe");
    setString(HKEY_LOCAL_MACHINE, keyOf("Gamma"), "DisplayName", "Gamma");
    setString(HKEY_LOCAL_MACHINE, keyOf("Gamma"), "UNINSTALLSTRING", "c:\\gamma.exe");
    openPage();
    EXPECT_EQ(names(), (Texts{"Beta", "Gamma"}));
    EXPECT_EQ(list().item(2).column(kUninstallCommand), "");
}

TEST_F(ProgramsListTest, DataMayHoldBracketsAndEqualsSigns) {
    program(HKEY_LOCAL_MACHINE, "Alpha", "Alpha [neu] = gut", "c:\\weg.exe /x=[1]");
    openPage();
    EXPECT_EQ(names(), Texts{"Alpha [neu] = gut"});
    EXPECT_EQ(list().item(1).column(kUninstallCommand), "c:\\weg.exe /x=[1]");
}

TEST_F(ProgramsListTest, AKeyIsCutAtItsFirstBracketSoThatItsNameIsLost) {
    program(HKEY_LOCAL_MACHINE, "Alpha] B", "Alpha", "c:\\weg.exe");
    program(HKEY_LOCAL_MACHINE, "[C", "Gamma", "c:\\gamma.exe");
    openPage();
    EXPECT_EQ(names(), Texts{"Gamma"});
    EXPECT_EQ(list().item(1).column(kProgramKey), std::string(kUninstall) + "\\[C]");
}

TEST_F(ProgramsListTest, AnEqualsSignInAKeyEndsTheListAndIsReportedWithoutADialog) {
    program(HKEY_LOCAL_MACHINE, "Alpha", "Alpha", "c:\\alpha.exe");
    program(HKEY_LOCAL_MACHINE, "B=C", "Beta", "c:\\beta.exe");
    program(HKEY_LOCAL_MACHINE, "Gamma", "Gamma", "c:\\gamma.exe");
    openPage();
    EXPECT_EQ(names(), Texts{"Alpha"});
    EXPECT_EQ(logLines(),
              Texts{"frmMain; ShowDeinstall; Programm Deinstallation konnte nicht angezeigt werden.; 5; "
                    "Ungültiger Prozeduraufruf oder ungültiges Argument"});
    EXPECT_EQ(asked(), Texts{});
    EXPECT_EQ(form().StatusBar_.panelText(1), "Status");
}

TEST_F(ProgramsListTest, OpeningShowsThePageAndLeavesStatusAndPointerAsTheyWere) {
    form().setMousePointer(MousePointer::Hourglass);
    form().ProgressBar_.setValue(40);
    ScanAbort = true;
    openPage();
    EXPECT_TRUE(form().programs.Frame4.visible());
    for (const Frame* other : {&form().scan.Frame1, &form().backup.Frame2, &form().bugReport.Frame3,
                               &form().options.Frame5, &form().cleanup.Frame7})
        EXPECT_FALSE(other->visible()) << other->name();
    EXPECT_EQ(form().StatusBar_.panelText(1), "Status");
    EXPECT_EQ(form().mousePointer(), MousePointer::Default);
    EXPECT_EQ(form().ProgressBar_.value(), 0);
    EXPECT_FALSE(ScanAbort);
}

TEST_F(ProgramsListTest, TheNavigationOpensThePageToo) {
    program(HKEY_LOCAL_MACHINE, "Alpha", "Alpha", "");
    ASSERT_TRUE(form().Menu.userItemClick("Programme deinstallieren"));
    EXPECT_TRUE(form().programs.Frame4.visible());
    EXPECT_EQ(names(), Texts{"Alpha"});
}

TEST_F(ProgramsListTest, WhileItReadsItSaysSoAndShowsTheHourglass) {
    Texts panels;
    std::vector<MousePointer> pointers;
    for (int pump = 1; pump <= 7; ++pump) {
        atPump(pump, [&] {
            panels.push_back(form().StatusBar_.panelText(1));
            pointers.push_back(form().mousePointer());
        });
    }
    openPage();
    const std::string reading = "Daten werden eingelesen...";
    const std::string moment = "Einen Moment bitte...";
    // For each root: before the reading, once in it for a key without values, behind it; then before the
    // sorting.
    EXPECT_EQ(panels, (Texts{reading, reading, moment, reading, reading, moment, moment}));
    for (const MousePointer pointer : pointers) EXPECT_EQ(pointer, MousePointer::Hourglass);
}

TEST_F(ProgramsListTest, EveryStepIsTraced) {
    program(HKEY_CURRENT_USER, "Alpha", "Alpha", "c:\\alpha.exe");
    program(HKEY_LOCAL_MACHINE, "Beta", "Beta", "c:\\beta.exe");
    switchTracingOn();
    form().programs.ShowDeinstall();
    EXPECT_EQ(logOf("ShowDeinstall"), (Texts{
                                          "started; 0; ",
                                          "Scanoptionen 1 festgelegt; 0; ",
                                          "Lesen von 1 beendet; 0; ",
                                          "Scanoptionen 2 festgelegt; 0; ",
                                          "Lesen von 2 beendet; 0; ",
                                          "6 Einträge zu installierten Programmen gefunden; 0; ",
                                          "Einträge sortiert; 0; ",
                                          "endet; 0; ",
                                      }));
}

TEST_F(ProgramsListTest, RefreshingReadsAnew) {
    program(HKEY_LOCAL_MACHINE, "Alpha", "Alpha", "");
    openPage();
    program(HKEY_LOCAL_MACHINE, "Beta", "Beta", "");
    form().programs.cmdDeinstallRefresh.userClick();
    EXPECT_EQ(names(), (Texts{"Alpha", "Beta"}));
    program(HKEY_LOCAL_MACHINE, "Gamma", "Gamma", "");
    list().userKeyDown(116);
    EXPECT_EQ(names(), (Texts{"Alpha", "Beta", "Gamma"}));
}

TEST_F(ProgramsListTest, ARefreshInTheMiddleOfAnotherListsEachProgramOnce) {
    program(HKEY_LOCAL_MACHINE, "Alpha", "Alpha", "");
    program(HKEY_LOCAL_MACHINE, "Beta", "Beta", "");
    atPump(3, [] { form().programs.cmdDeinstallRefresh.userClick(); });
    openPage();
    EXPECT_EQ(names(), (Texts{"Alpha", "Beta"}));
}

TEST_F(ProgramsListTest, AnAbortedReadingShowsWhatWasReadSoFar) {
    program(HKEY_CURRENT_USER, "Alpha", "Alpha", "");
    program(HKEY_LOCAL_MACHINE, "Beta", "Beta", "");
    // The flag is cleared for the second root.
    atPump(2, [] { ScanAbort = true; });
    openPage();
    EXPECT_EQ(names(), Texts{"Beta"});
}

TEST_F(ProgramsListTest, AClickOnAColumnSortsByItAndTurnsTheOrderRound) {
    for (const char* name : {"beta", "Alpha", "Gamma"}) program(HKEY_LOCAL_MACHINE, name, name, "");
    openPage();
    list().userColumnClick(1);
    EXPECT_EQ(names(), (Texts{"Gamma", "beta", "Alpha"}));
    list().userKeyDown(115);
    EXPECT_EQ(names(), (Texts{"Alpha", "beta", "Gamma"}));
    // The hidden columns have no header, but the handler knows them.
    form().programs.sortBy(4);
    EXPECT_EQ(list().sortKey(), 3);
    EXPECT_EQ(names(), (Texts{"Gamma", "beta", "Alpha"}));
}

TEST_F(ProgramsListTest, TheChosenOrderOutlivesARefresh) {
    for (const char* name : {"Beta", "Alpha"})
        program(HKEY_LOCAL_MACHINE, name, name, "c:\\" + std::string(name));
    openPage();
    list().userColumnClick(1);
    form().programs.cmdDeinstallRefresh.userClick();
    EXPECT_EQ(names(), (Texts{"Beta", "Alpha"}));
    EXPECT_EQ(list().item(1).column(kUninstallCommand), "c:\\Beta");
}

TEST_F(ProgramsListTest, TheCaptionsOfTheMenuFollowTheSelectionAtEveryRelease) {
    program(HKEY_LOCAL_MACHINE, "Alpha", "Alpha", "");
    program(HKEY_LOCAL_MACHINE, "Beta", "Beta", "");
    openPage();
    list().userSelect({1, 2});
    list().userMouseUp(kLeft);
    EXPECT_EQ(form().programs.mnuPopUpDeinstDeinstall.caption(), "markierte Programme &deinstallieren");
    list().userSelect({2});
    list().userMouseUp(4);
    EXPECT_EQ(form().programs.mnuPopUpDeinstDeinstall.caption(), "markiertes Programm &deinstallieren");
    EXPECT_EQ(form().programs.mnuPopUpDeinstRefresh.caption(), "&Ansicht aktualisieren");
}

}  // namespace
}  // namespace bromvale::testing
