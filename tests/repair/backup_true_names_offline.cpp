// Undo files whose names the code page can't hold: shown by their nearest letters, and reached by their short
// names or not at all.
#include "platform/exact/text.h"
#include "tests/repair/backup_fixture.h"
#include "tests/support/recorded_offline.h"

namespace bromvale::testing {
namespace {

using offline::EventKind;
using offline::machine;

constexpr const char* kUnreachable =
    "Die Datei Lodz.reg kann weder geöffnet noch gelöscht werden: Ihr Name enthält Zeichen, die dieses "
    "Programm "
    "nicht genau wiedergeben kann.";

class BackupTrueNames : public BackupTest {
  protected:
    // "Lódz.reg" with a stroke and an accent that Windows-1252 lacks, beside the file that is named by its
    // nearest letters.
    void openPageWithTwins(bool shortNames) {
        machine().drives.shortNames = shortNames;
        machine().drives.writeFile(lodz(), "12345");
        undoFile("Lodz.reg");
        form().backup.mnuPopUpBackupZeigen_Click();
    }
    static std::u16string lodz() { return wideText(BackupPath).append(u"\u0141od\u017A.reg"); }
    // The row of the one or the other.
    static int rowOf(bool foreign) {
        for (int row = 1; row <= list().count(); ++row) {
            if (list().item(row).tag().empty() != foreign) return row;
        }
        return 0;
    }
    static Texts opened() { return recorded(EventKind::ShellExecute); }
    static bool twinExists() { return machine().drives.exists(BackupPath + "Lodz.reg"); }
};

TEST_F(BackupTrueNames, AreShownByTheirNearestLettersWithTheirOwnSize) {
    openPageWithTwins(false);
    EXPECT_EQ(names(), (Texts{"Lodz.reg", "Lodz.reg"}));
    ASSERT_NE(rowOf(true), 0);
    EXPECT_EQ(list().item(rowOf(true)).subItem(1), "0,004 KB");
    EXPECT_EQ(list().item(rowOf(false)).subItem(1), "0,002 KB");
}

TEST_F(BackupTrueNames, WithoutAShortNameAreLeftAloneAndTold) {
    openPageWithTwins(false);
    void (*const clicks[])() = {[] { form().backup.cmdBearbeiten.userClick(); },
                                [] { form().backup.cmdEintragen.userClick(); },
                                [] { form().backup.cmdLöschen.userClick(); }};
    for (const auto& click : clicks) {
        machine().events.clear();
        list().userSelect({rowOf(true)});
        answer(IDOK);
        click();
        ASSERT_EQ(boxes().size(), 1u);
        EXPECT_EQ(boxes()[0].text, kUnreachable);
        EXPECT_EQ(boxes()[0].style, 64u);
        EXPECT_EQ(boxes()[0].caption, "Bromvale");
        EXPECT_EQ(opened(), Texts{});
        EXPECT_TRUE(machine().drives.exists(lodz()) && twinExists());
        EXPECT_EQ(list().count(), 2);
    }
}

TEST_F(BackupTrueNames, WithAShortNameAreDeletedByItAndTheTwinStaysInTheListToo) {
    openPageWithTwins(true);
    list().userSelect({rowOf(true)});
    answer(IDYES);
    form().backup.cmdLöschen.userClick();
    EXPECT_FALSE(machine().drives.exists(lodz()));
    EXPECT_TRUE(twinExists());
    ASSERT_EQ(list().count(), 1);
    EXPECT_EQ(list().item(1).tag(), "");
}

TEST_F(BackupTrueNames, WithAShortNameAreOpenedByIt) {
    openPageWithTwins(true);
    list().userSelect({rowOf(true)});
    form().backup.cmdBearbeiten.userClick();
    ASSERT_EQ(opened().size(), 1u);
    EXPECT_NE(opened()[0], BackupPath + "Lodz.reg");
    EXPECT_EQ(machine().drives.readFile(opened()[0]), "12345");
}

// While the question stands the file goes, and nothing else goes in its place: not the folder, not the twin.
TEST_F(BackupTrueNames, ThatVanishWhileTheQuestionStandsTakeNothingAlong) {
    openPageWithTwins(true);
    list().userSelect({rowOf(true)});
    machine().faults.observe([](std::string_view operation) {
        if (operation == "MessageBoxA") machine().drives.erase(lodz());
    });
    answer(IDYES);
    form().backup.cmdLöschen.userClick();
    machine().faults.clear();
    EXPECT_TRUE(twinExists());
    EXPECT_TRUE(machine().drives.recycled.empty());
}

TEST_F(BackupTrueNames, AreDeletedByTheirAgeWithAShortNameAndStayWithout) {
    DelAfterDays = -1;
    for (const bool shortNames : {false, true}) {
        machine().drives.shortNames = shortNames;
        machine().drives.writeFile(lodz(), "1");
        undoFile("Lodz.reg");
        AutoFileDel();
        EXPECT_EQ(machine().drives.exists(lodz()), !shortNames);
        EXPECT_FALSE(twinExists());
    }
}

TEST_F(BackupTrueNames, ThatStayWhenTheyAreOldAreToldByTheLog) {
    DelAfterDays = -1;
    machine().drives.shortNames = false;
    machine().drives.writeFile(lodz(), "1");
    switchTracingOn();
    AutoFileDel();
    const Texts lines = logLines();
    ASSERT_GE(lines.size(), 2u);
    EXPECT_EQ(lines[lines.size() - 2], "modMain; AutoFileDel; " + BackupPath +
                                           "Lodz.reg bleibt: der Name ist nicht genau bekannt; 0; ");
}

}  // namespace
}  // namespace bromvale::testing
