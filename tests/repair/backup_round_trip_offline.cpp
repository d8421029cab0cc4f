// From the fault to its removal and back: what the undo file holds is what the registry gets again.
#include "platform/offline/machine.h"
#include "tests/repair/backup_fixture.h"

namespace bromvale::testing {
namespace {

constexpr const char* kServer =
    "Software\\Classes\\CLSID\\{11111111-1111-1111-1111-111111111111}\\InprocServer32";

class RoundTripTest : public BackupTest {
  protected:
    // A class whose server is gone, and behind it one without any file: an object is judged when the next one
    // begins.
    RoundTripTest() {
        setString(HKEY_LOCAL_MACHINE, kServer, "", "C:\\Programme\\Weg\\weg.dll");
        setString(HKEY_LOCAL_MACHINE, "Software\\Classes\\CLSID\\{22222222-2222-2222-2222-222222222222}", "",
                  "Noch da");
    }

    // A scan, then the removal of all that it found.
    static void removeFaults() {
        form().scan.cmdStart_Click();
        ASSERT_EQ(form().scan.cmdStart.caption(), "&Entfernen");
        form().scan.cmdStart_Click();
    }
    void reenterFirst() {
        openPage();
        ASSERT_GE(list().count(), 1);
        list().userSelect({1});
        answer(IDYES);
        form().backup.cmdEintragen.userClick();
    }
};

TEST_F(RoundTripTest, ReenteringBringsTheValueOfARemovedKeyBack) {
    removeFaults();
    ASSERT_FALSE(keyExists(HKEY_LOCAL_MACHINE, kServer));
    reenterFirst();
    EXPECT_EQ(stringValue(HKEY_LOCAL_MACHINE, kServer, ""), "C:\\Programme\\Weg\\weg.dll");
    // And once more in the other direction: what was entered is found and removed again.
    removeFaults();
    EXPECT_FALSE(keyExists(HKEY_LOCAL_MACHINE, kServer));
}

// With the values that no row showed, their types and bytes.
TEST_F(RoundTripTest, TheCompleteCopyBringsTheWholeKeyBack) {
    const offline::Registry& registry = offline::machine().registry;
    const std::u16string path =
        u"HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\{11111111-1111-1111-1111-111111111111}"
        u"\\InprocServer32";
    setRaw(HKEY_LOCAL_MACHINE, kServer, "Pfad", REG_EXPAND_SZ, std::string("%windir%\\\0", 10));
    setRaw(HKEY_LOCAL_MACHINE, kServer, "Zahl", REG_DWORD, std::string("\1\2\3\4", 4));
    setRaw(HKEY_LOCAL_MACHINE, kServer, "Bytes", REG_BINARY, std::string("\0\xFF", 2));
    const auto before = registry.wideValues(path);
    ASSERT_EQ(before.size(), 4u);
    removeFaults();
    ASSERT_FALSE(keyExists(HKEY_LOCAL_MACHINE, kServer));
    openPage();
    ASSERT_EQ(names().size(), 2u);
    EXPECT_TRUE(
        names()[0].starts_with("R\xFC"
                               "ckg\xE4ngig_"));
    EXPECT_TRUE(names()[1].starts_with("Vollst\xE4ndig_"));
    EXPECT_EQ(names()[0].substr(11), names()[1].substr(12));
    list().userSelect({2});
    answer(IDYES);
    form().backup.cmdEintragen.userClick();
    EXPECT_EQ(registry.wideValues(path), before);
}

TEST_F(RoundTripTest, TheCompleteCopyIsEditedAndDeletedLikeAnyOther) {
    removeFaults();
    openPage();
    ASSERT_EQ(names().size(), 2u);
    const std::string copy = names()[1];
    list().userSelect({2});
    form().backup.cmdBearbeiten.userClick();
    const auto handed = offline::machine().events.of(offline::EventKind::ShellExecute);
    ASSERT_EQ(handed.size(), 1u);
    EXPECT_EQ(handed[0].caption + " " + handed[0].text, "Edit " + BackupPath + copy);
    list().userSelect({2});
    answer(IDYES);
    form().backup.cmdLöschen_Click();
    EXPECT_EQ(filesIn(BackupPath, "V*.reg"), Texts{});
    EXPECT_EQ(filesIn(BackupPath, "R*.reg").size(), 1u);
    ASSERT_EQ(offline::machine().drives.recycled.size(), 1u);
    EXPECT_EQ(offline::machine().drives.recycled[0].path, BackupPath + copy);
}

TEST_F(RoundTripTest, EditingChangesNothing) {
    removeFaults();
    openPage();
    list().userSelect({1});
    form().backup.cmdBearbeiten.userClick();
    EXPECT_FALSE(keyExists(HKEY_LOCAL_MACHINE, kServer));
}

}  // namespace
}  // namespace bromvale::testing
