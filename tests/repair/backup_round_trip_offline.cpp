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
        form().cmdStart_Click();
        ASSERT_EQ(form().cmdStart.caption(), "&Entfernen");
        form().cmdStart_Click();
    }
    void reenterFirst() {
        openPage();
        ASSERT_GE(list().count(), 1);
        list().userSelect({1});
        answer(IDYES);
        form().cmdEintragen.userClick();
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

TEST_F(RoundTripTest, EditingChangesNothing) {
    removeFaults();
    openPage();
    list().userSelect({1});
    form().cmdBearbeiten.userClick();
    EXPECT_FALSE(keyExists(HKEY_LOCAL_MACHINE, kServer));
}

}  // namespace
}  // namespace bromvale::testing
