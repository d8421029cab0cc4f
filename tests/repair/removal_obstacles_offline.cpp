// What a removal is told before it begins: rights that are missing, a program folder that takes no files.
#include "platform/offline/machine.h"
#include "repair/removal_obstacles.h"
#include "tests/repair/removal_fixture.h"

namespace bromvale::testing {
namespace {

using offline::machine;
using offline::Rights;

const std::string kRights =
    "Ihnen fehlen die Rechte, Schlüssel unterhalb von HKEY_LOCAL_MACHINE zu entfernen.\r\nDiese Schlüssel "
    "bleiben "
    "erhalten, und der nächste Scan zeigt sie wieder. Entfernt wird, was unterhalb von HKEY_CURRENT_USER "
    "liegt.\r\n\r\nUm alles zu entfernen, starten Sie das Programm als Administrator.";
const std::string kFolder =
    "In den Ordner des Programms kann nicht geschrieben werden:\r\nC:\\Programme\\Bromvale\\\r\n\r\nOhne "
    "Sicherungsdatei wird nichts entfernt.";

class RemovalObstacles : public RemovalTest {
  protected:
    RemovalObstacles() {
        addKey("A");
        addKey("B");
        setString(HKEY_CURRENT_USER, "Software\\Probe\\U", "", "Wert U");
        add("[HKEY_CURRENT_USER\\Software\\Probe\\U]", "@", "Wert U", "-2147483647");
        form().scan.cmdStart.setCaption("&Entfernen");
    }
    static void takeRights(Rights::Token token) {
        machine().setOs({2, 6, 1, 7601});
        machine().rights.token = token;
    }
    bool userKeyIsGone() { return !keyExists(HKEY_CURRENT_USER, "Software\\Probe\\U"); }
    static void click() { form().scan.cmdStart.userClick(); }
};

TEST_F(RemovalObstacles, WithoutRightsTheUserIsToldOnceAndHisOwnKeysGo) {
    takeRights(Rights::Token::Standard);
    click();
    EXPECT_EQ(asked(), Texts{kRights});
    EXPECT_EQ(boxes()[0].style, 64u);
    EXPECT_TRUE(userKeyIsGone());
    EXPECT_FALSE(isGone("A"));
    EXPECT_FALSE(isGone("B"));
    EXPECT_EQ(form().scan.lblScanBericht.caption(), allMessage);
    EXPECT_EQ(list().count(), 0);
}

TEST_F(RemovalObstacles, ItIsToldBeforeAnythingIsWritten) {
    takeRights(Rights::Token::Limited);
    machine().events.clear();
    machine().events.sink = [](const offline::Event& event) {
        if (event.kind == offline::EventKind::MessageBox) {
            for (const offline::Event& earlier : machine().events.all())
                EXPECT_NE(earlier.text.substr(0, 28), "C:\\Programme\\Bromvale\\Backup");
        }
    };
    click();
    machine().events.sink = nullptr;
    EXPECT_EQ(asked().size(), 1u);
}

TEST_F(RemovalObstacles, OfMarkedRowsOnlyThoseCount) {
    takeRights(Rights::Token::Standard);
    form().scan.chbMarkierteKeysEntfernen.setValue(1);
    select({"\\U]"});
    click();
    EXPECT_EQ(asked(), Texts{});
    EXPECT_TRUE(userKeyIsGone());
    select({"\\A]"});
    click();
    EXPECT_EQ(asked(), Texts{kRights});
}

TEST_F(RemovalObstacles, ARowOfTheMachineCountsAtAnyPlace) {
    takeRights(Rights::Token::Standard);
    form().scan.chbMarkierteKeysEntfernen.setValue(1);
    for (int row = 1; row <= 3; ++row) {
        for (int each = 1; each <= 3; ++each) list().item(each).setSelected(each == row);
        EXPECT_TRUE(mayRemoveFaults(form().scan, WishedBy::User));
        EXPECT_EQ(asked().size(), row < 3 ? static_cast<std::size_t>(row) : 2u) << row;
    }
}

TEST_F(RemovalObstacles, WithTheRightsNothingIsTold) {
    takeRights(Rights::Token::Full);
    click();
    EXPECT_EQ(asked(), Texts{});
    EXPECT_TRUE(isGone("A"));
}

TEST_F(RemovalObstacles, BeforeVistaNothingIsTold) {
    machine().rights.token = Rights::Token::Limited;
    click();
    EXPECT_EQ(asked(), Texts{});
    EXPECT_TRUE(isGone("A"));
}

TEST_F(RemovalObstacles, AFolderThatTakesNoFilesRefusesTheRemovalBeforeItTouchesAnything) {
    machine().drives.protect("C:\\Programme\\Bromvale");
    RebootAfterDelete = 1;
    AutoClose = 1;
    machine().events.clear();
    click();
    EXPECT_EQ(asked(), Texts{kFolder});
    EXPECT_EQ(boxes()[0].style, 64u);
    EXPECT_EQ(machine().events.all().size(), 1u) << "the box alone";
    EXPECT_FALSE(isGone("A"));
    EXPECT_FALSE(userKeyIsGone());
    EXPECT_EQ(list().count(), 3);
    EXPECT_EQ(form().scan.cmdStart.caption(), "&Entfernen") << "the offer stays";
}

TEST_F(RemovalObstacles, OnAWholeDriveThatTakesNoFilesToo) {
    machine().drives.protect("C:\\");
    click();
    EXPECT_EQ(asked(), Texts{kFolder});
    EXPECT_FALSE(isGone("A"));
}

// --- a removal that a setting starts ---

class AutomaticRemoval : public WindowTest {
  protected:
    AutomaticRemoval() {
        setString(HKEY_LOCAL_MACHINE, "Software\\Classes\\CLSID\\{A}\\InprocServer32", "",
                  "C:\\Fehlt\\a.dll");
        setString(HKEY_CURRENT_USER, "Software\\Classes\\CLSID\\{U}\\InprocServer32", "", "C:\\Fehlt\\u.dll");
        // An object is judged when the next one comes.
        for (const HKEY hive : {HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER})
            setString(hive, "Software\\Classes\\CLSID\\{Z}", "", "z");
        AutoEntfernen = 1;
        machine().setOs({2, 6, 1, 7601});
    }
    bool isThere(HKEY hive, const char* id) {
        return keyExists(hive, std::string("Software\\Classes\\CLSID\\") + id + "\\InprocServer32");
    }
};

TEST_F(AutomaticRemoval, WithoutRightsOnlyTheLogTellsIt) {
    machine().rights.token = Rights::Token::Standard;
    form().scan.cmdStart_Click();
    EXPECT_EQ(asked(), Texts{});
    EXPECT_EQ(logOf("ProblemeEntfernen").at(0),
              "Ihnen fehlen die Rechte, Schlüssel unterhalb von HKEY_LOCAL_MACHINE zu entfernen.; 0; ");
    EXPECT_TRUE(isThere(HKEY_LOCAL_MACHINE, "{A}"));
    EXPECT_FALSE(isThere(HKEY_CURRENT_USER, "{U}"));
}

TEST_F(AutomaticRemoval, AFolderThatTakesNoFilesIsToldOnThePage) {
    machine().drives.protect("C:\\Programme\\Bromvale");
    form().scan.cmdStart_Click();
    EXPECT_EQ(asked(), Texts{});
    EXPECT_EQ(form().scan.lblScanBericht.caption(),
              "Es wurde nichts entfernt, da der Programmordner schreibgeschützt ist.");
    EXPECT_TRUE(isThere(HKEY_LOCAL_MACHINE, "{A}"));
    EXPECT_TRUE(isThere(HKEY_CURRENT_USER, "{U}"));
    EXPECT_EQ(form().scan.cmdStart.caption(), "&Entfernen");
}

TEST_F(RemovalObstacles, ARowThatCannotBeReadIsNoneOfTheMachine) {
    takeRights(Rights::Token::Standard);
    list().clear();
    add("[HKEY_LOCAL_MACHINE\\Software\\Probe\\A]", "@", "Wert A", "keine Zahl");
    click();
    for (const std::string& text : asked()) EXPECT_NE(text, kRights);
    EXPECT_FALSE(isGone("A"));
}

}  // namespace
}  // namespace bromvale::testing
