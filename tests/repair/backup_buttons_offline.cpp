// The three buttons, on a machine whose shell and clock tell what was done.
#include <functional>
#include <utility>

#include "tests/repair/backup_fixture.h"
#include "tests/support/recorded_offline.h"

namespace bromvale::testing {
namespace {

using offline::EventKind;

class BackupButtonsTest : public BackupTest {
  protected:
    // "verb path" of each call of the shell.
    [[nodiscard]] static Texts handed() {
        Texts result;
        for (const offline::Event& event : offline::machine().events.of(EventKind::ShellExecute))
            result.push_back(event.caption + " " + event.text);
        return result;
    }
    static std::size_t restarts() { return offline::machine().events.count(EventKind::Restart); }
    static std::string path(const std::string& name) { return BackupPath + name; }
    // What happens while the next question stands.
    static void duringTheBox(const std::function<void()>& action) {
        offline::machine().faults.observe([action, done = false](std::string_view operation) mutable {
            if (operation != "MessageBoxA" || std::exchange(done, true)) return;
            action();
        });
    }
};

// Every file that is handed to the shell opens in the normal state.
TEST_F(BackupButtonsTest, EditorsOpenNormally) {
    openPage({"a.reg"});
    list().userSelect({1});
    form().backup.cmdBearbeiten.userClick();
    list().userSelect({1});
    answer(IDYES);
    form().backup.cmdEintragen.userClick();
    const auto calls = offline::machine().events.of(EventKind::ShellExecute);
    ASSERT_EQ(calls.size(), 2u);
    for (const offline::Event& call : calls) EXPECT_EQ(call.number, 1u) << call.caption;
    EXPECT_EQ(offline::machine().lastRequests.switches, "");
}

// --- Bearbeiten ---

TEST_F(BackupButtonsTest, EditingOpensAllSelectedFilesAndLeavesNoneSelected) {
    openPage({"a.reg", "b.reg", "c.reg"});
    list().userSelect({1, 3});
    form().backup.cmdBearbeiten.userClick();
    EXPECT_EQ(handed(), (Texts{"Edit " + path("a.reg"), "Edit " + path("c.reg")}));
    EXPECT_EQ(selected(), Texts{});
    EXPECT_EQ(asked(), Texts{});
}

TEST_F(BackupButtonsTest, EditingIsTraced) {
    openPage({"a.reg"});
    list().userSelect({1});
    switchTracingOn();
    form().backup.cmdBearbeiten.userClick();
    EXPECT_EQ(logOf("cmdBearbeiten_Click"),
              (Texts{"started; 0; ", "a.reg zum bearbeiten geöffnet; 0; ", "endet; 0; "}));
}

TEST_F(BackupButtonsTest, ADoubleClickReturnAndExecuteEdit) {
    openPage({"a.reg"});
    list().userSelect({1});
    list().userDoubleClick();
    list().userSelect({1});
    list().userKeyDown(13);
    list().userSelect({1});
    list().userKeyDown(43);
    EXPECT_EQ(handed(), (Texts{"Edit " + path("a.reg"), "Edit " + path("a.reg"), "Edit " + path("a.reg")}));
}

// --- Eintragen ---

TEST_F(BackupButtonsTest, ReenteringAsksAndOpensTheFileOnYes) {
    openPage({"a.reg"});
    list().userSelect({1});
    answer(IDYES);
    form().backup.cmdEintragen.userClick();
    ASSERT_EQ(boxes().size(), 1u);
    EXPECT_EQ(
        boxes()[0].text,
        "Wollen Sie wirklich die Datei a.reg in die Registry eintragen?\r\rHinweis!\rNach dem Bestätigen des "
        "Fensters mit Ja, folgen zwei weitere Dialoge. \rBestätigen Sie die erste Aufforderung mit Ja und "
        "die "
        "zweite mit OK.");
    EXPECT_EQ(boxes()[0].caption, "Bromvale");
    EXPECT_EQ(boxes()[0].style & 0xFFu, 36u);
    EXPECT_EQ(handed(), Texts{"Open " + path("a.reg")});
    EXPECT_EQ(filesLeft(), Texts{"a.reg"});
    EXPECT_EQ(selected(), Texts{"a.reg"});
    EXPECT_EQ(restarts(), 0u);
}

TEST_F(BackupButtonsTest, ReenteringOpensNothingOnNo) {
    openPage({"a.reg"});
    list().userSelect({1});
    answer(IDNO);
    form().backup.cmdEintragen.userClick();
    EXPECT_EQ(handed(), Texts{});
    EXPECT_EQ(filesLeft(), Texts{"a.reg"});
}

TEST_F(BackupButtonsTest, EachSelectedFileIsAskedForByItself) {
    openPage({"a.reg", "b.reg", "c.reg"});
    list().userSelect({1, 2, 3});
    answer(IDYES);
    answer(IDNO);
    answer(IDYES);
    list().userKeyDown(119);
    EXPECT_EQ(boxes().size(), 3u);
    EXPECT_EQ(handed(), (Texts{"Open " + path("a.reg"), "Open " + path("c.reg")}));
}

TEST_F(BackupButtonsTest, ReenteringIsTracedAsASuccessWhateverTheEditorDid) {
    openPage({"a.reg"});
    list().userSelect({1});
    offline::machine().faults.fail("ShellExecuteA", 1, SE_ERR_NOASSOC);
    switchTracingOn();
    answer(IDYES);
    form().backup.cmdEintragen.userClick();
    EXPECT_EQ(
        logOf("cmdEintragen_Click"),
        (Texts{"started; 0; ", "Die Sicherungdatei a.reg wurde erfolgreich in die Registry eingetragen.; 0; ",
               "endet; 0; "}));
}

TEST_F(BackupButtonsTest, TheFileGoesToTheBinSevenSecondsAfterItsReentry) {
    AutoFileDelAfterReentry = 1;
    openPage({"a.reg"});
    list().userSelect({1});
    answer(IDYES);
    const auto before = offline::machine().clock.elapsed();
    form().backup.cmdEintragen.userClick();
    EXPECT_EQ((offline::machine().clock.elapsed() - before) / 1000, 7);
    EXPECT_EQ(recycled(), Texts{path("a.reg")});
    EXPECT_EQ(names(), Texts{});
}

TEST_F(BackupButtonsTest, TheFirstMergeRefillsTheListAndLeavesTheOtherFilesAlone) {
    AutoFileDelAfterReentry = 1;
    openPage({"a.reg", "b.reg", "c.reg"});
    list().userSelect({1, 2, 3});
    LogAlways = true;
    answer(IDYES);
    form().backup.cmdEintragen.userClick();
    EXPECT_EQ(boxes().size(), 1u);
    EXPECT_EQ(handed(), Texts{"Open " + path("a.reg")});
    EXPECT_EQ(recycled(), Texts{path("a.reg")});
    EXPECT_EQ(names(), (Texts{"b.reg", "c.reg"}));
    EXPECT_EQ(selected(), Texts{});
    // The third row isn't there any more.
    EXPECT_EQ(logOf("cmdEintragen_Click"),
              Texts{"Es wurde keine Datei gewählt.; 35600; Index liegt außerhalb der Grenzen"});
}

TEST_F(BackupButtonsTest, AutoFileDelAfterReentryIsAskedAfterNoToo) {
    AutoFileDelAfterReentry = 1;
    openPage({"a.reg"});
    list().userSelect({1});
    switchTracingOn();
    answer(IDNO);
    form().backup.cmdEintragen.userClick();
    EXPECT_EQ(handed(), Texts{});
    EXPECT_EQ(recycled(), Texts{path("a.reg")});
    EXPECT_EQ(logOf("cmdEintragen_Click"),
              (Texts{"started; 0; ", "AutoClose nach eintragen wird ausgeführt; 0; ", "endet; 0; "}));
}

TEST_F(BackupButtonsTest, TheFileThatWasAskedForIsDeletedThoughTheListWasSortedMeanwhile) {
    AutoFileDelAfterReentry = 1;
    openPage({"a.reg", "b.reg", "c.reg"});
    list().userSelect({1});
    answer(IDYES);
    atPump(1, [&] { form().backup.sortBy(1); });
    form().backup.cmdEintragen.userClick();
    EXPECT_EQ(recycled(), Texts{path("a.reg")});
    EXPECT_EQ(filesLeft(), (Texts{"b.reg", "c.reg"}));
}

TEST_F(BackupButtonsTest, WindowsRestartsSevenSecondsAfterNoToo) {
    RebootAfterEntry = 1;
    openPage({"a.reg"});
    list().userSelect({1});
    switchTracingOn();
    answer(IDNO);
    const auto before = offline::machine().clock.elapsed();
    form().backup.cmdEintragen.userClick();
    EXPECT_EQ((offline::machine().clock.elapsed() - before) / 1000, 7);
    ASSERT_EQ(restarts(), 1u);
    EXPECT_EQ(offline::machine().events.of(EventKind::Restart)[0].number, 6u);
    EXPECT_EQ(logOf("cmdEintragen_Click"),
              (Texts{"started; 0; ", "Reboot nach eintragen wird ausgeführt; 0; ", "endet; 0; "}));
}

TEST_F(BackupButtonsTest, WindowsRestartsOnceHoweverManyFilesWereEntered) {
    RebootAfterEntry = 1;
    openPage({"a.reg", "b.reg"});
    list().userSelect({1, 2});
    answer(IDYES);
    answer(IDYES);
    form().backup.cmdEintragen.userClick();
    EXPECT_EQ(restarts(), 1u);
}

TEST_F(BackupButtonsTest, WindowsRestartsThoughNothingIsSelected) {
    RebootAfterEntry = 1;
    openPage({"a.reg"});
    form().backup.cmdEintragen.userClick();
    EXPECT_EQ(restarts(), 1u);
}

// --- Löschen ---

TEST_F(BackupButtonsTest, DeletingAsksAndMovesTheFileToTheBin) {
    openPage({"a.reg", "b.reg"});
    list().userSelect({1});
    answer(IDYES);
    form().backup.cmdLöschen.userClick();
    ASSERT_EQ(boxes().size(), 1u);
    EXPECT_EQ(boxes()[0].text, "Wollen Sie wirklich die Datei a.reg löschen?");
    EXPECT_EQ(boxes()[0].caption, "Bromvale");
    EXPECT_EQ(boxes()[0].style & 0xFFu, 36u);
    EXPECT_EQ(recycled(), Texts{path("a.reg")});
    EXPECT_EQ(names(), Texts{"b.reg"});
    EXPECT_EQ(selected(), Texts{"b.reg"});
}

TEST_F(BackupButtonsTest, DeletingGoesToTheBinThoughFilesAreToBeDeletedForGood) {
    DelFilePermanent = 1;
    openPage({"a.reg"});
    list().userSelect({1});
    answer(IDYES);
    form().backup.cmdLöschen.userClick();
    EXPECT_EQ(recycled(), Texts{path("a.reg")});
}

TEST_F(BackupButtonsTest, DeletingLeavesTheFileOnNoAndSelectsTheFirstRow) {
    openPage({"a.reg", "b.reg"});
    list().userSelect({2});
    answer(IDNO);
    form().backup.cmdLöschen.userClick();
    EXPECT_EQ(recycled(), Texts{});
    EXPECT_EQ(names(), (Texts{"a.reg", "b.reg"}));
    EXPECT_EQ(selected(), (Texts{"a.reg", "b.reg"}));
}

TEST_F(BackupButtonsTest, ClearDeletesLikeDelete) {
    for (const int key : {12, 46}) {
        openPage({"a.reg", "b.reg"});
        list().userSelect({1});
        answer(IDYES);
        list().userKeyDown(key);
        EXPECT_EQ(names(), Texts{"b.reg"}) << key;
        EXPECT_EQ(filesLeft(), Texts{"b.reg"}) << key;
    }
    EXPECT_EQ(recycled(), (Texts{path("a.reg"), path("a.reg")}));
}

// The tray's menu may fill the list while the question stands.
TEST_F(BackupButtonsTest, TheRowOfTheFileThatWasAskedForGoesThoughTheListWasFilledMeanwhile) {
    openPage({"a.reg", "b.reg", "c.reg"});
    list().userSelect({2});
    LogAlways = true;
    duringTheBox([&] {
        undoFile("0.reg");
        form().backup.ReadBackupFiles();
    });
    answer(IDYES);
    form().backup.cmdLöschen.userClick();
    EXPECT_EQ(recycled(), Texts{path("b.reg")});
    EXPECT_EQ(names(), (Texts{"0.reg", "a.reg", "c.reg"}));
    EXPECT_EQ(filesLeft(), names());
}

TEST_F(BackupButtonsTest, NoRowGoesForAFileThatLeftTheListMeanwhile) {
    openPage({"a.reg", "b.reg", "c.reg"});
    list().userSelect({1});
    duringTheBox([&] {
        offline::machine().drives.erase(path("a.reg"));
        form().backup.ReadBackupFiles();
    });
    switchTracingOn();
    answer(IDYES);
    form().backup.cmdLöschen.userClick();
    EXPECT_EQ(names(), (Texts{"b.reg", "c.reg"}));
    const Texts lines = logOf("cmdLöschen_Click");
    EXPECT_EQ(lines, (Texts{"started; 0; ", "Datei a.reg wurde gelöscht; 0; ",
                            "Es wurde keine Datei gewählt.; 35600; Index liegt außerhalb der Grenzen",
                            "endet; 0; "}));
}

TEST_F(BackupButtonsTest, AllSelectedFilesAreDeletedOneAfterTheOther) {
    for (const bool tracing : {false, true}) {
        openPage({"a.reg", "b.reg", "c.reg", "d.reg"});
        list().userSelect({1, 2, 4});
        if (tracing) switchTracingOn();
        for (int i = 0; i < 3; ++i) answer(IDYES);
        list().userKeyDown(46);
        EXPECT_EQ(names(), Texts{"c.reg"}) << tracing;
        EXPECT_EQ(filesLeft(), Texts{"c.reg"}) << tracing;
    }
}

TEST_F(BackupButtonsTest, TheIndexPassesTheLastRowAfterADeletionWhichIsLoggedAndEndsTheLoop) {
    openPage({"a.reg", "b.reg", "c.reg", "d.reg"});
    list().userSelect({2, 3});
    LogAlways = true;
    answer(IDYES);
    answer(IDYES);
    form().backup.cmdLöschen.userClick();
    EXPECT_EQ(names(), (Texts{"a.reg", "d.reg"}));
    EXPECT_EQ(selected(), Texts{"a.reg"});
    EXPECT_EQ(logOf("cmdLöschen_Click"),
              Texts{"Es wurde keine Datei gewählt.; 35600; Index liegt außerhalb der Grenzen"});
}

TEST_F(BackupButtonsTest, NothingIsLoggedWhileThereWasNothingToDelete) {
    openPage({"a.reg"});
    LogAlways = true;
    form().backup.cmdLöschen.userClick();
    EXPECT_EQ(logLines(), Texts{});
    EXPECT_EQ(selected(), Texts{"a.reg"});
}

TEST_F(BackupButtonsTest, DeletingTracesTheRowAboveTheOneThatWent) {
    openPage({"a.reg", "b.reg"});
    list().userSelect({2});
    switchTracingOn();
    answer(IDYES);
    form().backup.cmdLöschen.userClick();
    EXPECT_EQ(logOf("cmdLöschen_Click"),
              (Texts{
                  "started; 0; ",
                  "Datei b.reg wurde gelöscht; 0; ",
                  "Eintrag a.reg wurde aus der Liste entfernt; 0; ",
                  "Es wurde keine Datei gewählt.; 35600; Index liegt außerhalb der Grenzen",
                  "endet; 0; ",
              }));
}

TEST_F(BackupButtonsTest, AnEmptyListIsNoFailureForAnyButton) {
    openPage();
    LogAlways = true;
    form().backup.cmdBearbeiten.userClick();
    form().backup.cmdEintragen.userClick();
    form().backup.cmdLöschen.userClick();
    list().userKeyDown(12);
    EXPECT_EQ(asked(), Texts{});
    EXPECT_EQ(logLines(), Texts{});
}

// --- the menu ---

TEST_F(BackupButtonsTest, TheRightButtonOpensTheMenuWhoseEntriesDoAsTheButtons) {
    openPage({"a.reg"});
    list().userSelect({1});
    auto& machine = offline::machine();
    machine.menuChoices = {"mnuPopUpBackupBearbeiten"};
    list().userMouseUp(kRight);
    EXPECT_EQ(handed(), Texts{"Edit " + path("a.reg")});
    ASSERT_EQ(machine.events.count(EventKind::Menu), 1u);
    EXPECT_EQ(machine.events.of(EventKind::Menu)[0].text,
              "markierten Eintrag bearbeiten | markierten Eintrag einfügen | markierten Eintrag löschen");

    list().userSelect({1});
    machine.menuChoices = {"mnuPopUpBackupEinfügen", "mnuPopUpBackupLöschen"};
    answer(IDYES);
    answer(IDYES);
    list().userMouseUp(kRight);
    EXPECT_EQ(handed().back(), "Open " + path("a.reg"));
    list().userMouseUp(kRight);
    EXPECT_EQ(recycled(), Texts{path("a.reg")});
}

TEST_F(BackupButtonsTest, WithSeveralRowsTheOpenedMenuSpeaksOfAllOfThem) {
    openPage({"a.reg", "b.reg"});
    list().userSelect({1, 2});
    list().userMouseUp(kRight);
    const auto menus = offline::machine().events.of(EventKind::Menu);
    ASSERT_EQ(menus.size(), 1u);
    EXPECT_EQ(menus[0].text,
              "markierte Einträge bearbeiten | markierte Einträge einfügen | markierte Einträge löschen");
    EXPECT_EQ(menus[0].caption, "");
}

TEST_F(BackupButtonsTest, TheLeftButtonOpensNoMenu) {
    openPage({"a.reg"});
    list().userMouseUp(kLeft);
    EXPECT_EQ(offline::machine().events.count(EventKind::Menu), 0u);
}

}  // namespace
}  // namespace bromvale::testing
